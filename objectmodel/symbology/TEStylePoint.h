#pragma once

#include "symbology/TEStyle.h"

namespace TZObjects {

// Base of point (marker) symbols: a marker of width x height style units,
// turned by an angle and shifted by an offset, drawn at each point.
class TZOBJECTS_EXPORT TEStylePoint : public TEStyle
{
public:
    StyleType GetStyleType() const override { return PointStyle; }

    double GetWidth() const { return mWidth; }
    void SetWidth(double width) { mWidth = width; }
    double GetHeight() const { return mHeight; }
    void SetHeight(double height) { mHeight = height; }
    // Sets width and height at once.
    void SetSize(double size) { mWidth = mHeight = size; }
    // Degrees, counter-clockwise on screen.
    double GetAngle() const { return mAngle; }
    void SetAngle(double angle) { mAngle = angle; }
    // Shift of the marker from its point, in style units (x right, y up).
    double GetOffsetX() const { return mOffsetX; }
    double GetOffsetY() const { return mOffsetY; }
    void SetOffset(double x, double y) { mOffsetX = x; mOffsetY = y; }

    bool DrawPoint(QPainter* painter, const QPointF& device, double angle = 0.0) const override;
    bool DrawLine(QPainter* painter, const QPolygonF& device, double angle = 0.0) const override;
    bool DrawPolygon(QPainter* painter, const QPainterPath& device, double angle = 0.0) const override;

    bool Equals(const TEStyle& other) const override;
    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json) override;

protected:
    TEStylePoint() = default;
    TEStylePoint(const TEStylePoint&) = default;

    // Draws the marker centred on the origin of the painter, whose
    // transform already holds position, offset and rotation. w and h are
    // the marker's size in pixels.
    virtual void drawMarker(QPainter* painter, double w, double h) const = 0;

private:
    double mWidth = 2.0;
    double mHeight = 2.0;
    double mAngle = 0.0;
    double mOffsetX = 0.0;
    double mOffsetY = 0.0;
};

} // namespace TZObjects
