#pragma once

#include "renders/TEDiagramRender.h"

namespace TZObjects {

// A stacked bar per feature, one segment per item.
class TZOBJECTS_EXPORT TEStackDiagramRender : public TEDiagramRender
{
public:
    TEString GetType() const override { return L"StackDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override;

    int GetWidth() const { return mWidth; }
    void SetWidth(int width) { mWidth = width; }
    int GetMaxHeight() const { return mMaxHeight; }
    void SetMaxHeight(int height) { mMaxHeight = height; }

    // The largest sum of a feature's values among the features.
    void PrepareDiagrams(const std::vector<TEFeature*>& features) override;
    // One bar standing on the anchor, width and max height in points, its
    // segments in item order from the bottom, each as long as its value;
    // the largest sum among the prepared features (or this feature's own,
    // unprepared) is max height long. Labels stand right of their segments.
    bool DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                     const TEDrawContext& context) const override;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    int mWidth = 20;
    int mMaxHeight = 100;
    // Set by PrepareDiagrams; 0 measures each feature alone.
    double mLargestTotal = 0.0;
};

} // namespace TZObjects
