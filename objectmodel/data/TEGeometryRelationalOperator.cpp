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

bool isAreal(GEOSContextHandle_t context, const GEOSGeometry* geometry)
{
    return GEOSGeom_getDimensions_r(context, geometry) == 2;
}

} // namespace

bool TEGeometryRelationalOperator::IsIntersect(const TEGeometry* a, const TEGeometry* b, double tolerance)
{
    GEOSContextHandle_t context = TEGeosContext::Current();
    GeosGeometry ga(context, TEGeosContext::ToGeos(context, a));
    GeosGeometry gb(context, TEGeosContext::ToGeos(context, b));
    if (!ga.geometry || !gb.geometry)
        return false;
    if (tolerance <= 0.0)
        return GEOSIntersects_r(context, ga.geometry, gb.geometry) == 1;
    return GEOSDistanceWithin_r(context, ga.geometry, gb.geometry, tolerance) == 1;
}

bool TEGeometryRelationalOperator::IsTouches(const TEGeometry* a, const TEGeometry* b, double tolerance)
{
    GEOSContextHandle_t context = TEGeosContext::Current();
    GeosGeometry ga(context, TEGeosContext::ToGeos(context, a));
    GeosGeometry gb(context, TEGeosContext::ToGeos(context, b));
    if (!ga.geometry || !gb.geometry)
        return false;
    if (tolerance <= 0.0)
        return GEOSTouches_r(context, ga.geometry, gb.geometry) == 1;
    if (GEOSDistanceWithin_r(context, ga.geometry, gb.geometry, tolerance) != 1)
        return false;
    if (isAreal(context, ga.geometry) && isAreal(context, gb.geometry)) {
        // Shrink both by the tolerance: neighbours (even with small gaps or
        // overlaps along the border) fall apart, real overlaps remain.
        GeosGeometry sa(context, GEOSBuffer_r(context, ga.geometry, -tolerance, 8));
        GeosGeometry sb(context, GEOSBuffer_r(context, gb.geometry, -tolerance, 8));
        if (!sa.geometry || !sb.geometry)
            return false;
        return GEOSIntersects_r(context, sa.geometry, sb.geometry) != 1;
    }
    // Points and lines: close enough, and no interior crossing.
    return GEOSRelatePattern_r(context, ga.geometry, gb.geometry, "T********") != 1;
}

} // namespace TZObjects
