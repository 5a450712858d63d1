#include "core/TEKeyIndex.h"

#include <QtEndian>

#include <algorithm>

namespace TZObjects {

namespace {

// The first size (below 8) bytes at bytes as a little-endian word, the rest
// zero. Loads overlap rather than copying byte by byte: a key is looked up
// once per feature.
uint64_t partialWord(const char* bytes, size_t size)
{
    if (size >= 4) {
        const uint64_t low = qFromLittleEndian<quint32>(bytes);
        const uint64_t high = qFromLittleEndian<quint32>(bytes + size - 4);
        return low | high << (8 * (size - 4));
    }
    if (size == 0)
        return 0;
    const auto byte = [bytes](size_t at) { return uint64_t(uchar(bytes[at])) << (8 * at); };
    return byte(0) | byte(size / 2) | byte(size - 1);
}

uint64_t word(const char* bytes)
{
    return qFromLittleEndian<quint64>(bytes);
}

} // namespace

TEKeyIndex::Probe TEKeyIndex::probeOf(std::string_view key)
{
    // Eight bytes at a time, each word mixed in by a multiply: keys are
    // mostly short (a field value or two), and those are held as the two
    // words the hash reads.
    constexpr uint64_t Mix = 0x9E3779B97F4A7C15ull;
    Probe probe;
    const size_t size = key.size();
    if (size <= 16) {
        probe.words[0] = size >= 8 ? word(key.data()) : partialWord(key.data(), size);
        probe.words[1] = size >= 16 ? word(key.data() + 8) : size > 8 ? partialWord(key.data() + 8, size - 8) : 0;
        uint64_t hash = ((size + 1) * Mix ^ probe.words[0]) * Mix;
        hash = ((hash ^ (hash >> 29)) ^ probe.words[1]) * Mix;
        probe.hash = hash ^ (hash >> 32);
        return probe;
    }
    uint64_t hash = (size + 1) * Mix;
    size_t at = 0;
    for (; at + 8 <= size; at += 8) {
        hash = (hash ^ word(key.data() + at)) * Mix;
        hash ^= hash >> 29;
    }
    hash = (hash ^ partialWord(key.data() + at, size - at)) * Mix;
    probe.hash = hash ^ (hash >> 32);
    return probe;
}

size_t TEKeyIndex::slotOf(std::string_view key, const Probe& probe) const
{
    const bool inlined = key.size() <= sizeof(Slot::words);
    for (size_t at = probe.hash & mMask;; at = (at + 1) & mMask) {
        const Slot& slot = mSlots[at];
        if (!slot.number)
            return at;
        if (slot.size != key.size())
            continue;
        if (inlined ? slot.words[0] == probe.words[0] && slot.words[1] == probe.words[1]
                    : mKeys[slot.number - 1] == key)
            return at;
    }
}

size_t TEKeyIndex::Find(std::string_view key) const
{
    if (mSlots.empty())
        return None;
    const Slot& slot = mSlots[slotOf(key, probeOf(key))];
    return slot.number ? slot.number - 1 : None;
}

size_t TEKeyIndex::Add(std::string_view key, bool* added)
{
    // At most half full, so that probes stay short.
    if (2 * (mKeys.size() + 1) > mSlots.size())
        grow();
    const Probe probe = probeOf(key);
    Slot& slot = mSlots[slotOf(key, probe)];
    if (added)
        *added = !slot.number;
    if (slot.number)
        return slot.number - 1;
    mKeys.emplace_back(key);
    mHashes.push_back(probe.hash);
    slot.number = uint32_t(mKeys.size());
    slot.size = uint32_t(key.size());
    slot.words[0] = probe.words[0];
    slot.words[1] = probe.words[1];
    return mKeys.size() - 1;
}

void TEKeyIndex::grow()
{
    const size_t size = std::max<size_t>(64, mSlots.size() * 2);
    std::vector<Slot> table(size);
    mMask = size - 1;
    for (const Slot& slot : mSlots) {
        if (!slot.number)
            continue;
        size_t at = mHashes[slot.number - 1] & mMask;
        while (table[at].number)
            at = (at + 1) & mMask;
        table[at] = slot;
    }
    mSlots.swap(table);
}

} // namespace TZObjects
