#pragma once

#include "core/TEColor.h"
#include "symbology/TEColorRamp.h"

namespace TZObjects {

// A ramp divided into n colours, read one colour at a time: a copy of the
// ramp set to n colours, so that the ramp itself (often the one a combo box
// shows) keeps its own division. Every panel that colours rows from a ramp
// divides it through this class, so that the same ramp and count give the
// same colours everywhere.
class TZOBJECTS_EXPORT TEColorRampDivision
{
public:
    // Without a ramp, or with n < 1, the division has no colours.
    TEColorRampDivision(const TEColorRamp* ramp, int n);

    bool isValid() const { return bool(mCopy); }
    int count() const { return mCount; }
    // Colour i (clamped into 0..count()-1) with the given alpha; opaque black
    // when the division is not valid.
    TEColor color(int i, int alpha = 255) const;

private:
    TERefPtr<TEColorRamp> mCopy;
    int mCount = 0;
};

} // namespace TZObjects
