#include "renders/TEImageRenderInfo.h"

#include "data/TERasterProps.h"
#include "renders/TEImageClassRenderInfo.h"
#include "renders/TEImageColormapRenderInfo.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TEImageUniqueRenderInfo.h"

#include <algorithm>
#include <cmath>

namespace TZObjects {

QJsonObject TEImageRenderInfo::ToJson() const
{
    QJsonObject json;
    save(json);
    json[QStringLiteral("type")] = GetType().toQString();
    return json;
}

TERefPtr<TEImageRenderInfo> TEImageRenderInfo::FromJson(const QJsonObject& json, TEString* error)
{
    const QString type = json.value(QStringLiteral("type")).toString();
    TERefPtr<TEImageRenderInfo> info = Create(TEString(type));
    if (!info) {
        SetError(error, QStringLiteral("Unknown render info type \"%1\"").arg(type));
        return {};
    }
    if (!info->open(json, error))
        return {};
    return info;
}

TERefPtr<TEImageRenderInfo> TEImageRenderInfo::Create(const TEString& type)
{
    if (type == L"Stretch")
        return MakeRef<TEImageStretchRenderInfo>();
    if (type == L"Class")
        return MakeRef<TEImageClassRenderInfo>();
    if (type == L"Unique")
        return MakeRef<TEImageUniqueRenderInfo>();
    if (type == L"Colormap")
        return MakeRef<TEImageColormapRenderInfo>();
    return {};
}

bool TEImageRenderInfo::ForEachValue(TERasterProps* raster, int band, const std::function<bool(double)>& visit,
                                     TEString* error)
{
    if (!raster || band < 1 || band > raster->GetBandCount()) {
        SetError(error, QStringLiteral("The raster has no band %1").arg(band));
        return false;
    }
    bool hasNoData = false;
    const double noData = raster->GetNoDataValue(band, &hasNoData);
    const int width = raster->GetWidth();
    const int height = raster->GetHeight();
    const int rowsPerStrip = std::max(1, (1 << 20) / std::max(1, width));
    std::vector<double> values;
    for (int y = 0; y < height; y += rowsPerStrip) {
        const int rows = std::min(rowsPerStrip, height - y);
        QString text;
        if (!raster->ReadPixelBlock(band, 0, y, width, rows, values, &text)) {
            SetError(error, text.isEmpty() ? QStringLiteral("Band %1 does not read").arg(band) : text);
            return false;
        }
        for (double value : values) {
            if (std::isnan(value) || (hasNoData && value == noData))
                continue;
            if (!visit(value))
                return true;
        }
    }
    return true;
}

void TEImageRenderInfo::SetError(TEString* error, const QString& text)
{
    if (error)
        *error = TEString(text);
}

} // namespace TZObjects
