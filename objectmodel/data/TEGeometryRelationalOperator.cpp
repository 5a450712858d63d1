#include "data/TEGeometryRelationalOperator.h"

#include "data/TEGeosContext.h"

#include <memory>

namespace TZObjects {

namespace {

// Owns a GEOS geometry of the current thread's context.
struct GeosGeometry
{
    GeosGeometry(GEOSContextHandle_t c, GEOSGeometry* g) : context(c), geometry(g) {}
    ~GeosGeometry()
    {
        if (geometry)
            GEOSGeom_destroy_r(context, geometry);
    }
    GeosGeometry(const GeosGeometry&) = delete;
    GeosGeometry& operator=(const GeosGeometry&) = delete;

    GEOSContextHandle_t context;
    GEOSGeometry* geometry;
};

// Two geometries converted in the current thread's context; both null-safe.
struct GeosPair
{
    GeosPair(const TEGeometry* a, const TEGeometry* b)
        : context(TEGeosContext::Current())
        , first(context, TEGeosContext::ToGeos(context, a))
        , second(context, TEGeosContext::ToGeos(context, b))
    {
    }
    bool IsComplete() const { return first.geometry && second.geometry; }

    GEOSContextHandle_t context;
    GeosGeometry first;
    GeosGeometry second;
};

bool isAreal(GEOSContextHandle_t context, const GEOSGeometry* geometry)
{
    return GEOSGeom_getDimensions_r(context, geometry) == 2;
}

} // namespace

bool TEGeometryRelationalOperator::IsIntersect(const TEGeometry* a, const TEGeometry* b, double tolerance)
{
    const GeosPair pair(a, b);
    if (!pair.IsComplete())
        return false;
    GEOSContextHandle_t context = pair.context;
    if (tolerance <= 0.0)
        return GEOSIntersects_r(context, pair.first.geometry, pair.second.geometry) == 1;
    return GEOSDistanceWithin_r(context, pair.first.geometry, pair.second.geometry, tolerance) == 1;
}

bool TEGeometryRelationalOperator::IsTouches(const TEGeometry* a, const TEGeometry* b, double tolerance)
{
    const GeosPair pair(a, b);
    if (!pair.IsComplete())
        return false;
    GEOSContextHandle_t context = pair.context;
    const GEOSGeometry* ga = pair.first.geometry;
    const GEOSGeometry* gb = pair.second.geometry;
    if (tolerance <= 0.0)
        return GEOSTouches_r(context, ga, gb) == 1;
    if (GEOSDistanceWithin_r(context, ga, gb, tolerance) != 1)
        return false;
    if (isAreal(context, ga) && isAreal(context, gb)) {
        // Shrink both by the tolerance: neighbours (even with small gaps or
        // overlaps along the border) fall apart, real overlaps remain.
        GeosGeometry sa(context, GEOSBuffer_r(context, ga, -tolerance, 8));
        GeosGeometry sb(context, GEOSBuffer_r(context, gb, -tolerance, 8));
        if (!sa.geometry || !sb.geometry)
            return false;
        return GEOSIntersects_r(context, sa.geometry, sb.geometry) != 1;
    }
    // Points and lines: close enough, and no interior crossing.
    return GEOSRelatePattern_r(context, ga, gb, "T********") != 1;
}

} // namespace TZObjects
