#pragma once

#include "symbology/TEStyle.h"

namespace TZObjects {

// Shortcuts that build the default symbols of the panels.
class TZOBJECTS_EXPORT QuickStyle
{
public:
    // A simple point symbol of the shape, colour and size (width and
    // height, millimetres) with an outline of the colour and width.
    static TERefPtr<TEStyle> MakePointStyle(int shapeType, const TEColor& color, double size,
                                            const TEColor& outlineColor, double outlineWidth);
    // A simple line symbol of the colour and width (millimetres).
    static TERefPtr<TEStyle> MakeLineStyle(const TEColor& color, double width);
    // A solid simple fill with a simple line outline.
    static TERefPtr<TEStyle> MakeFillStyle(const TEColor& color, const TEColor& outlineColor,
                                           double outlineWidth);
    // The default symbol of a style type, in the colour.
    static TERefPtr<TEStyle> MakeDefaultStyle(TEStyle::StyleType type, const TEColor& color);
};

} // namespace TZObjects
