#include "renders/TEStackDiagramRender.h"

#include "renders/TEDrawContext.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <numeric>

namespace TZObjects {

bool TEStackDiagramRender::DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                                       const TEDrawContext& context) const
{
    const std::vector<double> values = ItemValues(feature);
    const double total = std::accumulate(values.begin(), values.end(), 0.0);
    const double width = context.ToPixels(mWidth, TEStyle::Point);
    const double height = context.ToPixels(mMaxHeight, TEStyle::Point);
    if (!painter || total <= 0.0 || width <= 0.0)
        return false;
    // A feature the preparation did not see never outgrows the maximum.
    const double largest = std::max(total, mLargestTotal);
    double bottom = anchor.y();
    for (size_t i = 0; i < values.size(); ++i) {
        const TERefPtr<TEStyle> style = GetItems()[i]->GetStyle();
        const double length = values[i] / largest * height;
        if (style && length > 0.0) {
            QPainterPath path;
            path.addRect(QRectF(anchor.x() - width / 2.0, bottom - length, width, length));
            style->DrawPolygon(painter, path);
        }
        if (IsShowLabel() && values[i] > 0.0)
            DrawLabel(painter, LabelText(values[i]), QPointF(anchor.x() + width / 2.0 + 2.0, bottom - length / 2.0),
                      Qt::AlignLeft | Qt::AlignVCenter, context);
        bottom -= length;
    }
    return true;
}

void TEStackDiagramRender::PrepareDiagrams(const std::vector<TEFeature*>& features)
{
    mLargestTotal = 0.0;
    for (TEFeature* feature : features) {
        const std::vector<double> values = ItemValues(feature);
        mLargestTotal = std::max(mLargestTotal, std::accumulate(values.begin(), values.end(), 0.0));
    }
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
