#include "data/TERasterLayer.h"

#include "renders/TEImageColormapRenderInfo.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"

#include <QFileInfo>

#include <algorithm>

namespace TZObjects {

TERefPtr<TERasterLayer> TERasterLayer::Open(const QString& path, QString* error)
{
    TERefPtr<TERasterProps> raster = TERasterProps::Open(path, error);
    if (!raster)
        return {};
    return TERefPtr<TERasterLayer>(new TERasterLayer(path, raster));
}

TERasterLayer::TERasterLayer(const QString& path, TERefPtr<TERasterProps> raster)
    : TELayer(raster->GetBandCount() > 1 ? LT_MultiBandRaster : LT_SingleBandRaster, path,
              TEString(QFileInfo(path).completeBaseName()))
    , mRaster(std::move(raster))
    , mRender(MakeDefaultRender(mRaster.get()))
{
}

TERefPtr<TEImageRender> TERasterLayer::MakeDefaultRender(TERasterProps* raster)
{
    if (!raster || raster->GetBandCount() < 1)
        return {};
    if (raster->GetBandCount() == 1) {
        std::vector<QRgb> table;
        if (raster->GetColorTable(1, table)) {
            auto info = MakeRef<TEImageColormapRenderInfo>();
            if (info->AddFromRaster(raster, 1))
                return MakeRef<TESingleBandImageRender>(info);
        }
        return MakeStretchRender(raster, 1);
    }
    auto render = MakeRef<TEMultiBandImageRender>();
    render->setImageRenderMODE(5);
    render->setRedBand(1);
    render->setGreenBand(2);
    render->setBlueBand(std::min(3, raster->GetBandCount()));
    render->setUseBlueBand(raster->GetBandCount() >= 3);
    render->setAlphaBandUse(false);
    // An 8-bit image is shown with its own colours; wider types need a
    // stretch to fit 0..255.
    render->setStretchType(raster->GetDataType() == GDT_Byte ? TEMultiBandImageRender::NoStretch
                                                             : TEMultiBandImageRender::PercentClip);
    return render;
}

TERefPtr<TEImageRender> TERasterLayer::MakeStretchRender(TERasterProps* raster, int band)
{
    auto info = MakeRef<TEImageStretchRenderInfo>();
    // A band that holds only no-data keeps the info's defaults; it draws
    // nothing anyway.
    if (raster)
        info->AddFromRaster(raster, band, TERasterProps::Accuracy::ApproximateIfLarge);
    auto render = MakeRef<TESingleBandImageRender>(TERefPtr<TEImageRenderInfo>(info));
    render->SetBandIndex(band);
    render->SetNodataColorType(0);
    return render;
}

TERefPtr<TERender> TERasterLayer::GetRender() const
{
    return GetImageRender();
}

TERefPtr<TEImageRender> TERasterLayer::GetImageRender() const
{
    QMutexLocker lock(&mMutex);
    return mRender;
}

void TERasterLayer::SetRender(TERefPtr<TEImageRender> render)
{
    {
        QMutexLocker lock(&mMutex);
        mRender = std::move(render);
    }
    RaiseRenderChanged();
}

bool TERasterLayer::GetExtent(QRectF& extent) const
{
    if (!mRaster)
        return false;
    extent = ExtentOf(*mRaster);
    return true;
}

QString TERasterLayer::GetSpatialReferenceWkt() const
{
    return mRaster ? mRaster->GetSpatialReferenceWkt() : QString();
}

QRectF TERasterLayer::ExtentOf(const TERasterProps& raster)
{
    const std::array<double, 6> t = raster.GetGeoTransform();
    const double w = raster.GetWidth();
    const double h = raster.GetHeight();
    const double xs[] = {t[0], t[0] + w * t[1], t[0] + h * t[2], t[0] + w * t[1] + h * t[2]};
    const double ys[] = {t[3], t[3] + w * t[4], t[3] + h * t[5], t[3] + w * t[4] + h * t[5]};
    const auto [minX, maxX] = std::minmax_element(std::begin(xs), std::end(xs));
    const auto [minY, maxY] = std::minmax_element(std::begin(ys), std::end(ys));
    return QRectF(QPointF(*minX, *minY), QPointF(*maxX, *maxY));
}

} // namespace TZObjects
