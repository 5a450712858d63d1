#include "renders/TEPieDiagramRender.h"

#include "renders/TEDrawContext.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numeric>

namespace TZObjects {

bool TEPieDiagramRender::DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                                     const TEDrawContext& context) const
{
    const std::vector<double> values = ItemValues(feature);
    const double total = std::accumulate(values.begin(), values.end(), 0.0);
    const double radius = context.ToPixels(mRadius, TEStyle::Point);
    if (!painter || total <= 0.0 || radius <= 0.0)
        return false;
    const QRectF circle(anchor.x() - radius, anchor.y() - radius, 2.0 * radius, 2.0 * radius);
    if (mShowShadow && mShadowThickness > 0.0)
        DrawSide(painter, values, total, circle, mShadowThickness * radius);
    double start = 90.0;
    for (size_t i = 0; i < values.size(); ++i) {
        const TERefPtr<TEStyle> style = GetItems()[i]->GetStyle();
        const double span = 360.0 * values[i] / total;
        if (style && span > 0.0) {
            if (span >= 360.0) {
                // A lone slice is the whole disc; an arc of 360 degrees
                // would leave a seam from the centre.
                QPainterPath disc;
                disc.addEllipse(circle);
                style->DrawPolygon(painter, disc);
            } else {
                QPainterPath slice(anchor);
                slice.arcTo(circle, start, -span);
                slice.closeSubpath();
                style->DrawPolygon(painter, slice);
            }
        }
        start -= span;
    }
    if (IsShowLabel()) {
        start = 90.0;
        for (const double value : values) {
            const double span = 360.0 * value / total;
            if (span > 0.0) {
                // Just outside the rim, on the middle of the slice, so that
                // the text leans away from the disc on every side.
                const double middle = (start - span / 2.0) * M_PI / 180.0;
                const QPointF direction(std::cos(middle), -std::sin(middle));
                const QPointF at = anchor + direction * (radius + 2.0);
                Qt::Alignment alignment = Qt::AlignVCenter;
                if (direction.x() > 0.35)
                    alignment |= Qt::AlignLeft;
                else if (direction.x() < -0.35)
                    alignment |= Qt::AlignRight;
                else
                    alignment = Qt::AlignHCenter | (direction.y() < 0.0 ? Qt::AlignBottom : Qt::AlignTop);
                DrawLabel(painter, LabelText(value), at, alignment, context);
            }
            start -= span;
        }
    }
    return true;
}

void TEPieDiagramRender::DrawSide(QPainter* painter, const std::vector<double>& values, double total,
                                  const QRectF& circle, double depth) const
{
    // Each slice's side: its rim swept down by depth (the band between the
    // rim and its lowered copy, with the lowered slice beneath), in a
    // darker shade of the slice's colour. The top drawn afterwards hides
    // the far half, leaving the near rim as the pie's thickness.
    const QRectF lowered = circle.translated(0.0, depth);
    const QPointF centre = circle.center();
    painter->save();
    painter->setPen(Qt::NoPen);
    double start = 90.0;
    for (size_t i = 0; i < values.size(); ++i) {
        const double span = 360.0 * values[i] / total;
        const TERefPtr<TEStyle> style = GetItems()[i]->GetStyle();
        if (style && span > 0.0) {
            const TEColor c = style->GetColor();
            painter->setBrush(QColor(c.getR(), c.getG(), c.getB(), c.getA()).darker(150));
            QPainterPath side(centre + QPointF(0.0, depth));
            side.arcTo(lowered, start, -span);
            side.closeSubpath();
            QPainterPath band;
            band.arcMoveTo(circle, start);
            band.arcTo(circle, start, -span);
            QPointF end;
            {
                QPainterPath probe;
                probe.arcMoveTo(lowered, start - span);
                end = probe.currentPosition();
            }
            band.lineTo(end);
            band.arcTo(lowered, start - span, span);
            band.closeSubpath();
            painter->drawPath(side);
            painter->drawPath(band);
        }
        start -= span;
    }
    painter->restore();
}

TERefPtr<TEFeatureRender> TEPieDiagramRender::Clone() const
{
    return MakeRef<TEPieDiagramRender>(*this);
}

void TEPieDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("radius")] = mRadius;
    json[QStringLiteral("showShadow")] = mShowShadow;
    json[QStringLiteral("shadowThickness")] = mShadowThickness;
}

bool TEPieDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mRadius = json.value(QStringLiteral("radius")).toInt(20);
    mShowShadow = json.value(QStringLiteral("showShadow")).toBool(false);
    mShadowThickness = json.value(QStringLiteral("shadowThickness")).toDouble(0.0);
    return TEDiagramRender::open(json, error);
}

} // namespace TZObjects
