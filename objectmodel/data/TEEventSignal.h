#pragma once

#include "core/TEString.h"
#include "data/TEEvent.h"

#include <QMutex>

#include <functional>
#include <map>

namespace TZObjects {

// A named list of subscribers. bind() adds or replaces the handler under a
// key, unbind() removes it; raise() calls every handler with the sender and
// the event. Safe to use from several threads; handlers run on the thread
// that raises the event and may bind or unbind while being called.
class TZOBJECTS_EXPORT TEEventSignal
{
public:
    using Handler = std::function<void(void*, TEEvent*)>;

    void bind(const TEString& key, Handler handler);
    void unbind(const TEString& key);
    bool isBound(const TEString& key) const;
    int handlerCount() const;

    void raise(void* sender, TEEvent* event) const;

private:
    mutable QMutex mMutex;
    std::map<TEString, Handler> mHandlers;
};

} // namespace TZObjects
