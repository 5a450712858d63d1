#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QTransform>

// What part of the map a drawing shows: a device size in pixels, the map
// point at its centre and the map units one pixel covers (north up, no
// rotation). It converts between map and device coordinates and gives the
// map scale denominator at the device's DPI.
class TZMapViewport
{
public:
    TZMapViewport() = default;
    TZMapViewport(const QSize& deviceSize, const QPointF& centre, double unitsPerPixel);

    // The viewport showing the whole of extent (with a small margin) in a
    // device of the given size.
    static TZMapViewport fitting(const QSize& deviceSize, const QRectF& extent);

    bool isValid() const;
    QSize deviceSize() const { return mDeviceSize; }
    QPointF centre() const { return mCentre; }
    double unitsPerPixel() const { return mUnitsPerPixel; }

    // Metres in one map unit (1 for projected CRSs in metres, about 111 km
    // for degrees); used only for the scale.
    double metersPerUnit() const { return mMetersPerUnit; }
    void setMetersPerUnit(double meters) { mMetersPerUnit = meters; }
    double dpi() const { return mDpi; }
    void setDpi(double dpi) { mDpi = dpi; }

    // The map rectangle the device covers.
    QRectF mapExtent() const;
    // Map to device pixels (y axis flipped).
    QTransform mapToDevice() const;
    QPointF toDevice(const QPointF& map) const;
    QPointF toMap(const QPointF& device) const;
    // The scale denominator (1 : scale).
    double scale() const;

    TZMapViewport withDeviceSize(const QSize& deviceSize) const;
    TZMapViewport movedByPixels(const QPointF& deviceDelta) const;
    // Zoomed by factor (>1 zooms in) keeping the map point under device
    // anchor in place.
    TZMapViewport zoomedAt(const QPointF& deviceAnchor, double factor) const;

    bool operator==(const TZMapViewport& other) const;
    bool operator!=(const TZMapViewport& other) const { return !(*this == other); }

private:
    QSize mDeviceSize;
    QPointF mCentre;
    double mUnitsPerPixel = 0.0;
    double mMetersPerUnit = 1.0;
    double mDpi = 96.0;
};
