#pragma once

#include "core/TERefBase.h"
#include "core/TERefPtr.h"
#include "data/TEBandScan.h"

#include <QColor>
#include <QMutex>
#include <QRect>
#include <QSize>
#include <QString>

#include <gdal.h>

#include <array>
#include <atomic>
#include <vector>

namespace TZObjects {

// Read access to a raster through one GDAL dataset: size, bands, data type,
// statistics, no-data values and pixel reads. Bands are numbered from 1.
// Calls are serialised, so one object may be shared between threads.
class TZOBJECTS_EXPORT TERasterProps : public TERefBase
{
public:
    struct BandStatistics
    {
        double minimum = 0.0;
        double maximum = 0.0;
        double mean = 0.0;
        double stdDev = 0.0;
    };

    // Takes ownership of the dataset.
    explicit TERasterProps(GDALDatasetH dataset);
    ~TERasterProps() override;
    TERasterProps(const TERasterProps&) = delete;
    TERasterProps& operator=(const TERasterProps&) = delete;

    static TERefPtr<TERasterProps> Open(const QString& path, QString* error = nullptr);

    int GetWidth() const { return mWidth; }
    int GetHeight() const { return mHeight; }
    int GetBandCount() const { return mBandCount; }
    // GDAL's data type code of the first band (1 Byte ... 6 Float32, 7 Float64).
    int GetDataType() const { return GetBandDataType(1); }
    int GetBandDataType(int band) const;

    // How statistics and histograms may be read: exactly, or (for a raster
    // of more than LargePixelCount pixels) from GDAL's overviews or a sample
    // of its blocks, so that a huge raster does not hold up its caller.
    enum class Accuracy { Exact, ApproximateIfLarge };
    static constexpr qint64 LargePixelCount = 4096LL * 4096LL;

    // Statistics of a band, computed once per band and accuracy and then
    // kept (exact ones also answer approximate requests); false for a band
    // that does not exist or holds only no-data, or when cancel was set
    // during the read (nothing is kept then). Exact statistics are read
    // block by block (TEBandScan), approximate ones by GDAL from overviews
    // or a sample of blocks.
    bool GetStatistics(int band, BandStatistics& statistics, Accuracy accuracy = Accuracy::Exact,
                       const std::atomic<bool>* cancel = nullptr) const;
    // Whether GetStatistics would answer at once, from what it keeps.
    bool HasStatistics(int band, Accuracy accuracy = Accuracy::Exact) const;
    bool GetStatistics(int band, double& minimum, double& maximum, double& mean, double& stdDev) const;

    // Pixel counts of a band in bins equal buckets from minimum to maximum,
    // read by GDAL without no-data pixels; values outside the range count in
    // the end buckets. False for a band that does not exist or a bad range.
    bool GetHistogram(int band, double minimum, double maximum, int bins, std::vector<double>& counts,
                      Accuracy accuracy = Accuracy::Exact) const;
    // The band's pixel histogram between minimum and maximum, pixels equal
    // to noData not counted, in the bins TEBandScan::ComputeHistogram
    // describes. Read block by block; an 8- or 16-bit band whose exact
    // statistics are known answers from the value counts kept with them,
    // without reading. False for a missing band, a bad range, a failed read
    // or a cancelled one.
    bool GetValueHistogram(int band, double minimum, double maximum, double noData,
                           std::vector<TEBandScan::Point>& points, const std::atomic<bool>* cancel = nullptr) const;
    // Whether the raster has more than LargePixelCount pixels.
    bool IsLarge() const { return qint64(mWidth) * qint64(mHeight) > LargePixelCount; }

    // The band's no-data value; hasNoData tells whether it has one.
    double GetNoDataValue(int band, bool* hasNoData = nullptr) const;

    // The band's colour table as packed 0xAARRGGBB entries, indexed by pixel
    // value; false when the band has none.
    bool GetColorTable(int band, std::vector<QRgb>& entries) const;

    // The six GDAL geo-transform coefficients (identity when none is set).
    std::array<double, 6> GetGeoTransform() const;
    QString GetSpatialReferenceWkt() const;

    // Reads width x height pixels of a band starting at pixel (x, y), row
    // by row, as doubles. False (and error) when the block leaves the raster.
    bool ReadPixelBlock(int band, int x, int y, int width, int height, std::vector<double>& values,
                        QString* error = nullptr) const;
    // Reads a window of the raster resampled to outSize (nearest neighbour,
    // using overviews when there are any), for drawing.
    bool ReadWindow(int band, const QRect& window, const QSize& outSize, std::vector<double>& values,
                    QString* error = nullptr) const;

    // GDAL's natural block size of a band; 0 x 0 for a band that does not exist.
    QSize GetBlockSize(int band) const;
    // Reads a window of a band at full resolution into buffer, row by row, as
    // the GDAL data type bufferType (a GDALDataType code), so that a scan can
    // take the band's own values without converting each one to double.
    bool ReadRawWindow(int band, const QRect& window, int bufferType, void* buffer, QString* error = nullptr) const;

private:
    GDALRasterBandH Band(int band) const;

    mutable QMutex mMutex;
    GDALDatasetH mDataset = nullptr;
    int mWidth = 0;
    int mHeight = 0;
    int mBandCount = 0;
    // Per band and accuracy (exact first): 0 unknown, 1 ok, -1 failed.
    mutable std::vector<int> mStatisticsState[2];
    mutable std::vector<BandStatistics> mStatistics[2];
    // Per band, the value counts of 8- and 16-bit bands read with the exact
    // statistics (empty for other bands).
    mutable std::vector<TEBandScan::ValueCounts> mValueCounts;
};

} // namespace TZObjects
