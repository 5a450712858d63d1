#pragma once

#include "core/TZObjectsExport.h"

#include <ogr_recordbatch.h>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <thread>

namespace TZObjects {

// Hands out the batches of an Arrow stream whose batches hold at most
// batchSize rows. Once a first full batch shows that more follow, the
// stream is read on a thread of its own, a few batches ahead, so that the
// source's reading and the caller's work on the previous batch overlap;
// a stream of one batch never starts a thread. Until the reader is
// destroyed the stream belongs to it.
class TZOBJECTS_EXPORT TEArrowBatchReader
{
public:
    TEArrowBatchReader(ArrowArrayStream& stream, int64_t batchSize);
    ~TEArrowBatchReader();
    TEArrowBatchReader(const TEArrowBatchReader&) = delete;
    TEArrowBatchReader& operator=(const TEArrowBatchReader&) = delete;

    // Moves the next batch into batch; the caller releases it. False at
    // the end of the stream or when the stream failed (see Failed).
    bool Next(ArrowArray& batch);
    bool Failed() const;

private:
    // Reads one batch: 1 for a batch, 0 at the end, -1 on an error.
    int Read(ArrowArray& batch);
    void ReadAhead();

    static constexpr size_t kDepth = 3;

    ArrowArrayStream& mStream;
    const int64_t mBatchSize;
    bool mStarted = false;
    mutable std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<ArrowArray> mBatches;
    bool mEnded = false;
    bool mFailed = false;
    bool mStop = false;
    std::thread mThread;
};

} // namespace TZObjects
