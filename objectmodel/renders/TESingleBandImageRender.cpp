#include "renders/TESingleBandImageRender.h"

#include "renders/TEFileFunc.h"

namespace TZObjects {

TESingleBandImageRender::TESingleBandImageRender(const TERefPtr<TEImageRenderInfo>& info)
{
    setRenderInfo(info);
}

TESingleBandImageRender::TESingleBandImageRender(const TESingleBandImageRender& other)
    : TEImageRender(other)
    , mMode(other.mMode)
    , mBand(other.mBand)
    , mInfo(other.mInfo ? other.mInfo->Clone() : TERefPtr<TEImageRenderInfo>())
{
}

TERefPtr<TERender> TESingleBandImageRender::CloneRender() const
{
    return MakeRef<TESingleBandImageRender>(*this);
}

void TESingleBandImageRender::setRenderInfo(const TERefPtr<TEImageRenderInfo>& info)
{
    mInfo = info;
    if (mInfo)
        mMode = mInfo->GetRenderMode();
}

QRgb TESingleBandImageRender::ColorOf(double value) const
{
    return mInfo ? mInfo->ColorOf(value) : 0;
}

void TESingleBandImageRender::save(QJsonObject& json) const
{
    TEImageRender::save(json);
    json[QStringLiteral("band")] = mBand;
    if (mInfo)
        json[QStringLiteral("info")] = mInfo->ToJson();
}

bool TESingleBandImageRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEImageRender::open(json, error))
        return false;
    if (!TEFileFunc::OpenInt(json, "band", 1, 1, 65535, mBand, error))
        return false;
    mInfo.reset();
    const QJsonValue info = json.value(QStringLiteral("info"));
    if (info.isObject()) {
        mInfo = TEImageRenderInfo::FromJson(info.toObject(), error);
        if (!mInfo)
            return false;
    }
    return TEFileFunc::OpenInt(json, "mode", mInfo ? mInfo->GetRenderMode() : 1, 1, 4, mMode, error);
}

bool TESingleBandImageRender::CheckBands(int bandCount, TEString* error) const
{
    if (mBand >= 1 && mBand <= bandCount)
        return true;
    if (error)
        *error = TEString(QStringLiteral("band %1 does not exist (the raster has %2)").arg(mBand).arg(bandCount));
    return false;
}

} // namespace TZObjects
