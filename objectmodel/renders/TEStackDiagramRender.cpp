#include "renders/TEStackDiagramRender.h"

#include <QPainter>
#include <QPainterPath>

#include <numeric>

namespace TZObjects {

bool TEStackDiagramRender::DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor) const
{
    const std::vector<double> values = ItemValues(feature);
    const double total = std::accumulate(values.begin(), values.end(), 0.0);
    if (!painter || total <= 0.0 || mWidth <= 0)
        return false;
    double bottom = anchor.y();
    for (size_t i = 0; i < values.size(); ++i) {
        const TERefPtr<TEStyle> style = GetItems()[i]->GetStyle();
        const double length = values[i] / total * mMaxHeight;
        if (style && length > 0.0) {
            QPainterPath path;
            path.addRect(QRectF(anchor.x() - mWidth / 2.0, bottom - length, mWidth, length));
            style->DrawPolygon(painter, path);
        }
        bottom -= length;
    }
    return true;
}

TERefPtr<TEFeatureRender> TEStackDiagramRender::Clone() const
{
    return MakeRef<TEStackDiagramRender>(*this);
}

void TEStackDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("width")] = mWidth;
    json[QStringLiteral("maxHeight")] = mMaxHeight;
}

bool TEStackDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mWidth = json.value(QStringLiteral("width")).toInt(20);
    mMaxHeight = json.value(QStringLiteral("maxHeight")).toInt(100);
    return TEDiagramRender::open(json, error);
}

} // namespace TZObjects
