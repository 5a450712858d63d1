#pragma once

#include "symbology/TEStyleLine.h"

namespace TZObjects {

// Base of fill (polygon) symbols: an interior and an optional outline line
// symbol drawn over the rings.
class TZOBJECTS_EXPORT TEStyleFill : public TEStyle
{
public:
    StyleType GetStyleType() const override { return FillStyle; }

    // The outline; null draws none. The fill owns it: Clone copies it.
    TEStyleLine* GetOutline() const { return mOutline.get(); }
    void SetOutline(const TERefPtr<TEStyleLine>& outline) { mOutline = outline; }

    bool DrawPoint(QPainter* painter, const QPointF& device, double angle = 0.0) const override;
    bool DrawLine(QPainter* painter, const QPolygonF& device, double angle = 0.0) const override;
    bool DrawPolygon(QPainter* painter, const QPainterPath& device, double angle = 0.0) const override;

    bool Equals(const TEStyle& other) const override;
    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json) override;

protected:
    TEStyleFill() = default;
    // Deep: the copy gets a clone of the outline.
    TEStyleFill(const TEStyleFill& other);

    // Paints the interior of the path, outline excluded.
    virtual void drawInterior(QPainter* painter, const QPainterPath& device) const = 0;

private:
    TERefPtr<TEStyleLine> mOutline;
};

} // namespace TZObjects
