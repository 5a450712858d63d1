#include "renders/TEImageRender.h"

#include "renders/TEFileFunc.h"

namespace TZObjects {

QRgb TEImageRender::NodataRgb() const
{
    return mNodataColorType != 0 ? mNodataColor.GetColor() : 0;
}

void TEImageRender::save(QJsonObject& json) const
{
    json[QStringLiteral("mode")] = getImageRenderMODE();
    json[QStringLiteral("nodataColorType")] = mNodataColorType;
    json[QStringLiteral("nodataColor")] = TEFileFunc::SaveColor(mNodataColor);
    json[QStringLiteral("backgroundColor")] = TEFileFunc::SaveColor(mBackgroundColor);
}

bool TEImageRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFileFunc::OpenInt(json, "nodataColorType", 0, 0, 1000, mNodataColorType, error))
        return false;
    mNodataColor = TEFileFunc::OpenColor(json.value(QStringLiteral("nodataColor")), TEColor(0, 0, 0));
    mBackgroundColor = TEFileFunc::OpenColor(json.value(QStringLiteral("backgroundColor")), TEColor(255, 255, 255));
    return true;
}

} // namespace TZObjects
