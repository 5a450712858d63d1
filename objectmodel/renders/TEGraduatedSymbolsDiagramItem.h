#pragma once

#include "symbology/TEStyle.h"

namespace TZObjects {

// One class of a graduated symbols diagram: the symbol drawn for values
// from the lower to the upper bound, both included.
class TZOBJECTS_EXPORT TEGraduatedSymbolsDiagramItem
{
public:
    TEGraduatedSymbolsDiagramItem() = default;
    TEGraduatedSymbolsDiagramItem(const TERefPtr<TEStyle>& style, double lower, double upper)
        : mStyle(style), mLower(lower), mUpper(upper) {}

    TERefPtr<TEStyle> style() const { return mStyle; }
    void setStyle(const TERefPtr<TEStyle>& style) { mStyle = style; }
    double lower() const { return mLower; }
    void setLower(double lower) { mLower = lower; }
    double upper() const { return mUpper; }
    void setUpper(double upper) { mUpper = upper; }

    bool Contains(double value) const { return mLower <= value && value <= mUpper; }

private:
    TERefPtr<TEStyle> mStyle;
    double mLower = 0.0;
    double mUpper = 0.0;
};

} // namespace TZObjects
