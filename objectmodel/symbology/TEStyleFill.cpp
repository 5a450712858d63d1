#include "symbology/TEStyleFill.h"

#include <QJsonObject>
#include <QPainter>

namespace TZObjects {

TEStyleFill::TEStyleFill(const TEStyleFill& other)
    : TEStyle(other)
{
    if (other.mOutline)
        mOutline = other.mOutline->Clone().cast<TEStyleLine>();
}

bool TEStyleFill::DrawPoint(QPainter*, const QPointF&, double) const
{
    return false;
}

bool TEStyleFill::DrawLine(QPainter*, const QPolygonF&, double) const
{
    return false;
}

bool TEStyleFill::DrawPolygon(QPainter* painter, const QPainterPath& device, double angle) const
{
    if (!painter || device.isEmpty())
        return false;
    painter->save();
    applyTransparency(painter);
    drawInterior(painter, device);
    if (mOutline)
        mOutline->DrawPolygon(painter, device, angle);
    painter->restore();
    return true;
}

bool TEStyleFill::Equals(const TEStyle& other) const
{
    if (!TEStyle::Equals(other))
        return false;
    const TEStyleLine* outline = static_cast<const TEStyleFill&>(other).mOutline.get();
    return mOutline && outline ? mOutline->Equals(*outline) : !mOutline && !outline;
}

void TEStyleFill::save(QJsonObject& json) const
{
    TEStyle::save(json);
    if (mOutline) {
        QJsonObject outline;
        mOutline->save(outline);
        json.insert("outline", outline);
    }
}

bool TEStyleFill::open(const QJsonObject& json)
{
    if (!TEStyle::open(json))
        return false;
    if (!json.contains("outline")) {
        mOutline.reset();
        return true;
    }
    TERefPtr<TEStyleLine> outline = TEStyle::FromJson(json.value("outline").toObject()).cast<TEStyleLine>();
    if (!outline)
        return false;
    mOutline = outline;
    return true;
}

} // namespace TZObjects
