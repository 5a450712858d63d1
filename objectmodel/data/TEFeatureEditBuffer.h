#pragma once

#include "data/TEFeature.h"

namespace TZObjects {

// One feature held in a layer's edit buffer: the operation waiting to be
// saved and the feature as it is now (for a deleted feature, as it was).
class TZOBJECTS_EXPORT TEFeatureEditBuffer : public TERefBase
{
public:
    enum EditOperation { EO_None = 0, EO_Added = 1, EO_Modified = 2, EO_Deleted = 3 };

    TEFeatureEditBuffer(EditOperation operation, TERefPtr<TEFeature> feature)
        : mOperation(operation), mFeature(std::move(feature))
    {
    }

    int edit_operation() const { return mOperation; }
    TERefPtr<TEFeature> GetFeature() const { return mFeature; }
    int GetFeatureId() const { return mFeature ? mFeature->GetId() : -1; }

private:
    EditOperation mOperation = EO_None;
    TERefPtr<TEFeature> mFeature;
};

} // namespace TZObjects
