#include "data/TERasterLayer.h"

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
{
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
