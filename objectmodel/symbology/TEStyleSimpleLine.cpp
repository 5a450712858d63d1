#include "symbology/TEStyleSimpleLine.h"

#include <QJsonObject>
#include <QPainter>

namespace TZObjects {

namespace {

Qt::PenStyle toQtPenStyle(int penStyle)
{
    switch (penStyle) {
    case TEStyleSimpleLine::Dash: return Qt::DashLine;
    case TEStyleSimpleLine::Dot: return Qt::DotLine;
    case TEStyleSimpleLine::DashDot: return Qt::DashDotLine;
    case TEStyleSimpleLine::DashDotDot: return Qt::DashDotDotLine;
    case TEStyleSimpleLine::NoPen: return Qt::NoPen;
    default: return Qt::SolidLine;
    }
}

} // namespace

TERefPtr<TEStyle> TEStyleSimpleLine::Clone() const
{
    return TERefPtr<TEStyle>(new TEStyleSimpleLine(*this));
}

void TEStyleSimpleLine::SetupDC(QPainter* painter) const
{
    if (!painter)
        return;
    // A width of 0 gives Qt's one-pixel cosmetic pen, a hairline.
    QPen pen(toQColor(GetColor()), SizeToPixels(GetWidth(), GetUnits(), DeviceDpi(painter)),
             toQtPenStyle(mPenStyle), Qt::RoundCap, Qt::RoundJoin);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
}

bool TEStyleSimpleLine::DrawLine(QPainter* painter, const QPolygonF& device, double) const
{
    if (!painter || device.size() < 2)
        return false;
    painter->save();
    applyTransparency(painter);
    SetupDC(painter);
    painter->drawPolyline(device);
    painter->restore();
    return true;
}

bool TEStyleSimpleLine::Equals(const TEStyle& other) const
{
    if (!TEStyleLine::Equals(other))
        return false;
    return mPenStyle == static_cast<const TEStyleSimpleLine&>(other).mPenStyle;
}

void TEStyleSimpleLine::save(QJsonObject& json) const
{
    TEStyleLine::save(json);
    json.insert("penStyle", mPenStyle);
}

bool TEStyleSimpleLine::open(const QJsonObject& json)
{
    if (!TEStyleLine::open(json))
        return false;
    mPenStyle = json.value("penStyle").toInt(mPenStyle);
    return true;
}

} // namespace TZObjects
