#pragma once

#include "symbology/TEStylePoint.h"

namespace TZObjects {

// A marker of a simple geometric shape, filled with the style's colour and
// drawn with an outline.
class TZOBJECTS_EXPORT TEStyleSimplePoint : public TEStylePoint
{
public:
    enum ShapeType
    {
        Square = 0,
        Circle = 1,
        Triangle = 2,
        Diamond = 3,
        Cross = 4,
        XCross = 5,
        Star = 6,
        Pentagon = 7,
        Hexagon = 8,
        ShapeTypeCount
    };

    TEStyleSimplePoint() = default;

    StyleClass GetStyleClass() const override { return SimplePoint; }
    TERefPtr<TEStyle> Clone() const override;

    int GetShapeType() const { return mShapeType; }
    // Unknown shapes are drawn as circles.
    void SetShapeType(int shapeType) { mShapeType = shapeType; }
    TEColor GetOutlineColor() const { return mOutlineColor; }
    void SetOutlineColor(const TEColor& color) { mOutlineColor = color; }
    // In style units; 0 draws no outline.
    double GetOutlineWidth() const { return mOutlineWidth; }
    void SetOutlineWidth(double width) { mOutlineWidth = width; }

    void SetupDC(QPainter* painter) const override;

    bool Equals(const TEStyle& other) const override;
    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json) override;

protected:
    void drawMarker(QPainter* painter, double w, double h) const override;

private:
    int mShapeType = Circle;
    TEColor mOutlineColor = TEColor(0, 0, 0);
    double mOutlineWidth = 0.1;
};

} // namespace TZObjects
