#pragma once

#include "core/TEPoint.h"
#include "core/TZObjectsExport.h"

#include <vector>

namespace TZObjects {

// The points of one polygon ring, copied out of the geometry.
class TZOBJECTS_EXPORT TEGeoRing
{
public:
    TEGeoRing() = default;
    explicit TEGeoRing(std::vector<TEPoint> points) : mPoints(std::move(points)) {}

    int GetPointCount() const { return int(mPoints.size()); }
    TEPoint GetPoint(int index) const { return mPoints.at(size_t(index)); }
    const std::vector<TEPoint>& GetPoints() const { return mPoints; }

private:
    std::vector<TEPoint> mPoints;
};

} // namespace TZObjects
