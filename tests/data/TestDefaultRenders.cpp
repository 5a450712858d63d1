#include "DataFixtures.h"
#include "TestRegistry.h"

#include "data/TEFeatureLayer.h"
#include "data/TEMemoryFeatureLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TEImageColormapRenderInfo.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyle.h"

#include <QTemporaryDir>

#include <gdal.h>

using namespace TZObjects;

namespace {

// 1 + x + 10y in every band, band b shifted by 1000 (b - 1); (0, 0) is the
// no-data value -1 where one is set.
double ramp(int band, int x, int y)
{
    return x == 0 && y == 0 ? -1.0 : 1.0 + x + 10.0 * y + 1000.0 * (band - 1);
}

// Writes a paletted one-band Byte GeoTIFF (entries 0 transparent, 1 red, 2 blue).
QString writePaletted(const QString& path)
{
    GDALAllRegister();
    GDALDatasetH dataset = GDALCreate(GDALGetDriverByName("GTiff"), path.toUtf8().constData(), 2, 1, 1, GDT_Byte,
                                      nullptr);
    if (!dataset)
        return QStringLiteral("cannot create ") + path;
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    GDALColorTableH table = GDALCreateColorTable(GPI_RGB);
    const GDALColorEntry none{0, 0, 0, 0}, red{255, 0, 0, 255}, blue{0, 0, 255, 255};
    GDALSetColorEntry(table, 0, &none);
    GDALSetColorEntry(table, 1, &red);
    GDALSetColorEntry(table, 2, &blue);
    GDALSetRasterColorTable(band, table);
    GDALDestroyColorTable(table);
    unsigned char values[2] = {1, 2};
    const CPLErr result = GDALRasterIO(band, GF_Write, 0, 0, 2, 1, values, 2, 1, GDT_Byte, 0, 0);
    GDALClose(dataset);
    return result == CE_None ? QString() : QStringLiteral("cannot write ") + path;
}

TERefPtr<TEImageStretchRenderInfo> stretchOf(const TERefPtr<TEImageRender>& render)
{
    const auto single = render.cast<TESingleBandImageRender>();
    return single ? single->getRenderInfo().cast<TEImageStretchRenderInfo>() : TERefPtr<TEImageStretchRenderInfo>();
}

} // namespace

// Every layer opens with a render that fits it, so the dock has a page to
// show and the map something to draw.
class TestDefaultRenders : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        const double noData = -1.0;
        QCOMPARE(DataFixtures::writeGeoTiff(path("grey.tif"), 10, 10, 1, GDT_Float32, ramp, &noData), QString());
        QCOMPARE(writePaletted(path("palette.tif")), QString());
        QCOMPARE(DataFixtures::writeGeoTiff(path("rgb.tif"), 4, 3, 3, GDT_Byte, ramp), QString());
        QCOMPARE(DataFixtures::writeGeoTiff(path("wide.tif"), 4, 3, 4, GDT_Int16, ramp), QString());
        QCOMPARE(DataFixtures::writeGeoTiff(path("pair.tif"), 4, 3, 2, GDT_UInt16, ramp), QString());
        QCOMPARE(DataFixtures::writeVector(path("shapes.gpkg"), "GPKG", QStringLiteral("lines"), wkbLineString,
                                           {{QStringLiteral("name")}}, {{QStringLiteral("LINESTRING(0 0,1 1)"), {}}}),
                 QString());
        QCOMPARE(DataFixtures::writeVector(path("table.csv"), "CSV", QStringLiteral("table"), wkbNone,
                                           {{QStringLiteral("name")}}, {{QString(), {TEVariant(TEString(L"a"))}}}),
                 QString());
    }

    void vectorLayersOpenWithASingleSymbolOfTheirDefaultStyle()
    {
        TERefPtr<TEFeatureLayer> lines = TEFeatureLayer::Open(path("shapes.gpkg"));
        QVERIFY(lines);
        const auto render = lines->GetRender().cast<TESingleSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->GetType().toQString(), QStringLiteral("SingleSymbol"));
        QCOMPARE(render->GetStyle()->GetStyleType(), TEStyle::LineStyle);
        QCOMPARE(render->GetStyle()->GetColor(), lines->GetDefaultStyle()->GetColor());

        auto areas = TEMemoryFeatureLayer::Create(QStringLiteral("areas"), TELayer::LT_Polygon, {});
        const auto areaRender = areas->GetSymbolRender().cast<TESingleSymbolRender>();
        QVERIFY(areaRender);
        QCOMPARE(areaRender->GetStyle()->GetStyleType(), TEStyle::FillStyle);

        // A table has nothing to draw, so no style and no render.
        TERefPtr<TEFeatureLayer> table = TEFeatureLayer::Open(path("table.csv"));
        QVERIFY(table);
        QVERIFY(!table->GetRender());
    }

    void rastersOpenInTheModeThatFitsThem_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("blueBand");
        QTest::addColumn<bool>("useBlue");
        QTest::addColumn<int>("stretchType");
        QTest::newRow("colour table") << "palette.tif" << 2 << 0 << false << 0;
        QTest::newRow("grey band") << "grey.tif" << 1 << 0 << false << 0;
        QTest::newRow("three bytes") << "rgb.tif" << 5 << 3 << true << int(TEMultiBandImageRender::NoStretch);
        QTest::newRow("four int16") << "wide.tif" << 5 << 3 << true << int(TEMultiBandImageRender::PercentClip);
        QTest::newRow("two bands") << "pair.tif" << 5 << 2 << false << int(TEMultiBandImageRender::PercentClip);
    }
    void rastersOpenInTheModeThatFitsThem()
    {
        QFETCH(QString, file);
        QFETCH(int, mode);
        TERefPtr<TERasterLayer> layer = TERasterLayer::Open(path(file));
        QVERIFY(layer);
        const TERefPtr<TEImageRender> render = layer->GetImageRender();
        QVERIFY(render);
        QCOMPARE(layer->GetRender().get(), static_cast<TERender*>(render.get()));
        QCOMPARE(render->getImageRenderMODE(), mode);
        QCOMPARE(render->GetNodataColorType(), 0);
        if (mode == 2) {
            const auto info = render.cast<TESingleBandImageRender>()->getRenderInfo().cast<TEImageColormapRenderInfo>();
            QVERIFY(info);
            QCOMPARE(info->ColorOf(1), qRgb(255, 0, 0));
            QCOMPARE(info->ColorOf(2), qRgb(0, 0, 255));
        } else if (mode == 5) {
            const auto multi = render.cast<TEMultiBandImageRender>();
            QVERIFY(multi);
            QFETCH(int, blueBand);
            QFETCH(bool, useBlue);
            QFETCH(int, stretchType);
            QCOMPARE(multi->getRedBand(), 1);
            QCOMPARE(multi->getGreenBand(), 2);
            QCOMPARE(multi->getBlueBand(), blueBand);
            QCOMPARE(multi->getUseBlueBand(), useBlue);
            QVERIFY(!multi->getAlphaBandUse());
            QCOMPARE(multi->getStretchType(), stretchType);
        }
    }

    void singleBandStretchIsMinMaxGreyOverTheBandStatistics()
    {
        TERefPtr<TERasterLayer> layer = TERasterLayer::Open(path("grey.tif"));
        QVERIFY(layer);
        const auto info = stretchOf(layer->GetImageRender());
        QVERIFY(info);
        QCOMPARE(info->GetAlgoType(), int(TEImageStretchRenderInfo::MinMax));
        QVERIFY(!info->IsPercentClip());
        double low = 0.0, high = 0.0;
        info->GetMinMaxVal(low, high);
        // Values 2..100: the no-data pixel (0, 0) takes no part.
        QCOMPARE(low, 2.0);
        QCOMPARE(high, 100.0);
        QCOMPARE(info->GetItemCount(), 256);
        QCOMPARE(info->GetItemColr(0), TEColor(0, 0, 0));
        QCOMPARE(info->GetItemColr(128), TEColor(128, 128, 128));
        QCOMPARE(info->GetItemColr(255), TEColor(255, 255, 255));
        // The histogram behind a later percent clip is there too: clipping
        // 10 % at each end narrows the range.
        info->SetPercentClip(true);
        info->SetLeftClipValue(10.0);
        info->SetRightClipValue(10.0);
        info->GetStretchRange(low, high);
        QVERIFY2(low > 8.0 && low < 14.0, qPrintable(QString::number(low)));
        QVERIFY2(high > 88.0 && high < 94.0, qPrintable(QString::number(high)));
    }

    void largeRastersOpenOnApproximateStatisticsAndAnswerExactOnes()
    {
        // One bright pixel in a raster just over the size limit, with
        // averaged overviews: the approximate statistics come from an
        // overview, where the pixel is diluted, the exact ones see it.
        const QString file = path("large.tif");
        const int side = 4097;
        QVERIFY(qint64(side) * side > TERasterProps::LargePixelCount);
        {
            GDALAllRegister();
            const char* options[] = {"SPARSE_OK=TRUE", "TILED=YES", nullptr};
            GDALDatasetH dataset = GDALCreate(GDALGetDriverByName("GTiff"), file.toUtf8().constData(), side, side, 1,
                                              GDT_Byte, const_cast<char**>(options));
            QVERIFY(dataset);
            unsigned char bright = 255;
            GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
            QCOMPARE(GDALRasterIO(band, GF_Write, 1001, 1001, 1, 1, &bright, 1, 1, GDT_Byte, 0, 0), CE_None);
            int levels[] = {2, 4, 8, 16, 32};
            QCOMPARE(GDALBuildOverviews(dataset, "AVERAGE", 5, levels, 0, nullptr, nullptr, nullptr), CE_None);
            GDALClose(dataset);
        }
        TERefPtr<TERasterLayer> layer = TERasterLayer::Open(file);
        QVERIFY(layer);
        QVERIFY(layer->GetRaster()->IsLarge());
        const auto info = stretchOf(layer->GetImageRender());
        QVERIFY(info);
        double low = 0.0, high = 0.0;
        info->GetMinMaxVal(low, high);
        QVERIFY2(high < 255.0, qPrintable(QString::number(high)));

        TERasterProps::BandStatistics exact;
        QVERIFY(layer->GetRaster()->GetStatistics(1, exact));
        QCOMPARE(exact.maximum, 255.0);
        // Once the exact figures are known they answer approximate requests.
        TERasterProps::BandStatistics later;
        QVERIFY(layer->GetRaster()->GetStatistics(1, later, TERasterProps::Accuracy::ApproximateIfLarge));
        QCOMPARE(later.maximum, 255.0);
    }

private:
    QString path(const QString& name) const { return mDir.filePath(name); }
    QString path(const char* name) const { return path(QString::fromLatin1(name)); }

    QTemporaryDir mDir;
};

TZ_REGISTER_TEST(TestDefaultRenders)
#include "TestDefaultRenders.moc"
