#include "symbology/QuickStyle.h"

#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"

namespace TZObjects {

TERefPtr<TEStyle> QuickStyle::MakePointStyle(int shapeType, const TEColor& color, double size,
                                             const TEColor& outlineColor, double outlineWidth)
{
    auto point = MakeRef<TEStyleSimplePoint>();
    point->SetShapeType(shapeType);
    point->SetColor(color);
    point->SetUnits(TEStyle::Millimeter);
    point->SetSize(size);
    point->SetOutlineColor(outlineColor);
    point->SetOutlineWidth(outlineWidth);
    return point;
}

TERefPtr<TEStyle> QuickStyle::MakeLineStyle(const TEColor& color, double width)
{
    auto line = MakeRef<TEStyleSimpleLine>();
    line->SetUnits(TEStyle::Millimeter);
    line->SetColor(color);
    line->SetWidth(width);
    return line;
}

TERefPtr<TEStyle> QuickStyle::MakeFillStyle(const TEColor& color, const TEColor& outlineColor,
                                            double outlineWidth)
{
    auto fill = MakeRef<TEStyleSimpleFill>();
    fill->SetColor(color);
    fill->SetOutline(MakeLineStyle(outlineColor, outlineWidth).cast<TEStyleLine>());
    return fill;
}

TERefPtr<TEStyle> QuickStyle::MakeDefaultStyle(TEStyle::StyleType type, const TEColor& color)
{
    const TEColor outline(0x40, 0x40, 0x40);
    switch (type) {
    case TEStyle::PointStyle: return MakePointStyle(TEStyleSimplePoint::Circle, color, 2.0, outline, 0.1);
    case TEStyle::LineStyle: return MakeLineStyle(color, 0.26);
    case TEStyle::FillStyle: return MakeFillStyle(color, outline, 0.26);
    }
    return TERefPtr<TEStyle>();
}

} // namespace TZObjects
