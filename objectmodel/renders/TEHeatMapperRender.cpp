#include "renders/TEHeatMapperRender.h"

#include "renders/TEFileFunc.h"

namespace TZObjects {

TEHeatMapperRender::TEHeatMapperRender(const TEHeatMapperRender& other)
    : TEFeatureRender(other)
    , mRadius(other.mRadius)
    , mRadiusUnitType(other.mRadiusUnitType)
    , mMaximumValue(other.mMaximumValue)
    , mColorRamp(other.mColorRamp ? other.mColorRamp->clone() : TERefPtr<TEColorRamp>())
{
}

TERefPtr<TEFeatureRender> TEHeatMapperRender::Clone() const
{
    return MakeRef<TEHeatMapperRender>(*this);
}

TERefPtr<TEStyle> TEHeatMapperRender::GetStyleByFeature(TEFeature*, const double&, bool) const
{
    return {};
}

void TEHeatMapperRender::save(QJsonObject& json) const
{
    TEFeatureRender::save(json);
    json[QStringLiteral("radius")] = mRadius;
    json[QStringLiteral("radiusUnit")] = mRadiusUnitType;
    json[QStringLiteral("maximumValue")] = mMaximumValue;
    json[QStringLiteral("colorRamp")] = TEFileFunc::SaveColorRamp(mColorRamp.get());
}

bool TEHeatMapperRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFeatureRender::open(json, error))
        return false;
    mRadius = json.value(QStringLiteral("radius")).toDouble(10.0);
    mRadiusUnitType = json.value(QStringLiteral("radiusUnit")).toInt(1);
    mMaximumValue = json.value(QStringLiteral("maximumValue")).toDouble(0.0);
    return TEFileFunc::OpenColorRamp(json.value(QStringLiteral("colorRamp")), mColorRamp, error);
}

} // namespace TZObjects
