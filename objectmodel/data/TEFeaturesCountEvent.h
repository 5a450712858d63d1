#pragma once

#include "data/TEEvent.h"

namespace TZObjects {

// Raised when features are added to a layer or removed from it: carries the
// ids of the features concerned so a subscriber can update its counts.
class TZOBJECTS_EXPORT TEFeaturesCountEvent : public TEEvent
{
public:
    explicit TEFeaturesCountEvent(std::vector<int> ids) : mIds(std::move(ids)) {}

    int GetId() const override { return mIds.empty() ? -1 : mIds.front(); }
    std::vector<int> GetIds() const override { return mIds; }

private:
    std::vector<int> mIds;
};

} // namespace TZObjects
