#pragma once

#include "renders/TEFeatureRender.h"
#include "symbology/TEColorRamp.h"

namespace TZObjects {

// A heat map of a point layer: a kernel density surface of the given search
// radius, whose densities from 0 up to the maximum value are coloured
// through the ramp. It draws no symbol per feature.
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

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    double mRadius = 10.0;
    int mRadiusUnitType = 1;
    double mMaximumValue = 0.0;
    TERefPtr<TEColorRamp> mColorRamp;
};

} // namespace TZObjects
