#pragma once

#include <cstdint>

// Deterministic random numbers and smooth noise for the sample-data
// generator. Everything is computed from integer hashing so the same seed
// gives the same data on every platform and standard library (std::
// distributions are implementation-defined and would not).
class TZSampleRandom
{
public:
    explicit TZSampleRandom(std::uint64_t seed);

    // Uniform in [0, 1).
    double uniform();
    double uniform(double low, double high);
    // Uniform integer in [0, count).
    int index(int count);
    // Standard normal (Box-Muller).
    double normal();
    // A skewed positive value: median * exp(sigma * normal()).
    double logNormal(double median, double sigma);
    bool chance(double probability);

    // Stateless uniform [0, 1) from a seed and up to three integer keys;
    // used where two callers must agree on a value (a shared polygon edge).
    static double hash01(std::uint64_t seed, std::int64_t a, std::int64_t b = 0, std::int64_t c = 0);
    // Smooth value noise in [0, 1] over the plane, one unit per lattice cell.
    static double valueNoise(std::uint64_t seed, double x, double y);
    // Fractal sum of value noise octaves, normalised to [0, 1].
    static double fbm(std::uint64_t seed, double x, double y, int octaves);

private:
    std::uint64_t next();

    std::uint64_t mState = 0;
};
