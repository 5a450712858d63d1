#include "FourColorReference.h"

#include "data/TEGeoPolygon.h"
#include "data/TEGeometryRelationalOperator.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <stdexcept>

using namespace TZObjects;

namespace FourColorReference {

namespace {

struct Neighbour
{
    int position;
    float angle;
};

struct Node
{
    int position = 0;
    TEPoint point;
    std::vector<Neighbour> neighbours;
};

struct Record
{
    int node;
    double distance;
    int freeColours;
};

class Colouring
{
public:
    Colouring(const std::vector<TERefPtr<TEGeometry>>& polygons, int k) : mPolygons(polygons), mK(k) {}

    Result run()
    {
        buildTable();
        const int n = int(mPolygons.size());
        mColors.assign(std::size_t(n), -1);
        buildGraph();
        for (auto& entry : mNodes) {
            std::stable_sort(entry.second.neighbours.begin(), entry.second.neighbours.end(),
                             [](const Neighbour& a, const Neighbour& b) { return a.angle > b.angle; });
        }
        Result result;
        int p = 0;
        while (p < n) {
            if (mColors[std::size_t(p)] != -1) {
                ++p;
                continue;
            }
            if (!colourComponent(p)) {
                result.failed = true;
                break;
            }
            p = 1;
        }
        result.colors = mColors;
        result.neighbours.resize(std::size_t(n));
        for (const auto& entry : mNodes) {
            for (const Neighbour& neighbour : entry.second.neighbours)
                result.neighbours[std::size_t(entry.first)].push_back(neighbour.position);
        }
        for (const auto& entry : mRepairs) {
            result.repairs += entry.second;
            result.mostRepairs = std::max(result.mostRepairs, entry.second);
        }
        return result;
    }

private:
    void buildTable()
    {
        std::vector<int> order(static_cast<std::size_t>(mK));
        std::iota(order.begin(), order.end(), 0);
        do {
            for (int i = 1; i < mK; ++i)
                mTable[std::vector<int>(order.begin(), order.begin() + i)] =
                    std::vector<int>(order.begin() + i, order.end());
        } while (std::next_permutation(order.begin(), order.end()));
    }

    Node& node(int position)
    {
        auto found = mNodes.find(position);
        if (found == mNodes.end()) {
            Node fresh;
            fresh.position = position;
            fresh.point = representativePoint(mPolygons[std::size_t(position)].get());
            found = mNodes.emplace(position, fresh).first;
        }
        return found->second;
    }

    void buildGraph()
    {
        const int n = int(mPolygons.size());
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j) {
                if (i == j)
                    continue;
                bool adjacent = false;
                auto other = mNodes.find(j);
                if (other != mNodes.end()) {
                    for (const Neighbour& entry : other->second.neighbours)
                        adjacent = adjacent || entry.position == i;
                }
                if (!adjacent) {
                    adjacent = TEGeometryRelationalOperator::IsTouches(mPolygons[std::size_t(i)],
                                                                       mPolygons[std::size_t(j)], 0.001)
                        || TEGeometryRelationalOperator::IsIntersect(mPolygons[std::size_t(i)],
                                                                     mPolygons[std::size_t(j)], 0.001);
                }
                if (!adjacent)
                    continue;
                const TEPoint from = node(i).point;
                const TEPoint to = node(j).point;
                const TEPoint d = to - from;
                node(i).neighbours.push_back({j, float(std::atan2(d.Y(), d.X()) * 180.0 / M_PI)});
            }
        }
    }

    std::vector<int> usedColours(int position)
    {
        std::vector<int> used;
        for (const Neighbour& entry : node(position).neighbours) {
            const int c = mColors[std::size_t(entry.position)];
            if (c != -1 && std::find(used.begin(), used.end(), c) == used.end())
                used.push_back(c);
        }
        return used;
    }

    // The colour the node takes, or -1 when none is free.
    int chooseColour(int position)
    {
        const std::vector<int> used = usedColours(position);
        if (int(used.size()) >= mK)
            return -1;
        if (used.empty())
            return 0;
        return mTable.at(used).front();
    }

    int freeColours(int position) { return std::max(0, mK - int(usedColours(position).size())); }

    static double distance(const TEPoint& a, const TEPoint& b)
    {
        const double dx = b.X() - a.X();
        const double dy = b.Y() - a.Y();
        return std::sqrt(dx * dx + dy * dy);
    }

    int nextCandidate(const std::vector<int>& region)
    {
        const TEPoint seed = node(region.front()).point;
        std::vector<Record> records;
        for (int r : region) {
            for (const Neighbour& entry : node(r).neighbours) {
                if (mColors[std::size_t(entry.position)] == -1)
                    records.push_back({entry.position, distance(seed, node(entry.position).point),
                                       freeColours(entry.position)});
            }
        }
        if (records.empty())
            return -1;
        double sum = 0.0;
        double nearest = records.front().distance;
        for (const Record& record : records) {
            sum += record.distance;
            nearest = std::min(nearest, record.distance);
        }
        const double mean = sum / double(records.size());
        // The nearest record is never farther than the mean; rounding of
        // the mean must not drop it.
        records.erase(std::remove_if(records.begin(), records.end(),
                                     [&](const Record& r) { return r.distance > mean && r.distance > nearest; }),
                      records.end());
        std::sort(records.begin(), records.end(), [](const Record& a, const Record& b) {
            if (a.distance != b.distance)
                return a.distance < b.distance;
            if (a.freeColours != b.freeColours)
                return a.freeColours < b.freeColours;
            return a.node < b.node;
        });
        return records.front().node;
    }

    // -1 on success, else the node that found no colour.
    int grow(int seed)
    {
        if (mColors[std::size_t(seed)] == -1) {
            const int c = chooseColour(seed);
            if (c == -1)
                return seed;
            mColors[std::size_t(seed)] = c;
        }
        std::vector<int> region{seed};
        for (;;) {
            const int candidate = nextCandidate(region);
            if (candidate == -1)
                return -1;
            const int c = chooseColour(candidate);
            if (c == -1)
                return candidate;
            mColors[std::size_t(candidate)] = c;
            region.push_back(candidate);
        }
    }

    bool colourComponent(int seed)
    {
        int failed = grow(seed);
        while (failed != -1) {
            if (++mRepairs[failed] > 50)
                return false;
            std::vector<int> counts(std::size_t(mK), 0);
            for (const Neighbour& entry : node(failed).neighbours) {
                const int c = mColors[std::size_t(entry.position)];
                if (c != -1)
                    ++counts[std::size_t(c)];
            }
            std::vector<int> byCount(static_cast<std::size_t>(mK));
            std::iota(byCount.begin(), byCount.end(), 0);
            std::stable_sort(byCount.begin(), byCount.end(),
                             [&](int a, int b) { return counts[std::size_t(a)] < counts[std::size_t(b)]; });
            const int freed = byCount.front();
            for (const Neighbour& entry : node(failed).neighbours) {
                if (mColors[std::size_t(entry.position)] == freed)
                    mColors[std::size_t(entry.position)] = -1;
            }
            failed = grow(failed);
        }
        return true;
    }

    const std::vector<TERefPtr<TEGeometry>>& mPolygons;
    const int mK;
    std::map<std::vector<int>, std::vector<int>> mTable;
    std::map<int, Node> mNodes;
    std::vector<int> mColors;
    std::map<int, int> mRepairs;
};

} // namespace

TEPoint representativePoint(const TEGeometry* geometry)
{
    const auto* polygon = dynamic_cast<const TEGeoPolygon*>(geometry);
    TEGeoRing longest;
    if (polygon) {
        for (int r = 0; r < polygon->GetRingCount(); ++r) {
            TEGeoRing ring = polygon->GetRing(r);
            if (ring.GetPointCount() > longest.GetPointCount())
                longest = ring;
        }
    }
    const int m = longest.GetPointCount();
    if (m >= 3) {
        const TEPoint p0 = longest.GetPoint(0);
        double sumArea = 0.0;
        double sumX = 0.0;
        double sumY = 0.0;
        for (int j = 1; j <= m - 2; ++j) {
            const TEPoint pj = longest.GetPoint(j);
            const TEPoint pk = longest.GetPoint(j + 1);
            const TEPoint e1 = pj - p0;
            const TEPoint e2 = pk - p0;
            const double area = 0.5 * (e1.X() * e2.Y() - e1.Y() * e2.X());
            sumArea += area;
            sumX += (p0.X() + pj.X() + pk.X()) * area;
            sumY += (p0.Y() + pj.Y() + pk.Y()) * area;
        }
        if (sumArea != 0.0)
            return TEPoint(sumX / sumArea / 3.0, sumY / sumArea / 3.0);
    }
    // No centroid: a point on the polygon.
    if (geometry && geometry->GetHandle()) {
        OGRGeometryH inside = OGR_G_PointOnSurface(geometry->GetHandle());
        if (inside) {
            const bool found = !OGR_G_IsEmpty(inside);
            const TEPoint point(OGR_G_GetX(inside, 0), OGR_G_GetY(inside, 0));
            OGR_G_DestroyGeometry(inside);
            if (found)
                return point;
        }
    }
    return m > 0 ? longest.GetPoint(0) : TEPoint();
}

Result colour(const std::vector<TERefPtr<TEGeometry>>& polygons, int colorCount)
{
    return Colouring(polygons, colorCount).run();
}

} // namespace FourColorReference
