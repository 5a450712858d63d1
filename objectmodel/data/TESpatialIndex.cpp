#include "data/TESpatialIndex.h"

#include <geos_c.h>

#include <algorithm>

namespace TZObjects {

namespace {

GEOSGeometry* boxOf(GEOSContextHandle_t context, const QRectF& r)
{
    return GEOSGeom_createRectangle_r(context, r.left(), r.top(), r.right(), r.bottom());
}

} // namespace

TESpatialIndex::TESpatialIndex(int nodeCapacity)
    : mContext(GEOS_init_r())
    , mTree(GEOSSTRtree_create_r(mContext, size_t(std::max(2, nodeCapacity))))
{
}

TESpatialIndex::~TESpatialIndex()
{
    GEOSSTRtree_destroy_r(mContext, mTree);
    for (const Item& item : mItems)
        GEOSGeom_destroy_r(mContext, item.envelope);
    GEOS_finish_r(mContext);
}

bool TESpatialIndex::Insert(int id, const QRectF& envelope)
{
    if (mBuilt)
        return false;
    GEOSGeometry* box = boxOf(mContext, envelope.normalized());
    if (!box)
        return false;
    mItems.push_back({id, box});
    // The tree keeps a pointer to the item: store the id by value inside it.
    GEOSSTRtree_insert_r(mContext, mTree, box, reinterpret_cast<void*>(static_cast<intptr_t>(id)));
    return true;
}

bool TESpatialIndex::Insert(int id, const TEGeometry* geometry)
{
    if (!geometry || geometry->IsEmpty())
        return false;
    return Insert(id, geometry->GetEnvelope());
}

std::vector<int> TESpatialIndex::Query(const QRectF& rect) const
{
    mBuilt = true;
    std::vector<int> ids;
    GEOSGeometry* box = boxOf(mContext, rect.normalized());
    if (!box)
        return ids;
    GEOSSTRtree_query_r(
        mContext, mTree, box,
        [](void* item, void* data) {
            static_cast<std::vector<int>*>(data)->push_back(int(reinterpret_cast<intptr_t>(item)));
        },
        &ids);
    GEOSGeom_destroy_r(mContext, box);
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::vector<int> TESpatialIndex::Query(const TEGeometry* geometry, double tolerance) const
{
    if (!geometry || geometry->IsEmpty())
        return {};
    return Query(geometry->GetEnvelope().adjusted(-tolerance, -tolerance, tolerance, tolerance));
}

} // namespace TZObjects
