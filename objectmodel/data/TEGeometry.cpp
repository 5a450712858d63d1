#include "data/TEGeometry.h"

#include "data/TEGeoPolygon.h"

#include <cpl_conv.h>
#include <cpl_error.h>

namespace TZObjects {

TEGeometry::~TEGeometry()
{
    if (mHandle)
        OGR_G_DestroyGeometry(mHandle);
}

TERefPtr<TEGeometry> TEGeometry::FromHandle(OGRGeometryH handle)
{
    if (!handle)
        return {};
    const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(handle));
    if (type == wkbPolygon || type == wkbMultiPolygon)
        return TERefPtr<TEGeometry>(new TEGeoPolygon(handle));
    return TERefPtr<TEGeometry>(new TEGeometry(handle));
}

TERefPtr<TEGeometry> TEGeometry::FromHandleCopy(OGRGeometryH handle)
{
    return handle ? FromHandle(OGR_G_Clone(handle)) : TERefPtr<TEGeometry>();
}

TERefPtr<TEGeometry> TEGeometry::FromWkt(const QString& wkt, QString* error)
{
    QByteArray text = wkt.toUtf8();
    char* cursor = text.data();
    OGRGeometryH handle = nullptr;
    if (OGR_G_CreateFromWkt(&cursor, nullptr, &handle) != OGRERR_NONE || !handle) {
        if (error)
            *error = QStringLiteral("Invalid WKT geometry: %1").arg(wkt.left(80));
        return {};
    }
    return FromHandle(handle);
}

OGRwkbGeometryType TEGeometry::GetGeometryType() const
{
    return wkbFlatten(OGR_G_GetGeometryType(mHandle));
}

bool TEGeometry::IsEmpty() const
{
    return OGR_G_IsEmpty(mHandle);
}

QRectF TEGeometry::GetEnvelope() const
{
    OGREnvelope envelope;
    OGR_G_GetEnvelope(mHandle, &envelope);
    return QRectF(QPointF(envelope.MinX, envelope.MinY), QPointF(envelope.MaxX, envelope.MaxY));
}

QString TEGeometry::ExportToWkt() const
{
    char* wkt = nullptr;
    if (OGR_G_ExportToIsoWkt(mHandle, &wkt) != OGRERR_NONE) {
        CPLFree(wkt);
        return {};
    }
    QString text = QString::fromUtf8(wkt);
    CPLFree(wkt);
    return text;
}

TERefPtr<TEGeometry> TEGeometry::Clone() const
{
    return FromHandleCopy(mHandle);
}

} // namespace TZObjects
