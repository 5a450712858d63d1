#include "renders/TEHistogramDiagramRender.h"

#include "renders/TEDrawContext.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace TZObjects {

bool TEHistogramDiagramRender::DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                                           const TEDrawContext& context) const
{
    const std::vector<double> values = ItemValues(feature);
    const double own = values.empty() ? 0.0 : *std::max_element(values.begin(), values.end());
    if (!painter || own <= 0.0)
        return false;
    // A feature the preparation did not see never outgrows the maximum.
    const double largest = std::max(own, mLargestValue);
    const double width = context.ToPixels(mWidth, mUnitType);
    const double maxLength = context.ToPixels(mMaxHeight, TEStyle::Point);
    const double spread = width * double(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        const TERefPtr<TEStyle> style = GetItems()[i]->GetStyle();
        const double length = values[i] / largest * maxLength;
        if (!style || length <= 0.0)
            continue;
        const double offset = double(i) * width - spread / 2.0;
        const QRectF bar = mVertical ? QRectF(anchor.x() + offset, anchor.y() - length, width, length)
                                     : QRectF(anchor.x(), anchor.y() + offset, length, width);
        QPainterPath path;
        path.addRect(bar);
        style->DrawPolygon(painter, path);
    }
    if (IsShowLabel()) {
        for (size_t i = 0; i < values.size(); ++i) {
            const double length = values[i] / largest * maxLength;
            const double middle = double(i) * width + width / 2.0 - spread / 2.0;
            if (mVertical)
                DrawLabel(painter, LabelText(values[i]), QPointF(anchor.x() + middle, anchor.y() - length - 1.0),
                          Qt::AlignHCenter | Qt::AlignBottom, context);
            else
                DrawLabel(painter, LabelText(values[i]), QPointF(anchor.x() + length + 2.0, anchor.y() + middle),
                          Qt::AlignLeft | Qt::AlignVCenter, context);
        }
    }
    return true;
}

void TEHistogramDiagramRender::PrepareDiagrams(const std::vector<TEFeature*>& features)
{
    mLargestValue = 0.0;
    for (TEFeature* feature : features) {
        for (const double value : ItemValues(feature))
            mLargestValue = std::max(mLargestValue, value);
    }
}

TERefPtr<TEFeatureRender> TEHistogramDiagramRender::Clone() const
{
    return MakeRef<TEHistogramDiagramRender>(*this);
}

void TEHistogramDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("width")] = mWidth;
    json[QStringLiteral("maxHeight")] = mMaxHeight;
    json[QStringLiteral("unitType")] = mUnitType;
    json[QStringLiteral("vertical")] = mVertical;
}

bool TEHistogramDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mWidth = json.value(QStringLiteral("width")).toDouble(10.0);
    mMaxHeight = json.value(QStringLiteral("maxHeight")).toInt(100);
    mUnitType = json.value(QStringLiteral("unitType")).toInt(0);
    mVertical = json.value(QStringLiteral("vertical")).toBool(true);
    return TEDiagramRender::open(json, error);
}

} // namespace TZObjects
