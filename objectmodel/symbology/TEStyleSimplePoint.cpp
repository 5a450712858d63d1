#include "symbology/TEStyleSimplePoint.h"

#include <QJsonObject>
#include <QPainter>

#include <cmath>

namespace TZObjects {

namespace {

// A regular polygon of n corners inscribed in the w x h ellipse, one
// corner at the top.
QPolygonF regularPolygon(int n, double w, double h, double startDeg = -90.0)
{
    QPolygonF polygon;
    for (int i = 0; i < n; ++i) {
        const double a = (startDeg + 360.0 * i / n) * M_PI / 180.0;
        polygon << QPointF(std::cos(a) * w / 2.0, std::sin(a) * h / 2.0);
    }
    return polygon;
}

QPolygonF plusShape(double w, double h)
{
    const double x = w / 8.0;
    const double y = h / 8.0;
    const double hw = w / 2.0;
    const double hh = h / 2.0;
    return QPolygonF({QPointF(-x, -hh), QPointF(x, -hh), QPointF(x, -y), QPointF(hw, -y), QPointF(hw, y),
                      QPointF(x, y), QPointF(x, hh), QPointF(-x, hh), QPointF(-x, y), QPointF(-hw, y),
                      QPointF(-hw, -y), QPointF(-x, -y)});
}

QPolygonF starShape(double w, double h)
{
    QPolygonF star;
    for (int i = 0; i < 10; ++i) {
        const double a = (-90.0 + 36.0 * i) * M_PI / 180.0;
        const double r = (i % 2 == 0) ? 1.0 : 0.4;
        star << QPointF(std::cos(a) * r * w / 2.0, std::sin(a) * r * h / 2.0);
    }
    return star;
}

} // namespace

TERefPtr<TEStyle> TEStyleSimplePoint::Clone() const
{
    return TERefPtr<TEStyle>(new TEStyleSimplePoint(*this));
}

void TEStyleSimplePoint::SetupDC(QPainter* painter) const
{
    if (!painter)
        return;
    const double outline = SizeToPixels(mOutlineWidth, GetUnits(), DeviceDpi(painter));
    if (mOutlineWidth > 0.0) {
        QPen pen(toQColor(mOutlineColor), outline);
        pen.setJoinStyle(Qt::MiterJoin);
        painter->setPen(pen);
    } else {
        painter->setPen(Qt::NoPen);
    }
    painter->setBrush(toQColor(GetColor()));
}

void TEStyleSimplePoint::drawMarker(QPainter* painter, double w, double h) const
{
    SetupDC(painter);
    const QRectF box(-w / 2.0, -h / 2.0, w, h);
    switch (mShapeType) {
    case Square: painter->drawRect(box); break;
    case Triangle: painter->drawPolygon(regularPolygon(3, w, h)); break;
    case Diamond: painter->drawPolygon(regularPolygon(4, w, h)); break;
    case Cross: painter->drawPolygon(plusShape(w, h)); break;
    case XCross: painter->drawPolygon(QTransform().rotate(45.0).map(plusShape(w, h))); break;
    case Star: painter->drawPolygon(starShape(w, h)); break;
    case Pentagon: painter->drawPolygon(regularPolygon(5, w, h)); break;
    case Hexagon: painter->drawPolygon(regularPolygon(6, w, h)); break;
    default: painter->drawEllipse(box); break;
    }
}

bool TEStyleSimplePoint::Equals(const TEStyle& other) const
{
    if (!TEStylePoint::Equals(other))
        return false;
    const auto& point = static_cast<const TEStyleSimplePoint&>(other);
    return mShapeType == point.mShapeType && mOutlineColor == point.mOutlineColor
        && mOutlineWidth == point.mOutlineWidth;
}

void TEStyleSimplePoint::save(QJsonObject& json) const
{
    TEStylePoint::save(json);
    json.insert("shape", mShapeType);
    json.insert("outlineColor", colorToText(mOutlineColor));
    json.insert("outlineWidth", mOutlineWidth);
}

bool TEStyleSimplePoint::open(const QJsonObject& json)
{
    if (!TEStylePoint::open(json))
        return false;
    if (json.contains("outlineColor") && !colorFromText(json.value("outlineColor").toString(), mOutlineColor))
        return false;
    mShapeType = json.value("shape").toInt(mShapeType);
    mOutlineWidth = json.value("outlineWidth").toDouble(mOutlineWidth);
    return true;
}

} // namespace TZObjects
