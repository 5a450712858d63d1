#pragma once

#include "data/TEGeometry.h"

#include <QRectF>

#include <vector>

struct GEOSContextHandle_HS;
struct GEOSSTRtree_t;
struct GEOSGeom_t;

namespace TZObjects {

// A GEOS STRtree over feature envelopes: insert ids with their envelopes,
// then ask which ids' envelopes meet a rectangle (candidate neighbours).
// The tree is built on first query; no insert is accepted after that. Use
// one index from one thread at a time.
class TZOBJECTS_EXPORT TESpatialIndex
{
public:
    explicit TESpatialIndex(int nodeCapacity = 10);
    ~TESpatialIndex();
    TESpatialIndex(const TESpatialIndex&) = delete;
    TESpatialIndex& operator=(const TESpatialIndex&) = delete;

    // False once the tree has been queried.
    bool Insert(int id, const QRectF& envelope);
    bool Insert(int id, const TEGeometry* geometry);

    int GetCount() const { return int(mItems.size()); }

    // Ids whose envelope meets the rectangle, in ascending order.
    std::vector<int> Query(const QRectF& rect) const;
    // Ids whose envelope meets the rectangle grown by tolerance on every side.
    std::vector<int> Query(const TEGeometry* geometry, double tolerance = 0.0) const;

private:
    struct Item
    {
        int id = 0;
        GEOSGeom_t* envelope = nullptr;
    };

    GEOSContextHandle_HS* mContext = nullptr;
    GEOSSTRtree_t* mTree = nullptr;
    std::vector<Item> mItems;
    mutable bool mBuilt = false;
};

} // namespace TZObjects
