#include "renders/TEStackDiagramRender.h"

namespace TZObjects {

TERefPtr<TEFeatureRender> TEStackDiagramRender::Clone() const
{
    return MakeRef<TEStackDiagramRender>(*this);
}

void TEStackDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("width")] = mWidth;
    json[QStringLiteral("maxHeight")] = mMaxHeight;
}

bool TEStackDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mWidth = json.value(QStringLiteral("width")).toInt(20);
    mMaxHeight = json.value(QStringLiteral("maxHeight")).toInt(100);
    return TEDiagramRender::open(json, error);
}

} // namespace TZObjects
