#include "TZFourColorJob.h"

#include "data/TEFeatureLayer.h"
#include "data/TEGeometry.h"
#include "symbology/TEStyle.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <queue>
#include <tuple>

using namespace TZObjects;

namespace {

constexpr int CancelCheckInterval = 1024;

// A candidate for the next node of a region. The first in this order is
// the nearest to the seed, then the one with fewest free colours, then the
// lowest position.
struct Candidate
{
    double distance;
    int freeColours;
    int position;

    bool operator>(const Candidate& other) const
    {
        return std::tie(distance, freeColours, position)
            > std::tie(other.distance, other.freeColours, other.position);
    }
};

double distanceBetween(const TEPoint& a, const TEPoint& b)
{
    const double dx = b.X() - a.X();
    const double dy = b.Y() - a.Y();
    return std::sqrt(dx * dx + dy * dy);
}

} // namespace

TZFourColorJob::TZFourColorJob(std::vector<TEColor> palette)
    : mPalette(std::move(palette))
    , mColourMarks(mPalette.size(), 0)
{
}

TZFourColorJob::~TZFourColorJob() = default;

TZFourColorJob::Result TZFourColorJob::run(const TEFeatureLayer* layer)
{
    Result result = readLayer(layer);
    if (result == Result::Coloured)
        result = buildGraph();
    if (result == Result::Coloured)
        result = colour();
    return result;
}

TZFourColorJob::Result TZFourColorJob::readLayer(const TEFeatureLayer* layer)
{
    if (!layer) {
        mErrorText = QStringLiteral("There is no layer to read.");
        return Result::ReadError;
    }
    // Only the ids and the polygons are needed.
    TEQueryFilter filter;
    filter.SetSubFields({TEString(L"FID")});
    QString error;
    const TERefPtr<TEFeatureCursor> cursor = layer->Search(filter, &error);
    if (!cursor) {
        mErrorText = error;
        return Result::ReadError;
    }
    mDefaultStyle = layer->GetDefaultStyle();
    mAdjacency = std::make_unique<TEPolygonAdjacency>(Tolerance);
    mAdjacency->Reserve(std::size_t(std::max(0, layer->GetFeatureCount())));
    int read = 0;
    while (OGRFeatureH feature = cursor->NextOgrFeature()) {
        if (++read % CancelCheckInterval == 0 && isCancelled()) {
            OGR_F_Destroy(feature);
            return Result::Cancelled;
        }
        OGRGeometryH geometry = OGR_F_GetGeometryRef(feature);
        TEPoint point;
        TEPolygonAdjacency::RepresentativePoint(geometry, point);
        mIds.push_back(int(OGR_F_GetFID(feature)));
        mPoints.push_back(point);
        mAdjacency->Add(geometry);
        OGR_F_Destroy(feature);
    }
    return isCancelled() ? Result::Cancelled : Result::Coloured;
}

void TZFourColorJob::addPolygon(int featureId, const TEGeometry* geometry)
{
    if (!mAdjacency)
        mAdjacency = std::make_unique<TEPolygonAdjacency>(Tolerance);
    TEPoint point;
    TEPolygonAdjacency::RepresentativePoint(geometry, point);
    mIds.push_back(featureId);
    mPoints.push_back(point);
    mAdjacency->Add(geometry);
}

TZFourColorJob::Result TZFourColorJob::buildGraph()
{
    if (!mAdjacency)
        mAdjacency = std::make_unique<TEPolygonAdjacency>(Tolerance);
    if (!mAdjacency->Build(&mKeepRunning))
        return Result::Cancelled;

    // Each list, ascending by position, is sorted by the direction from the
    // node to the neighbour, largest angle first; equal angles keep their
    // order. Representative points are always finite, so no angle is NaN.
    const int count = featureCount();
    mOffsets.assign(std::size_t(count) + 1, 0);
    for (int i = 0; i < count; ++i)
        mOffsets[std::size_t(i) + 1] = mOffsets[std::size_t(i)] + mAdjacency->GetNeighbourCount(i);
    mSorted.resize(std::size_t(mOffsets.back()));
    std::vector<std::pair<float, int>> byAngle;
    for (int i = 0; i < count; ++i) {
        byAngle.clear();
        const TEPoint& from = mPoints[std::size_t(i)];
        for (const int* j = mAdjacency->NeighboursBegin(i); j != mAdjacency->NeighboursEnd(i); ++j) {
            const TEPoint& to = mPoints[std::size_t(*j)];
            const float angle = float(std::atan2(to.Y() - from.Y(), to.X() - from.X()) * 180.0 / M_PI);
            byAngle.emplace_back(angle, *j);
        }
        std::stable_sort(byAngle.begin(), byAngle.end(),
                         [](const std::pair<float, int>& a, const std::pair<float, int>& b) { return a.first > b.first; });
        int* out = mSorted.data() + mOffsets[std::size_t(i)];
        for (const auto& entry : byAngle)
            *out++ = entry.second;
    }
    return isCancelled() ? Result::Cancelled : Result::Coloured;
}

std::vector<int> TZFourColorJob::neighbours(int position) const
{
    if (position < 0 || std::size_t(position) + 1 >= mOffsets.size())
        return {};
    return std::vector<int>(mSorted.begin() + mOffsets[std::size_t(position)],
                            mSorted.begin() + mOffsets[std::size_t(position) + 1]);
}

int TZFourColorJob::freeColourCount(int node)
{
    int used = 0;
    for (int i = mOffsets[std::size_t(node)]; i < mOffsets[std::size_t(node) + 1]; ++i) {
        const int c = mColors[std::size_t(mSorted[std::size_t(i)])];
        if (c >= 0 && !mColourMarks[std::size_t(c)]) {
            mColourMarks[std::size_t(c)] = 1;
            mMarked.push_back(c);
            ++used;
        }
    }
    for (int c : mMarked)
        mColourMarks[std::size_t(c)] = 0;
    mMarked.clear();
    return std::max(0, colorCount() - used);
}

int TZFourColorJob::chooseColour(int node)
{
    bool anyColoured = false;
    for (int i = mOffsets[std::size_t(node)]; i < mOffsets[std::size_t(node) + 1]; ++i) {
        const int c = mColors[std::size_t(mSorted[std::size_t(i)])];
        if (c >= 0 && !mColourMarks[std::size_t(c)]) {
            mColourMarks[std::size_t(c)] = 1;
            mMarked.push_back(c);
            anyColoured = true;
        }
    }
    // No coloured neighbour: colour 0. Otherwise the highest colour left
    // free, or none (-1) when every colour is taken.
    int chosen = anyColoured ? -1 : 0;
    if (anyColoured) {
        for (int c = colorCount() - 1; c >= 0; --c) {
            if (!mColourMarks[std::size_t(c)]) {
                chosen = c;
                break;
            }
        }
    }
    for (int c : mMarked)
        mColourMarks[std::size_t(c)] = 0;
    mMarked.clear();
    return chosen;
}

int TZFourColorJob::growRegion(int seed)
{
    if (mColors[std::size_t(seed)] < 0) {
        const int c = chooseColour(seed);
        if (c < 0)
            return seed;
        mColors[std::size_t(seed)] = c;
    }
    const TEPoint& origin = mPoints[std::size_t(seed)];
    // Candidates are the uncoloured neighbours of the region. A node's free
    // colours only fall while the region grows, and each fall pushes a new
    // entry, so an entry whose count no longer matches is stale.
    std::priority_queue<Candidate, std::vector<Candidate>, std::greater<Candidate>> queue;
    auto pushNeighbours = [&](int node) {
        for (int i = mOffsets[std::size_t(node)]; i < mOffsets[std::size_t(node) + 1]; ++i) {
            const int m = mSorted[std::size_t(i)];
            if (mColors[std::size_t(m)] < 0)
                queue.push({distanceBetween(origin, mPoints[std::size_t(m)]), freeColourCount(m), m});
        }
    };
    pushNeighbours(seed);
    int grown = 0;
    while (!queue.empty()) {
        const Candidate next = queue.top();
        queue.pop();
        const int node = next.position;
        if (mColors[std::size_t(node)] >= 0 || next.freeColours != freeColourCount(node))
            continue;
        if (++grown % CancelCheckInterval == 0 && isCancelled())
            return -1;
        const int c = chooseColour(node);
        if (c < 0)
            return node;
        mColors[std::size_t(node)] = c;
        pushNeighbours(node);
    }
    return -1;
}

bool TZFourColorJob::colourComponent(int seed)
{
    int failed = growRegion(seed);
    while (failed >= 0) {
        if (isCancelled())
            return false;
        if (++mRepairs[std::size_t(failed)] > MaxRepairs)
            return false;
        // Free the colour fewest neighbours carry (the lowest such index).
        std::vector<int> counts(std::size_t(colorCount()), 0);
        for (int i = mOffsets[std::size_t(failed)]; i < mOffsets[std::size_t(failed) + 1]; ++i) {
            const int c = mColors[std::size_t(mSorted[std::size_t(i)])];
            if (c >= 0)
                ++counts[std::size_t(c)];
        }
        const int freed = int(std::min_element(counts.begin(), counts.end()) - counts.begin());
        for (int i = mOffsets[std::size_t(failed)]; i < mOffsets[std::size_t(failed) + 1]; ++i) {
            const int m = mSorted[std::size_t(i)];
            if (mColors[std::size_t(m)] == freed) {
                mColors[std::size_t(m)] = -1;
                // Position 0 is never scanned again.
                if (m > 0 && m < mScan) {
                    mResetPositions.push_back(m);
                    std::push_heap(mResetPositions.begin(), mResetPositions.end(), std::greater<int>());
                }
            }
        }
        failed = growRegion(failed);
    }
    return !isCancelled();
}

int TZFourColorJob::nextSeed()
{
    // The lowest uncoloured position from 1: either one uncoloured again
    // behind the scan pointer, or the first one at or after it.
    while (!mResetPositions.empty() && mColors[std::size_t(mResetPositions.front())] >= 0) {
        std::pop_heap(mResetPositions.begin(), mResetPositions.end(), std::greater<int>());
        mResetPositions.pop_back();
    }
    const int count = featureCount();
    while (mScan < count && mColors[std::size_t(mScan)] >= 0)
        ++mScan;
    if (!mResetPositions.empty())
        return mResetPositions.front();
    return mScan < count ? mScan : -1;
}

TZFourColorJob::Result TZFourColorJob::colour()
{
    const int count = featureCount();
    if (mOffsets.size() != std::size_t(count) + 1) {
        const Result built = buildGraph();
        if (built != Result::Coloured)
            return built;
    }
    mColors.assign(std::size_t(count), -1);
    mRepairs.assign(std::size_t(count), 0);
    mResetPositions.clear();
    mScan = 1;
    if (colorCount() < 1)
        return count == 0 ? Result::Coloured : Result::Failed;

    int seed = count > 0 ? 0 : -1;
    while (seed >= 0) {
        if (!colourComponent(seed))
            return isCancelled() ? Result::Cancelled : Result::Failed;
        seed = nextSeed();
    }
    return isCancelled() ? Result::Cancelled : Result::Coloured;
}

std::map<int, TEColor> TZFourColorJob::colorMap() const
{
    std::map<int, TEColor> map;
    for (std::size_t p = 0; p < mColors.size(); ++p) {
        if (mColors[p] >= 0)
            map[mIds[p]] = mPalette[std::size_t(mColors[p])];
    }
    return map;
}

TERefPtr<TEStyle> TZFourColorJob::defaultStyle() const
{
    return mDefaultStyle;
}
