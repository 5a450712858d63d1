#include "data/TEFeatureCursor.h"

#include "data/TEGdalSupport.h"

#include <cpl_error.h>

namespace TZObjects {

TEFeatureCursor::TEFeatureCursor(GDALDatasetH dataset, OGRLayerH layer, TERefPtr<TEFields> fields, bool resultSet)
    : mDataset(dataset), mLayer(layer), mResultSet(resultSet), mFields(std::move(fields))
{
    if (mLayer)
        OGR_L_ResetReading(mLayer);
}

TEFeatureCursor::TEFeatureCursor(TEHandlePool::Lease dataset, OGRLayerH layer, TERefPtr<TEFields> fields,
                                 FailureText failureText)
    : mLease(std::move(dataset)), mLayer(layer), mFields(std::move(fields)), mFailureText(std::move(failureText))
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
    OGRFeatureH feature = ReadNext();
    if (!feature)
        return {};
    return MakeRef<TEFeature>(feature, mFields);
}

OGRFeatureH TEFeatureCursor::ReadNext()
{
    if (!mError.isEmpty())
        return nullptr;
    // The end of the features and a failed read both give null; only the
    // error state tells them apart.
    CPLErrorReset();
    OGRFeatureH feature = OGR_L_GetNextFeature(mLayer);
    while (feature && mSkipWithoutGeometry) {
        OGRGeometryH geometry = OGR_F_GetGeometryRef(feature);
        if (geometry && !OGR_G_IsEmpty(geometry))
            break;
        OGR_F_Destroy(feature);
        feature = OGR_L_GetNextFeature(mLayer);
    }
    if (feature || CPLGetLastErrorType() < CE_Failure)
        return feature;
    const QString gdalError = TEGdalSupport::LastError(QStringLiteral("read error"));
    mError = mFailureText ? mFailureText(gdalError) : gdalError;
    // The layer belongs to the dataset, which goes now; the destructor
    // then leaves both alone.
    mLease.invalidate();
    return nullptr;
}

TERefPtr<TEFeature> TEFeatureCursor::NextFeature(TERefPtr<TEFeature> reused)
{
    if (!mLayer || !reused || reused->RefCount() != 1 || reused->GetFields() != mFields)
        return NextFeature();
    OGRFeatureH feature = ReadNext();
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
    return ReadNext();
}

TERefPtr<TEFields> TEFeatureCursor::GetFields() const
{
    if (mLayer || mFeatures.empty())
        return mFields;
    return mFeatures.front()->GetFields();
}

} // namespace TZObjects
