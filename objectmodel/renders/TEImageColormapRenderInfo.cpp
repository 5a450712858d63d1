#include "renders/TEImageColormapRenderInfo.h"

#include "data/TERasterProps.h"
#include "renders/TEFileFunc.h"

#include <QJsonArray>

#include <cmath>

namespace TZObjects {

TERefPtr<TEImageRenderInfo> TEImageColormapRenderInfo::Clone() const
{
    return MakeRef<TEImageColormapRenderInfo>(*this);
}

bool TEImageColormapRenderInfo::AddFromRaster(TERasterProps* raster, int band, TEString* error)
{
    std::vector<QRgb> table;
    if (!raster || !raster->GetColorTable(band, table)) {
        SetError(error, QStringLiteral("Band %1 has no colour table").arg(band));
        return false;
    }
    mColors.clear();
    mColors.reserve(table.size());
    for (QRgb entry : table)
        mColors.emplace_back(qRed(entry), qGreen(entry), qBlue(entry), qAlpha(entry));
    return true;
}

QRgb TEImageColormapRenderInfo::ColorOf(double value) const
{
    if (!std::isfinite(value) || value < 0.0 || value >= double(mColors.size()))
        return 0;
    return mColors[size_t(value)].GetColor();
}

bool TEImageColormapRenderInfo::GetItemColr(int index, TEColor* color) const
{
    if (!color || index < 0 || index >= GetItemCount())
        return false;
    *color = mColors[size_t(index)];
    return true;
}

void TEImageColormapRenderInfo::SetRenderColorTable(int index, TEColor color)
{
    if (index < 0)
        return;
    if (index >= GetItemCount())
        mColors.resize(size_t(index) + 1, TEColor(0, 0, 0, 0));
    mColors[size_t(index)] = color;
}

void TEImageColormapRenderInfo::save(QJsonObject& json) const
{
    QJsonArray colors;
    for (const TEColor& color : mColors)
        colors.append(TEFileFunc::SaveColor(color));
    json[QStringLiteral("colors")] = colors;
}

bool TEImageColormapRenderInfo::open(const QJsonObject& json, TEString* error)
{
    mColors.clear();
    if (!TEFileFunc::IsListOrMissing(json, "colors", error))
        return false;
    for (const QJsonValue& color : json.value(QStringLiteral("colors")).toArray())
        mColors.push_back(TEFileFunc::OpenColor(color));
    return true;
}

} // namespace TZObjects
