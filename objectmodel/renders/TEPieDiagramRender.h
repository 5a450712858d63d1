#pragma once

#include "renders/TEDiagramRender.h"

namespace TZObjects {

// A pie chart per feature, one slice per item, sized by the radius.
class TZOBJECTS_EXPORT TEPieDiagramRender : public TEDiagramRender
{
public:
    TEString GetType() const override { return L"PieDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override;

    // In typographic points.
    int GetRadius() const { return mRadius; }
    void SetRadius(int radius) { mRadius = radius; }
    bool IsShowShadow() const { return mShowShadow; }
    void SetShowShadow(bool show) { mShowShadow = show; }
    double GetShadowThickness() const { return mShadowThickness; }
    void SetShadowThickness(double thickness) { mShadowThickness = thickness; }

    // Slices in item order, clockwise from twelve o'clock, each as large as
    // its share of the item values, centred on the anchor; the radius counts
    // typographic points. With the shadow shown, the pie stands on a side
    // as deep as the shadow thickness times the radius (thickness 0 to 1),
    // each slice's side a darker shade of it. Labels stand just outside the
    // middle of their slice.
    bool DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                     const TEDrawContext& context) const override;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    void DrawSide(QPainter* painter, const std::vector<double>& values, double total, const QRectF& circle,
                  double depth) const;

    int mRadius = 20;
    bool mShowShadow = false;
    double mShadowThickness = 0.0;
};

} // namespace TZObjects
