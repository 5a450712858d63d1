#pragma once

#include "renders/TECategoryRenderItem.h"
#include "renders/TEFeatureRender.h"
#include "core/TEColor.h"

#include <unordered_map>
#include <vector>

namespace TZObjects {

// Gives each value of one attribute field (the expression) its own style.
// The category whose value is "<all other values>" is the catch-all: a
// feature whose value matches no other category takes its style while
// show-other-values is on, and is not drawn while it is off.
class TZOBJECTS_EXPORT TECategorizedSymbolRender : public TEFeatureRender
{
public:
    // Value and label of the catch-all category.
    static const wchar_t* const AllOtherValues;

    // Outline settings the panels gave every category's symbol.
    struct OutLineInfo
    {
        TEColor color = TEColor(0xFFB9B9B9u, 255);
        double width = 0.25;
        int unit = 1;

        bool operator==(const OutLineInfo& o) const
        {
            return color == o.color && width == o.width && unit == o.unit;
        }
    };

    explicit TECategorizedSymbolRender(const TEString& expression = TEString());
    TECategorizedSymbolRender(const TECategorizedSymbolRender& other);

    TEString GetType() const override { return L"UniqueValues"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                        bool ignoreScaleRange = false) const override;
    std::vector<TEString> GetUsedAttributes() const override;
    bool StyleFollowsUsedAttributes() const override { return true; }

    TEString GetExpression() const { return mExpression; }
    void SetExpression(const TEString& expression);

    // Appends a category; the first of several categories with one value is
    // the one that matches.
    void AddCategory(const TEString& value, const TEString& label, const TERefPtr<TEStyle>& style,
                     bool scaleFilter = false, const double& minScale = 0.0, const double& maxScale = 0.0);
    int GetItemCount() const { return int(mItems.size()); }
    // The category at index, or empty when out of range.
    TERefPtr<TECategoryRenderItem> GetCategoryRenderItem(int index) const;
    void RemoveCategory(int index);
    void RemoveAllCategories();
    // Style of the category with exactly this value, or empty.
    TERefPtr<TEStyle> GetStyle(const TEString& value) const;

    bool IsShowOtherValue() const { return mShowOtherValue; }
    void SetIsShowOtherValue(bool show) { mShowOtherValue = show; }
    OutLineInfo GetOutLineInfo() const { return mOutLine; }
    void SetOutLineInfo(const OutLineInfo& info) { mOutLine = info; }

    // The category a feature falls in, or null when none matches (the
    // catch-all is not considered here).
    virtual const TECategoryRenderItem* FindCategory(TEFeature* feature) const;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void VisitStyles(const StyleVisitor& visit) override;
    // Called whenever the category list changed as a whole.
    virtual void CategoriesChanged();
    // Called after one category was appended at index; keeps adding n
    // categories linear instead of rebuilding the lookup n times.
    virtual void CategoryAdded(int index);
    // Called whenever the expression changed (not from the constructor).
    virtual void ExpressionChanged() {}
    // Text of the feature's value that categories are matched against.
    virtual TEString FeatureKey(TEFeature* feature) const;

    const std::vector<TERefPtr<TECategoryRenderItem>>& Items() const { return mItems; }

private:
    // Reads the categories saved as columns with a table of shared styles.
    bool OpenCategoryTable(const QJsonValue& json, TEString* error);

    TEString mExpression;
    std::vector<TERefPtr<TECategoryRenderItem>> mItems;
    std::unordered_map<TEString, int> mIndexByValue;
    int mCatchAllIndex = -1;
    bool mShowOtherValue = true;
    OutLineInfo mOutLine;
};

} // namespace TZObjects
