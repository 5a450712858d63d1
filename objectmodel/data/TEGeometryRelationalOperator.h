#pragma once

#include "data/TEGeometry.h"

namespace TZObjects {

// Spatial relations of two geometries through GEOS, with a tolerance in
// layer units for data whose shared borders do not meet exactly.
class TZOBJECTS_EXPORT TEGeometryRelationalOperator
{
public:
    // True when a and b meet within the tolerance without their interiors
    // overlapping by more than it: neighbours across a shared border or
    // corner. With tolerance 0 this is the exact DE-9IM "touches".
    static bool IsTouches(const TEGeometry* a, const TEGeometry* b, double tolerance = 0.0);
    // True when a and b are at most the tolerance apart (they intersect when
    // it is 0).
    static bool IsIntersect(const TEGeometry* a, const TEGeometry* b, double tolerance = 0.0);

    static bool IsTouches(const TERefPtr<TEGeometry>& a, const TERefPtr<TEGeometry>& b, double tolerance = 0.0)
    {
        return IsTouches(a.get(), b.get(), tolerance);
    }
    static bool IsIntersect(const TERefPtr<TEGeometry>& a, const TERefPtr<TEGeometry>& b, double tolerance = 0.0)
    {
        return IsIntersect(a.get(), b.get(), tolerance);
    }
};

} // namespace TZObjects
