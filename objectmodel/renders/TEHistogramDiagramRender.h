#pragma once

#include "renders/TEDiagramRender.h"

namespace TZObjects {

// A bar chart per feature, one bar per item.
class TZOBJECTS_EXPORT TEHistogramDiagramRender : public TEDiagramRender
{
public:
    TEString GetType() const override { return L"HistogramDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override;

    // Width of one bar, in the unit type.
    double GetWidth() const { return mWidth; }
    void SetWidth(double width) { mWidth = width; }
    int GetMaxHeight() const { return mMaxHeight; }
    void setMaxHeight(int height) { mMaxHeight = height; }
    // Unit of the width (TEStyle::Units): 0 point, 1 millimetre, 2
    // centimetre, 3 inch.
    int getUnitType() const { return mUnitType; }
    void setUnitType(int unit) { mUnitType = unit; }
    bool IsVerticalDirection() const { return mVertical; }
    void SetVerticalDirection(bool vertical) { mVertical = vertical; }

    // The largest single value among the features bars are measured by.
    void PrepareDiagrams(const std::vector<TEFeature*>& features) override;
    // Bars side by side, centred across the anchor, each width wide in the
    // unit type; the largest value among the prepared features (or of this
    // feature alone, unprepared) is max height points long. Vertical bars
    // grow up from the anchor, horizontal ones right. Labels stand at the
    // bars' ends.
    bool DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                     const TEDrawContext& context) const override;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    double mWidth = 10.0;
    int mMaxHeight = 100;
    int mUnitType = 0;
    bool mVertical = true;
    // Set by PrepareDiagrams; 0 measures each feature alone.
    double mLargestValue = 0.0;
};

} // namespace TZObjects
