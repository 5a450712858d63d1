#include "renders/TEPieDiagramRender.h"

namespace TZObjects {

TERefPtr<TEFeatureRender> TEPieDiagramRender::Clone() const
{
    return MakeRef<TEPieDiagramRender>(*this);
}

void TEPieDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("radius")] = mRadius;
    json[QStringLiteral("showShadow")] = mShowShadow;
    json[QStringLiteral("shadowThickness")] = mShadowThickness;
}

bool TEPieDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mRadius = json.value(QStringLiteral("radius")).toInt(20);
    mShowShadow = json.value(QStringLiteral("showShadow")).toBool(false);
    mShadowThickness = json.value(QStringLiteral("shadowThickness")).toDouble(0.0);
    return TEDiagramRender::open(json, error);
}

} // namespace TZObjects
