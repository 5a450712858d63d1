#pragma once

#include "data/TEFeature.h"

#include <mutex>

namespace TZObjects {

class TELayerEditBuffer;

// One feature held in a layer's edit buffer: the operation waiting to be
// saved and the feature as it is now (for a deleted feature, as it was).
// A feature keeps one of these until the edits are saved or discarded; a
// later edit of the feature updates it, so a pointer to it stays valid and
// reads may come from another thread while the edit is recorded.
class TZOBJECTS_EXPORT TEFeatureEditBuffer : public TERefBase
{
public:
    enum EditOperation { EO_None = 0, EO_Added = 1, EO_Modified = 2, EO_Deleted = 3 };

    TEFeatureEditBuffer(EditOperation operation, TERefPtr<TEFeature> feature)
        : mOperation(operation), mFeature(std::move(feature))
    {
    }

    int edit_operation() const
    {
        std::lock_guard<std::mutex> lock(mMutex);
        return mOperation;
    }
    TERefPtr<TEFeature> GetFeature() const
    {
        std::lock_guard<std::mutex> lock(mMutex);
        return mFeature;
    }
    int GetFeatureId() const
    {
        const TERefPtr<TEFeature> feature = GetFeature();
        return feature ? feature->GetId() : -1;
    }

private:
    friend class TELayerEditBuffer;
    // Recorded by the layer's edit buffer only.
    void Update(EditOperation operation, TERefPtr<TEFeature> feature)
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mOperation = operation;
        if (feature)
            mFeature = std::move(feature);
    }

    mutable std::mutex mMutex;
    EditOperation mOperation = EO_None;
    TERefPtr<TEFeature> mFeature;
};

} // namespace TZObjects
