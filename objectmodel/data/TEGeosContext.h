#pragma once

#include "data/TEGeometry.h"

#include <geos_c.h>

namespace TZObjects {

// The calling thread's GEOS context (reentrant API), made on first use and
// finished when the thread ends, and conversions from OGR geometries.
class TZOBJECTS_EXPORT TEGeosContext
{
public:
    static GEOSContextHandle_t Current();

    // A new GEOS geometry (caller destroys it with GEOSGeom_destroy_r), or
    // null for an empty pointer or a geometry GEOS cannot read.
    static GEOSGeometry* ToGeos(GEOSContextHandle_t context, const TEGeometry* geometry);
};

} // namespace TZObjects
