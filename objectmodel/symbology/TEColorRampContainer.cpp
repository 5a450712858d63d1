#include "symbology/TEColorRampContainer.h"

namespace TZObjects {

rgb_color<float> TEColorRampContainer::getColor(int i) const
{
    if (i < 0 || i >= getLevel())
        return rgb_color<float>();
    return mColors[size_t(i)];
}

bool TEColorRampContainer::setColor(int i, const rgb_color<float>& color)
{
    if (i < 0 || i >= getLevel())
        return false;
    mColors[size_t(i)] = color;
    return true;
}

bool TEColorRampContainer::deleteColor(int i)
{
    if (i < 0 || i >= getLevel())
        return false;
    mColors.erase(mColors.begin() + i);
    return true;
}

} // namespace TZObjects
