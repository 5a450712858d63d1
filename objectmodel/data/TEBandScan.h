#pragma once

#include "core/TZObjectsExport.h"

#include <gdal.h>

#include <atomic>
#include <cstdint>
#include <vector>

namespace TZObjects {

// Exact statistics and value histograms of one raster band, read block by
// block. Each natural block of the band is read with GDALReadBlock into one
// block-sized buffer, so neither a whole band nor GDAL's block cache ever
// holds the raster: memory stays at one block (plus 65,536 counters for
// 8- and 16-bit bands) however large the band is. A cancel flag, checked
// between blocks, stops a scan.
//
// Pixels that equal the band's no-data value, and NaN, are left out of the
// statistics; the standard deviation is the population one, as GDAL gives it.
class TZOBJECTS_EXPORT TEBandScan
{
public:
    enum class Result { Ok, Empty, Cancelled, Failed };

    struct Statistics
    {
        double minimum = 0.0;
        double maximum = 0.0;
        double mean = 0.0;
        double stdDev = 0.0;
        std::uint64_t count = 0;
    };

    // One point of a band histogram: a value and the number of pixels that
    // take it (or fall in its bin).
    struct Point
    {
        double value = 0.0;
        double count = 0.0;
    };

    // Widest histogram with one bin per integer value, and the number of
    // bins of every other histogram.
    static constexpr double MaxIntegerBins = 65536.0;
    static constexpr int BoundedBins = 1024;

    // Counts per value of an 8- or 16-bit band (index value - CountOffset
    // of its type), no-data left out: enough to give both the statistics
    // and any histogram of the band without reading it again.
    struct ValueCounts
    {
        double offset = 0.0;
        std::vector<std::uint64_t> counts;
    };

    // Whether the band's values are counted per value (Byte, Int16, UInt16).
    static bool CountsValues(GDALDataType type);

    // Statistics of the band; for an 8- or 16-bit band also its value counts
    // (when counts is given). Empty when every pixel is no-data.
    static Result ComputeStatistics(GDALRasterBandH band, Statistics& statistics, ValueCounts* counts,
                                    const std::atomic<bool>* cancel);
    static Statistics StatisticsOf(const ValueCounts& counts);

    // The histogram between minimum and maximum, one point per bin in
    // ascending order, pixels equal to noData (and NaN, and values outside
    // the range) not counted. The bins: one per integer value from minimum
    // to maximum for an integer band whose range holds at most
    // MaxIntegerBins values; otherwise BoundedBins equal bins over
    // [minimum, maximum], each point carrying its bin's lower bound (the
    // last bin also takes the maximum). A range of one value has one point.
    static Result ComputeHistogram(GDALRasterBandH band, double minimum, double maximum, double noData,
                                   std::vector<Point>& points, const std::atomic<bool>* cancel);
    // The same from value counts, without reading.
    static void HistogramOf(const ValueCounts& counts, double minimum, double maximum, double noData,
                            std::vector<Point>& points);

    // Whether a histogram of this band type and range has one bin per integer.
    static bool HasIntegerBins(GDALDataType type, double minimum, double maximum);
};

} // namespace TZObjects
