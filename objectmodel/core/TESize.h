#pragma once

namespace TZObjects {

// A width (X) and height (Y).
class TESize
{
public:
    TESize() = default;
    TESize(double x, double y) : mX(x), mY(y) {}

    double X() const { return mX; }
    double Y() const { return mY; }
    void SetX(double x) { mX = x; }
    void SetY(double y) { mY = y; }

    bool operator==(const TESize& o) const { return mX == o.mX && mY == o.mY; }
    bool operator!=(const TESize& o) const { return !(*this == o); }

private:
    double mX = 0.0;
    double mY = 0.0;
};

} // namespace TZObjects
