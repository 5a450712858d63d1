#include "renders/TECategorizedSymbolRender.h"

#include "data/TEFeature.h"
#include "renders/TEFileFunc.h"
#include "renders/TEStyleTable.h"

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
    // The categories as columns and their styles in a table: a render of
    // 100,000 categories coloured from one symbol writes that symbol once,
    // and a category costs a few short values instead of an object.
    TEStyleTable styles;
    QJsonArray values;
    QJsonArray labels;
    QJsonArray symbols;
    QJsonArray colors;
    QJsonArray hidden;
    QJsonArray scaleRanges;
    for (int i = 0; i < GetItemCount(); ++i) {
        const TECategoryRenderItem& item = *mItems[size_t(i)];
        const TEString value = item.GetValue();
        const TEString label = item.GetLabel();
        values.append(value.toQString());
        labels.append(label == value ? QJsonValue() : QJsonValue(label.toQString()));
        const TEStyleTable::Reference style = styles.Add(item.GetStyle().get());
        symbols.append(style.index < 0 ? QJsonValue() : QJsonValue(style.index));
        colors.append(style.recoloured ? TEFileFunc::SaveColor(style.color) : QJsonValue());
        if (!item.IsVisible())
            hidden.append(i);
        const TEScaleRange range = item.GetScaleRange();
        if (!(range == TEScaleRange()))
            scaleRanges.append(QJsonArray{i, range.IsEnabled(), range.GetMinimum(), range.GetMaximum()});
    }
    QJsonObject table;
    table[QStringLiteral("styles")] = styles.Save();
    table[QStringLiteral("values")] = values;
    table[QStringLiteral("labels")] = labels;
    table[QStringLiteral("symbols")] = symbols;
    table[QStringLiteral("colors")] = colors;
    table[QStringLiteral("hidden")] = hidden;
    table[QStringLiteral("scaleRanges")] = scaleRanges;
    json[QStringLiteral("categoryTable")] = table;
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
    if (json.contains(QStringLiteral("categoryTable"))) {
        ok = OpenCategoryTable(json.value(QStringLiteral("categoryTable")), error);
        CategoriesChanged();
        return ok;
    }
    // Files written before the table: one object per category, each with
    // its style in full.
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

bool TECategorizedSymbolRender::OpenCategoryTable(const QJsonValue& json, TEString* error)
{
    const auto fail = [error](const QString& text) {
        if (error)
            *error = TEString(text);
        return false;
    };
    if (!json.isObject())
        return fail(QStringLiteral("\"categoryTable\" must be an object"));
    const QJsonObject table = json.toObject();
    for (const char* key : {"styles", "values", "labels", "symbols", "colors", "hidden", "scaleRanges"}) {
        if (!TEFileFunc::IsListOrMissing(table, key, error))
            return false;
    }
    TEStyleTable styles;
    if (!styles.Open(table.value(QStringLiteral("styles")).toArray(), error))
        return false;
    const QJsonArray values = table.value(QStringLiteral("values")).toArray();
    const QJsonArray labels = table.value(QStringLiteral("labels")).toArray();
    const QJsonArray symbols = table.value(QStringLiteral("symbols")).toArray();
    const QJsonArray colors = table.value(QStringLiteral("colors")).toArray();
    const int count = values.size();
    if (labels.size() != count || symbols.size() != count || colors.size() != count)
        return fail(QStringLiteral("The category table's \"labels\", \"symbols\" and \"colors\" must have one entry per value"));
    mItems.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        const TEString value(values.at(i).toString());
        const QJsonValue label = labels.at(i);
        const QJsonValue symbol = symbols.at(i);
        TERefPtr<TEStyle> style;
        if (!symbol.isNull()) {
            const QJsonValue colorJson = colors.at(i);
            const TEColor color = TEFileFunc::OpenColor(colorJson);
            style = styles.Make(symbol.toInt(-1), colorJson.isString() ? &color : nullptr);
            if (!style)
                return fail(QStringLiteral("Category %1 refers to a style the table does not have").arg(i + 1));
        }
        mItems.push_back(MakeRef<TECategoryRenderItem>(value, label.isString() ? TEString(label.toString()) : value, style));
    }
    for (const QJsonValue& index : table.value(QStringLiteral("hidden")).toArray()) {
        if (const TERefPtr<TECategoryRenderItem> item = GetCategoryRenderItem(index.toInt(-1)))
            item->SetVisible(false);
    }
    for (const QJsonValue& entry : table.value(QStringLiteral("scaleRanges")).toArray()) {
        const QJsonArray range = entry.toArray();
        if (const TERefPtr<TECategoryRenderItem> item = GetCategoryRenderItem(range.at(0).toInt(-1)))
            item->SetScaleRange(TEScaleRange(range.at(1).toBool(), range.at(2).toDouble(), range.at(3).toDouble()));
    }
    return true;
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
