#include "data/TEGeoPolygon.h"

namespace TZObjects {

namespace {

// Calls visit(ring) for every ring of every part, in ring-number order;
// stops early when visit returns false.
template <class Visit>
void forEachRing(OGRGeometryH geometry, Visit visit)
{
    const bool multi = wkbFlatten(OGR_G_GetGeometryType(geometry)) == wkbMultiPolygon;
    const int parts = multi ? OGR_G_GetGeometryCount(geometry) : 1;
    for (int p = 0; p < parts; ++p) {
        OGRGeometryH polygon = multi ? OGR_G_GetGeometryRef(geometry, p) : geometry;
        const int rings = OGR_G_GetGeometryCount(polygon);
        for (int r = 0; r < rings; ++r) {
            if (!visit(OGR_G_GetGeometryRef(polygon, r)))
                return;
        }
    }
}

} // namespace

int TEGeoPolygon::GetRingCount() const
{
    int count = 0;
    forEachRing(GetHandle(), [&](OGRGeometryH) { ++count; return true; });
    return count;
}

TEGeoRing TEGeoPolygon::GetRing(int index) const
{
    std::vector<TEPoint> points;
    int current = 0;
    forEachRing(GetHandle(), [&](OGRGeometryH ring) {
        if (current++ != index)
            return true;
        const int count = OGR_G_GetPointCount(ring);
        points.reserve(size_t(count));
        for (int i = 0; i < count; ++i)
            points.emplace_back(OGR_G_GetX(ring, i), OGR_G_GetY(ring, i));
        return false;
    });
    return TEGeoRing(std::move(points));
}

double TEGeoPolygon::GetArea() const
{
    return OGR_G_Area(GetHandle());
}

} // namespace TZObjects
