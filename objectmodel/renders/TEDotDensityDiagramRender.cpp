#include "renders/TEDotDensityDiagramRender.h"

#include "renders/TEFileFunc.h"

namespace TZObjects {

TERefPtr<TEFeatureRender> TEDotDensityDiagramRender::Clone() const
{
    return MakeRef<TEDotDensityDiagramRender>(*this);
}

std::vector<TEString> TEDotDensityDiagramRender::GetUsedAttributes() const
{
    std::vector<TEString> fields = TEDiagramRender::GetUsedAttributes();
    AddUsedAttribute(fields, mFieldName);
    return fields;
}

void TEDotDensityDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("dotColor")] = TEFileFunc::SaveColor(mDotColor);
    json[QStringLiteral("timestamp")] = double(mTimestamp);
    json[QStringLiteral("fieldName")] = mFieldName.toQString();
    json[QStringLiteral("numberPerDot")] = mNumberPerDot;
}

bool TEDotDensityDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mDotColor = TEFileFunc::OpenColor(json.value(QStringLiteral("dotColor")), TEColor(0, 0, 0));
    mTimestamp = static_cast<unsigned int>(json.value(QStringLiteral("timestamp")).toDouble(0.0));
    mFieldName = TEString(json.value(QStringLiteral("fieldName")).toString());
    mNumberPerDot = json.value(QStringLiteral("numberPerDot")).toInt(1);
    return TEDiagramRender::open(json, error);
}

} // namespace TZObjects
