#pragma once

#include "core/TERefBase.h"
#include "core/TERefPtr.h"

#include <QRectF>
#include <QString>

#include <ogr_api.h>

namespace TZObjects {

// A geometry owning an OGR geometry handle. Polygons and multi-polygons are
// made as TEGeoPolygon so their rings can be read directly.
class TZOBJECTS_EXPORT TEGeometry : public TERefBase
{
public:
    ~TEGeometry() override;
    TEGeometry(const TEGeometry&) = delete;
    TEGeometry& operator=(const TEGeometry&) = delete;

    // Takes ownership of the handle; an empty pointer for a null handle.
    static TERefPtr<TEGeometry> FromHandle(OGRGeometryH handle);
    // Copies the handle; the caller keeps its own.
    static TERefPtr<TEGeometry> FromHandleCopy(OGRGeometryH handle);
    // An empty pointer when the text is not valid WKT (error set if given).
    static TERefPtr<TEGeometry> FromWkt(const QString& wkt, QString* error = nullptr);

    OGRGeometryH GetHandle() const { return mHandle; }
    // The flat OGR geometry type (wkbPoint, wkbMultiPolygon, ...).
    OGRwkbGeometryType GetGeometryType() const;
    bool IsEmpty() const;
    QRectF GetEnvelope() const;
    QString ExportToWkt() const;
    TERefPtr<TEGeometry> Clone() const;

protected:
    explicit TEGeometry(OGRGeometryH handle) : mHandle(handle) {}

private:
    OGRGeometryH mHandle = nullptr;
};

} // namespace TZObjects
