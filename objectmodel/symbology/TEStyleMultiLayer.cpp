#include "symbology/TEStyleMultiLayer.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace TZObjects {

TEStyleMultiLayer::TEStyleMultiLayer(StyleType type)
    : mType(type)
{
}

TEStyleMultiLayer::TEStyleMultiLayer(const TEStyleMultiLayer& other)
    : TEStyle(other)
    , mType(other.mType)
{
    mLayers.reserve(other.mLayers.size());
    for (const TERefPtr<TEStyle>& layer : other.mLayers)
        mLayers.push_back(layer->Clone());
}

TEStyle::StyleClass TEStyleMultiLayer::GetStyleClass() const
{
    switch (mType) {
    case LineStyle: return MulLayerLine;
    case FillStyle: return MulLayerPolygon;
    default: return MulLayerPoint;
    }
}

TERefPtr<TEStyle> TEStyleMultiLayer::Clone() const
{
    return TERefPtr<TEStyle>(new TEStyleMultiLayer(*this));
}

TEStyle* TEStyleMultiLayer::GetLayer(int index) const
{
    if (index < 0 || index >= GetLayerCount())
        return nullptr;
    return mLayers[size_t(index)].get();
}

bool TEStyleMultiLayer::CanHold(const TEStyle* layer) const
{
    if (!layer || layer == this)
        return false;
    const StyleType type = layer->GetStyleType();
    // Outlines drawn over a fill are line styles.
    return type == mType || (mType == FillStyle && type == LineStyle);
}

bool TEStyleMultiLayer::AddLayer(const TERefPtr<TEStyle>& layer)
{
    return InsertLayer(GetLayerCount(), layer);
}

bool TEStyleMultiLayer::InsertLayer(int index, const TERefPtr<TEStyle>& layer)
{
    if (!CanHold(layer.get()) || index < 0 || index > GetLayerCount())
        return false;
    mLayers.insert(mLayers.begin() + index, layer);
    return true;
}

bool TEStyleMultiLayer::RemoveLayer(int index)
{
    if (index < 0 || index >= GetLayerCount())
        return false;
    mLayers.erase(mLayers.begin() + index);
    return true;
}

std::vector<int> TEStyleMultiLayer::DrawingOrder() const
{
    std::vector<int> order(mLayers.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [this](int a, int b) {
        return mLayers[size_t(a)]->GetPriority() < mLayers[size_t(b)]->GetPriority();
    });
    return order;
}

TEColor TEStyleMultiLayer::GetColor() const
{
    return mLayers.empty() ? TEStyle::GetColor() : mLayers.front()->GetColor();
}

void TEStyleMultiLayer::SetColor(const TEColor& color)
{
    TEStyle::SetColor(color);
    for (const TERefPtr<TEStyle>& layer : mLayers)
        layer->SetColor(color);
}

void TEStyleMultiLayer::SetUnits(int units)
{
    TEStyle::SetUnits(units);
    for (const TERefPtr<TEStyle>& layer : mLayers)
        layer->SetUnits(units);
}

void TEStyleMultiLayer::SetupDC(QPainter* painter) const
{
    if (!mLayers.empty())
        mLayers.front()->SetupDC(painter);
}

template <class DrawOne>
bool TEStyleMultiLayer::drawLayers(QPainter* painter, DrawOne drawOne) const
{
    if (!painter || mLayers.empty())
        return false;
    painter->save();
    applyTransparency(painter);
    bool drawn = false;
    for (int index : DrawingOrder())
        drawn = drawOne(mLayers[size_t(index)].get()) || drawn;
    painter->restore();
    return drawn;
}

bool TEStyleMultiLayer::DrawPoint(QPainter* painter, const QPointF& device, double angle) const
{
    return drawLayers(painter, [&](const TEStyle* layer) { return layer->DrawPoint(painter, device, angle); });
}

bool TEStyleMultiLayer::DrawLine(QPainter* painter, const QPolygonF& device, double angle) const
{
    return drawLayers(painter, [&](const TEStyle* layer) { return layer->DrawLine(painter, device, angle); });
}

bool TEStyleMultiLayer::DrawPolygon(QPainter* painter, const QPainterPath& device, double angle) const
{
    return drawLayers(painter, [&](const TEStyle* layer) { return layer->DrawPolygon(painter, device, angle); });
}

bool TEStyleMultiLayer::Equals(const TEStyle& other) const
{
    if (!TEStyle::Equals(other))
        return false;
    const auto& multi = static_cast<const TEStyleMultiLayer&>(other);
    if (mType != multi.mType || mLayers.size() != multi.mLayers.size())
        return false;
    for (size_t i = 0; i < mLayers.size(); ++i) {
        if (!mLayers[i]->Equals(*multi.mLayers[i]))
            return false;
    }
    return true;
}

void TEStyleMultiLayer::save(QJsonObject& json) const
{
    TEStyle::save(json);
    QJsonArray layers;
    for (const TERefPtr<TEStyle>& layer : mLayers) {
        QJsonObject layerJson;
        layer->save(layerJson);
        layers.append(layerJson);
    }
    json.insert("layers", layers);
}

bool TEStyleMultiLayer::open(const QJsonObject& json)
{
    const QJsonValue typeValue = json.value("type");
    if (typeValue.isString()) {
        const StyleClass styleClass = StyleClassFromName(typeValue.toString());
        if (styleClass == MulLayerPoint)
            mType = PointStyle;
        else if (styleClass == MulLayerLine)
            mType = LineStyle;
        else if (styleClass == MulLayerPolygon)
            mType = FillStyle;
        else
            return false;
    }
    std::vector<TERefPtr<TEStyle>> layers;
    for (const QJsonValue& value : json.value("layers").toArray()) {
        TERefPtr<TEStyle> layer = TEStyle::FromJson(value.toObject());
        if (!CanHold(layer.get()))
            return false;
        layers.push_back(layer);
    }
    if (!TEStyle::open(json))
        return false;
    mLayers = std::move(layers);
    return true;
}

} // namespace TZObjects
