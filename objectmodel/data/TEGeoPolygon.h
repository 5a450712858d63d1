#pragma once

#include "data/TEGeoRing.h"
#include "data/TEGeometry.h"

namespace TZObjects {

// A polygon or multi-polygon. Rings are numbered across all parts: for each
// part its exterior ring first, then its holes.
class TZOBJECTS_EXPORT TEGeoPolygon : public TEGeometry
{
public:
    int GetRingCount() const;
    // An empty ring when the index is out of range.
    TEGeoRing GetRing(int index) const;
    double GetArea() const;

private:
    friend class TEGeometry;
    explicit TEGeoPolygon(OGRGeometryH handle) : TEGeometry(handle) {}
};

} // namespace TZObjects
