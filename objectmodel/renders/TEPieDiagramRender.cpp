#include "renders/TEPieDiagramRender.h"

#include "renders/TEDrawContext.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace TZObjects {

namespace {

// An arc of the circle as straight segments, from start degrees over span
// degrees (negative: clockwise), appended to path with a line to its first
// point. Segments are short enough that the chord never strays more than a
// tenth of a pixel from the circle; straight edges fill and stroke much
// faster than the curves of QPainterPath::arcTo.
void appendArc(QPainterPath& path, const QPointF& centre, double radius, double start, double span)
{
    const double tolerance = std::min(0.1, radius / 2.0);
    const double step = radius > 0.0 ? 2.0 * std::acos(1.0 - tolerance / radius) * 180.0 / M_PI : 360.0;
    const int segments = std::max(1, int(std::ceil(std::abs(span) / std::max(step, 1.0))));
    for (int i = 0; i <= segments; ++i) {
        const double angle = (start + span * i / segments) * M_PI / 180.0;
        path.lineTo(centre + QPointF(std::cos(angle) * radius, -std::sin(angle) * radius));
    }
}

QPointF onCircle(const QPointF& centre, double radius, double degrees)
{
    const double angle = degrees * M_PI / 180.0;
    return centre + QPointF(std::cos(angle) * radius, -std::sin(angle) * radius);
}

// A slice from the centre, or the whole disc when it spans the circle (an
// arc of 360 degrees from the centre would leave a seam).
QPainterPath slicePath(const QPointF& centre, double radius, double start, double span)
{
    if (std::abs(span) >= 360.0) {
        QPainterPath disc(onCircle(centre, radius, start));
        appendArc(disc, centre, radius, start, -360.0);
        disc.closeSubpath();
        return disc;
    }
    QPainterPath slice(centre);
    appendArc(slice, centre, radius, start, span);
    slice.closeSubpath();
    return slice;
}

} // namespace

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
        if (style && span > 0.0)
            style->DrawPolygon(painter, slicePath(anchor, radius, start, -span));
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
    const QPointF centre = circle.center();
    const QPointF lowered = centre + QPointF(0.0, depth);
    const double radius = circle.width() / 2.0;
    painter->save();
    painter->setPen(Qt::NoPen);
    double start = 90.0;
    for (size_t i = 0; i < values.size(); ++i) {
        const double span = 360.0 * values[i] / total;
        const TERefPtr<TEStyle> style = GetItems()[i]->GetStyle();
        if (style && span > 0.0) {
            const TEColor c = style->GetColor();
            painter->setBrush(QColor(c.getR(), c.getG(), c.getB(), c.getA()).darker(150));
            painter->drawPath(slicePath(lowered, radius, start, -span));
            // The band between the rim and its lowered copy.
            QPainterPath band(onCircle(centre, radius, start));
            appendArc(band, centre, radius, start, -span);
            appendArc(band, lowered, radius, start - span, span);
            band.closeSubpath();
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
