#pragma once

#include "core/TEVariant.h"
#include "data/TEFields.h"
#include "data/TEGeometry.h"

#include <ogr_api.h>

namespace TZObjects {

// One feature: its id, attribute values and geometry, owning an OGR feature.
// Field indexes are those of the host field list (0 FID, 1 GEOMETRY,
// attributes from 2). A feature read through a cursor that skipped a field
// reads that field as null.
class TZOBJECTS_EXPORT TEFeature : public TERefBase
{
public:
    // Takes ownership of the OGR feature; fields is the layer's field list.
    TEFeature(OGRFeatureH handle, TERefPtr<TEFields> fields);
    ~TEFeature() override;
    TEFeature(const TEFeature&) = delete;
    TEFeature& operator=(const TEFeature&) = delete;

    int GetId() const;
    void SetId(int id);

    TEVariant GetValue(const TEString& fieldName) const;
    // Index 0 gives the id, 1 the geometry as WKT, 2 and up the attributes.
    TEVariant GetValue(int fieldIndex) const;

    // Sets an attribute (FID and GEOMETRY are not set this way); false for
    // an unknown field or a value the field cannot hold.
    bool SetValue(const TEString& fieldName, const TEVariant& value);
    bool SetValue(int fieldIndex, const TEVariant& value);

    // The geometry as a new object (a copy); empty when the feature has none.
    TERefPtr<TEGeometry> GetGeometry() const;
    void SetGeometry(const TERefPtr<TEGeometry>& geometry);

    const TERefPtr<TEFields>& GetFields() const { return mFields; }
    TERefPtr<TEFeature> Clone() const;

    // Takes ownership of another OGR feature of the same fields in place of
    // the one held, so that a reader walking many features can reuse one
    // object (see TEFeatureCursor::NextFeature).
    void ResetHandle(OGRFeatureH handle);

    // Valid while this feature lives; for OGR calls such as where-clause
    // evaluation (see TEWhereClause).
    OGRFeatureH GetHandle() const { return mHandle; }

    static TEVariant ReadOgrField(OGRFeatureH feature, int ogrIndex);
    static bool WriteOgrField(OGRFeatureH feature, int ogrIndex, const TEVariant& value);

private:
    OGRFeatureH mHandle = nullptr;
    TERefPtr<TEFields> mFields;
};

} // namespace TZObjects
