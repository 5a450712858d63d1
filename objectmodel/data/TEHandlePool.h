#pragma once

#include "core/TZObjectsExport.h"

#include <QMutex>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace TZObjects {

// Idle read handles on one data source (GDAL datasets or SQLite
// connections), kept open so that a query on a small layer does not pay for
// opening the source again. A handle is lent to one user (one thread) at a
// time and comes back when its lease ends; Clear closes the idle ones and
// makes those still lent close on return, after the source was written.
class TZOBJECTS_EXPORT TEHandlePool : public std::enable_shared_from_this<TEHandlePool>
{
public:
    using Opener = std::function<void*(QString* error)>;
    using Closer = void (*)(void*);

    // One lent handle; it goes back to its pool (or is closed) on destruction.
    class TZOBJECTS_EXPORT Lease
    {
    public:
        Lease() = default;
        Lease(Lease&& other) noexcept { *this = std::move(other); }
        Lease& operator=(Lease&& other) noexcept;
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;
        ~Lease() { reset(); }

        void* get() const { return mHandle; }
        explicit operator bool() const { return mHandle != nullptr; }
        // Gives the handle back now.
        void reset();
        // The handle is broken (its server connection was lost): it is
        // closed, and so is every other handle of the pool, idle or lent,
        // since they reached the same server; the next lease opens anew.
        void invalidate();

    private:
        friend class TEHandlePool;
        std::shared_ptr<TEHandlePool> mPool;
        void* mHandle = nullptr;
        unsigned mGeneration = 0;
    };

    TEHandlePool(Closer close, int maxIdle = 4) : mClose(close), mMaxIdle(maxIdle) {}
    ~TEHandlePool();
    TEHandlePool(const TEHandlePool&) = delete;
    TEHandlePool& operator=(const TEHandlePool&) = delete;

    // An idle handle, or a new one from open; an empty lease (and the
    // opener's error) when none can be opened.
    Lease Acquire(const Opener& open, QString* error = nullptr);
    void Clear();
    int IdleCount() const;

private:
    void GiveBack(void* handle, unsigned generation);

    Closer mClose;
    int mMaxIdle;
    mutable QMutex mMutex;
    std::vector<void*> mIdle;
    unsigned mGeneration = 0;
};

} // namespace TZObjects
