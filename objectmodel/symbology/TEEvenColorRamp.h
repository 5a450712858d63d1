#pragma once

#include "symbology/TEColorRamp.h"

#include <vector>

namespace TZObjects {

// A ramp through source colours spread evenly from start to end, colours
// in between interpolated. A split into n colours starts with the first
// source colour and ends with the last. A discrete ramp (qualitative
// schemes) gives its source colours themselves, in order, as long as n is
// not above their number.
class TZOBJECTS_EXPORT TEEvenColorRamp : public TEColorRamp
{
public:
    TEEvenColorRamp() = default;
    TEEvenColorRamp(const rgb_color<float>& start, const rgb_color<float>& end);
    explicit TEEvenColorRamp(std::vector<rgb_color<float>> sourceColors, bool discrete = false);
    TEEvenColorRamp(const TEEvenColorRamp& other) = default;
    TEEvenColorRamp& operator=(const TEEvenColorRamp& other) = default;

    TERefPtr<TEColorRamp> clone() const override;

    int getSourceColorCount() const { return int(mSources.size()); }
    // Black when i is out of range.
    rgb_color<float> getSourceColor(int i) const;
    // Sets source colour i; an index at or past the end extends the list,
    // the new colours taking the given one.
    void setSourceColor(int i, const rgb_color<float>& color);
    void addSourceColor(const rgb_color<float>& color) { mSources.push_back(color); }
    bool removeSourceColor(int i);
    const std::vector<rgb_color<float>>& sourceColors() const { return mSources; }

    bool isDiscrete() const override { return mDiscrete; }
    void setDiscrete(bool discrete) { mDiscrete = discrete; }

    rgb_color<float> colorAt(double t) const override;
    bool isValid() const override { return !mSources.empty(); }

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json) override;

protected:
    int naturalLevel() const override { return int(mSources.size()); }
    rgb_color<float> splitColor(int i, int n) const override;

private:
    std::vector<rgb_color<float>> mSources;
    bool mDiscrete = false;
};

} // namespace TZObjects
