#include "data/TEBandScan.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TZObjects {

namespace {

// Blocks larger than this (a striped file of one huge strip, say) are read
// in windows of whole rows of about this many pixels instead.
constexpr long long MaxChunkPixels = 4LL * 1024 * 1024;

bool isCancelled(const std::atomic<bool>* cancel)
{
    return cancel && cancel->load(std::memory_order_relaxed);
}

// Calls visit(data, columns, rows, stride) for every block of the band in
// turn, read as T. Natural blocks of the band's own type are read with
// GDALReadBlock, which bypasses GDAL's block cache; any other band is read
// in windows of whole rows through GDALRasterIO.
template <typename T, typename Visit>
TEBandScan::Result forEachBlock(GDALRasterBandH band, GDALDataType type, Visit&& visit,
                                const std::atomic<bool>* cancel)
{
    const int width = GDALGetRasterBandXSize(band);
    const int height = GDALGetRasterBandYSize(band);
    if (width <= 0 || height <= 0)
        return TEBandScan::Result::Empty;
    int blockWidth = 0;
    int blockHeight = 0;
    GDALGetBlockSize(band, &blockWidth, &blockHeight);
    const bool natural = blockWidth > 0 && blockHeight > 0 && GDALGetRasterDataType(band) == type
                         && static_cast<long long>(blockWidth) * blockHeight <= MaxChunkPixels;
    if (!natural) {
        blockWidth = width;
        blockHeight = static_cast<int>(std::clamp<long long>(MaxChunkPixels / width, 1, height));
    }
    std::vector<T> buffer(static_cast<size_t>(blockWidth) * static_cast<size_t>(blockHeight));
    const int blocksAcross = (width + blockWidth - 1) / blockWidth;
    const int blocksDown = (height + blockHeight - 1) / blockHeight;
    for (int by = 0; by < blocksDown; ++by) {
        for (int bx = 0; bx < blocksAcross; ++bx) {
            if (isCancelled(cancel))
                return TEBandScan::Result::Cancelled;
            const int columns = std::min(blockWidth, width - bx * blockWidth);
            const int rows = std::min(blockHeight, height - by * blockHeight);
            const CPLErr read = natural
                ? GDALReadBlock(band, bx, by, buffer.data())
                : GDALRasterIO(band, GF_Read, bx * blockWidth, by * blockHeight, columns, rows, buffer.data(),
                               columns, rows, type, int(sizeof(T)), int(sizeof(T)) * blockWidth);
            if (read != CE_None)
                return TEBandScan::Result::Failed;
            visit(buffer.data(), columns, rows, blockWidth);
        }
    }
    return TEBandScan::Result::Ok;
}

// Runs forEachBlock with the C++ type of the band's data type; bands of
// other types (complex, 64-bit integers) are read as doubles.
template <typename Visit>
TEBandScan::Result forEachBlockOfBand(GDALRasterBandH band, Visit&& visit, const std::atomic<bool>* cancel)
{
    switch (GDALGetRasterDataType(band)) {
    case GDT_Byte:
        return forEachBlock<std::uint8_t>(band, GDT_Byte, visit, cancel);
    case GDT_UInt16:
        return forEachBlock<std::uint16_t>(band, GDT_UInt16, visit, cancel);
    case GDT_Int16:
        return forEachBlock<std::int16_t>(band, GDT_Int16, visit, cancel);
    case GDT_UInt32:
        return forEachBlock<std::uint32_t>(band, GDT_UInt32, visit, cancel);
    case GDT_Int32:
        return forEachBlock<std::int32_t>(band, GDT_Int32, visit, cancel);
    case GDT_Float32:
        return forEachBlock<float>(band, GDT_Float32, visit, cancel);
    default:
        return forEachBlock<double>(band, GDT_Float64, visit, cancel);
    }
}

bool isIntegerType(GDALDataType type)
{
    return type == GDT_Byte || type == GDT_UInt16 || type == GDT_Int16 || type == GDT_UInt32 || type == GDT_Int32;
}

double countOffset(GDALDataType type)
{
    return type == GDT_Int16 ? -32768.0 : 0.0;
}

} // namespace

bool TEBandScan::CountsValues(GDALDataType type)
{
    return type == GDT_Byte || type == GDT_UInt16 || type == GDT_Int16;
}

bool TEBandScan::HasIntegerBins(GDALDataType type, double minimum, double maximum)
{
    return isIntegerType(type) && maximum >= minimum && maximum - minimum + 1.0 <= MaxIntegerBins;
}

TEBandScan::Result TEBandScan::ComputeStatistics(GDALRasterBandH band, Statistics& statistics, ValueCounts* counts,
                                                 const std::atomic<bool>* cancel)
{
    statistics = Statistics();
    if (!band)
        return Result::Failed;
    int hasNoDataFlag = FALSE;
    const double noData = GDALGetRasterNoDataValue(band, &hasNoDataFlag);
    const bool hasNoData = hasNoDataFlag != FALSE;
    const GDALDataType type = GDALGetRasterDataType(band);

    if (CountsValues(type)) {
        // Count every value; the statistics follow from the counts exactly.
        ValueCounts local;
        ValueCounts& valueCounts = counts ? *counts : local;
        valueCounts.offset = countOffset(type);
        valueCounts.counts.assign(type == GDT_Byte ? 256 : 65536, 0);
        std::uint64_t* table = valueCounts.counts.data();
        const long long offset = static_cast<long long>(valueCounts.offset);
        const Result result = forEachBlockOfBand(band, [&](const auto* data, int columns, int rows, int stride) {
            for (int y = 0; y < rows; ++y) {
                const auto* row = data + static_cast<size_t>(y) * size_t(stride);
                for (int x = 0; x < columns; ++x)
                    ++table[static_cast<long long>(row[x]) - offset];
            }
        }, cancel);
        if (result != Result::Ok) {
            valueCounts.counts.clear();
            return result;
        }
        const double index = noData - valueCounts.offset;
        if (hasNoData && index >= 0.0 && index < double(valueCounts.counts.size()) && index == std::floor(index))
            valueCounts.counts[size_t(index)] = 0;
        statistics = StatisticsOf(valueCounts);
        return statistics.count > 0 ? Result::Ok : Result::Empty;
    }

    // Minimum, maximum, and per block the mean and the sum of squared
    // deviations (two passes over the block while it is in the cache),
    // merged block by block (Chan et al.), which keeps the variance exact
    // where a running sum of squares would lose it.
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
    double mean = 0.0;
    double squares = 0.0;
    std::uint64_t count = 0;
    const Result result = forEachBlockOfBand(band, [&](const auto* data, int columns, int rows, int stride) {
        auto skipped = [&](double v) { return std::isnan(v) || (hasNoData && v == noData); };
        std::uint64_t n = 0;
        double sum = 0.0;
        double low = minimum;
        double high = maximum;
        for (int y = 0; y < rows; ++y) {
            const auto* row = data + static_cast<size_t>(y) * size_t(stride);
            for (int x = 0; x < columns; ++x) {
                const double v = static_cast<double>(row[x]);
                if (skipped(v))
                    continue;
                ++n;
                sum += v;
                low = v < low ? v : low;
                high = v > high ? v : high;
            }
        }
        if (n == 0)
            return;
        const double blockMean = sum / double(n);
        double blockSquares = 0.0;
        for (int y = 0; y < rows; ++y) {
            const auto* row = data + static_cast<size_t>(y) * size_t(stride);
            for (int x = 0; x < columns; ++x) {
                const double v = static_cast<double>(row[x]);
                if (!skipped(v))
                    blockSquares += (v - blockMean) * (v - blockMean);
            }
        }
        const double total = double(count + n);
        const double delta = blockMean - mean;
        mean += delta * double(n) / total;
        squares += blockSquares + delta * delta * double(count) * double(n) / total;
        count += n;
        minimum = low;
        maximum = high;
    }, cancel);
    if (result != Result::Ok)
        return result;
    if (count == 0)
        return Result::Empty;
    statistics.minimum = minimum;
    statistics.maximum = maximum;
    statistics.mean = mean;
    statistics.stdDev = std::sqrt(std::max(0.0, squares / double(count)));
    statistics.count = count;
    return Result::Ok;
}

TEBandScan::Statistics TEBandScan::StatisticsOf(const ValueCounts& counts)
{
    Statistics s;
    double sum = 0.0;
    bool first = true;
    for (size_t i = 0; i < counts.counts.size(); ++i) {
        const std::uint64_t c = counts.counts[i];
        if (c == 0)
            continue;
        const double v = double(i) + counts.offset;
        if (first)
            s.minimum = v;
        first = false;
        s.maximum = v;
        s.count += c;
        sum += v * double(c);
    }
    if (s.count == 0)
        return s;
    s.mean = sum / double(s.count);
    double squares = 0.0;
    for (size_t i = 0; i < counts.counts.size(); ++i) {
        if (counts.counts[i] == 0)
            continue;
        const double d = double(i) + counts.offset - s.mean;
        squares += d * d * double(counts.counts[i]);
    }
    s.stdDev = std::sqrt(squares / double(s.count));
    return s;
}

namespace {

// The points of an empty histogram: the bins' values, with no counts yet.
std::vector<TEBandScan::Point> emptyBins(bool integerBins, double minimum, double maximum)
{
    std::vector<TEBandScan::Point> points;
    if (integerBins) {
        const size_t n = size_t(maximum - minimum) + 1;
        points.resize(n);
        for (size_t i = 0; i < n; ++i)
            points[i].value = minimum + double(i);
        return points;
    }
    const int bins = maximum > minimum ? TEBandScan::BoundedBins : 1;
    const double width = (maximum - minimum) / double(bins);
    points.resize(size_t(bins));
    for (int i = 0; i < bins; ++i)
        points[size_t(i)].value = minimum + double(i) * width;
    return points;
}

} // namespace

void TEBandScan::HistogramOf(const ValueCounts& counts, double minimum, double maximum, double noData,
                             std::vector<Point>& points)
{
    points.clear();
    if (!(maximum >= minimum) || counts.counts.empty())
        return;
    // Value counts belong to integer bands of at most 65,536 values.
    minimum = std::ceil(minimum);
    maximum = std::floor(maximum);
    if (maximum < minimum)
        return;
    points = emptyBins(true, minimum, maximum);
    for (Point& point : points) {
        const double index = point.value - counts.offset;
        if (index >= 0.0 && index < double(counts.counts.size()) && point.value != noData)
            point.count = double(counts.counts[size_t(index)]);
    }
}

TEBandScan::Result TEBandScan::ComputeHistogram(GDALRasterBandH band, double minimum, double maximum, double noData,
                                                std::vector<Point>& points, const std::atomic<bool>* cancel)
{
    points.clear();
    if (!band || !(maximum >= minimum) || !std::isfinite(minimum) || !std::isfinite(maximum))
        return Result::Failed;
    const GDALDataType type = GDALGetRasterDataType(band);
    const bool integerBins = HasIntegerBins(type, minimum, maximum);
    if (integerBins) {
        minimum = std::ceil(minimum);
        maximum = std::floor(maximum);
        if (maximum < minimum)
            return Result::Empty;
    }
    std::vector<Point> bins = emptyBins(integerBins, minimum, maximum);
    std::vector<std::uint64_t> counts(bins.size(), 0);
    const size_t last = counts.size() - 1;
    const double scale = integerBins ? 1.0 : (maximum > minimum ? double(bins.size()) / (maximum - minimum) : 0.0);
    const Result result = forEachBlockOfBand(band, [&](const auto* data, int columns, int rows, int stride) {
        for (int y = 0; y < rows; ++y) {
            const auto* row = data + static_cast<size_t>(y) * size_t(stride);
            for (int x = 0; x < columns; ++x) {
                const double v = static_cast<double>(row[x]);
                // NaN fails both comparisons and is left out with the rest.
                if (!(v >= minimum && v <= maximum) || v == noData)
                    continue;
                ++counts[std::min(last, static_cast<size_t>((v - minimum) * scale))];
            }
        }
    }, cancel);
    if (result != Result::Ok)
        return result;
    for (size_t i = 0; i < bins.size(); ++i)
        bins[i].count = double(counts[i]);
    points = std::move(bins);
    return Result::Ok;
}

} // namespace TZObjects
