#pragma once

#include "TZObjectsExport.h"

#include <atomic>

namespace TZObjects {

// Base of every shared object-model entity: an intrusive, thread-safe
// reference count. A new object starts with no references; the first
// TERefPtr (or AddRef) that takes it owns it.
class TZOBJECTS_EXPORT TERefBase
{
public:
    TERefBase() = default;
    TERefBase(const TERefBase&) : mRefCount(0) {}
    TERefBase& operator=(const TERefBase&) { return *this; }
    virtual ~TERefBase() = default;

    void AddRef() const { mRefCount.fetch_add(1, std::memory_order_relaxed); }

    // Drops one reference; destroys the object and returns true when that
    // was the last one.
    bool Release() const
    {
        if (mRefCount.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
            return true;
        }
        return false;
    }

    int RefCount() const { return mRefCount.load(std::memory_order_acquire); }

private:
    mutable std::atomic<int> mRefCount{0};
};

} // namespace TZObjects
