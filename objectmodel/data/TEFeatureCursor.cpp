#include "data/TEFeatureCursor.h"

namespace TZObjects {

TEFeatureCursor::TEFeatureCursor(GDALDatasetH dataset, OGRLayerH layer, TERefPtr<TEFields> fields, bool resultSet)
    : mDataset(dataset), mLayer(layer), mResultSet(resultSet), mFields(std::move(fields))
{
    if (mLayer)
        OGR_L_ResetReading(mLayer);
}

TEFeatureCursor::TEFeatureCursor(TEHandlePool::Lease dataset, OGRLayerH layer, TERefPtr<TEFields> fields)
    : mLease(std::move(dataset)), mLayer(layer), mFields(std::move(fields))
{
    if (mLayer)
        OGR_L_ResetReading(mLayer);
}

TEFeatureCursor::TEFeatureCursor(std::vector<TERefPtr<TEFeature>> features)
    : mFeatures(std::move(features))
{
}

TEFeatureCursor::~TEFeatureCursor()
{
    // A pooled dataset goes back idle: ending the read lets go of the
    // statement (and its file lock) a half-read layer would hold.
    if (mLease && mLayer)
        OGR_L_ResetReading(mLayer);
    if (mResultSet && mDataset && mLayer)
        GDALDatasetReleaseResultSet(mDataset, mLayer);
    if (mDataset)
        GDALClose(mDataset);
}

TERefPtr<TEFeature> TEFeatureCursor::NextFeature()
{
    if (!mLayer) {
        if (mNext >= mFeatures.size())
            return {};
        return mFeatures[mNext++];
    }
    OGRFeatureH feature = OGR_L_GetNextFeature(mLayer);
    if (!feature)
        return {};
    return MakeRef<TEFeature>(feature, mFields);
}

TERefPtr<TEFeature> TEFeatureCursor::NextFeature(TERefPtr<TEFeature> reused)
{
    if (!mLayer || !reused || reused->RefCount() != 1 || reused->GetFields() != mFields)
        return NextFeature();
    OGRFeatureH feature = OGR_L_GetNextFeature(mLayer);
    if (!feature)
        return {};
    reused->ResetHandle(feature);
    return reused;
}

OGRFeatureH TEFeatureCursor::NextOgrFeature()
{
    if (!mLayer) {
        if (mNext >= mFeatures.size())
            return nullptr;
        return OGR_F_Clone(mFeatures[mNext++]->GetHandle());
    }
    return OGR_L_GetNextFeature(mLayer);
}

TERefPtr<TEFields> TEFeatureCursor::GetFields() const
{
    if (mLayer || mFeatures.empty())
        return mFields;
    return mFeatures.front()->GetFields();
}

} // namespace TZObjects
