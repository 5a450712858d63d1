#include "TZMapViewport.h"

#include <algorithm>

TZMapViewport::TZMapViewport(const QSize& deviceSize, const QPointF& centre, double unitsPerPixel)
    : mDeviceSize(deviceSize)
    , mCentre(centre)
    , mUnitsPerPixel(unitsPerPixel)
{
}

TZMapViewport TZMapViewport::fitting(const QSize& deviceSize, const QRectF& extent)
{
    const QRectF box = extent.normalized();
    if (deviceSize.isEmpty() || (box.width() <= 0.0 && box.height() <= 0.0))
        return TZMapViewport(deviceSize, box.center(), 1.0);
    constexpr double margin = 1.05;
    const double perPixel = margin * std::max(box.width() / deviceSize.width(), box.height() / deviceSize.height());
    return TZMapViewport(deviceSize, box.center(), perPixel);
}

bool TZMapViewport::isValid() const
{
    return !mDeviceSize.isEmpty() && mUnitsPerPixel > 0.0;
}

QRectF TZMapViewport::mapExtent() const
{
    const double w = mDeviceSize.width() * mUnitsPerPixel;
    const double h = mDeviceSize.height() * mUnitsPerPixel;
    return QRectF(mCentre.x() - w / 2.0, mCentre.y() - h / 2.0, w, h);
}

QTransform TZMapViewport::mapToDevice() const
{
    if (mUnitsPerPixel <= 0.0)
        return QTransform();
    const double k = 1.0 / mUnitsPerPixel;
    return QTransform(k, 0.0, 0.0, -k, mDeviceSize.width() / 2.0 - mCentre.x() * k,
                      mDeviceSize.height() / 2.0 + mCentre.y() * k);
}

QPointF TZMapViewport::toDevice(const QPointF& map) const
{
    return mapToDevice().map(map);
}

QPointF TZMapViewport::toMap(const QPointF& device) const
{
    return QPointF(mCentre.x() + (device.x() - mDeviceSize.width() / 2.0) * mUnitsPerPixel,
                   mCentre.y() - (device.y() - mDeviceSize.height() / 2.0) * mUnitsPerPixel);
}

double TZMapViewport::scale() const
{
    constexpr double metersPerInch = 0.0254;
    return mUnitsPerPixel * mMetersPerUnit * mDpi / metersPerInch;
}

TZMapViewport TZMapViewport::withDeviceSize(const QSize& deviceSize) const
{
    TZMapViewport v = *this;
    v.mDeviceSize = deviceSize;
    return v;
}

TZMapViewport TZMapViewport::movedByPixels(const QPointF& deviceDelta) const
{
    TZMapViewport v = *this;
    v.mCentre = QPointF(mCentre.x() - deviceDelta.x() * mUnitsPerPixel, mCentre.y() + deviceDelta.y() * mUnitsPerPixel);
    return v;
}

TZMapViewport TZMapViewport::zoomedAt(const QPointF& deviceAnchor, double factor) const
{
    if (factor <= 0.0)
        return *this;
    const QPointF anchor = toMap(deviceAnchor);
    TZMapViewport v = *this;
    v.mUnitsPerPixel = mUnitsPerPixel / factor;
    // Keep the anchor's map point under the same pixel.
    v.mCentre = QPointF(anchor.x() - (deviceAnchor.x() - mDeviceSize.width() / 2.0) * v.mUnitsPerPixel,
                        anchor.y() + (deviceAnchor.y() - mDeviceSize.height() / 2.0) * v.mUnitsPerPixel);
    return v;
}

bool TZMapViewport::operator==(const TZMapViewport& other) const
{
    return mDeviceSize == other.mDeviceSize && mCentre == other.mCentre && mUnitsPerPixel == other.mUnitsPerPixel
        && mMetersPerUnit == other.mMetersPerUnit && mDpi == other.mDpi;
}
