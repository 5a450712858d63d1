#include "renders/TECategorizedSymbolRender.h"

#include "data/TEFeature.h"
#include "renders/TEFileFunc.h"

#include <QJsonArray>

namespace TZObjects {

const wchar_t* const TECategorizedSymbolRender::AllOtherValues = L"<all other values>";

TECategorizedSymbolRender::TECategorizedSymbolRender(const TEString& expression)
    : mExpression(expression)
{
}

TECategorizedSymbolRender::TECategorizedSymbolRender(const TECategorizedSymbolRender& other)
    : TEFeatureRender(other)
    , mExpression(other.mExpression)
    , mIndexByValue(other.mIndexByValue)
    , mCatchAllIndex(other.mCatchAllIndex)
    , mShowOtherValue(other.mShowOtherValue)
    , mOutLine(other.mOutLine)
{
    for (const TERefPtr<TECategoryRenderItem>& item : other.mItems)
        mItems.push_back(item->Clone());
}

void TECategorizedSymbolRender::SetExpression(const TEString& expression)
{
    mExpression = expression;
    ExpressionChanged();
}

TERefPtr<TEFeatureRender> TECategorizedSymbolRender::Clone() const
{
    return MakeRef<TECategorizedSymbolRender>(*this);
}

TERefPtr<TEStyle> TECategorizedSymbolRender::GetStyleByFeature(TEFeature* feature, const double& scale,
                                                               bool ignoreScaleRange) const
{
    if (!feature)
        return {};
    const TECategoryRenderItem* item = FindCategory(feature);
    if (!item) {
        if (!mShowOtherValue || mCatchAllIndex < 0)
            return {};
        item = mItems[size_t(mCatchAllIndex)].get();
    }
    return item->IsDrawnAt(scale, ignoreScaleRange) ? item->GetStyle() : TERefPtr<TEStyle>();
}

std::vector<TEString> TECategorizedSymbolRender::GetUsedAttributes() const
{
    std::vector<TEString> fields;
    AddUsedAttribute(fields, mExpression);
    for (const TEString& field : TEFeatureRender::GetUsedAttributes())
        AddUsedAttribute(fields, field);
    return fields;
}

void TECategorizedSymbolRender::AddCategory(const TEString& value, const TEString& label,
                                            const TERefPtr<TEStyle>& style, bool scaleFilter,
                                            const double& minScale, const double& maxScale)
{
    mItems.push_back(MakeRef<TECategoryRenderItem>(value, label, style,
                                                   TEScaleRange(scaleFilter, minScale, maxScale)));
    CategoryAdded(GetItemCount() - 1);
}

TERefPtr<TECategoryRenderItem> TECategorizedSymbolRender::GetCategoryRenderItem(int index) const
{
    if (index < 0 || index >= GetItemCount())
        return {};
    return mItems[size_t(index)];
}

void TECategorizedSymbolRender::RemoveCategory(int index)
{
    if (index < 0 || index >= GetItemCount())
        return;
    mItems.erase(mItems.begin() + index);
    CategoriesChanged();
}

void TECategorizedSymbolRender::RemoveAllCategories()
{
    mItems.clear();
    CategoriesChanged();
}

TERefPtr<TEStyle> TECategorizedSymbolRender::GetStyle(const TEString& value) const
{
    const auto found = mIndexByValue.find(value);
    if (found != mIndexByValue.end())
        return mItems[size_t(found->second)]->GetStyle();
    if (mCatchAllIndex >= 0 && value == AllOtherValues)
        return mItems[size_t(mCatchAllIndex)]->GetStyle();
    return {};
}

const TECategoryRenderItem* TECategorizedSymbolRender::FindCategory(TEFeature* feature) const
{
    const auto found = mIndexByValue.find(FeatureKey(feature));
    return found == mIndexByValue.end() ? nullptr : mItems[size_t(found->second)].get();
}

TEString TECategorizedSymbolRender::FeatureKey(TEFeature* feature) const
{
    return feature->GetValue(mExpression).ToString();
}

void TECategorizedSymbolRender::CategoriesChanged()
{
    mIndexByValue.clear();
    mCatchAllIndex = -1;
    for (int i = 0; i < GetItemCount(); ++i)
        TECategorizedSymbolRender::CategoryAdded(i);
}

void TECategorizedSymbolRender::CategoryAdded(int index)
{
    // The first category of a value wins, as does the first catch-all.
    const TEString value = mItems[size_t(index)]->GetValue();
    if (value == AllOtherValues) {
        if (mCatchAllIndex < 0)
            mCatchAllIndex = index;
        return;
    }
    mIndexByValue.emplace(value, index);
}

void TECategorizedSymbolRender::save(QJsonObject& json) const
{
    TEFeatureRender::save(json);
    json[QStringLiteral("expression")] = mExpression.toQString();
    json[QStringLiteral("showOtherValue")] = mShowOtherValue;
    QJsonObject outline;
    outline[QStringLiteral("color")] = TEFileFunc::SaveColor(mOutLine.color);
    outline[QStringLiteral("width")] = mOutLine.width;
    outline[QStringLiteral("unit")] = mOutLine.unit;
    json[QStringLiteral("outline")] = outline;
    QJsonArray categories;
    for (const TERefPtr<TECategoryRenderItem>& item : mItems) {
        QJsonObject category;
        category[QStringLiteral("value")] = item->GetValue().toQString();
        category[QStringLiteral("label")] = item->GetLabel().toQString();
        category[QStringLiteral("style")] = TEFileFunc::SaveStyle(item->GetStyle().get());
        category[QStringLiteral("visible")] = item->IsVisible();
        item->GetScaleRange().save(category);
        categories.append(category);
    }
    json[QStringLiteral("categories")] = categories;
}

bool TECategorizedSymbolRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFeatureRender::open(json, error))
        return false;
    SetExpression(TEString(json.value(QStringLiteral("expression")).toString()));
    mShowOtherValue = json.value(QStringLiteral("showOtherValue")).toBool(true);
    const QJsonObject outline = json.value(QStringLiteral("outline")).toObject();
    const OutLineInfo defaults;
    mOutLine.color = TEFileFunc::OpenColor(outline.value(QStringLiteral("color")), defaults.color);
    mOutLine.width = outline.value(QStringLiteral("width")).toDouble(defaults.width);
    mOutLine.unit = outline.value(QStringLiteral("unit")).toInt(defaults.unit);

    mItems.clear();
    bool ok = true;
    if (!TEFileFunc::IsListOrMissing(json, "categories", error))
        return false;
    for (const QJsonValue& value : json.value(QStringLiteral("categories")).toArray()) {
        const QJsonObject category = value.toObject();
        TERefPtr<TEStyle> style;
        ok = TEFileFunc::OpenStyle(category.value(QStringLiteral("style")), style, error) && ok;
        TEScaleRange range;
        range.open(category);
        auto item = MakeRef<TECategoryRenderItem>(TEString(category.value(QStringLiteral("value")).toString()),
                                                  TEString(category.value(QStringLiteral("label")).toString()),
                                                  style, range);
        item->SetVisible(category.value(QStringLiteral("visible")).toBool(true));
        mItems.push_back(item);
    }
    CategoriesChanged();
    return ok;
}

void TECategorizedSymbolRender::VisitStyles(const StyleVisitor& visit)
{
    for (const TERefPtr<TECategoryRenderItem>& item : mItems) {
        TERefPtr<TEStyle> style = item->GetStyle();
        visit(style);
        item->SetStyle(style);
    }
}

} // namespace TZObjects
