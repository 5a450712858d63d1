#include "data/TEEventSignal.h"

#include <vector>

namespace TZObjects {

void TEEventSignal::bind(const TEString& key, Handler handler)
{
    QMutexLocker lock(&mMutex);
    if (handler)
        mHandlers[key] = std::move(handler);
    else
        mHandlers.erase(key);
}

void TEEventSignal::unbind(const TEString& key)
{
    QMutexLocker lock(&mMutex);
    mHandlers.erase(key);
}

bool TEEventSignal::isBound(const TEString& key) const
{
    QMutexLocker lock(&mMutex);
    return mHandlers.count(key) != 0;
}

int TEEventSignal::handlerCount() const
{
    QMutexLocker lock(&mMutex);
    return int(mHandlers.size());
}

void TEEventSignal::raise(void* sender, TEEvent* event) const
{
    // Call a copy so a handler can unbind itself (or others) while it runs.
    std::vector<Handler> handlers;
    {
        QMutexLocker lock(&mMutex);
        handlers.reserve(mHandlers.size());
        for (const auto& entry : mHandlers)
            handlers.push_back(entry.second);
    }
    for (const Handler& handler : handlers) {
        try {
            handler(sender, event);
        } catch (...) {
            // A failing subscriber must not stop the others nor the edit.
        }
    }
}

} // namespace TZObjects
