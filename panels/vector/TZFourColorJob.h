#pragma once

#include "TZRenderExport.h"

#include "core/TEColor.h"
#include "core/TEPoint.h"
#include "core/TERefPtr.h"
#include "data/TEPolygonAdjacency.h"

#include <QString>

#include <atomic>
#include <map>
#include <memory>
#include <vector>

namespace TZObjects {
class TEFeatureLayer;
class TEGeometry;
class TEStyle;
}

// Colours the polygons of a layer so that no two neighbours share a colour.
// Features are numbered by position in query order. The neighbour graph
// links polygons within 0.001 of each other; each component is then grown
// as a region from a seed, always taking next the uncoloured neighbour of
// the region nearest to the seed (then the one with fewest free colours,
// then the lowest position), giving each node the highest colour its
// neighbours leave free (a node with no coloured neighbour takes 0). When a
// node has no free colour, its neighbours of its least used colour are
// uncoloured and the region grows again from it; a node repaired more than
// 50 times ends the job as a failure, leaving the colours reached so far.
//
// The steps run on whatever thread calls them (the panel runs them under the
// wait dialog); clearing the keep-running flag from another thread stops them.
class TZRENDER_EXPORT TZFourColorJob
{
public:
    enum class Result
    {
        Coloured,   // every reached node got a colour
        Failed,     // a node needed more than MaxRepairs repairs
        Cancelled,  // stopped through cancel()
        ReadError   // the layer could not be read
    };

    static constexpr double Tolerance = 0.001;
    static constexpr int MaxRepairs = 50;

    // palette holds the colour of each index; its size is the colour count.
    explicit TZFourColorJob(std::vector<TZObjects::TEColor> palette);
    ~TZFourColorJob();
    TZFourColorJob(const TZFourColorJob&) = delete;
    TZFourColorJob& operator=(const TZFourColorJob&) = delete;

    // Reads, adjoins and colours; the result of the last step that ran.
    Result run(const TZObjects::TEFeatureLayer* layer);

    // The steps of run, for callers that time or feed them separately.
    // readLayer keeps the layer's default style (drawn for uncoloured
    // features) and every feature's id and polygon in query order.
    Result readLayer(const TZObjects::TEFeatureLayer* layer);
    void addPolygon(int featureId, const TZObjects::TEGeometry* geometry);
    Result buildGraph();
    Result colour();

    void cancel() { mKeepRunning.store(false); }
    bool isCancelled() const { return !mKeepRunning.load(); }

    int colorCount() const { return int(mPalette.size()); }
    int featureCount() const { return int(mIds.size()); }
    // The colour index of each position, -1 for an uncoloured one.
    const std::vector<int>& colors() const { return mColors; }
    // Neighbour positions of a position, largest direction angle first.
    std::vector<int> neighbours(int position) const;
    std::size_t pairCount() const { return mAdjacency ? mAdjacency->GetPairCount() : 0; }
    // Feature id to palette colour for every coloured feature.
    std::map<int, TZObjects::TEColor> colorMap() const;
    TZObjects::TERefPtr<TZObjects::TEStyle> defaultStyle() const;
    QString errorText() const { return mErrorText; }

private:
    int chooseColour(int node);
    int freeColourCount(int node);
    // -1 when the region grew to its end, else the node that found no colour.
    int growRegion(int seed);
    bool colourComponent(int seed);
    int nextSeed();

    std::vector<TZObjects::TEColor> mPalette;
    std::atomic_bool mKeepRunning{true};
    TZObjects::TERefPtr<TZObjects::TEStyle> mDefaultStyle;
    QString mErrorText;

    std::vector<int> mIds;
    std::vector<TZObjects::TEPoint> mPoints;
    std::unique_ptr<TZObjects::TEPolygonAdjacency> mAdjacency;
    // Neighbour lists sorted by angle, in one array with offsets per node.
    std::vector<int> mOffsets;
    std::vector<int> mSorted;

    std::vector<int> mColors;
    std::vector<int> mRepairs;
    // Scratch: one mark per colour index, and the indexes marked.
    std::vector<unsigned char> mColourMarks;
    std::vector<int> mMarked;
    // Uncoloured-again positions below the scan pointer (min-heap).
    std::vector<int> mResetPositions;
    int mScan = 1;
};
