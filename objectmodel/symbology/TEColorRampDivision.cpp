#include "symbology/TEColorRampDivision.h"

namespace TZObjects {

TEColorRampDivision::TEColorRampDivision(const TEColorRamp* ramp, int n)
{
    if (!ramp || n < 1 || !ramp->isValid())
        return;
    mCopy = ramp->clone();
    if (!mCopy)
        return;
    mCopy->setLevel(n);
    mCount = n;
}

TEColor TEColorRampDivision::color(int i, int alpha) const
{
    if (!mCopy)
        return TEColor(0, 0, 0, alpha);
    return mCopy->getColor(i).toTEColor(alpha);
}

} // namespace TZObjects
