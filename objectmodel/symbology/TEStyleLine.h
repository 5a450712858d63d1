#pragma once

#include "symbology/TEStyle.h"

namespace TZObjects {

// Base of line symbols: a stroke of a width in style units along each
// line or polygon ring.
class TZOBJECTS_EXPORT TEStyleLine : public TEStyle
{
public:
    StyleType GetStyleType() const override { return LineStyle; }

    double GetWidth() const { return mWidth; }
    void SetWidth(double width) { mWidth = width; }

    bool DrawPoint(QPainter* painter, const QPointF& device, double angle = 0.0) const override;
    bool DrawPolygon(QPainter* painter, const QPainterPath& device, double angle = 0.0) const override;

    bool Equals(const TEStyle& other) const override;
    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json) override;

protected:
    TEStyleLine() = default;
    TEStyleLine(const TEStyleLine&) = default;

private:
    double mWidth = 0.26;
};

} // namespace TZObjects
