#include "symbology/TEStylePoint.h"

#include <QJsonObject>
#include <QPainter>

namespace TZObjects {

bool TEStylePoint::DrawPoint(QPainter* painter, const QPointF& device, double angle) const
{
    if (!painter)
        return false;
    const double dpi = DeviceDpi(painter);
    const double w = SizeToPixels(mWidth, GetUnits(), dpi);
    const double h = SizeToPixels(mHeight, GetUnits(), dpi);
    if (w <= 0.0 || h <= 0.0)
        return false;
    painter->save();
    applyTransparency(painter);
    // Offsets point up on the map, device y points down.
    painter->translate(device + QPointF(SizeToPixels(mOffsetX, GetUnits(), dpi),
                                        -SizeToPixels(mOffsetY, GetUnits(), dpi)));
    painter->rotate(-(mAngle + angle));
    drawMarker(painter, w, h);
    painter->restore();
    return true;
}

bool TEStylePoint::DrawLine(QPainter* painter, const QPolygonF& device, double angle) const
{
    bool drawn = false;
    for (const QPointF& vertex : device)
        drawn = DrawPoint(painter, vertex, angle) || drawn;
    return drawn;
}

bool TEStylePoint::DrawPolygon(QPainter* painter, const QPainterPath& device, double angle) const
{
    if (device.isEmpty())
        return false;
    return DrawPoint(painter, device.boundingRect().center(), angle);
}

bool TEStylePoint::Equals(const TEStyle& other) const
{
    if (!TEStyle::Equals(other))
        return false;
    const auto& point = static_cast<const TEStylePoint&>(other);
    return mWidth == point.mWidth && mHeight == point.mHeight && mAngle == point.mAngle
        && mOffsetX == point.mOffsetX && mOffsetY == point.mOffsetY;
}

void TEStylePoint::save(QJsonObject& json) const
{
    TEStyle::save(json);
    json.insert("width", mWidth);
    json.insert("height", mHeight);
    json.insert("angle", mAngle);
    json.insert("offsetX", mOffsetX);
    json.insert("offsetY", mOffsetY);
}

bool TEStylePoint::open(const QJsonObject& json)
{
    if (!TEStyle::open(json))
        return false;
    mWidth = json.value("width").toDouble(mWidth);
    mHeight = json.value("height").toDouble(mHeight);
    mAngle = json.value("angle").toDouble(mAngle);
    mOffsetX = json.value("offsetX").toDouble(mOffsetX);
    mOffsetY = json.value("offsetY").toDouble(mOffsetY);
    return true;
}

} // namespace TZObjects
