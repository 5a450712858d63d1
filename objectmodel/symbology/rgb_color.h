#pragma once

#include "core/TEColor.h"

#include <QColor>

namespace TZObjects {

// A colour of a colour ramp: red, green and blue on the 0-255 scale. The
// components are kept as T (float in the ramps) so interpolation does not
// round; converting to TEColor or QColor rounds to bytes.
template <class T>
struct rgb_color
{
    T r = T(0);
    T g = T(0);
    T b = T(0);

    rgb_color() = default;
    rgb_color(T red, T green, T blue) : r(red), g(green), b(blue) {}

    static rgb_color fromTEColor(const TEColor& c) { return rgb_color(T(c.getR()), T(c.getG()), T(c.getB())); }
    static rgb_color fromQColor(const QColor& c) { return rgb_color(T(c.red()), T(c.green()), T(c.blue())); }

    TEColor toTEColor(int alpha = 255) const { return TEColor(toByte(r), toByte(g), toByte(b), alpha); }
    QColor toQColor(int alpha = 255) const { return QColor(toByte(r), toByte(g), toByte(b), alpha); }

    bool operator==(const rgb_color& o) const { return r == o.r && g == o.g && b == o.b; }
    bool operator!=(const rgb_color& o) const { return !(*this == o); }

    static int toByte(T v)
    {
        const double d = double(v) + 0.5;
        return d <= 0.0 ? 0 : d >= 255.0 ? 255 : int(d);
    }
};

} // namespace TZObjects
