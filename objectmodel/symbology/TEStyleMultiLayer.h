#pragma once

#include "symbology/TEStyle.h"

#include <vector>

namespace TZObjects {

// A symbol made of several symbols of one kind drawn over each other, in
// the order of their priorities (lower first; equal priorities keep their
// layer order). Its kind is fixed at construction: MulLayerPoint holds
// point styles, MulLayerLine line styles, MulLayerPolygon fill styles (and
// line styles, drawn over the rings).
class TZOBJECTS_EXPORT TEStyleMultiLayer : public TEStyle
{
public:
    explicit TEStyleMultiLayer(StyleType type = PointStyle);

    StyleType GetStyleType() const override { return mType; }
    StyleClass GetStyleClass() const override;
    // Deep: every layer is cloned.
    TERefPtr<TEStyle> Clone() const override;

    int GetLayerCount() const { return int(mLayers.size()); }
    // Null when index is out of range.
    TEStyle* GetLayer(int index) const;
    // Adds a layer on top; refuses (false) a null style or one of a kind
    // this symbol cannot hold.
    bool AddLayer(const TERefPtr<TEStyle>& layer);
    bool InsertLayer(int index, const TERefPtr<TEStyle>& layer);
    bool RemoveLayer(int index);
    void RemoveAllLayers() { mLayers.clear(); }
    // Indexes of the layers in drawing order.
    std::vector<int> DrawingOrder() const;
    // Whether a style of that kind can be a layer of this symbol.
    bool CanHold(const TEStyle* layer) const;

    // The colour of the first layer; setting it colours every layer.
    TEColor GetColor() const override;
    void SetColor(const TEColor& color) override;
    void SetUnits(int units) override;

    void SetupDC(QPainter* painter) const override;
    bool DrawPoint(QPainter* painter, const QPointF& device, double angle = 0.0) const override;
    bool DrawLine(QPainter* painter, const QPolygonF& device, double angle = 0.0) const override;
    bool DrawPolygon(QPainter* painter, const QPainterPath& device, double angle = 0.0) const override;

    bool Equals(const TEStyle& other) const override;
    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json) override;

private:
    TEStyleMultiLayer(const TEStyleMultiLayer& other);

    template <class DrawOne>
    bool drawLayers(QPainter* painter, DrawOne drawOne) const;

    StyleType mType = PointStyle;
    std::vector<TERefPtr<TEStyle>> mLayers;
};

} // namespace TZObjects
