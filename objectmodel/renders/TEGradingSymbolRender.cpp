#include "renders/TEGradingSymbolRender.h"

#include "data/TEFeature.h"

#include <cmath>

namespace TZObjects {

TEGradingSymbolRender::TEGradingSymbolRender(const TEString& expression)
    : TECategorizedSymbolRender(expression)
{
}

TERefPtr<TEFeatureRender> TEGradingSymbolRender::Clone() const
{
    return MakeRef<TEGradingSymbolRender>(*this);
}

bool TEGradingSymbolRender::ParseRange(const TEString& range, double& lower, double& upper)
{
    TEString text = range;
    text.Replace(L"\xFF0C", L",");
    const std::vector<TEString> parts = text.split(L",");
    if (parts.size() != 2)
        return false;
    bool lowerOk = false;
    bool upperOk = false;
    lower = parts[0].ToDouble(&lowerOk);
    upper = parts[1].ToDouble(&upperOk);
    return lowerOk && upperOk;
}

const TECategoryRenderItem* TEGradingSymbolRender::FindCategory(TEFeature* feature) const
{
    const TEVariant value = feature->GetValue(GetExpression());
    if (value.IsNull())
        return nullptr;
    double number = 0.0;
    if (value.IsNumeric()) {
        number = value.GetDouble();
    } else {
        bool ok = false;
        number = value.ToString().ToDouble(&ok);
        if (!ok)
            return nullptr;
    }
    if (std::isnan(number))
        return nullptr;
    for (const Range& range : mRanges) {
        if (range.lower <= number && number <= range.upper)
            return Items()[size_t(range.item)].get();
    }
    return nullptr;
}

void TEGradingSymbolRender::CategoriesChanged()
{
    mRanges.clear();
    // The base calls its own CategoryAdded per item, not this override.
    TECategorizedSymbolRender::CategoriesChanged();
    for (int i = 0; i < GetItemCount(); ++i)
        AddRange(i);
}

void TEGradingSymbolRender::CategoryAdded(int index)
{
    TECategorizedSymbolRender::CategoryAdded(index);
    AddRange(index);
}

void TEGradingSymbolRender::AddRange(int index)
{
    Range range;
    range.item = index;
    if (ParseRange(Items()[size_t(index)]->GetValue(), range.lower, range.upper))
        mRanges.push_back(range);
}

void TEGradingSymbolRender::save(QJsonObject& json) const
{
    TECategorizedSymbolRender::save(json);
    json[QStringLiteral("level")] = mLevel;
}

bool TEGradingSymbolRender::open(const QJsonObject& json, TEString* error)
{
    mLevel = json.value(QStringLiteral("level")).toInt(0);
    return TECategorizedSymbolRender::open(json, error);
}

} // namespace TZObjects
