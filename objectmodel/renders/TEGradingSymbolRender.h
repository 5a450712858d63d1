#pragma once

#include "renders/TECategorizedSymbolRender.h"

namespace TZObjects {

// Graded classes of a numeric field: each category's value is a range, the
// lower and upper bound joined by "," (or the full-width comma U+FF0C),
// closed at both ends. A feature belongs to the first class, in category
// order, whose range holds its value, so a value on a bound shared by two
// classes goes to the earlier one. Values that are null or not numbers and
// values outside every class fall to the catch-all category.
class TZOBJECTS_EXPORT TEGradingSymbolRender : public TECategorizedSymbolRender
{
public:
    explicit TEGradingSymbolRender(const TEString& expression = TEString());
    TEGradingSymbolRender(const TEGradingSymbolRender& other) = default;

    TEString GetType() const override { return L"GradingSymbol"; }
    TERefPtr<TEFeatureRender> Clone() const override;

    int GetLevel() const { return mLevel; }
    void SetLevel(int level) { mLevel = level; }

    const TECategoryRenderItem* FindCategory(TEFeature* feature) const override;
    // Reads "lo,hi" (either comma) into the bounds; false when the text is
    // not two numbers.
    static bool ParseRange(const TEString& range, double& lower, double& upper);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void CategoriesChanged() override;
    void CategoryAdded(int index) override;

private:
    // Appends the range of the category at index, when its value is one.
    void AddRange(int index);

    struct Range
    {
        double lower = 0.0;
        double upper = 0.0;
        int item = -1;
    };

    int mLevel = 0;
    std::vector<Range> mRanges;
};

} // namespace TZObjects
