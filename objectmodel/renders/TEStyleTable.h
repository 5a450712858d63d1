#pragma once

#include "core/TEColor.h"
#include "core/TERefPtr.h"
#include "core/TEString.h"
#include "symbology/TEStyle.h"

#include <QJsonArray>

#include <unordered_map>
#include <vector>

namespace TZObjects {

// The styles of a render that holds many, each written once. Saving, every
// style is added and written as the reference it gets back: the index of a
// table entry, and its own colour when it equals that entry apart from its
// colour (the categories of one symbol coloured from a ramp share one
// entry). Opening, the table is read first and each reference makes a copy
// of its entry, recoloured when it carries a colour.
class TZOBJECTS_EXPORT TEStyleTable
{
public:
    struct Reference
    {
        // -1 for no style.
        int index = -1;
        bool recoloured = false;
        TEColor color;
    };

    // Writing: the reference a style is written as.
    Reference Add(const TEStyle* style);
    QJsonArray Save() const;

    // Reading: false with an error when an entry does not read.
    bool Open(const QJsonArray& json, TEString* error = nullptr);
    int Count() const { return int(mEntries.size()); }
    // A copy of the entry (null when out of range), recoloured when color is given.
    TERefPtr<TEStyle> Make(int index, const TEColor* color = nullptr) const;

private:
    struct Entry
    {
        TERefPtr<TEStyle> style;
        // A copy recoloured for each comparison, so that comparing costs no copy.
        TERefPtr<TEStyle> scratch;
    };

    bool Matches(Entry& entry, const TEStyle& style) const;

    std::vector<Entry> mEntries;
    std::unordered_map<const TEStyle*, int> mIndexByObject;
    // Entries compared first: the last matched ones, newest last. A style
    // matching none of them gets an entry of its own, so that adding stays
    // linear however many different styles a render has.
    std::vector<int> mRecent;
};

} // namespace TZObjects
