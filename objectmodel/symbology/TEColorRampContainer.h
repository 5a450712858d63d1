#pragma once

#include "core/TZObjectsExport.h"
#include "symbology/rgb_color.h"

#include <vector>

namespace TZObjects {

// A list of colours, as a ramp split into a number of colours gives it.
class TZOBJECTS_EXPORT TEColorRampContainer
{
public:
    TEColorRampContainer() = default;
    explicit TEColorRampContainer(std::vector<rgb_color<float>> colors) : mColors(std::move(colors)) {}

    // The number of colours.
    int getLevel() const { return int(mColors.size()); }
    bool isEmpty() const { return mColors.empty(); }
    // Colour i; black when i is out of range.
    rgb_color<float> getColor(int i) const;
    // Returns false when i is out of range.
    bool setColor(int i, const rgb_color<float>& color);
    void addColor(const rgb_color<float>& color) { mColors.push_back(color); }
    bool deleteColor(int i);
    void deleteAll() { mColors.clear(); }

    const std::vector<rgb_color<float>>& colors() const { return mColors; }

private:
    std::vector<rgb_color<float>> mColors;
};

} // namespace TZObjects
