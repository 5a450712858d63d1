#pragma once

#include "core/TERefPtr.h"
#include "symbology/TEStyle.h"

#include <cstdint>
#include <string>
#include <vector>

// The styles a render chose for the distinct sets of values met so far in
// a drawing, by the bytes of those values (TEFeatureBatchCursor::AppendKey):
// an open-addressing table probed with one hash of the key, since a drawing
// asks it once per feature. It remembers up to a limit; past it, Insert
// does nothing and the render is asked again.
class TZStyleMemo
{
public:
    explicit TZStyleMemo(size_t limit);

    // The style remembered for key (which may be null: the render drew no
    // such feature); null when none is remembered.
    const TZObjects::TERefPtr<TZObjects::TEStyle>* Find(const std::string& key) const;
    void Insert(const std::string& key, TZObjects::TERefPtr<TZObjects::TEStyle> style);

private:
    struct Slot
    {
        uint64_t hash = 0;
        bool used = false;
        std::string key;
        TZObjects::TERefPtr<TZObjects::TEStyle> style;
    };

    static uint64_t hashOf(const std::string& key);
    // The slot holding key, or the empty one where it would go.
    size_t slotOf(const std::string& key, uint64_t hash) const;
    void grow();

    std::vector<Slot> mSlots;
    size_t mCount = 0;
    size_t mLimit;
};
