#include "data/TEArrowBatchReader.h"

namespace TZObjects {

TEArrowBatchReader::TEArrowBatchReader(ArrowArrayStream& stream, int64_t batchSize)
    : mStream(stream), mBatchSize(batchSize)
{
}

TEArrowBatchReader::~TEArrowBatchReader()
{
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mStop = true;
    }
    mChanged.notify_all();
    if (mThread.joinable())
        mThread.join();
    for (ArrowArray& batch : mBatches)
        batch.release(&batch);
}

int TEArrowBatchReader::Read(ArrowArray& batch)
{
    batch = ArrowArray{};
    if (mStream.get_next(&mStream, &batch) != 0)
        return -1;
    return batch.release ? 1 : 0;
}

bool TEArrowBatchReader::Next(ArrowArray& batch)
{
    if (!mStarted) {
        mStarted = true;
        const int read = Read(batch);
        if (read <= 0) {
            mFailed = read < 0;
            mEnded = true;
            return false;
        }
        // A batch shorter than the limit is the last one.
        if (batch.length < mBatchSize)
            mEnded = true;
        else
            mThread = std::thread([this] { ReadAhead(); });
        return true;
    }
    std::unique_lock<std::mutex> lock(mMutex);
    mChanged.wait(lock, [this] { return !mBatches.empty() || mEnded; });
    if (mBatches.empty())
        return false;
    batch = mBatches.front();
    mBatches.pop_front();
    lock.unlock();
    mChanged.notify_all();
    return true;
}

bool TEArrowBatchReader::Failed() const
{
    std::lock_guard<std::mutex> lock(mMutex);
    return mFailed;
}

void TEArrowBatchReader::ReadAhead()
{
    for (;;) {
        ArrowArray batch{};
        const int read = Read(batch);
        std::unique_lock<std::mutex> lock(mMutex);
        if (read <= 0) {
            mFailed = read < 0;
            mEnded = true;
            lock.unlock();
            mChanged.notify_all();
            return;
        }
        mBatches.push_back(batch);
        lock.unlock();
        mChanged.notify_all();
        lock.lock();
        mChanged.wait(lock, [this] { return mBatches.size() < kDepth || mStop; });
        if (mStop) {
            mEnded = true;
            return;
        }
    }
}

} // namespace TZObjects
