#pragma once

#include "TZObjectsExport.h"

#include <cstdint>

namespace TZObjects {

// A colour of the object model: red, green, blue and alpha bytes. The packed
// form is 0xAARRGGBB, the same as Qt's QRgb.
class TZOBJECTS_EXPORT TEColor
{
public:
    TEColor() = default;
    TEColor(int r, int g, int b, int a = 255)
        : mR(uint8_t(r)), mG(uint8_t(g)), mB(uint8_t(b)), mA(uint8_t(a)) {}
    // From a packed colour whose alpha byte is ignored, and an alpha.
    TEColor(uint32_t packed, int alpha)
        : TEColor(int((packed >> 16) & 0xFF), int((packed >> 8) & 0xFF), int(packed & 0xFF), alpha) {}

    // Takes the packed value as a whole, alpha included.
    TEColor& operator=(uint32_t packed)
    {
        *this = TEColor(packed, int(packed >> 24));
        return *this;
    }

    int getR() const { return mR; }
    int getG() const { return mG; }
    int getB() const { return mB; }
    int getA() const { return mA; }
    void setR(int v) { mR = uint8_t(v); }
    void setG(int v) { mG = uint8_t(v); }
    void setB(int v) { mB = uint8_t(v); }
    void setA(int v) { mA = uint8_t(v); }

    uint32_t GetColor() const { return (uint32_t(mA) << 24) | (uint32_t(mR) << 16) | (uint32_t(mG) << 8) | mB; }

    bool operator==(const TEColor& o) const { return mR == o.mR && mG == o.mG && mB == o.mB && mA == o.mA; }
    bool operator!=(const TEColor& o) const { return !(*this == o); }

private:
    uint8_t mR = 0;
    uint8_t mG = 0;
    uint8_t mB = 0;
    uint8_t mA = 255;
};

} // namespace TZObjects
