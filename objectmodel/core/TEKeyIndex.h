#pragma once

#include "core/TZObjectsExport.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TZObjects {

// Numbers byte strings (keys) 0, 1, 2... in the order they are first
// added, for code that looks a key up once per feature of a large layer
// (value counts, a drawing's styles). An open-addressing table whose slots
// hold keys of up to 16 bytes themselves: a lookup costs one cache miss,
// not a bucket, a node and the key.
class TZOBJECTS_EXPORT TEKeyIndex
{
public:
    static constexpr size_t None = size_t(-1);

    // The number of key; None when it was never added.
    size_t Find(std::string_view key) const;
    // The number of key, the next one when it is new (added then tells so).
    size_t Add(std::string_view key, bool* added = nullptr);

    size_t Size() const { return mKeys.size(); }
    const std::string& Key(size_t number) const { return mKeys[number]; }

private:
    // A slot holds its key's number plus one (0: empty), the key's length
    // and, for a key of up to 16 bytes, the key itself, zero-padded.
    struct Slot
    {
        uint32_t number = 0;
        uint32_t size = 0;
        uint64_t words[2] = {0, 0};
    };

    // A key's hash and, for a key of up to 16 bytes, its slot words.
    struct Probe
    {
        uint64_t hash = 0;
        uint64_t words[2] = {0, 0};
    };

    static Probe probeOf(std::string_view key);
    // The slot holding key, or the empty one where it would go.
    size_t slotOf(std::string_view key, const Probe& probe) const;
    void grow();

    std::vector<std::string> mKeys;
    std::vector<uint64_t> mHashes;
    std::vector<Slot> mSlots;
    size_t mMask = 0;
};

} // namespace TZObjects
