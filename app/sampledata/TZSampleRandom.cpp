#include "TZSampleRandom.h"

#include <cmath>

namespace {

std::uint64_t splitMix(std::uint64_t x)
{
    x += 0x9E3779B97F4A7C15ull;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
    return x ^ (x >> 31);
}

double toUnit(std::uint64_t bits)
{
    return static_cast<double>(bits >> 11) * (1.0 / 9007199254740992.0);
}

double smooth(double t)
{
    return t * t * (3.0 - 2.0 * t);
}

} // namespace

TZSampleRandom::TZSampleRandom(std::uint64_t seed)
    : mState(seed)
{
}

std::uint64_t TZSampleRandom::next()
{
    mState += 0x9E3779B97F4A7C15ull;
    return splitMix(mState);
}

double TZSampleRandom::uniform()
{
    return toUnit(next());
}

double TZSampleRandom::uniform(double low, double high)
{
    return low + (high - low) * uniform();
}

int TZSampleRandom::index(int count)
{
    return static_cast<int>(uniform() * count);
}

double TZSampleRandom::normal()
{
    const double u1 = 1.0 - uniform();
    const double u2 = uniform();
    return std::sqrt(-2.0 * std::log(u1)) * std::cos(2.0 * M_PI * u2);
}

double TZSampleRandom::logNormal(double median, double sigma)
{
    return median * std::exp(sigma * normal());
}

bool TZSampleRandom::chance(double probability)
{
    return uniform() < probability;
}

double TZSampleRandom::hash01(std::uint64_t seed, std::int64_t a, std::int64_t b, std::int64_t c)
{
    std::uint64_t h = splitMix(seed);
    h = splitMix(h ^ static_cast<std::uint64_t>(a));
    h = splitMix(h ^ static_cast<std::uint64_t>(b));
    h = splitMix(h ^ static_cast<std::uint64_t>(c));
    return toUnit(h);
}

double TZSampleRandom::valueNoise(std::uint64_t seed, double x, double y)
{
    const double fx = std::floor(x);
    const double fy = std::floor(y);
    const auto ix = static_cast<std::int64_t>(fx);
    const auto iy = static_cast<std::int64_t>(fy);
    const double tx = smooth(x - fx);
    const double ty = smooth(y - fy);
    const double v00 = hash01(seed, ix, iy);
    const double v10 = hash01(seed, ix + 1, iy);
    const double v01 = hash01(seed, ix, iy + 1);
    const double v11 = hash01(seed, ix + 1, iy + 1);
    const double bottom = v00 + (v10 - v00) * tx;
    const double top = v01 + (v11 - v01) * tx;
    return bottom + (top - bottom) * ty;
}

double TZSampleRandom::fbm(std::uint64_t seed, double x, double y, int octaves)
{
    double sum = 0.0;
    double amplitude = 1.0;
    double total = 0.0;
    for (int i = 0; i < octaves; ++i) {
        sum += amplitude * valueNoise(seed + static_cast<std::uint64_t>(i) * 7919u, x, y);
        total += amplitude;
        amplitude *= 0.5;
        x *= 2.0;
        y *= 2.0;
    }
    return sum / total;
}
