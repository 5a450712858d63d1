#pragma once

#include "data/TEFeature.h"
#include "data/TEHandlePool.h"

#include <gdal.h>

#include <functional>
#include <vector>

namespace TZObjects {

// Walks the features a search found, in source order. A cursor over a file
// or database source owns its own GDAL dataset handle, so it may be used on
// any one thread while others read the same layer; a cursor over an
// in-memory layer walks a copy taken when the search ran.
class TZOBJECTS_EXPORT TEFeatureCursor : public TERefBase
{
public:
    // Takes ownership of the dataset; layer is one of its layers, already
    // filtered. When resultSet is true the layer came from ExecuteSQL and is
    // released through the dataset.
    TEFeatureCursor(GDALDatasetH dataset, OGRLayerH layer, TERefPtr<TEFields> fields, bool resultSet = false);
    // Turns GDAL's text of a failed read into the cursor's error.
    using FailureText = std::function<QString(const QString& gdalError)>;

    // Reads a layer of a dataset lent from a pool; the dataset goes back
    // when the cursor is destroyed. A read that fails drops the dataset
    // (and the pool's others: a lost server connection spoils them all).
    TEFeatureCursor(TEHandlePool::Lease dataset, OGRLayerH layer, TERefPtr<TEFields> fields,
                    FailureText failureText = {});
    // Walks the given features.
    explicit TEFeatureCursor(std::vector<TERefPtr<TEFeature>> features);
    ~TEFeatureCursor() override;
    TEFeatureCursor(const TEFeatureCursor&) = delete;
    TEFeatureCursor& operator=(const TEFeatureCursor&) = delete;

    // The next feature, or an empty pointer after the last one.
    TERefPtr<TEFeature> NextFeature();
    // The same, refilling reused (the feature this cursor gave before) in
    // place when nothing else holds it, instead of making a new object.
    TERefPtr<TEFeature> NextFeature(TERefPtr<TEFeature> reused);

    // The next raw OGR feature (caller destroys it), or null at the end; for
    // scans that read one field and want no per-feature allocation beyond OGR's.
    OGRFeatureH NextOgrFeature();

    // When set, features with no geometry, or an empty one, are skipped.
    void SetSkipFeaturesWithoutGeometry(bool skip) { mSkipWithoutGeometry = skip; }

    // Why reading stopped before the end (a lost server connection, a
    // failed query); empty while reading goes well and after the last
    // feature.
    QString GetError() const { return mError; }

    // The fields of the features (those of the first feature for a cursor
    // over given features; empty when there are none).
    TERefPtr<TEFields> GetFields() const;

private:
    OGRFeatureH ReadNext();

    GDALDatasetH mDataset = nullptr;
    TEHandlePool::Lease mLease;
    OGRLayerH mLayer = nullptr;
    bool mResultSet = false;
    bool mSkipWithoutGeometry = false;
    TERefPtr<TEFields> mFields;
    std::vector<TERefPtr<TEFeature>> mFeatures;
    size_t mNext = 0;
    FailureText mFailureText;
    QString mError;
};

} // namespace TZObjects
