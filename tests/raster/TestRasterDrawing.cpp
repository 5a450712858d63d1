#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerDrawer.h"

#include "data/TEFeatureLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TEImageClassRenderInfo.h"
#include "renders/TEImageColormapRenderInfo.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TEImageUniqueRenderInfo.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"

#include <QDir>
#include <QPainter>
#include <QTemporaryDir>

#include <gdal.h>

#include <functional>

using namespace TZObjects;

namespace {

// What lies beneath every layer drawn here: a colour no raster pixel takes,
// so that "nothing drawn" is told apart from white or black pixels.
const QColor Below(255, 0, 255);

// Map points of the 10 x 10 rasters over (0,0)-(100,100): the pixel of
// value v = 10 * row + column (row 0 at the top).
QPointF at(int value)
{
    return QPointF((value % 10) * 10.0 + 5.0, 100.0 - (value / 10) * 10.0 - 5.0);
}

// Map points of the 4 x 1 rasters over (0,0)-(400,100): column c.
QPointF column(int c)
{
    return QPointF(c * 100.0 + 50.0, 50.0);
}

QString writeTiff(const QString& path, int width, int height, int bands, GDALDataType type, double pixelSize,
                  const std::function<double(int band, int x, int y)>& value, const double* noData = nullptr)
{
    GDALAllRegister();
    GDALDatasetH dataset = GDALCreate(GDALGetDriverByName("GTiff"), path.toUtf8().constData(), width, height, bands,
                                      type, nullptr);
    if (!dataset)
        return QString();
    double transform[6] = {0.0, pixelSize, 0.0, height * pixelSize, 0.0, -pixelSize};
    GDALSetGeoTransform(dataset, transform);
    std::vector<double> pixels(std::size_t(width) * height);
    bool written = true;
    for (int b = 1; b <= bands; ++b) {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pixels[std::size_t(y) * width + x] = value(b, x, y);
        GDALRasterBandH band = GDALGetRasterBand(dataset, b);
        if (noData)
            GDALSetRasterNoDataValue(band, *noData);
        written = written && GDALRasterIO(band, GF_Write, 0, 0, width, height, pixels.data(), width, height,
                                          GDT_Float64, 0, 0) == CE_None;
    }
    GDALClose(dataset);
    return written ? path : QString();
}

// Draws a layer as tzmap's canvas does, through the drawer chosen for it,
// over the colour Below.
QImage drawLayer(TELayer* layer, const TZMapViewport& viewport)
{
    std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer);
    if (!drawer)
        return QImage();
    QImage image = AppFixture::blankImage(viewport, Below);
    QPainter painter(&image);
    if (!drawer->draw(&painter, viewport, nullptr))
        return QImage();
    return image;
}

// Channels within 2 of each other (alpha blending rounds).
bool near(const QColor& a, const QColor& b)
{
    return std::abs(a.red() - b.red()) <= 2 && std::abs(a.green() - b.green()) <= 2
           && std::abs(a.blue() - b.blue()) <= 2;
}

struct Expected
{
    QPointF map;
    QColor color;
};

// Sets a render on a freshly opened layer; null keeps the default one.
using RenderSetup = std::function<void(TERasterLayer*)>;

TESingleBandImageRender* single(TERasterLayer* layer)
{
    return layer->GetImageRender().cast<TESingleBandImageRender>().get();
}

TEMultiBandImageRender* multi(TERasterLayer* layer)
{
    return layer->GetImageRender().cast<TEMultiBandImageRender>().get();
}

void setInfo(TERasterLayer* layer, const TERefPtr<TEImageRenderInfo>& info)
{
    auto render = MakeRef<TESingleBandImageRender>(info);
    layer->SetRender(render);
}

} // namespace

Q_DECLARE_METATYPE(RenderSetup)
Q_DECLARE_METATYPE(QList<Expected>)

// Every image render mode drawn by tzmap, checked pixel by pixel.
class TestRasterDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        // grey.tif: 10 x 10 Float32, value 10 * row + column, (0,0) no-data.
        mGrey = AppFixture::writeGreyRaster(mDir.path());
        // palette.tif: 2 x 1 over (0,0)-(200,100), 1 red and 2 blue.
        mPalette = AppFixture::writePalettedRaster(mDir.path());
        // rgba.tif: 4 x 1 Byte, four bands, no-data 0 in each. Column 0 is
        // an opaque colour, column 1 no-data, column 2 a colour with alpha 0,
        // column 3 white with alpha 128.
        const int rgba[4][4] = {{200, 10, 20, 255}, {0, 0, 0, 0}, {50, 100, 150, 0}, {255, 255, 255, 128}};
        const double zero = 0.0;
        mRgba = writeTiff(path("rgba.tif"), 4, 1, 4, GDT_Byte, 100.0,
                          [&](int b, int x, int) { return double(rgba[x][b - 1]); }, &zero);
        // wide.tif: 10 x 10 Int16, three bands: 1000 + v, 2000 + v and
        // 3099 - v for the pixel of value v.
        mWide = writeTiff(path("wide.tif"), 10, 10, 3, GDT_Int16, 10.0, [](int b, int x, int y) {
            const int v = 10 * y + x;
            return b == 3 ? 3099.0 - v : 1000.0 * b + v;
        });
        QVERIFY(!mGrey.isEmpty() && !mPalette.isEmpty() && !mRgba.isEmpty() && !mWide.isEmpty());
    }

    void everyModeDrawsItsPixels_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<RenderSetup>("setup");
        QTest::addColumn<QList<Expected>>("expected");
        const QColor black(0, 0, 0), white(255, 255, 255), grey(128, 128, 128);
        const QColor red(255, 0, 0), green(0, 200, 0), blue(0, 0, 255);

        // Single band: the default min-max stretch (1..99), no-data clear.
        QTest::newRow("stretch, as opened") << mGrey << RenderSetup()
            << QList<Expected>{{at(1), black}, {at(99), white}, {at(50), grey}, {at(0), Below}};
        QTest::newRow("stretch, no-data coloured") << mGrey << RenderSetup([](TERasterLayer* layer) {
            single(layer)->SetNodataColorType(1);
            single(layer)->SetNodataColor(TEColor(0, 200, 0));
        }) << QList<Expected>{{at(0), green}, {at(1), black}};
        QTest::newRow("stretch by standard deviation") << mGrey << RenderSetup([](TERasterLayer* layer) {
            auto info = single(layer)->getRenderInfo().cast<TEImageStretchRenderInfo>();
            info->SetAlgoType(TEImageStretchRenderInfo::StandardDeviation);
            info->SetMeanValue(50.0);
            info->SetStandardValue(10.0);
        }) << QList<Expected>{{at(30), black}, {at(39), black}, {at(50), grey}, {at(61), white}, {at(70), white}};
        // A 10 % clip at each end turns value 5 black and 95 white, which a
        // plain min-max stretch would draw dark and light grey.
        QTest::newRow("stretch with percent clip") << mGrey << RenderSetup([](TERasterLayer* layer) {
            auto info = single(layer)->getRenderInfo().cast<TEImageStretchRenderInfo>();
            info->SetPercentClip(true);
            info->SetLeftClipValue(10.0);
            info->SetRightClipValue(10.0);
        }) << QList<Expected>{{at(5), black}, {at(95), white}, {at(0), Below}};
        QTest::newRow("stretch through a colour ramp") << mGrey << RenderSetup([](TERasterLayer* layer) {
            auto info = single(layer)->getRenderInfo().cast<TEImageStretchRenderInfo>();
            info->SetItemCount(2);
            info->SetItemColr(0, TEColor(255, 0, 0));
            info->SetItemColr(1, TEColor(0, 0, 255));
        }) << QList<Expected>{{at(1), red}, {at(99), blue}};

        QTest::newRow("colour map, as opened") << mPalette << RenderSetup()
            << QList<Expected>{{{50, 50}, red}, {{150, 50}, blue}};
        QTest::newRow("colour map, edited") << mPalette << RenderSetup([](TERasterLayer* layer) {
            auto info = single(layer)->getRenderInfo().cast<TEImageColormapRenderInfo>();
            info->SetRenderColorTable(2, TEColor(0, 200, 0));
        }) << QList<Expected>{{{50, 50}, red}, {{150, 50}, green}};
        QTest::newRow("unique values") << mGrey << RenderSetup([](TERasterLayer* layer) {
            auto info = MakeRef<TEImageUniqueRenderInfo>();
            info->AddValue(1.0, TEColor(255, 0, 0));
            info->AddValue(99.0, TEColor(0, 0, 255));
            setInfo(layer, info);
        }) << QList<Expected>{{at(1), red}, {at(99), blue}, {at(50), Below}};
        QTest::newRow("classes") << mGrey << RenderSetup([](TERasterLayer* layer) {
            auto info = MakeRef<TEImageClassRenderInfo>();
            info->SetClassCount(2);
            info->SetClassItemInfo(0, 0.0, 49.5, TEColor(255, 0, 0));
            info->SetClassItemInfo(1, 49.5, 99.0, TEColor(0, 0, 255));
            setInfo(layer, info);
        }) << QList<Expected>{{at(1), red}, {at(49), red}, {at(50), blue}, {at(99), blue}, {at(0), Below}};

        // RGB composite of bytes, as opened: colours as they are, no-data
        // clear, the alpha band not used.
        QTest::newRow("RGB, as opened") << mRgba << RenderSetup()
            << QList<Expected>{{column(0), QColor(200, 10, 20)}, {column(1), Below}, {column(2), QColor(50, 100, 150)}};
        QTest::newRow("RGB, bands swapped and green off") << mRgba << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->setRedBand(3);
            multi(layer)->setBlueBand(1);
            multi(layer)->setUseGreenBand(false);
        }) << QList<Expected>{{column(0), QColor(20, 0, 200)}};
        QTest::newRow("RGB with alpha band") << mRgba << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->setAlphaBandUse(true);
            multi(layer)->setAlphaBandNum(4);
        }) << QList<Expected>{{column(0), QColor(200, 10, 20)}, {column(2), Below}, {column(3), QColor(255, 128, 255)}};
        // A percent clip stretches the colour bands only: clipped like them,
        // the alpha band (values 255 and 128 here) would hide column 3.
        QTest::newRow("RGB with alpha band and percent clip") << mRgba << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->setAlphaBandUse(true);
            multi(layer)->setAlphaBandNum(4);
            multi(layer)->setStretchType(TEMultiBandImageRender::PercentClip);
        }) << QList<Expected>{{column(2), Below}, {column(3), QColor(255, 128, 255)}};
        QTest::newRow("RGB background under no-data and alpha 0") << mRgba << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->setAlphaBandUse(true);
            multi(layer)->setAlphaBandNum(4);
            multi(layer)->SetBackgroundColor(TEColor(0, 0, 200));
        }) << QList<Expected>{{column(0), QColor(200, 10, 20)}, {column(1), QColor(0, 0, 200)},
                              {column(2), QColor(0, 0, 200)}, {column(3), QColor(128, 128, 228)}, {{430, 50}, Below}};
        QTest::newRow("RGB background white draws nothing") << mRgba << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->SetBackgroundColor(TEColor(255, 255, 255));
        }) << QList<Expected>{{column(1), Below}};
        QTest::newRow("RGB background transparent draws nothing") << mRgba << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->SetBackgroundColor(TEColor(0, 0, 200, 0));
        }) << QList<Expected>{{column(1), Below}};
        // Int16 bands are percent-clipped into 0..255 as opened; taken as
        // bytes they would all be white.
        QTest::newRow("RGB percent clip, as opened") << mWide << RenderSetup()
            << QList<Expected>{{at(0), QColor(0, 0, 255)}, {at(99), QColor(255, 255, 0)}};
        QTest::newRow("RGB without stretch") << mWide << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->setStretchType(TEMultiBandImageRender::NoStretch);
        }) << QList<Expected>{{at(0), white}, {at(99), white}};

        // One band stretched between its own minimum and maximum.
        QTest::newRow("multi-band stretch of band 2") << mWide << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->setImageRenderMODE(8);
            multi(layer)->SetStretchBandIndex(2);
            multi(layer)->setStretchType(TEMultiBandImageRender::NoStretch);
        }) << QList<Expected>{{at(0), black}, {at(99), white}, {at(50), QColor(129, 129, 129)}};
        QTest::newRow("multi-band stretch of band 3") << mWide << RenderSetup([](TERasterLayer* layer) {
            multi(layer)->setImageRenderMODE(8);
            multi(layer)->SetStretchBandIndex(3);
        }) << QList<Expected>{{at(0), white}, {at(99), black}};
    }
    void everyModeDrawsItsPixels()
    {
        QFETCH(QString, file);
        QFETCH(RenderSetup, setup);
        QFETCH(QList<Expected>, expected);
        TERefPtr<TERasterLayer> layer = TERasterLayer::Open(file);
        QVERIFY(layer);
        if (setup)
            setup(layer.get());
        QRectF extent;
        QVERIFY(layer->GetExtent(extent));
        // One device pixel per map unit, with a margin of 50 units around.
        const TZMapViewport view(QSize(int(extent.width()) + 100, int(extent.height()) + 100), extent.center(), 1.0);
        const QImage image = drawLayer(layer.get(), view);
        QVERIFY(!image.isNull());
        for (const Expected& e : expected) {
            const QColor actual = AppFixture::colorAt(image, view, e.map);
            QVERIFY2(near(actual, e.color), qPrintable(QStringLiteral("at %1,%2: %3, expected %4")
                                                           .arg(e.map.x()).arg(e.map.y())
                                                           .arg(actual.name(), e.color.name())));
        }
    }

    void layersWithoutARenderAreNotDrawn()
    {
        TERefPtr<TERasterLayer> raster = TERasterLayer::Open(mGrey);
        QVERIFY(raster);
        QVERIFY(TZLayerDrawer::create(raster.get()));
        raster->SetRender({});
        QVERIFY(!TZLayerDrawer::create(raster.get()));

        const QString vectors = AppFixture::writeVectors(mDir.path());
        TERefPtr<TEFeatureLayer> squares = TEFeatureLayer::Open(vectors, QStringLiteral("squares"));
        QVERIFY(squares);
        QVERIFY(TZLayerDrawer::create(squares.get()));
        squares->SetSymbolRender({});
        QVERIFY(!TZLayerDrawer::create(squares.get()));
    }

private:
    QString path(const char* name) const { return QDir(mDir.path()).filePath(QString::fromLatin1(name)); }

    QTemporaryDir mDir;
    QString mGrey;
    QString mPalette;
    QString mRgba;
    QString mWide;
};

TZ_REGISTER_TEST(TestRasterDrawing)
#include "TestRasterDrawing.moc"
