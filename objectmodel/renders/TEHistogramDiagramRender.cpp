#include "renders/TEHistogramDiagramRender.h"

namespace TZObjects {

TERefPtr<TEFeatureRender> TEHistogramDiagramRender::Clone() const
{
    return MakeRef<TEHistogramDiagramRender>(*this);
}

void TEHistogramDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("width")] = mWidth;
    json[QStringLiteral("maxHeight")] = mMaxHeight;
    json[QStringLiteral("unitType")] = mUnitType;
    json[QStringLiteral("vertical")] = mVertical;
}

bool TEHistogramDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mWidth = json.value(QStringLiteral("width")).toDouble(10.0);
    mMaxHeight = json.value(QStringLiteral("maxHeight")).toInt(100);
    mUnitType = json.value(QStringLiteral("unitType")).toInt(0);
    mVertical = json.value(QStringLiteral("vertical")).toBool(true);
    return TEDiagramRender::open(json, error);
}

} // namespace TZObjects
