#pragma once

#include "core/TEPoint.h"
#include "core/TERefPtr.h"
#include "data/TEGeometry.h"

#include <vector>

// A literal, slow colouring of polygons by neighbours, step by step as the
// four-colour page is meant to work: every ordered pair tested with the
// touch and intersect relations, the free-colour table built from all k!
// orderings, full candidate records filtered by the mean distance and sorted
// (nearest, then fewest free colours, then lowest position), the repair step
// with its limit, and the rescan from position 1 after each component. The
// fast job must give exactly the same colours.
namespace FourColorReference {

struct Result
{
    std::vector<int> colors;  // per position, -1 uncoloured
    bool failed = false;
    int repairs = 0;          // repairs made in all
    int mostRepairs = 0;      // repairs of the most repaired node
    // Neighbour positions per position, in the order colouring reads them.
    std::vector<std::vector<int>> neighbours;
};

TZObjects::TEPoint representativePoint(const TZObjects::TEGeometry* geometry);
Result colour(const std::vector<TZObjects::TERefPtr<TZObjects::TEGeometry>>& polygons, int colorCount);

} // namespace FourColorReference
