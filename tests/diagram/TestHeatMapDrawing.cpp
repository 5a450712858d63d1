#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZFeatureLayerDrawer.h"
#include "TZLayerTree.h"

#include "data/TEFeatureCursor.h"
#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEClusterDiagramRender.h"
#include "renders/TEDotDensityDiagramRender.h"
#include "renders/TEDrawContext.h"
#include "renders/TEHeatMapperRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimplePoint.h"
#include "view/TETrackCancel.h"

#include <QPainter>
#include <QRandomGenerator>

#include <ogr_api.h>

#include <map>

using namespace TZObjects;

namespace {

TERefPtr<TEMemoryFeatureLayer> layerOf(TELayer::LayerType type, const QStringList& wkts, double value = 0.0)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("drawn"), type, {{QStringLiteral("value"), TEField::FT_Double}}, QStringLiteral("EPSG:3857"));
    for (const QString& wkt : wkts)
        layer->AppendFeature(wkt, {TEVariant(value)});
    return layer;
}

QString point(double x, double y)
{
    return QStringLiteral("POINT(%1 %2)").arg(x).arg(y);
}

// Draws the layer with the render through tzmap's drawer into a transparent
// image of the squares viewport (2 pixels per map unit, 96 DPI).
QImage draw(TEMemoryFeatureLayer* layer, const TEFeatureRender& render, const TETrackCancel* cancel = nullptr,
            bool* finished = nullptr)
{
    TZFeatureLayerDrawer drawer(layer, &render, nullptr);
    const TZMapViewport view = AppFixture::squaresViewport();
    QImage image = AppFixture::blankImage(view, Qt::transparent);
    QPainter painter(&image);
    const bool done = drawer.draw(&painter, view, cancel);
    if (finished)
        *finished = done;
    return image;
}

int alphaAt(const QImage& image, const QPointF& map)
{
    return AppFixture::colorAt(image, AppFixture::squaresViewport(), map).alpha();
}

TEDrawContext squaresContext()
{
    const TZMapViewport view = AppFixture::squaresViewport();
    TEDrawContext context;
    context.mapToDevice = view.mapToDevice();
    context.mapExtent = view.mapExtent();
    return context;
}

TERefPtr<TEStyle> squareMarker(const QColor& color)
{
    auto marker = MakeRef<TEStyleSimplePoint>();
    marker->SetShapeType(TEStyleSimplePoint::Square);
    marker->SetSize(3.0);
    marker->SetColor(TEColor(color.red(), color.green(), color.blue()));
    return marker;
}

} // namespace

// What the heat map, cluster and dot density renders draw, checked on pixels.
class TestHeatMapDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void heatMapIsDensestAtTheDensestSpotAndClearElsewhere()
    {
        QStringList wkts;
        for (int i = 0; i < 20; ++i)
            wkts << point(50, 50);
        wkts << point(150, 50);
        auto layer = layerOf(TELayer::LT_Point, wkts);
        TEHeatMapperRender render;
        render.SetRadius(5.0); // millimetres: about 19 pixels
        const QImage image = draw(layer.get(), render);

        QCOMPARE(alphaAt(image, QPointF(50, 50)), 255);
        const QColor top = render.DensityColor(1.0);
        const QColor dense = AppFixture::colorAt(image, AppFixture::squaresViewport(), QPointF(50, 50));
        QVERIFY2(qAbs(dense.red() - top.red()) < 8 && qAbs(dense.blue() - top.blue()) < 8, "top of the ramp");
        // The lone point shows, fainter; the surface falls off from the centre.
        QVERIFY(alphaAt(image, QPointF(150, 50)) > 0);
        QVERIFY(alphaAt(image, QPointF(150, 50)) < 255);
        const QColor off = AppFixture::colorAt(image, AppFixture::squaresViewport(), QPointF(56, 50));
        QVERIFY(off.rgba() != dense.rgba());
        for (double x = 50.5; x < 62.0; x += 0.5)
            QVERIFY2(alphaAt(image, QPointF(x, 50)) <= alphaAt(image, QPointF(x - 0.5, 50)), "falls off outward");
        // Beyond the radius and far from any point the map shows through.
        QCOMPARE(alphaAt(image, QPointF(61, 50)), 0);
        QCOMPARE(alphaAt(image, QPointF(100, 90)), 0);
        QCOMPARE(alphaAt(image, QPointF(100, 50)), 0);
    }

    void heatMapReachFollowsTheRadiusUnit_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("radius");
        QTest::addColumn<double>("reachPixels");
        QTest::newRow("millimetres") << 1 << 5.0 << 5.0 / 25.4 * 96.0;
        QTest::newRow("points") << 0 << 5.0 << 5.0 / 72.0 * 96.0;
        QTest::newRow("inches") << 3 << 0.25 << 24.0;
        QTest::newRow("map units") << 9 << 20.0 << 40.0;
    }

    void heatMapReachFollowsTheRadiusUnit()
    {
        QFETCH(int, unit);
        QFETCH(double, radius);
        QFETCH(double, reachPixels);
        auto layer = layerOf(TELayer::LT_Point, {point(100, 50)});
        TEHeatMapperRender render;
        render.SetRadius(radius);
        render.SetRadiusUnitType(unit);
        render.SetMaximumValue(1.0);
        const QImage image = draw(layer.get(), render);
        int covered = 0;
        for (int x = 0; x < image.width(); ++x)
            covered += image.pixelColor(x, 100).alpha() > 0 ? 1 : 0;
        const double reach = covered / 2.0;
        // Within a cell of the smoothing grid (a seventh of the radius) or so.
        QVERIFY2(reach > 0.85 * reachPixels && reach < 1.3 * reachPixels,
                 qPrintable(QStringLiteral("reach %1 px, expected about %2").arg(reach).arg(reachPixels)));
    }

    void heatMapCountsPointsJustOutsideTheView()
    {
        auto layer = layerOf(TELayer::LT_Point, {point(-4, 50)});
        TEHeatMapperRender render;
        render.SetRadius(5.0);
        const QImage image = draw(layer.get(), render);
        QVERIFY(alphaAt(image, QPointF(0.5, 50)) > 0);
        QCOMPARE(alphaAt(image, QPointF(10, 50)), 0);
    }

    void clusterCountsArePointsPerCell()
    {
        // Points in pixels over a 400 x 200 view, a grid of 37 through (13, 7).
        QRandomGenerator random(7);
        std::vector<QPointF> points;
        std::map<std::pair<int, int>, std::pair<int, QPointF>> expected;
        for (int i = 0; i < 5000; ++i) {
            const QPointF p(random.bounded(400.0), random.bounded(200.0));
            points.push_back(p);
            auto& cell = expected[{int(std::floor((p.x() - 13) / 37)), int(std::floor((p.y() - 7) / 37))}];
            ++cell.first;
            cell.second += p;
        }
        points.emplace_back(-5, 10); // outside the view: left out
        const auto clusters =
            TEClusterDiagramRender::GroupPoints(points, 37.0, QRectF(0, 0, 400, 200), QPointF(13, 7));
        QCOMPARE(clusters.size(), expected.size());
        int total = 0;
        for (const TEClusterDiagramRender::Cluster& cluster : clusters) {
            const auto key = std::make_pair(int(std::floor((cluster.centre.x() - 13) / 37)),
                                            int(std::floor((cluster.centre.y() - 7) / 37)));
            QVERIFY(expected.count(key));
            QCOMPARE(cluster.count, expected[key].first);
            const QPointF mean = expected[key].second / expected[key].first;
            QVERIFY(qAbs(mean.x() - cluster.centre.x()) < 1e-9 && qAbs(mean.y() - cluster.centre.y()) < 1e-9);
            total += cluster.count;
        }
        QCOMPARE(total, 5000);
    }

    void clusterMarkersAndLonePointsOnTheMap()
    {
        // Cells of 40 pixels are 20 x 20 map squares aligned on the origin.
        QStringList wkts;
        for (int i = 0; i < 12; ++i)
            wkts << point(22 + i, 30);
        wkts << point(110, 70);
        auto layer = layerOf(TELayer::LT_Point, wkts);
        const QColor red(220, 0, 0);
        TEClusterDiagramRender render;
        render.setMakerSize(40.0);
        render.SetBackgroundRender(MakeRef<TESingleSymbolRender>(squareMarker(red)).get());
        const QImage image = draw(layer.get(), render);

        // The lone point in its own symbol; none of the clustered points is.
        QCOMPARE(AppFixture::colorAt(image, AppFixture::squaresViewport(), QPointF(110, 70)), red);
        QVERIFY(AppFixture::colorAt(image, AppFixture::squaresViewport(), QPointF(22, 30)) != red);
        // The cluster of 12 (class 10-99) at the points' mean, (27.5, 30),
        // in its class colour.
        const QColor fill = render.SizeClassColor(TEClusterDiagramRender::SizeClass(12));
        // (Below the label, inside the disc.)
        QCOMPARE(AppFixture::colorAt(image, AppFixture::squaresViewport(), QPointF(27.5, 30 - 3.5)).rgba(), fill.rgba());
        QCOMPARE(TEClusterDiagramRender::SizeClass(12), 2);
        QCOMPARE(alphaAt(image, QPointF(150, 20)), 0);
    }

    void dotsLieInsideTheirPolygonAndRepeat()
    {
        // An L-shaped polygon with a square hole.
        const QString wkt = QStringLiteral(
            "POLYGON((10 10,90 10,90 40,40 40,40 90,10 90,10 10),(15 15,30 15,30 30,15 30,15 15))");
        OGRGeometryH polygon = nullptr;
        QByteArray text = wkt.toLatin1();
        char* cursor = text.data();
        QCOMPARE(OGR_G_CreateFromWkt(&cursor, nullptr, &polygon), OGRERR_NONE);
        TEDotDensityDiagramRender render;
        render.setNumberPerDot(5);
        render.setTimestamp(1000);
        const TEDrawContext context = squaresContext();
        const std::vector<QPointF> dots = render.PlaceDots(polygon, 1500.0, 3, context);
        QCOMPARE(int(dots.size()), 300);
        OGRGeometryH probe = OGR_G_CreateGeometry(wkbPoint);
        int outside = 0;
        for (const QPointF& dot : dots) {
            OGR_G_SetPoint_2D(probe, 0, dot.x(), dot.y());
            outside += OGR_G_Contains(polygon, probe) ? 0 : 1;
        }
        OGR_G_DestroyGeometry(probe);
        QCOMPARE(outside, 0);
        QVERIFY(render.PlaceDots(polygon, 1500.0, 3, context) == dots);
        QVERIFY(render.PlaceDots(polygon, 1500.0, 4, context) != dots);
        render.setTimestamp(1001);
        QVERIFY(render.PlaceDots(polygon, 1500.0, 3, context) != dots);
        QCOMPARE(int(render.PlaceDots(polygon, 14.9, 3, context).size()), 2);
        OGR_G_DestroyGeometry(polygon);

        // A polygon smaller than a pixel gets a few dots, not thousands.
        text = QByteArrayLiteral("POLYGON((1 1,1.1 1,1.1 1.1,1 1.1,1 1))");
        cursor = text.data();
        QCOMPARE(OGR_G_CreateFromWkt(&cursor, nullptr, &polygon), OGRERR_NONE);
        QVERIFY(render.PlaceDots(polygon, 1e6, 3, context).size() <= 3);
        OGR_G_DestroyGeometry(polygon);
    }

    void dotDensityDrawsOverTheBackgroundTheSameAtEveryRedraw()
    {
        auto layer = layerOf(TELayer::LT_Polygon, {QStringLiteral("POLYGON((20 20,80 20,80 80,20 80,20 20))")}, 400.0);
        const QColor fill(200, 230, 200);
        TEDotDensityDiagramRender render;
        render.setFieldName(TEString(L"value"));
        render.setNumberPerDot(2);
        render.setTimestamp(42);
        render.setDotColor(TEColor(0, 0, 160));
        render.SetBackgroundRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(fill)).get());
        const QImage first = draw(layer.get(), render);
        const QImage second = draw(layer.get(), render);
        QVERIFY(first == second);

        const TZMapViewport view = AppFixture::squaresViewport();
        const QRectF inside = QRectF(view.toDevice(QPointF(20, 80)), view.toDevice(QPointF(80, 20))).adjusted(-1, -1, 1, 1);
        int dotPixels = 0, background = 0, stray = 0;
        for (int y = 0; y < first.height(); ++y) {
            for (int x = 0; x < first.width(); ++x) {
                const QColor c = first.pixelColor(x, y);
                if (c == QColor(0, 0, 160)) {
                    ++dotPixels;
                    stray += inside.contains(QPointF(x + 0.5, y + 0.5)) ? 0 : 1;
                } else if (c == fill) {
                    ++background;
                }
            }
        }
        QCOMPARE(stray, 0);
        // 200 dots of 2 x 2 pixels, a few overlapping.
        QVERIFY2(dotPixels > 600 && dotPixels <= 800, qPrintable(QString::number(dotPixels)));
        QVERIFY(background > 10000);
    }

    void legendShowsRampSizeClassesAndDotValue_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("heat map") << "heat" << QStringList{"Density: sparse to dense"};
        QTest::newRow("cluster") << "cluster"
                                 << QStringList{"2 - 9", "10 - 99", "100 - 999", "1,000 - 9,999", "10,000 - 99,999",
                                                "100,000+"};
        QTest::newRow("dot density") << "dots" << QStringList{"1 dot = 250 value"};
    }

    void legendShowsRampSizeClassesAndDotValue()
    {
        QFETCH(QString, kind);
        QFETCH(QStringList, texts);
        const QLocale previous;
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        struct RestoreLocale
        {
            QLocale locale;
            ~RestoreLocale() { QLocale::setDefault(locale); }
        } restore{previous};
        TERefPtr<TEMemoryFeatureLayer> layer = layerOf(kind == QLatin1String("dots") ? TELayer::LT_Polygon
                                                                                    : TELayer::LT_Point, {});
        QColor expected;
        if (kind == QLatin1String("heat")) {
            auto heat = MakeRef<TEHeatMapperRender>();
            expected = heat->DensityColor(1.0);
            layer->SetSymbolRender(heat);
        } else if (kind == QLatin1String("cluster")) {
            auto cluster = MakeRef<TEClusterDiagramRender>();
            expected = cluster->SizeClassColor(1);
            layer->SetSymbolRender(cluster);
        } else {
            auto dots = MakeRef<TEDotDensityDiagramRender>();
            dots->setFieldName(TEString(L"value"));
            dots->setNumberPerDot(250);
            dots->setDotColor(TEColor(0, 0, 160));
            expected = QColor(0, 0, 160);
            layer->SetSymbolRender(dots);
        }
        TZLayerTree tree;
        tree.addLayer(layer);
        const QModelIndexList entries = AppFixture::legendEntries(tree, layer->GetGuidStr().toQString());
        QCOMPARE(AppFixture::legendTexts(tree, layer->GetGuidStr().toQString()), texts);
        // The first entry's swatch: the top of the heat ramp (right end), the
        // smallest cluster class, the dot colour (middle).
        const QImage icon = entries.value(0).data(Qt::DecorationRole).value<QIcon>().pixmap(20, 16).toImage();
        const QColor swatch = kind == QLatin1String("heat") ? icon.pixelColor(icon.width() - 1, icon.height() / 2)
                                                            : icon.pixelColor(icon.width() / 2, icon.height() / 2);
        QCOMPARE(swatch.rgb(), expected.rgb());
    }

    void cancelledViewDrawsNothing_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("heat map") << "heat";
        QTest::newRow("cluster") << "cluster";
        QTest::newRow("dot density") << "dots";
    }

    void cancelledViewDrawsNothing()
    {
        QFETCH(QString, kind);
        TERefPtr<TEFeatureRender> render;
        TERefPtr<TEMemoryFeatureLayer> layer;
        if (kind == QLatin1String("dots")) {
            layer = layerOf(TELayer::LT_Polygon, {QStringLiteral("POLYGON((20 20,80 20,80 80,20 80,20 20))")}, 100.0);
            auto dots = MakeRef<TEDotDensityDiagramRender>();
            dots->setFieldName(TEString(L"value"));
            render = dots;
        } else {
            layer = layerOf(TELayer::LT_Point, {point(50, 50), point(51, 50), point(120, 60)});
            render = kind == QLatin1String("heat") ? TERefPtr<TEFeatureRender>(MakeRef<TEHeatMapperRender>())
                                                   : TERefPtr<TEFeatureRender>(MakeRef<TEClusterDiagramRender>());
        }
        QVERIFY(!draw(layer.get(), *render).isNull());

        TETrackCancel cancel;
        cancel.Cancel();
        TEDrawContext context = squaresContext();
        context.cancel = &cancel;
        TEQueryFilter filter;
        filter.SetGeometryNeeded(true);
        TERefPtr<TEFeatureCursor> cursor = layer->Search(filter);
        QVERIFY(cursor);
        QImage image = AppFixture::blankImage(AppFixture::squaresViewport(), Qt::transparent);
        QPainter painter(&image);
        QVERIFY(!render->DrawLayer(&painter, cursor.get(), context));
        painter.end();
        QVERIFY(image == AppFixture::blankImage(AppFixture::squaresViewport(), Qt::transparent));
    }
};

TZ_REGISTER_TEST(TestHeatMapDrawing)

#include "TestHeatMapDrawing.moc"
