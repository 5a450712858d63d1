#pragma once

#include "data/TEField.h"

#include <ogr_api.h>

#include <unordered_map>
#include <vector>

namespace TZObjects {

// The field list of a feature layer: "FID" (index 0), "GEOMETRY" (index 1),
// then the attribute fields in source order. Immutable once built, so it is
// shared between a layer, its cursors and their features on any thread.
class TZOBJECTS_EXPORT TEFields : public TERefBase
{
public:
    // Builds the list from an OGR feature definition.
    static TERefPtr<TEFields> FromDefinition(OGRFeatureDefnH definition);

    int GetFieldCount() const { return int(mFields.size()); }
    TERefPtr<TEField> GetField(int index) const;

    // Index of the named field, -1 when there is none. An exact match wins;
    // otherwise names are compared without case, as OGR does.
    int FindField(const TEString& name) const;

    // The host index of an OGR field index (OGR index + 2).
    static int HostIndexOfOgrIndex(int ogrIndex) { return ogrIndex + 2; }

    static TEField::FieldType FieldTypeOf(OGRFieldType type, OGRFieldSubType subType);

private:
    std::vector<TERefPtr<TEField>> mFields;
    std::unordered_map<TEString, int> mIndexByName;
};

} // namespace TZObjects
