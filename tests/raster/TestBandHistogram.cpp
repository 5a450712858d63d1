#include "ModalAnswer.h"
#include "TestRegistry.h"

#include "StretchTestRasters.h"
#include "TZDialogBandPixHistogram.h"

#include "data/TERasterProps.h"
#include "widgets/TZWaitDialog.h"

#include <QFile>
#include <QLabel>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

#include <cmath>
#include <limits>
#include <map>

using namespace TZObjects;
using StretchTestRasters::Value;

namespace {

struct Expected
{
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
    double mean = 0.0;
    double stdDev = 0.0;
    std::map<double, double> counts; // value -> pixels, no-data left out
};

// The statistics and per-value counts of a band, pixel by pixel from the
// values that were written (as the band's type stores them).
Expected expectedOf(int width, int height, GDALDataType type, const Value& value, const double* noData)
{
    Expected e;
    double sum = 0.0;
    double n = 0.0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double v = value(1, x, y);
            if (type == GDT_Float32)
                v = double(float(v));
            if (std::isnan(v) || (noData && v == *noData))
                continue;
            e.minimum = std::min(e.minimum, v);
            e.maximum = std::max(e.maximum, v);
            sum += v;
            n += 1.0;
            e.counts[v] += 1.0;
        }
    }
    e.mean = sum / n;
    double squares = 0.0;
    for (const auto& [v, c] : e.counts)
        squares += c * (v - e.mean) * (v - e.mean);
    e.stdDev = std::sqrt(squares / n);
    return e;
}

qint64 statusKb(const char* field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(int(qstrlen(field))).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

} // namespace

Q_DECLARE_METATYPE(Value)


// Band statistics and pixel histograms read block by block, and the band
// pixel histogram dialog that shows them.
class TestBandHistogram : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;

    QString path(const QString& name) const { return mDir.filePath(name); }

private Q_SLOTS:
    void statisticsAndHistogramCountEveryPixel_data()
    {
        QTest::addColumn<GDALDataType>("type");
        QTest::addColumn<Value>("value");
        QTest::addColumn<double>("noData"); // NaN: the band has none
        QTest::addColumn<bool>("integerBins");
        const double none = std::nan("");
        // 37 x 23 pixels in 16 x 16 blocks: partial blocks on both edges.
        QTest::newRow("byte") << GDT_Byte << Value([](int, int x, int y) { return (x * 7 + y * 3) % 256; })
                              << none << true;
        QTest::newRow("byte, no-data 0") << GDT_Byte << Value([](int, int x, int y) { return (x * y) % 17; })
                                         << 0.0 << true;
        QTest::newRow("int16, negative, no-data") << GDT_Int16
            << Value([](int, int x, int y) { return (x * y) % 500 - 250; }) << -250.0 << true;
        QTest::newRow("uint16, wide") << GDT_UInt16 << Value([](int, int x, int y) { return x * 1000 + y; })
                                      << none << true;
        // 3.6 million possible values: bounded bins.
        QTest::newRow("int32, wider than the integer bins") << GDT_Int32
            << Value([](int, int x, int y) { return x * 100000 - y * 7; }) << none << false;
        QTest::newRow("float32, no-data and NaN") << GDT_Float32 << Value([](int, int x, int y) {
            if (x == 0 && y == 0)
                return std::nan("");
            return (x + y) % 9 == 0 ? -9999.0 : x * 0.25 + y * 0.01;
        }) << -9999.0 << false;
        QTest::newRow("float64, one value") << GDT_Float64 << Value([](int, int, int) { return 2.5; }) << none
                                            << false;
    }
    void statisticsAndHistogramCountEveryPixel()
    {
        QFETCH(GDALDataType, type);
        QFETCH(Value, value);
        QFETCH(double, noData);
        QFETCH(bool, integerBins);
        const bool hasNoData = !std::isnan(noData);
        const int width = 37;
        const int height = 23;
        const QString file = StretchTestRasters::write(path(QStringLiteral("%1.tif").arg(QTest::currentDataTag())),
                                                       width, height, 1, type, value, hasNoData ? &noData : nullptr);
        QVERIFY(!file.isEmpty());
        const Expected e = expectedOf(width, height, type, value, hasNoData ? &noData : nullptr);

        const TERefPtr<TERasterProps> raster = TERasterProps::Open(file);
        QVERIFY(raster);
        TERasterProps::BandStatistics s;
        QVERIFY(raster->GetStatistics(1, s));
        QCOMPARE(s.minimum, e.minimum);
        QCOMPARE(s.maximum, e.maximum);
        QVERIFY2(std::abs(s.mean - e.mean) <= 1e-9 * std::max(1.0, std::abs(e.mean)), qPrintable(QString::number(s.mean)));
        QVERIFY(std::abs(s.stdDev - e.stdDev) <= 1e-9 * std::max(1.0, e.stdDev));

        // The same figures as GDAL's own statistics.
        GDALDatasetH dataset = GDALOpen(file.toUtf8().constData(), GA_ReadOnly);
        double gdal[4] = {};
        QCOMPARE(GDALComputeRasterStatistics(GDALGetRasterBand(dataset, 1), FALSE, &gdal[0], &gdal[1], &gdal[2],
                                             &gdal[3], nullptr, nullptr), CE_None);
        GDALClose(dataset);
        QFile::remove(file + QStringLiteral(".aux.xml"));
        QCOMPARE(s.minimum, gdal[0]);
        QCOMPARE(s.maximum, gdal[1]);
        QVERIFY(std::abs(s.mean - gdal[2]) <= 1e-6 * std::max(1.0, std::abs(gdal[2])));
        QVERIFY(std::abs(s.stdDev - gdal[3]) <= 1e-6 * std::max(1.0, gdal[3]));

        std::vector<TEBandScan::Point> points;
        QVERIFY(raster->GetValueHistogram(1, s.minimum, s.maximum, hasNoData ? noData : -99999.0, points));
        QCOMPARE(TEBandScan::HasIntegerBins(type, s.minimum, s.maximum), integerBins);
        const size_t bins = integerBins ? size_t(e.maximum - e.minimum) + 1
                                        : (e.maximum > e.minimum ? size_t(TEBandScan::BoundedBins) : 1);
        QCOMPARE(points.size(), bins);
        // Every pixel lands in the bin whose lower bound is the last at or
        // below its value; the maximum in the last bin.
        std::vector<double> expected(bins, 0.0);
        for (const auto& [v, c] : e.counts) {
            size_t i = 0;
            while (i + 1 < bins && points[i + 1].value <= v)
                ++i;
            expected[i] += c;
        }
        double total = 0.0;
        for (size_t i = 0; i < bins; ++i) {
            QVERIFY2(points[i].count == expected[i], qPrintable(QStringLiteral("bin %1 (%2): %3, not %4")
                .arg(i).arg(points[i].value).arg(points[i].count).arg(expected[i])));
            QVERIFY(i == 0 || points[i].value > points[i - 1].value);
            total += points[i].count;
        }
        QCOMPARE(points.front().value, e.minimum);
        double pixels = 0.0;
        for (const auto& [v, c] : e.counts)
            pixels += c;
        QCOMPARE(total, pixels);
    }

    // A histogram leaves out the value it is given as no-data even when the
    // band itself has none, and a range narrower than the band's ignores
    // what lies outside it.
    void histogramLeavesOutNoDataAndValuesOutsideItsRange()
    {
        const QString file = StretchTestRasters::write(path("ramp.tif"), 40, 1, 1, GDT_Float32,
                                                       [](int, int x, int) { return double(x); });
        const TERefPtr<TERasterProps> raster = TERasterProps::Open(file);
        QVERIFY(raster);
        std::vector<TEBandScan::Point> points;
        QVERIFY(raster->GetValueHistogram(1, 10.0, 20.0, 15.0, points));
        double total = 0.0;
        for (const TEBandScan::Point& p : points)
            total += p.count;
        QCOMPARE(total, 10.0); // 10..20 is 11 values, 15 left out
        QVERIFY(!raster->GetValueHistogram(1, 5.0, 4.0, -99999.0, points));
        QVERIFY(!raster->GetValueHistogram(2, 0.0, 1.0, -99999.0, points));
    }

    // A cancelled read returns false and keeps nothing: the next read
    // without the flag gives the figures.
    void cancelledReadKeepsNothing()
    {
        const QString file = StretchTestRasters::write(path("cancel.tif"), 64, 64, 1, GDT_Float32,
                                                       [](int, int x, int y) { return x + y; });
        const TERefPtr<TERasterProps> raster = TERasterProps::Open(file);
        QVERIFY(raster);
        std::atomic<bool> cancel(true);
        TERasterProps::BandStatistics s;
        QVERIFY(!raster->GetStatistics(1, s, TERasterProps::Accuracy::Exact, &cancel));
        QVERIFY(!raster->HasStatistics(1));
        std::vector<TEBandScan::Point> points;
        QVERIFY(!raster->GetValueHistogram(1, 0.0, 126.0, -99999.0, points, &cancel));
        QVERIFY(points.empty());
        QVERIFY(raster->GetStatistics(1, s));
        QCOMPARE(s.maximum, 126.0);
        QVERIFY(raster->GetValueHistogram(1, 0.0, 126.0, -99999.0, points));
    }

    // Statistics and histogram of a 64 MB Float32 band (128 MB as doubles)
    // never hold the band: the process's peak grows by a few blocks at most.
    void largeBandIsNeverHeldWhole()
    {
        const int side = 4096;
        const QString file = StretchTestRasters::write(path("large.tif"), side, side, 1, GDT_Float32,
                                                       [](int, int x, int y) { return (x ^ y) * 0.5; }, nullptr, 256);
        QVERIFY(!file.isEmpty());
        const TERefPtr<TERasterProps> raster = TERasterProps::Open(file);
        QVERIFY(raster);
        // Resets the peak to the present size (Linux).
        QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
        if (!clearRefs.open(QIODevice::WriteOnly) || clearRefs.write("5") != 1)
            QSKIP("The peak memory of the process cannot be reset here.");
        clearRefs.close();
        const qint64 before = statusKb("VmRSS:");
        TERasterProps::BandStatistics s;
        QVERIFY(raster->GetStatistics(1, s));
        std::vector<TEBandScan::Point> points;
        QVERIFY(raster->GetValueHistogram(1, s.minimum, s.maximum, -99999.0, points));
        const qint64 peak = statusKb("VmHWM:");
        QVERIFY(before > 0 && peak > 0);
        const qint64 bandKb = qint64(side) * side * 4 / 1024;
        QVERIFY2(peak - before < bandKb / 8, qPrintable(QStringLiteral("grew by %1 kB").arg(peak - before)));
        QCOMPARE(points.size(), size_t(TEBandScan::BoundedBins));
        QFile::remove(file);
    }

    // The wait dialog's Cancel button stops a long read: the job sees the
    // flag, returns, and nothing is kept.
    void waitDialogCancelStopsALongRead()
    {
        const QString file = StretchTestRasters::write(path("slow.tif"), 64, 64, 1, GDT_Float32,
                                                       [](int, int x, int y) { return x * y; });
        const TERefPtr<TERasterProps> raster = TERasterProps::Open(file);
        QVERIFY(raster);
        std::atomic<bool> cancel(false);
        bool read = true;
        TZWaitDialog wait(QStringLiteral("Reading..."));
        wait.setCancelHandler([&cancel] { cancel.store(true); });
        ModalAnswer answer("TZWaitDialog", ModalAnswer::click(QDialogButtonBox::Cancel));
        QVERIFY(wait.WaitFor([&] {
            // Holds the read back until the user has cancelled.
            while (!cancel.load())
                QThread::msleep(5);
            TERasterProps::BandStatistics s;
            read = raster->GetStatistics(1, s, TERasterProps::Accuracy::Exact, &cancel);
        }));
        QVERIFY(answer.answered());
        QVERIFY(cancel.load());
        QVERIFY(!read);
        QVERIFY(!raster->HasStatistics(1));
    }

    void dialogShowsOneTabPerBand_data()
    {
        QTest::addColumn<int>("bands");
        QTest::addColumn<QStringList>("tabs");
        QTest::addColumn<QList<QColor>>("colours");
        const QColor grey(100, 100, 100);
        QTest::newRow("one band") << 1 << QStringList{"gray"} << QList<QColor>{grey};
        QTest::newRow("three bands") << 3 << QStringList{"red", "green", "blue"}
                                     << QList<QColor>{{240, 20, 20}, {20, 240, 20}, {20, 20, 240}};
        QTest::newRow("four bands") << 4 << QStringList{"red", "green", "blue", "3"}
                                    << QList<QColor>{grey, grey, grey, grey};
    }
    void dialogShowsOneTabPerBand()
    {
        QFETCH(int, bands);
        QFETCH(QStringList, tabs);
        QFETCH(QList<QColor>, colours);
        // Band b holds 10 * b + x % 4, with x % 4 == 2 no-data (0), and band
        // 1 holds 12 where it would hold 10: band 1 has 11, 12, 13 and every
        // other band three values around an empty one (22 in band 2), which
        // must draw nothing.
        const double noData = 0.0;
        const QString file = StretchTestRasters::write(
            path(QStringLiteral("tabs%1.tif").arg(bands)), 8, 2, bands, GDT_Byte,
            [](int b, int x, int) { return x % 4 == 2 ? 0.0 : (b == 1 && x % 4 == 0 ? 12.0 : 10.0 * b + x % 4); },
            &noData);
        const TERefPtr<TERasterProps> raster = TERasterProps::Open(file);
        QVERIFY(raster);
        QList<TzBandHistogram> histograms;
        for (int b = 1; b <= bands; ++b) {
            TzBandHistogram histogram;
            QVERIFY(TzRasterBandReader::histogramOf(raster.get(), b, histogram));
            histograms << histogram;
        }

        TZDialogBandPixHistogram dialog;
        dialog.setData(raster.get(), histograms);
        auto* tabWidget = dialog.findChild<QTabWidget*>("tabWidget");
        QCOMPARE(tabWidget->count(), bands);
        for (int i = 0; i < bands; ++i) {
            QCOMPARE(tabWidget->tabText(i), tabs[i]);
            auto* view = qobject_cast<QtCharts::QChartView*>(tabWidget->widget(i));
            QVERIFY(view);
            auto* series = qobject_cast<QtCharts::QLineSeries*>(view->chart()->series().value(0));
            QVERIFY(series);
            QCOMPARE(series->pen().color(), colours[i]);
            // Three points per value with pixels, none for empty values.
            int withPixels = 0;
            for (const TEBandScan::Point& p : histograms[i])
                withPixels += p.count > 0 ? 1 : 0;
            QCOMPARE(series->count(), 3 * withPixels);
            for (int k = 0; k < series->count(); k += 3) {
                QCOMPARE(series->at(k).y(), 0.0);
                QVERIFY(series->at(k + 1).y() > 0.0);
                QCOMPARE(series->at(k + 1).x(), series->at(k).x());
            }
            QCOMPARE(view->chart()->title(), QStringLiteral("统计直方图"));
            const auto axes = view->chart()->axes(Qt::Horizontal);
            auto* x = qobject_cast<QtCharts::QValueAxis*>(axes.value(0));
            QVERIFY(x);
            QCOMPARE(x->titleText(), QStringLiteral("值"));
            QCOMPARE(x->min(), histograms[i].front().value);
        }
        // Band 1: 11, 12 and 13, 4 pixels each.
        QCOMPARE(dialog.countAt(11), 4.0);
        QCOMPARE(dialog.countAt(10), 0.0);
        QCOMPARE(dialog.countAt(999), 0.0);
        dialog.showCount(13);
        QCOMPARE(dialog.findChild<QLabel*>("label_count")->text(), QStringLiteral("Statistical Data: 4"));
        QCOMPARE(dialog.findChild<QLabel*>("label_value")->text(), QStringLiteral("Value: 13"));
        QCOMPARE(dialog.findChild<QLabel*>("label_min")->text(), QStringLiteral("Min Value: 11.00"));
        QCOMPARE(dialog.findChild<QLabel*>("label_max")->text(), QStringLiteral("Max Value: 13.00"));
        QCOMPARE(dialog.findChild<QLabel*>("label_mean")->text(), QStringLiteral("Average Value: 12.00"));
        if (bands > 1) {
            // The statistics follow the tab: band 2 is 20, 21, 23.
            tabWidget->setCurrentIndex(1);
            QCOMPARE(dialog.findChild<QLabel*>("label_min")->text(), QStringLiteral("Min Value: 20.00"));
            QCOMPARE(dialog.countAt(21), 4.0);
            QCOMPARE(dialog.countAt(22), 0.0);
        }
    }

    void initTestCase() { QVERIFY(mDir.isValid()); }
};

TZ_REGISTER_TEST(TestBandHistogram)
#include "TestBandHistogram.moc"
