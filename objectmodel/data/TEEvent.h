#pragma once

#include "core/TZObjectsExport.h"

#include <vector>

namespace TZObjects {

// Base of the events a layer raises through its TEEventSignal objects.
class TZOBJECTS_EXPORT TEEvent
{
public:
    virtual ~TEEvent() = default;

    // The first feature id the event concerns, -1 when it concerns none.
    virtual int GetId() const { return -1; }
    // Every feature id the event concerns.
    virtual std::vector<int> GetIds() const { return {}; }
};

} // namespace TZObjects
