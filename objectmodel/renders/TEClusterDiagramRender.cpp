#include "renders/TEClusterDiagramRender.h"

#include "renders/TEFileFunc.h"

namespace TZObjects {

TEClusterDiagramRender::TEClusterDiagramRender(const TEClusterDiagramRender& other)
    : TEDiagramRender(other)
    , mColorRamp(other.mColorRamp ? other.mColorRamp->clone() : TERefPtr<TEColorRamp>())
    , mMakerSize(other.mMakerSize)
{
}

TERefPtr<TEFeatureRender> TEClusterDiagramRender::Clone() const
{
    return MakeRef<TEClusterDiagramRender>(*this);
}

void TEClusterDiagramRender::setColorRamp(TEColorRamp* ramp)
{
    mColorRamp = ramp ? ramp->clone() : TERefPtr<TEColorRamp>();
}

void TEClusterDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("colorRamp")] = TEFileFunc::SaveColorRamp(mColorRamp.get());
    json[QStringLiteral("makerSize")] = mMakerSize;
}

bool TEClusterDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mMakerSize = json.value(QStringLiteral("makerSize")).toDouble(4.0);
    const bool ok = TEFileFunc::OpenColorRamp(json.value(QStringLiteral("colorRamp")), mColorRamp, error);
    return TEDiagramRender::open(json, error) && ok;
}

} // namespace TZObjects
