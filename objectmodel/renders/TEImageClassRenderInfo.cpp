#include "renders/TEImageClassRenderInfo.h"

#include "data/TERasterProps.h"
#include "renders/TEFileFunc.h"

#include <QJsonArray>

namespace TZObjects {

TERefPtr<TEImageRenderInfo> TEImageClassRenderInfo::Clone() const
{
    return MakeRef<TEImageClassRenderInfo>(*this);
}

bool TEImageClassRenderInfo::AddFromRaster(TERasterProps* raster, int band, TEString* error)
{
    TERasterProps::BandStatistics statistics;
    if (!raster || !raster->GetStatistics(band, statistics)) {
        SetError(error, QStringLiteral("Band %1 has no statistics").arg(band));
        return false;
    }
    const int count = DefaultClassCount;
    const double step = (statistics.maximum - statistics.minimum) / count;
    SetClassCount(count);
    for (int i = 0; i < count; ++i) {
        const double t = count > 1 ? double(i) / (count - 1) : 0.0;
        const TEColor color(int(255 * t), 0, int(255 * (1.0 - t)));
        const double low = statistics.minimum + i * step;
        const double high = i == count - 1 ? statistics.maximum : low + step;
        SetClassItemInfo(i, low, high, color);
    }
    return true;
}

QRgb TEImageClassRenderInfo::ColorOf(double value) const
{
    for (const ClassItem& item : mClasses) {
        if (item.low <= value && value <= item.high)
            return item.color.GetColor();
    }
    return 0;
}

void TEImageClassRenderInfo::SetClassCount(int count)
{
    mClasses.resize(size_t(std::max(0, count)), ClassItem{0.0, 0.0, TEColor(0, 0, 0)});
}

bool TEImageClassRenderInfo::GetClassItemInfo(int index, double& low, double& high, TEColor& color) const
{
    if (index < 0 || index >= GetItemCount())
        return false;
    const ClassItem& item = mClasses[size_t(index)];
    low = item.low;
    high = item.high;
    color = item.color;
    return true;
}

void TEImageClassRenderInfo::SetClassItemInfo(int index, double low, double high, TEColor color)
{
    if (index >= 0 && index < GetItemCount())
        mClasses[size_t(index)] = ClassItem{low, high, color};
}

void TEImageClassRenderInfo::save(QJsonObject& json) const
{
    QJsonArray classes;
    for (const ClassItem& item : mClasses) {
        QJsonObject itemJson;
        itemJson[QStringLiteral("low")] = item.low;
        itemJson[QStringLiteral("high")] = item.high;
        itemJson[QStringLiteral("color")] = TEFileFunc::SaveColor(item.color);
        classes.append(itemJson);
    }
    json[QStringLiteral("classes")] = classes;
}

bool TEImageClassRenderInfo::open(const QJsonObject& json, TEString* error)
{
    mClasses.clear();
    if (!TEFileFunc::IsListOrMissing(json, "classes", error))
        return false;
    for (const QJsonValue& value : json.value(QStringLiteral("classes")).toArray()) {
        const QJsonObject itemJson = value.toObject();
        mClasses.push_back(ClassItem{itemJson.value(QStringLiteral("low")).toDouble(),
                                     itemJson.value(QStringLiteral("high")).toDouble(),
                                     TEFileFunc::OpenColor(itemJson.value(QStringLiteral("color")))});
    }
    return true;
}

} // namespace TZObjects
