#include "renders/TEStyleTable.h"

#include "renders/TEFileFunc.h"

#include <algorithm>

namespace TZObjects {

namespace {

constexpr size_t RecentCount = 16;

} // namespace

TEStyleTable::Reference TEStyleTable::Add(const TEStyle* style)
{
    Reference reference;
    if (!style)
        return reference;
    const auto known = mIndexByObject.find(style);
    if (known != mIndexByObject.end()) {
        reference.index = known->second;
        return reference;
    }
    for (auto it = mRecent.rbegin(); it != mRecent.rend(); ++it) {
        Entry& entry = mEntries[size_t(*it)];
        if (!Matches(entry, *style))
            continue;
        reference.index = *it;
        reference.color = style->GetColor();
        // Without a colour of its own it is read back as the entry itself.
        reference.recoloured = !(reference.color == entry.style->GetColor()) || !style->Equals(*entry.style);
        // The match is tried first next time.
        std::rotate(it.base() - 1, it.base(), mRecent.end());
        return reference;
    }
    reference.index = Count();
    mEntries.push_back({TERefPtr<TEStyle>(const_cast<TEStyle*>(style)), style->Clone()});
    mIndexByObject.emplace(style, reference.index);
    if (mRecent.size() == RecentCount)
        mRecent.erase(mRecent.begin());
    mRecent.push_back(reference.index);
    return reference;
}

bool TEStyleTable::Matches(Entry& entry, const TEStyle& style) const
{
    if (entry.style->GetStyleClass() != style.GetStyleClass())
        return false;
    entry.scratch->SetColor(style.GetColor());
    return entry.scratch->Equals(style);
}

QJsonArray TEStyleTable::Save() const
{
    QJsonArray json;
    for (const Entry& entry : mEntries)
        json.append(TEFileFunc::SaveStyle(entry.style.get()));
    return json;
}

bool TEStyleTable::Open(const QJsonArray& json, TEString* error)
{
    mEntries.clear();
    mIndexByObject.clear();
    mRecent.clear();
    for (const QJsonValue& value : json) {
        TERefPtr<TEStyle> style;
        if (!TEFileFunc::OpenStyle(value, style, error))
            return false;
        if (!style) {
            if (error)
                *error = TEString(QStringLiteral("A shared style is empty"));
            return false;
        }
        mEntries.push_back({style, TERefPtr<TEStyle>()});
    }
    return true;
}

TERefPtr<TEStyle> TEStyleTable::Make(int index, const TEColor* color) const
{
    if (index < 0 || index >= Count())
        return {};
    TERefPtr<TEStyle> style = mEntries[size_t(index)].style->Clone();
    if (color)
        style->SetColor(*color);
    return style;
}

} // namespace TZObjects
