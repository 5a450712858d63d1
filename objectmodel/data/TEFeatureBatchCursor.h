#pragma once

#include "data/TEFeature.h"
#include "data/TEHandlePool.h"

#include <gdal.h>
#include <ogr_recordbatch.h>

#include <string>
#include <vector>

namespace TZObjects {

// Walks the features a search found in batches of OGR's Arrow stream: the
// id, the fields the search asked for and the geometry as WKB, in columns,
// with no OGR feature made per feature. A point's coordinates are read
// straight from its WKB; a feature object is filled only for the rows that
// need one. Made by TEFeatureLayer::SearchBatches where the source gives the
// stream fast (GeoPackage among others). It owns its dataset handle, so it
// may be used on any one thread.
class TZOBJECTS_EXPORT TEFeatureBatchCursor : public TERefBase
{
public:
    // Opens the stream over layer (of the lent dataset), already filtered;
    // empty when a field asked for has a type this cursor does not read
    // (dates, binary, lists) or the stream cannot be opened. Without withIds
    // the stream leaves the ids out and filled features have none.
    static TERefPtr<TEFeatureBatchCursor> Open(TEHandlePool::Lease dataset, OGRLayerH layer,
                                               TERefPtr<TEFields> fields, bool withIds = true);
    ~TEFeatureBatchCursor() override;
    TEFeatureBatchCursor(const TEFeatureBatchCursor&) = delete;
    TEFeatureBatchCursor& operator=(const TEFeatureBatchCursor&) = delete;

    // Moves to the next batch; false after the last one or when the read
    // failed (GetError() then tells why).
    bool NextBatch();
    QString GetError() const { return mError; }
    // Rows of the current batch.
    int64_t GetRowCount() const { return mBatch.release ? mBatch.length : 0; }

    // The row's coordinates when its geometry is a point (2D, or with Z or
    // M, which are left out); false for any other or no geometry.
    bool GetPoint(int64_t row, double& x, double& y) const;
    // Appends the row's values of the fields read, as bytes that are equal
    // exactly when the values are (a null differs from every value).
    void AppendKey(int64_t row, std::string& key) const;
    // A feature of the layer's fields for FillFeature to fill.
    TERefPtr<TEFeature> MakeFeature() const;
    // Sets the feature's id, the fields read and its geometry from the row;
    // the other fields stay null.
    void FillFeature(int64_t row, TEFeature& feature) const;

private:
    struct Column
    {
        int child = -1;
        int ogrIndex = -1;
        // The Arrow format of the values: u (text), i, s, c, b, l, g, f.
        char format = 0;
    };

    TEFeatureBatchCursor(TEHandlePool::Lease dataset, OGRLayerH layer, TERefPtr<TEFields> fields);
    bool start(bool withIds);
    const ArrowArray* child(int index) const { return mBatch.children[index]; }
    static bool isNull(const ArrowArray* values, int64_t row);
    // The row's WKB, null when the row has no geometry.
    const unsigned char* wkb(int64_t row, size_t& size) const;

    TEHandlePool::Lease mLease;
    OGRLayerH mLayer = nullptr;
    TERefPtr<TEFields> mFields;
    ArrowArrayStream mStream{};
    ArrowArray mBatch{};
    std::vector<Column> mColumns;
    int mFidChild = -1;
    int mGeometryChild = -1;
    QString mError;
    mutable std::string mText;
};

} // namespace TZObjects
