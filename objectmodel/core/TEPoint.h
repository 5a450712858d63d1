#pragma once

namespace TZObjects {

// A point in map or device coordinates.
class TEPoint
{
public:
    TEPoint() = default;
    TEPoint(double x, double y) : mX(x), mY(y) {}

    double X() const { return mX; }
    double Y() const { return mY; }
    void SetX(double x) { mX = x; }
    void SetY(double y) { mY = y; }

    TEPoint operator-(const TEPoint& o) const { return TEPoint(mX - o.mX, mY - o.mY); }
    TEPoint operator+(const TEPoint& o) const { return TEPoint(mX + o.mX, mY + o.mY); }
    bool operator==(const TEPoint& o) const { return mX == o.mX && mY == o.mY; }
    bool operator!=(const TEPoint& o) const { return !(*this == o); }

private:
    double mX = 0.0;
    double mY = 0.0;
};

} // namespace TZObjects
