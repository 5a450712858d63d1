#include "symbology/TEEvenColorRamp.h"

#include <QColor>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace TZObjects {

TEEvenColorRamp::TEEvenColorRamp(const rgb_color<float>& start, const rgb_color<float>& end)
    : mSources{start, end}
{
}

TEEvenColorRamp::TEEvenColorRamp(std::vector<rgb_color<float>> sourceColors, bool discrete)
    : mSources(std::move(sourceColors))
    , mDiscrete(discrete)
{
}

TERefPtr<TEColorRamp> TEEvenColorRamp::clone() const
{
    return TERefPtr<TEColorRamp>(new TEEvenColorRamp(*this));
}

rgb_color<float> TEEvenColorRamp::getSourceColor(int i) const
{
    if (i < 0 || i >= getSourceColorCount())
        return rgb_color<float>();
    return mSources[size_t(i)];
}

void TEEvenColorRamp::setSourceColor(int i, const rgb_color<float>& color)
{
    if (i < 0)
        return;
    if (i >= getSourceColorCount())
        mSources.resize(size_t(i) + 1, color);
    mSources[size_t(i)] = color;
}

bool TEEvenColorRamp::removeSourceColor(int i)
{
    if (i < 0 || i >= getSourceColorCount())
        return false;
    mSources.erase(mSources.begin() + i);
    return true;
}

rgb_color<float> TEEvenColorRamp::colorAt(double t) const
{
    if (mSources.empty())
        return rgb_color<float>();
    if (mSources.size() == 1 || !(t > 0.0))
        return mSources.front();
    if (t >= 1.0)
        return mSources.back();
    const double position = t * double(mSources.size() - 1);
    const size_t index = size_t(std::floor(position));
    const float f = float(position - double(index));
    const rgb_color<float>& a = mSources[index];
    const rgb_color<float>& b = mSources[std::min(index + 1, mSources.size() - 1)];
    return rgb_color<float>(a.r + (b.r - a.r) * f, a.g + (b.g - a.g) * f, a.b + (b.b - a.b) * f);
}

rgb_color<float> TEEvenColorRamp::splitColor(int i, int n) const
{
    if (mDiscrete && n <= int(mSources.size()))
        return mSources[size_t(i)];
    if (n == 1)
        return colorAt(0.0);
    return colorAt(double(i) / double(n - 1));
}

void TEEvenColorRamp::save(QJsonObject& json) const
{
    TEColorRamp::save(json);
    json.insert("kind", QStringLiteral("even"));
    json.insert("discrete", mDiscrete);
    QJsonArray colors;
    for (const rgb_color<float>& c : mSources)
        colors.append(QJsonArray{c.r, c.g, c.b});
    json.insert("colors", colors);
}

bool TEEvenColorRamp::open(const QJsonObject& json)
{
    // Colours are "#rrggbb" texts (catalog files) or [r, g, b] arrays on
    // the 0-255 scale (saved ramps, which keep fractions).
    std::vector<rgb_color<float>> sources;
    for (const QJsonValue& value : json.value("colors").toArray()) {
        if (value.isString()) {
            const QColor c(value.toString());
            if (!c.isValid())
                return false;
            sources.push_back(rgb_color<float>::fromQColor(c));
        } else if (value.isArray() && value.toArray().size() == 3) {
            const QJsonArray a = value.toArray();
            sources.emplace_back(float(a[0].toDouble()), float(a[1].toDouble()), float(a[2].toDouble()));
        } else {
            return false;
        }
    }
    if (!TEColorRamp::open(json))
        return false;
    mSources = std::move(sources);
    mDiscrete = json.value("discrete").toBool(category() == Qualitative);
    return true;
}

} // namespace TZObjects
