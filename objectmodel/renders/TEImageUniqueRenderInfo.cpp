#include "renders/TEImageUniqueRenderInfo.h"

#include "data/TERasterProps.h"
#include "renders/TEFileFunc.h"

#include <QColor>
#include <QJsonArray>

#include <cmath>
#include <set>

namespace TZObjects {

TERefPtr<TEImageRenderInfo> TEImageUniqueRenderInfo::Clone() const
{
    return MakeRef<TEImageUniqueRenderInfo>(*this);
}

bool TEImageUniqueRenderInfo::AddFromRaster(TERasterProps* raster, int band, TEString* error)
{
    std::set<double> values;
    const bool read = ForEachValue(raster, band, [&values](double value) {
        values.insert(value);
        return int(values.size()) < MaxValueCount;
    }, error);
    if (!read)
        return false;
    mItems.clear();
    int i = 0;
    for (double value : values) {
        // Hues spread round the colour wheel, so neighbouring values differ.
        const QColor color = QColor::fromHsvF(std::fmod(i * 0.618033988749895, 1.0), 0.65, 0.9);
        mItems.push_back(Item{value, TEColor(color.red(), color.green(), color.blue())});
        ++i;
    }
    Reindex();
    return true;
}

QRgb TEImageUniqueRenderInfo::ColorOf(double value) const
{
    const auto found = mIndexByValue.find(value);
    return found == mIndexByValue.end() ? 0 : mItems[size_t(found->second)].color.GetColor();
}

void TEImageUniqueRenderInfo::AddValue(double value, const TEColor& color)
{
    mItems.push_back(Item{value, color});
    mIndexByValue.emplace(value, int(mItems.size()) - 1);
}

bool TEImageUniqueRenderInfo::GetItemColr(int index, TEColor* color) const
{
    if (!color || index < 0 || index >= GetItemCount())
        return false;
    *color = mItems[size_t(index)].color;
    return true;
}

bool TEImageUniqueRenderInfo::GetValue(int index, double& value) const
{
    if (index < 0 || index >= GetItemCount())
        return false;
    value = mItems[size_t(index)].value;
    return true;
}

void TEImageUniqueRenderInfo::SetColorInfo(int index, int r, int g, int b)
{
    if (index >= 0 && index < GetItemCount())
        mItems[size_t(index)].color = TEColor(r, g, b);
}

void TEImageUniqueRenderInfo::Reindex()
{
    mIndexByValue.clear();
    for (size_t i = 0; i < mItems.size(); ++i)
        mIndexByValue.emplace(mItems[i].value, int(i));
}

void TEImageUniqueRenderInfo::save(QJsonObject& json) const
{
    QJsonArray items;
    for (const Item& item : mItems) {
        QJsonObject itemJson;
        itemJson[QStringLiteral("value")] = item.value;
        itemJson[QStringLiteral("color")] = TEFileFunc::SaveColor(item.color);
        items.append(itemJson);
    }
    json[QStringLiteral("values")] = items;
}

bool TEImageUniqueRenderInfo::open(const QJsonObject& json, TEString* error)
{
    mItems.clear();
    if (!TEFileFunc::IsListOrMissing(json, "values", error))
        return false;
    for (const QJsonValue& value : json.value(QStringLiteral("values")).toArray()) {
        const QJsonObject itemJson = value.toObject();
        mItems.push_back(Item{itemJson.value(QStringLiteral("value")).toDouble(),
                              TEFileFunc::OpenColor(itemJson.value(QStringLiteral("color")))});
    }
    Reindex();
    return true;
}

} // namespace TZObjects
