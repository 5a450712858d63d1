#pragma once

#include "renders/TEFeatureRender.h"
#include "symbology/TEColorRamp.h"

#include <QColor>
#include <QPointF>

#include <vector>

namespace TZObjects {

// A heat map of a point layer: a kernel density surface of the given search
// radius, whose densities from 0 up to the maximum value are coloured
// through the ramp. It draws no symbol per feature.
//
// Drawing bins the points into a grid of cells (a seventh of the radius, at
// least a pixel) and smooths the grid with three box passes each way, whose
// product is a smooth bell-shaped kernel reaching exactly one radius; the
// cost is that of the cells plus the points, whatever the radius. Densities
// are counted in points: an isolated point peaks at 1. A maximum value of 0
// maps the 99th percentile of the covered cells to the top of the ramp, so
// that one very dense spot does not wash out the rest. Zero density stays
// transparent and low densities fade in, so the layers beneath show.
class TZOBJECTS_EXPORT TEHeatMapperRender : public TEFeatureRender
{
public:
    TEHeatMapperRender() = default;
    TEHeatMapperRender(const TEHeatMapperRender& other);

    TEString GetType() const override { return L"Heatmap"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    // Always empty: the heat map is drawn as a surface, not per feature.
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                        bool ignoreScaleRange = false) const override;

    double GetRadius() const { return mRadius; }
    void SetRadius(double radius) { mRadius = radius; }
    // Unit of the radius (TEStyle::Units, converted by
    // TEDrawContext::ToPixels): 0 point, 1 millimetre, 2 centimetre, 3 inch,
    // other values pixels.
    int GetRadiusUnitType() const { return mRadiusUnitType; }
    void SetRadiusUnitType(int unit) { mRadiusUnitType = unit; }
    // Density mapped to the top of the ramp; 0 uses the largest density.
    double GetMaximumValue() const { return mMaximumValue; }
    void SetMaximumValue(double value) { mMaximumValue = value; }
    TERefPtr<TEColorRamp> GetColorRamp() const { return mColorRamp; }
    void SetColorRamp(const TERefPtr<TEColorRamp>& ramp) { mColorRamp = ramp; }

    bool DrawsWholeLayer() const override { return true; }
    bool DrawsOnlyWholeLayer() const override { return true; }
    double DrawLayerMargin(const TEDrawContext& context) const override;
    bool DrawLayer(QPainter* painter, TEFeatureCursor* cursor, const TEDrawContext& context) const override;

    // The radius in painter pixels: a unit code 0 to 4 through
    // TEDrawContext::ToPixels, any other code taken as map units.
    double RadiusInPixels(const TEDrawContext& context) const;
    // Draws the surface of points given in painter pixels over the view
    // (context.mapExtent through context.mapToDevice). False when cancelled.
    bool DrawPoints(QPainter* painter, const std::vector<QPointF>& devicePoints,
                    const TEDrawContext& context) const;
    // The colour of a density at t (0 to 1 of the maximum), with its
    // opacity; transparent at 0. Without a ramp a blue-to-red heat ramp.
    QColor DensityColor(double t) const;
    // The device positions of every point (and every part of a multi-point)
    // the cursor gives. False when cancelled.
    static bool ReadDevicePoints(TEFeatureCursor* cursor, const TEDrawContext& context,
                                 std::vector<QPointF>& devicePoints);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    double mRadius = 10.0;
    int mRadiusUnitType = 1;
    double mMaximumValue = 0.0;
    TERefPtr<TEColorRamp> mColorRamp;
};

} // namespace TZObjects
