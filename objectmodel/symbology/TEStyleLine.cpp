#include "symbology/TEStyleLine.h"

#include <QJsonObject>

namespace TZObjects {

bool TEStyleLine::DrawPoint(QPainter*, const QPointF&, double) const
{
    return false;
}

bool TEStyleLine::DrawPolygon(QPainter* painter, const QPainterPath& device, double angle) const
{
    bool drawn = false;
    for (QPolygonF ring : device.toSubpathPolygons()) {
        if (!ring.isEmpty() && ring.first() != ring.last())
            ring.append(ring.first());
        drawn = DrawLine(painter, ring, angle) || drawn;
    }
    return drawn;
}

bool TEStyleLine::Equals(const TEStyle& other) const
{
    if (!TEStyle::Equals(other))
        return false;
    return mWidth == static_cast<const TEStyleLine&>(other).mWidth;
}

void TEStyleLine::save(QJsonObject& json) const
{
    TEStyle::save(json);
    json.insert("width", mWidth);
}

bool TEStyleLine::open(const QJsonObject& json)
{
    if (!TEStyle::open(json))
        return false;
    mWidth = json.value("width").toDouble(mWidth);
    return true;
}

} // namespace TZObjects
