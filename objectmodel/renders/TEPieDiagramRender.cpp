#include "renders/TEPieDiagramRender.h"

#include <QPainter>
#include <QPainterPath>

#include <numeric>

namespace TZObjects {

bool TEPieDiagramRender::DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor) const
{
    const std::vector<double> values = ItemValues(feature);
    const double total = std::accumulate(values.begin(), values.end(), 0.0);
    if (!painter || total <= 0.0 || mRadius <= 0)
        return false;
    const QRectF circle(anchor.x() - mRadius, anchor.y() - mRadius, 2.0 * mRadius, 2.0 * mRadius);
    if (mShowShadow && mShadowThickness > 0.0) {
        painter->save();
        painter->setPen(Qt::NoPen);
        painter->setBrush(QColor(0, 0, 0, 80));
        const double offset = mShadowThickness * mRadius;
        painter->drawEllipse(circle.translated(offset, offset));
        painter->restore();
    }
    double start = 90.0;
    for (size_t i = 0; i < values.size(); ++i) {
        const TERefPtr<TEStyle> style = GetItems()[i]->GetStyle();
        const double span = 360.0 * values[i] / total;
        if (style && span > 0.0) {
            QPainterPath slice(anchor);
            slice.arcTo(circle, start, -span);
            slice.closeSubpath();
            style->DrawPolygon(painter, slice);
        }
        start -= span;
    }
    return true;
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
