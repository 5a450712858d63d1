#include "RasterClassFixtures.h"
#include "TestRegistry.h"

#include "renders/TEImageUniqueRenderInfo.h"

#include <QTemporaryDir>

#include <cmath>
#include <limits>
#include <set>

using namespace TZObjects;
using namespace RasterClassFixtures;

namespace {

// What a plain walk over the values finds: distinct, no-data and NaN left out.
std::vector<double> reference(const RasterContent& content)
{
    std::set<double> found;
    for (double value : content.values) {
        if (!std::isnan(value) && !(content.hasNoData && value == content.noData))
            found.insert(value);
    }
    return std::vector<double>(found.begin(), found.end());
}

} // namespace

class TestRasterUniqueScan : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;

    TERefPtr<TERasterProps> open(const RasterContent& content)
    {
        const QString path = writeRaster(mDir.path(), QStringLiteral("scan.tif"), content);
        return path.isEmpty() ? TERefPtr<TERasterProps>() : TERasterProps::Open(path);
    }

private Q_SLOTS:
    void scanFindsWhatAPlainWalkFinds_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<std::vector<double>>("values");
        QTest::addColumn<bool>("hasNoData");
        QTest::addColumn<double>("noData");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("byte") << int(GDT_Byte) << std::vector<double>{0, 255, 7, 7, 0, 200} << true << 200.0;
        QTest::newRow("byte, no-data not met")
            << int(GDT_Byte) << std::vector<double>{3, 1, 3, 1, 2, 2} << true << 9.0;
        QTest::newRow("uint16") << int(GDT_UInt16) << std::vector<double>{65535, 0, 1, 65535, 300, 1} << false
                                << 0.0;
        QTest::newRow("int16 extremes")
            << int(GDT_Int16) << std::vector<double>{-32768, 32767, 0, -1, -32768, 5} << true << -1.0;
        QTest::newRow("int32") << int(GDT_Int32) << std::vector<double>{-100000, 100000, 3, 3, -7, 0} << true
                               << 0.0;
        QTest::newRow("float32 with NaN")
            << int(GDT_Float32) << std::vector<double>{0.5, nan, -2.25, 0.5, 1e6, -9999} << true << -9999.0;
        QTest::newRow("float64") << int(GDT_Float64) << std::vector<double>{0.1, 0.2, 0.1, 1e-9, -3, 0.2} << false
                                 << 0.0;
    }
    void scanFindsWhatAPlainWalkFinds()
    {
        QFETCH(int, type);
        QFETCH(std::vector<double>, values);
        QFETCH(bool, hasNoData);
        QFETCH(double, noData);
        QVERIFY(mDir.isValid());
        RasterContent content;
        content.width = 3;
        content.height = 2;
        content.type = GDALDataType(type);
        content.values = values;
        content.hasNoData = hasNoData;
        content.noData = noData;
        const TERefPtr<TERasterProps> raster = open(content);
        QVERIFY(raster);

        TEImageUniqueRenderInfo info;
        QVERIFY(info.AddFromRaster(raster.get(), 1));
        QVERIFY(info.IsComplete());
        std::vector<double> found;
        for (int i = 0; i < info.GetItemCount(); ++i) {
            double value = 0.0;
            QVERIFY(info.GetValue(i, value));
            found.push_back(value);
        }
        // Float32 stores 0.1 as its nearest float: compare with what was written.
        std::vector<double> expected = reference(content);
        if (type == GDT_Float32) {
            for (double& value : expected)
                value = double(float(value));
        }
        QCOMPARE(found, expected);
    }

    void scanAcrossManyReadsMissesNoValue_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("int16") << int(GDT_Int16);
        QTest::newRow("int32") << int(GDT_Int32);
    }
    void scanAcrossManyReadsMissesNoValue()
    {
        QFETCH(int, type);
        // Far more rows than one read takes, and a last read cut short; each
        // value occurs in one place only, spread over the whole raster.
        RasterContent content;
        content.width = 3001;
        content.height = 1103;
        content.type = GDALDataType(type);
        content.hasNoData = true;
        content.noData = 0.0;
        content.values.assign(size_t(content.width) * content.height, 0.0);
        for (int y = 0; y < content.height; ++y)
            content.values[size_t(y) * content.width + size_t((y * 37) % content.width)] = y - 600;
        content.values.back() = 9999;
        const TERefPtr<TERasterProps> raster = open(content);
        QVERIFY(raster);
        std::vector<double> found;
        bool complete = false;
        QVERIFY(TEImageUniqueRenderInfo::CollectValues(raster.get(), 1, found, complete));
        QVERIFY(complete);
        QCOMPARE(found, reference(content));
    }

    void scanStopsPastTheValueLimit_data()
    {
        QTest::addColumn<int>("distinct");
        QTest::addColumn<bool>("complete");
        QTest::newRow("at the limit") << TEImageUniqueRenderInfo::MaxValueCount << true;
        QTest::newRow("one more") << TEImageUniqueRenderInfo::MaxValueCount + 1 << false;
    }
    void scanStopsPastTheValueLimit()
    {
        QFETCH(int, distinct);
        QFETCH(bool, complete);
        RasterContent content;
        content.width = 512;
        content.height = 130;
        content.type = GDT_Int32;
        for (int i = 0; i < content.width * content.height; ++i)
            content.values.push_back(i < distinct ? i * 3 : 0);
        const TERefPtr<TERasterProps> raster = open(content);
        QVERIFY(raster);
        TEImageUniqueRenderInfo info;
        QVERIFY(info.AddFromRaster(raster.get(), 1));
        QCOMPARE(info.IsComplete(), complete);
        QCOMPARE(info.GetItemCount(), std::min(distinct, int(TEImageUniqueRenderInfo::MaxValueCount)));
        // Every value kept is one of the raster's.
        for (int i = 0; i < info.GetItemCount(); ++i) {
            double value = -1.0;
            info.GetValue(i, value);
            QVERIFY(value >= 0 && int(value) % 3 == 0 && value < 3.0 * distinct);
        }
    }
};


TZ_REGISTER_TEST(TestRasterUniqueScan)
#include "TestRasterUniqueScan.moc"
