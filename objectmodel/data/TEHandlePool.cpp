#include "data/TEHandlePool.h"

namespace TZObjects {

TEHandlePool::Lease& TEHandlePool::Lease::operator=(Lease&& other) noexcept
{
    if (this != &other) {
        reset();
        mPool = std::move(other.mPool);
        mHandle = other.mHandle;
        mGeneration = other.mGeneration;
        other.mHandle = nullptr;
    }
    return *this;
}

void TEHandlePool::Lease::reset()
{
    if (mHandle && mPool)
        mPool->GiveBack(mHandle, mGeneration);
    mHandle = nullptr;
    mPool.reset();
}

void TEHandlePool::Lease::invalidate()
{
    if (mPool)
        mPool->Clear();
    reset();
}

TEHandlePool::~TEHandlePool()
{
    for (void* handle : mIdle)
        mClose(handle);
}

TEHandlePool::Lease TEHandlePool::Acquire(const Opener& open, QString* error)
{
    Lease lease;
    {
        QMutexLocker lock(&mMutex);
        lease.mGeneration = mGeneration;
        if (!mIdle.empty()) {
            lease.mHandle = mIdle.back();
            mIdle.pop_back();
        }
    }
    if (!lease.mHandle)
        lease.mHandle = open(error);
    if (lease.mHandle)
        lease.mPool = shared_from_this();
    return lease;
}

void TEHandlePool::GiveBack(void* handle, unsigned generation)
{
    {
        QMutexLocker lock(&mMutex);
        if (generation == mGeneration && int(mIdle.size()) < mMaxIdle) {
            mIdle.push_back(handle);
            return;
        }
    }
    mClose(handle);
}

void TEHandlePool::Clear()
{
    std::vector<void*> idle;
    {
        QMutexLocker lock(&mMutex);
        ++mGeneration;
        idle.swap(mIdle);
    }
    for (void* handle : idle)
        mClose(handle);
}

int TEHandlePool::IdleCount() const
{
    QMutexLocker lock(&mMutex);
    return int(mIdle.size());
}

} // namespace TZObjects
