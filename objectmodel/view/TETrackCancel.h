#pragma once

#include "core/TZObjectsExport.h"

#include <atomic>

namespace TZObjects {

// A cancellation flag shared between the thread that draws and the thread
// that wants the drawing stopped. Drawing code polls IsCancelled between
// features and stops when it is set.
class TZOBJECTS_EXPORT TETrackCancel
{
public:
    TETrackCancel() = default;
    TETrackCancel(const TETrackCancel&) = delete;
    TETrackCancel& operator=(const TETrackCancel&) = delete;

    void Cancel() { mCancelled.store(true, std::memory_order_release); }
    bool IsCancelled() const { return mCancelled.load(std::memory_order_acquire); }
    // Clears the flag before a new drawing starts.
    void Reset() { mCancelled.store(false, std::memory_order_release); }

private:
    std::atomic<bool> mCancelled{false};
};

} // namespace TZObjects
