#include "data/TEPolygonAdjacency.h"

#include "data/TEGeometry.h"

#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace TZObjects {

namespace {

constexpr int CancelCheckInterval = 256;

// Calls visit(ring) for every ring of every part of a polygon or
// multi-polygon: each part's exterior ring first, then its holes.
template <class Visit>
void forEachRing(OGRGeometryH geometry, Visit visit)
{
    const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
    if (type != wkbPolygon && type != wkbMultiPolygon)
        return;
    const bool multi = type == wkbMultiPolygon;
    const int parts = multi ? OGR_G_GetGeometryCount(geometry) : 1;
    for (int p = 0; p < parts; ++p) {
        OGRGeometryH polygon = multi ? OGR_G_GetGeometryRef(geometry, p) : geometry;
        const int rings = OGR_G_GetGeometryCount(polygon);
        for (int r = 0; r < rings; ++r)
            visit(OGR_G_GetGeometryRef(polygon, r));
    }
}

bool pointOnSurface(OGRGeometryH geometry, TEPoint& point)
{
    OGRGeometryH inside = OGR_G_PointOnSurface(geometry);
    if (!inside)
        return false;
    const bool found = !OGR_G_IsEmpty(inside) && std::isfinite(OGR_G_GetX(inside, 0))
        && std::isfinite(OGR_G_GetY(inside, 0));
    if (found)
        point = TEPoint(OGR_G_GetX(inside, 0), OGR_G_GetY(inside, 0));
    OGR_G_DestroyGeometry(inside);
    return found;
}

} // namespace

TEPolygonAdjacency::TEPolygonAdjacency(double tolerance)
    : mTolerance(tolerance)
    , mContext(GEOS_init_r())
    , mReader(GEOSWKBReader_create_r(mContext))
{
}

TEPolygonAdjacency::~TEPolygonAdjacency()
{
    for (GEOSGeometry* geometry : mGeometries) {
        if (geometry)
            GEOSGeom_destroy_r(mContext, geometry);
    }
    GEOSWKBReader_destroy_r(mContext, static_cast<GEOSWKBReader*>(mReader));
    GEOS_finish_r(mContext);
}

void TEPolygonAdjacency::Reserve(std::size_t count)
{
    mGeometries.reserve(count);
}

void TEPolygonAdjacency::Add(OGRGeometryH geometry)
{
    GEOSGeometry* converted = nullptr;
    if (geometry && !OGR_G_IsEmpty(geometry)) {
        const int size = OGR_G_WkbSize(geometry);
        if (size > 0) {
            mWkb.resize(std::size_t(size));
            if (OGR_G_ExportToIsoWkb(geometry, wkbNDR, mWkb.data()) == OGRERR_NONE)
                converted = GEOSWKBReader_read_r(mContext, static_cast<GEOSWKBReader*>(mReader), mWkb.data(),
                                                 mWkb.size());
        }
    }
    mGeometries.push_back(converted);
}

void TEPolygonAdjacency::Add(const TEGeometry* geometry)
{
    Add(geometry ? geometry->GetHandle() : nullptr);
}

bool TEPolygonAdjacency::Build(const std::atomic_bool* keepRunning)
{
    const int count = GetCount();
    mOffsets.assign(std::size_t(count) + 1, 0);
    mNeighbours.clear();

    GEOSSTRtree* tree = GEOSSTRtree_create_r(mContext, 10);
    for (int i = 0; i < count; ++i) {
        if (mGeometries[std::size_t(i)])
            GEOSSTRtree_insert_r(mContext, tree, mGeometries[std::size_t(i)],
                                 reinterpret_cast<void*>(static_cast<intptr_t>(i)));
    }

    // Pairs (i, j) with i < j, found in ascending i and, within one i, in
    // ascending j: filling the lists in this order leaves each ascending.
    std::vector<std::pair<int, int>> pairs;
    pairs.reserve(std::size_t(count) * 3);
    struct Query
    {
        int self;
        std::vector<int> found;
    } query;
    bool cancelled = false;
    for (int i = 0; i < count; ++i) {
        if (i % CancelCheckInterval == 0 && keepRunning && !keepRunning->load()) {
            cancelled = true;
            break;
        }
        const GEOSGeometry* geometry = mGeometries[std::size_t(i)];
        if (!geometry)
            continue;
        double minX = 0, minY = 0, maxX = 0, maxY = 0;
        if (!GEOSGeom_getXMin_r(mContext, geometry, &minX) || !GEOSGeom_getYMin_r(mContext, geometry, &minY)
            || !GEOSGeom_getXMax_r(mContext, geometry, &maxX) || !GEOSGeom_getYMax_r(mContext, geometry, &maxY))
            continue;
        GEOSGeometry* box = GEOSGeom_createRectangle_r(mContext, minX - mTolerance, minY - mTolerance,
                                                       maxX + mTolerance, maxY + mTolerance);
        if (!box)
            continue;
        query.self = i;
        query.found.clear();
        GEOSSTRtree_query_r(
            mContext, tree, box,
            [](void* item, void* data) {
                auto* q = static_cast<Query*>(data);
                const int j = int(reinterpret_cast<intptr_t>(item));
                // Each unordered pair is tested once, from its lower position.
                if (j > q->self)
                    q->found.push_back(j);
            },
            &query);
        GEOSGeom_destroy_r(mContext, box);
        if (query.found.empty())
            continue;
        std::sort(query.found.begin(), query.found.end());
        const GEOSPreparedGeometry* prepared = GEOSPrepare_r(mContext, geometry);
        if (!prepared)
            continue;
        for (int j : query.found) {
            // Within the tolerance (inclusive): touching, overlapping or
            // separated by no more than it.
            if (GEOSPreparedDistanceWithin_r(mContext, prepared, mGeometries[std::size_t(j)], mTolerance) == 1)
                pairs.emplace_back(i, j);
        }
        GEOSPreparedGeom_destroy_r(mContext, prepared);
    }
    GEOSSTRtree_destroy_r(mContext, tree);
    if (cancelled) {
        mOffsets.assign(std::size_t(count) + 1, 0);
        return false;
    }

    for (const auto& pair : pairs) {
        ++mOffsets[std::size_t(pair.first) + 1];
        ++mOffsets[std::size_t(pair.second) + 1];
    }
    for (int i = 0; i < count; ++i)
        mOffsets[std::size_t(i) + 1] += mOffsets[std::size_t(i)];
    mNeighbours.resize(pairs.size() * 2);
    std::vector<int> next(mOffsets.begin(), mOffsets.end() - 1);
    for (const auto& pair : pairs) {
        mNeighbours[std::size_t(next[std::size_t(pair.first)]++)] = pair.second;
        mNeighbours[std::size_t(next[std::size_t(pair.second)]++)] = pair.first;
    }
    return true;
}

bool TEPolygonAdjacency::RepresentativePoint(OGRGeometryH geometry, TEPoint& point)
{
    if (!geometry || OGR_G_IsEmpty(geometry))
        return false;
    OGRGeometryH longest = nullptr;
    int longestCount = 0;
    forEachRing(geometry, [&](OGRGeometryH ring) {
        const int count = OGR_G_GetPointCount(ring);
        if (count > longestCount) {
            longest = ring;
            longestCount = count;
        }
    });
    if (longest && longestCount >= 3) {
        const double x0 = OGR_G_GetX(longest, 0);
        const double y0 = OGR_G_GetY(longest, 0);
        double sumArea = 0.0;
        double sumX = 0.0;
        double sumY = 0.0;
        double xj = OGR_G_GetX(longest, 1);
        double yj = OGR_G_GetY(longest, 1);
        for (int j = 1; j + 1 < longestCount; ++j) {
            const double xk = OGR_G_GetX(longest, j + 1);
            const double yk = OGR_G_GetY(longest, j + 1);
            const double area = 0.5 * ((xj - x0) * (yk - y0) - (yj - y0) * (xk - x0));
            sumArea += area;
            sumX += (x0 + xj + xk) * area;
            sumY += (y0 + yj + yk) * area;
            xj = xk;
            yj = yk;
        }
        if (sumArea != 0.0) {
            const double x = sumX / sumArea / 3.0;
            const double y = sumY / sumArea / 3.0;
            if (std::isfinite(x) && std::isfinite(y)) {
                point = TEPoint(x, y);
                return true;
            }
        }
    }
    if (pointOnSurface(geometry, point))
        return true;
    if (longest && longestCount > 0) {
        point = TEPoint(OGR_G_GetX(longest, 0), OGR_G_GetY(longest, 0));
        return true;
    }
    return false;
}

bool TEPolygonAdjacency::RepresentativePoint(const TEGeometry* geometry, TEPoint& point)
{
    return RepresentativePoint(geometry ? geometry->GetHandle() : nullptr, point);
}

} // namespace TZObjects
