#include "TZStyleMemo.h"

#include <cstring>

using namespace TZObjects;

TZStyleMemo::TZStyleMemo(size_t limit)
    : mSlots(64)
    , mLimit(limit)
{
}

uint64_t TZStyleMemo::hashOf(const std::string& key)
{
    // Eight bytes at a time, each word mixed in by a multiply; keys are
    // short (a length and a value per field).
    constexpr uint64_t Mix = 0x9E3779B97F4A7C15ull;
    uint64_t hash = key.size() * Mix;
    size_t at = 0;
    for (; at + 8 <= key.size(); at += 8) {
        uint64_t word;
        std::memcpy(&word, key.data() + at, sizeof word);
        hash = (hash ^ word) * Mix;
        hash ^= hash >> 29;
    }
    if (at < key.size()) {
        uint64_t word = 0;
        std::memcpy(&word, key.data() + at, key.size() - at);
        hash = (hash ^ word) * Mix;
    }
    return hash ^ (hash >> 32);
}

size_t TZStyleMemo::slotOf(const std::string& key, uint64_t hash) const
{
    const size_t mask = mSlots.size() - 1;
    for (size_t at = hash & mask;; at = (at + 1) & mask) {
        const Slot& slot = mSlots[at];
        if (!slot.used || (slot.hash == hash && slot.key == key))
            return at;
    }
}

const TERefPtr<TEStyle>* TZStyleMemo::Find(const std::string& key) const
{
    const Slot& slot = mSlots[slotOf(key, hashOf(key))];
    return slot.used ? &slot.style : nullptr;
}

void TZStyleMemo::Insert(const std::string& key, TERefPtr<TEStyle> style)
{
    const uint64_t hash = hashOf(key);
    size_t at = slotOf(key, hash);
    if (!mSlots[at].used) {
        if (mCount >= mLimit)
            return;
        // At most half full, so that probes stay short.
        if (2 * (mCount + 1) > mSlots.size()) {
            grow();
            at = slotOf(key, hash);
        }
        mSlots[at].used = true;
        mSlots[at].hash = hash;
        mSlots[at].key = key;
        ++mCount;
    }
    mSlots[at].style = std::move(style);
}

void TZStyleMemo::grow()
{
    std::vector<Slot> old(mSlots.size() * 2);
    old.swap(mSlots);
    for (Slot& slot : old) {
        if (slot.used)
            mSlots[slotOf(slot.key, slot.hash)] = std::move(slot);
    }
}
