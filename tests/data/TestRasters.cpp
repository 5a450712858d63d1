#include "DataFixtures.h"
#include "TestRegistry.h"

#include "data/TERasterDirLayer.h"
#include "data/TERasterLayer.h"

#include <QTemporaryDir>

#include <cmath>

using namespace TZObjects;

namespace {

// Band b holds x + 10 * y + 100 * (b - 1); pixel (0, 0) of band 1 is the
// no-data value -1 in the rasters that set one.
double ramp(int band, int x, int y)
{
    return x + 10.0 * y + 100.0 * (band - 1);
}

double rampWithHole(int band, int x, int y)
{
    return x == 0 && y == 0 ? -1.0 : ramp(band, x, y);
}

} // namespace

class TestRasters : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mGray = mDir.filePath(QStringLiteral("gray.tif"));
        const double noData = -1.0;
        QCOMPARE(DataFixtures::writeGeoTiff(mGray, 10, 4, 1, GDT_Float32, rampWithHole, &noData, 500.0, 2000.0, 2.0),
                 QString());
        mRgb = mDir.filePath(QStringLiteral("rgb.tif"));
        QCOMPARE(DataFixtures::writeGeoTiff(mRgb, 4, 3, 3, GDT_Int16, ramp), QString());
    }

    void layerTypeAndPropertiesFollowTheFile()
    {
        QString error;
        TERefPtr<TERasterLayer> gray = TERasterLayer::Open(mGray, &error);
        QVERIFY2(gray, qPrintable(error));
        QCOMPARE(gray->GetLayerType(), TELayer::LT_SingleBandRaster);
        QVERIFY(gray->IsRasterLayer() && !gray->IsFeatureLayer());
        TERefPtr<TERasterProps> raster = gray->GetRaster();
        QCOMPARE(raster->GetWidth(), 10);
        QCOMPARE(raster->GetHeight(), 4);
        QCOMPARE(raster->GetBandCount(), 1);
        QCOMPARE(raster->GetDataType(), 6);
        QRectF extent;
        QVERIFY(gray->GetExtent(extent));
        QCOMPARE(extent, QRectF(QPointF(500, 1992), QPointF(520, 2000)));

        TERefPtr<TERasterLayer> rgb = TERasterLayer::Open(mRgb);
        QCOMPARE(rgb->GetLayerType(), TELayer::LT_MultiBandRaster);
        QCOMPARE(rgb->GetRaster()->GetBandCount(), 3);
        QCOMPARE(rgb->GetRaster()->GetDataType(), int(GDT_Int16));

        QVERIFY(!TERasterLayer::Open(mDir.filePath(QStringLiteral("missing.tif")), &error));
        QVERIFY(error.contains(QLatin1String("missing.tif")));
    }

    void statisticsAreExactAndSkipNoData()
    {
        TERefPtr<TERasterProps> raster = TERasterLayer::Open(mGray)->GetRaster();
        bool hasNoData = false;
        QCOMPARE(raster->GetNoDataValue(1, &hasNoData), -1.0);
        QVERIFY(hasNoData);
        TERasterProps::BandStatistics s;
        QVERIFY(raster->GetStatistics(1, s));
        // 39 pixels: every x + 10y except (0, 0).
        double sum = 0, sumSq = 0;
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 10; ++x)
                if (x || y) {
                    sum += ramp(1, x, y);
                    sumSq += ramp(1, x, y) * ramp(1, x, y);
                }
        const double mean = sum / 39.0;
        QCOMPARE(s.minimum, 1.0);
        QCOMPARE(s.maximum, 39.0);
        QVERIFY(std::abs(s.mean - mean) < 1e-9);
        QVERIFY(std::abs(s.stdDev - std::sqrt(sumSq / 39.0 - mean * mean)) < 1e-9);
        QVERIFY(!raster->GetStatistics(2, s));

        TERefPtr<TERasterProps> rgb = TERasterLayer::Open(mRgb)->GetRaster();
        double minimum = 0, maximum = 0, m = 0, sd = 0;
        QVERIFY(rgb->GetStatistics(3, minimum, maximum, m, sd));
        QCOMPARE(minimum, 200.0);
        QCOMPARE(maximum, 223.0);
        rgb->GetNoDataValue(1, &hasNoData);
        QVERIFY(!hasNoData);
    }

    void pixelBlocksReadRowByRow()
    {
        TERefPtr<TERasterProps> rgb = TERasterLayer::Open(mRgb)->GetRaster();
        std::vector<double> block;
        QVERIFY(rgb->ReadPixelBlock(2, 1, 1, 3, 2, block));
        QCOMPARE(block, std::vector<double>({111, 112, 113, 121, 122, 123}));
        QVERIFY(rgb->ReadPixelBlock(1, 0, 0, rgb->GetWidth(), rgb->GetHeight(), block));
        QCOMPARE(block.size(), size_t(12));
        QCOMPARE(block.back(), 23.0);

        QString error;
        QVERIFY(!rgb->ReadPixelBlock(1, 2, 2, 3, 3, block, &error));
        QVERIFY(error.contains(QLatin1String("outside")));
        QVERIFY(!rgb->ReadPixelBlock(4, 0, 0, 1, 1, block, &error));

        std::vector<double> overview;
        QVERIFY(rgb->ReadWindow(1, QRect(0, 0, 4, 2), QSize(2, 1), overview));
        QCOMPARE(overview.size(), size_t(2));
    }

    void folderOfTilesIsOneMosaic()
    {
        QTemporaryDir tiles;
        QCOMPARE(DataFixtures::writeGeoTiff(tiles.filePath(QStringLiteral("a.tif")), 4, 4, 1, GDT_Byte, ramp, nullptr,
                                            0.0, 4.0),
                 QString());
        QCOMPARE(DataFixtures::writeGeoTiff(tiles.filePath(QStringLiteral("b.tif")), 4, 4, 1, GDT_Byte, ramp, nullptr,
                                            4.0, 4.0),
                 QString());
        QFile note(tiles.filePath(QStringLiteral("readme.txt")));
        QVERIFY(note.open(QIODevice::WriteOnly));
        note.write("not a raster");
        note.close();

        QString error;
        TERefPtr<TERasterDirLayer> layer = TERasterDirLayer::Open(tiles.path(), &error);
        QVERIFY2(layer, qPrintable(error));
        QCOMPARE(layer->GetLayerType(), TELayer::LT_RasterDir);
        QVERIFY(layer->IsRasterLayer());
        QCOMPARE(layer->GetFiles().size(), 2);
        QCOMPARE(layer->GetRaster()->GetWidth(), 8);
        QCOMPARE(layer->GetRaster()->GetHeight(), 4);
        std::vector<double> row;
        QVERIFY(layer->GetRaster()->ReadPixelBlock(1, 3, 0, 2, 1, row));
        QCOMPARE(row, std::vector<double>({3, 0}));

        QTemporaryDir empty;
        QVERIFY(!TERasterDirLayer::Open(empty.path(), &error));
        QVERIFY(error.contains(QLatin1String("no raster")));
    }

private:
    QTemporaryDir mDir;
    QString mGray;
    QString mRgb;
};

TZ_REGISTER_TEST(TestRasters)
#include "TestRasters.moc"
