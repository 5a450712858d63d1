#pragma once

#include "renders/TEDiagramRenderItem.h"
#include "renders/TEFeatureRender.h"

#include <QPointF>

#include <vector>

class QPainter;

namespace TZObjects {

// Base of the renders that draw a diagram over every feature. The diagram
// is drawn over the background render, the symbology the layer had before;
// GetStyleByFeature gives the background render's style (none without one).
class TZOBJECTS_EXPORT TEDiagramRender : public TEFeatureRender
{
public:
    TEDiagramRender() = default;
    TEDiagramRender(const TEDiagramRender& other);

    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                        bool ignoreScaleRange = false) const override;
    std::vector<TEString> GetUsedAttributes() const override;
    bool FilterNeedsGeometry() const override;

    void AddItem(const TEString& field, const TEString& caption, const TERefPtr<TEStyle>& style);
    const std::vector<TERefPtr<TEDiagramRenderItem>>& GetItems() const { return mItems; }
    void RemoveAllItems() { mItems.clear(); }

    // The background render is kept as a reference; a diagram render given
    // as its own background (directly or through another) is refused.
    void SetBackgroundRender(TEFeatureRender* render);
    TERefPtr<TEFeatureRender> GetBackgroundRender() const { return mBackground; }

    bool IsShowLabel() const { return mShowLabel; }
    void SetShowLabel(bool show) { mShowLabel = show; }

    // Draws the feature's diagram around anchor, the feature's centre in
    // device pixels, over what the background render drew. False when the
    // render draws no per-feature diagram or the feature gives it nothing
    // to show.
    virtual bool DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor) const;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void VisitStyles(const StyleVisitor& visit) override;
    // The items' field values of the feature, negative and missing values as 0.
    std::vector<double> ItemValues(TEFeature* feature) const;

private:
    std::vector<TERefPtr<TEDiagramRenderItem>> mItems;
    TERefPtr<TEFeatureRender> mBackground;
    bool mShowLabel = false;
};

} // namespace TZObjects
