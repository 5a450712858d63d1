#pragma once

#include "renders/TEScaleRange.h"
#include "symbology/TEStyle.h"

namespace TZObjects {

// One category of a categorized render: the attribute value (or, for a
// grading render, the range "lo,hi") it matches, its legend label, its style,
// whether it is drawn at all, and its scale filter.
class TZOBJECTS_EXPORT TECategoryRenderItem : public TERefBase
{
public:
    TECategoryRenderItem() = default;
    TECategoryRenderItem(const TEString& value, const TEString& label, const TERefPtr<TEStyle>& style,
                         const TEScaleRange& scaleRange = TEScaleRange())
        : mValue(value), mLabel(label), mStyle(style), mScaleRange(scaleRange) {}

    // A copy with a copy of the style, sharing nothing with this item.
    TERefPtr<TECategoryRenderItem> Clone() const
    {
        auto copy = MakeRef<TECategoryRenderItem>(*this);
        if (mStyle)
            copy->mStyle = mStyle->Clone();
        return copy;
    }

    TEString GetValue() const { return mValue; }
    TEString GetLabel() const { return mLabel; }
    void SetLabel(const TEString& label) { mLabel = label; }
    TERefPtr<TEStyle> GetStyle() const { return mStyle; }
    void SetStyle(const TERefPtr<TEStyle>& style) { mStyle = style; }
    bool IsVisible() const { return mVisible; }
    void SetVisible(bool visible) { mVisible = visible; }

    TEScaleRange GetScaleRange() const { return mScaleRange; }
    void SetScaleRange(const TEScaleRange& range) { mScaleRange = range; }
    bool IsScaleFilter() const { return mScaleRange.IsEnabled(); }
    double GetMinScale() const { return mScaleRange.GetMinimum(); }
    double GetMaxScale() const { return mScaleRange.GetMaximum(); }

    // Whether the item is drawn at the scale: visible and inside its range.
    bool IsDrawnAt(double scale, bool ignoreScaleRange) const
    {
        return mVisible && (ignoreScaleRange || mScaleRange.Contains(scale));
    }

private:
    TEString mValue;
    TEString mLabel;
    TERefPtr<TEStyle> mStyle;
    bool mVisible = true;
    TEScaleRange mScaleRange;
};

} // namespace TZObjects
