#pragma once

#include "core/TEPoint.h"
#include "core/TZObjectsExport.h"

#include <ogr_api.h>

#include <atomic>
#include <cstddef>
#include <vector>

struct GEOSContextHandle_HS;
struct GEOSGeom_t;

namespace TZObjects {

class TEGeometry;

// Which polygons of a list are neighbours: two polygons are adjacent when
// they come within a tolerance of each other (a shared border, a shared
// corner, an overlap, or a gap no wider than the tolerance). Candidate pairs
// come from an STRtree over the envelopes grown by the tolerance, and each
// candidate is tested once against a prepared geometry, so the cost grows
// with the number of real neighbours rather than with the square of the
// polygon count.
//
// The object keeps its own GEOS context for the polygons it copies: use it
// from one thread at a time (any thread, and not necessarily the one that
// made it).
class TZOBJECTS_EXPORT TEPolygonAdjacency
{
public:
    explicit TEPolygonAdjacency(double tolerance = 0.001);
    ~TEPolygonAdjacency();
    TEPolygonAdjacency(const TEPolygonAdjacency&) = delete;
    TEPolygonAdjacency& operator=(const TEPolygonAdjacency&) = delete;

    void Reserve(std::size_t count);
    // Appends a polygon at the next position. A null, empty or unreadable
    // geometry still takes its position but has no neighbours.
    void Add(OGRGeometryH geometry);
    void Add(const TEGeometry* geometry);
    int GetCount() const { return int(mGeometries.size()); }

    // Finds every adjacent pair. False when keepRunning was cleared before
    // the end (the lists are then empty).
    bool Build(const std::atomic_bool* keepRunning = nullptr);

    // The neighbours of a position, ascending; valid after Build.
    const int* NeighboursBegin(int position) const { return mNeighbours.data() + mOffsets[std::size_t(position)]; }
    const int* NeighboursEnd(int position) const { return mNeighbours.data() + mOffsets[std::size_t(position) + 1]; }
    int GetNeighbourCount(int position) const
    {
        return mOffsets[std::size_t(position) + 1] - mOffsets[std::size_t(position)];
    }
    std::size_t GetPairCount() const { return mNeighbours.size() / 2; }

    // A point standing for the polygon: the area centroid of its ring with
    // the most points (the first such ring on a tie), taken over the fan of
    // triangles from the ring's first point. A ring of fewer than three
    // points or of zero area has no centroid; a point on the polygon's
    // surface stands in for it then. False (and the point untouched) only
    // for a geometry with no point at all.
    static bool RepresentativePoint(OGRGeometryH geometry, TEPoint& point);
    static bool RepresentativePoint(const TEGeometry* geometry, TEPoint& point);

private:
    double mTolerance;
    GEOSContextHandle_HS* mContext = nullptr;
    void* mReader = nullptr;
    std::vector<unsigned char> mWkb;
    std::vector<GEOSGeom_t*> mGeometries;
    std::vector<int> mOffsets{0};
    std::vector<int> mNeighbours;
};

} // namespace TZObjects
