#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZFeatureLayerDrawer.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEHistogramDiagramRender.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TEStackDiagramRender.h"

#include <QPainter>

using namespace TZObjects;

namespace {

const QColor Red(220, 0, 0);
const QColor Green(0, 170, 0);
const QColor Blue(0, 0, 220);

// Points with three numeric fields a, b, c; a missing value is null.
TERefPtr<TEMemoryFeatureLayer> pointsWith(const QList<QPointF>& at, const QList<QVariantList>& values)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("charts"), TELayer::LT_Point,
        {{QStringLiteral("a"), TEField::FT_Double}, {QStringLiteral("b"), TEField::FT_Double},
         {QStringLiteral("c"), TEField::FT_Double}},
        QStringLiteral("EPSG:3857"));
    for (int i = 0; i < at.size(); ++i) {
        std::vector<TEVariant> row;
        for (const QVariant& v : values[i])
            row.push_back(v.isValid() ? TEVariant(v.toDouble()) : TEVariant());
        layer->AppendFeature(QStringLiteral("POINT(%1 %2)").arg(at[i].x()).arg(at[i].y()), row);
    }
    return layer;
}

void addItems(TEDiagramRender& render)
{
    render.AddItem(L"a", L"a", AppFixture::fillStyle(Red));
    render.AddItem(L"b", L"b", AppFixture::fillStyle(Green));
    render.AddItem(L"c", L"c", AppFixture::fillStyle(Blue));
}

// Draws the layer with the render as tzmap does, over white.
QImage draw(TEMemoryFeatureLayer* layer, const TEDiagramRender& render, int* diagrams = nullptr)
{
    TZFeatureLayerDrawer drawer(layer, &render, nullptr);
    QImage image = AppFixture::blankImage(AppFixture::squaresViewport());
    QPainter painter(&image);
    drawer.draw(&painter, AppFixture::squaresViewport(), nullptr);
    if (diagrams)
        *diagrams = drawer.diagramCount();
    return image;
}

double pointsToPixels(double points, QImage& image)
{
    QPainter painter(&image);
    return points * TEStyle::DeviceDpi(&painter) / 72.0;
}

QPoint device(const QPointF& map)
{
    return AppFixture::squaresViewport().toDevice(map).toPoint();
}

// How far a run of the colour reaches from start, one pixel at a time in
// the direction step (0 when start is not of the colour).
int runLength(const QImage& image, QPoint start, const QPoint& step, const QColor& color)
{
    int length = 0;
    while (image.rect().contains(start) && image.pixelColor(start) == color) {
        ++length;
        start += step;
    }
    return length;
}

// The length of the run of the colour through middle along the axis.
int span(const QImage& image, const QPoint& middle, const QPoint& axis, const QColor& color)
{
    const int forward = runLength(image, middle, axis, color);
    return forward ? forward + runLength(image, middle, -axis, color) - 1 : 0;
}

int differingPixels(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    }
    return count;
}

} // namespace

// The pie, histogram and stack diagrams as tzmap draws them: slice colours
// around the anchor, bar and segment lengths against the largest value in
// view.
class TestChartDiagramDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pieSlicesAreTheValuesShares_data()
    {
        QTest::addColumn<QVariantList>("values");
        QTest::addColumn<int>("radius");
        // Probes at half the radius: north-east, south-east, south-west,
        // north-west. Slices run clockwise from twelve o'clock.
        QTest::addColumn<QList<QColor>>("quadrants");
        QTest::newRow("quarter, quarter, half") << QVariantList{1, 1, 2} << 20
                                                << QList<QColor>{Red, Green, Blue, Blue};
        QTest::newRow("negative as zero") << QVariantList{-3, 1, 1} << 30 << QList<QColor>{Green, Green, Blue, Blue};
        QTest::newRow("null as zero") << QVariantList{QVariant(), 0, 5} << 10
                                      << QList<QColor>{Blue, Blue, Blue, Blue};
        QTest::newRow("all zero draws nothing")
            << QVariantList{0, QVariant(), -1} << 20 << QList<QColor>{Qt::white, Qt::white, Qt::white, Qt::white};
    }

    void pieSlicesAreTheValuesShares()
    {
        QFETCH(QVariantList, values);
        QFETCH(int, radius);
        QFETCH(QList<QColor>, quadrants);
        TERefPtr<TEMemoryFeatureLayer> layer = pointsWith({QPointF(100, 50)}, {values});
        TEPieDiagramRender pie;
        addItems(pie);
        pie.SetRadius(radius);
        int diagrams = -1;
        QImage image = draw(layer.get(), pie, &diagrams);
        const bool drawn = quadrants.front() != QColor(Qt::white);
        QCOMPARE(diagrams, drawn ? 1 : 0);
        const QPoint centre = device(QPointF(100, 50));
        const double r = pointsToPixels(radius, image);
        const double d = r / 2.0 / std::sqrt(2.0);
        const QList<QPointF> probes{{d, -d}, {d, d}, {-d, d}, {-d, -d}};
        for (int i = 0; i < 4; ++i)
            QCOMPARE(image.pixelColor(centre + probes[i].toPoint()), quadrants[i]);
        // The disc is the radius in points across, not more.
        const QPoint west(-1, 0);
        if (drawn) {
            const int reach = runLength(image, centre + QPoint(-2, 0), west, quadrants[3]) + 2;
            QVERIFY2(qAbs(reach - r) <= 2.0, qPrintable(QStringLiteral("%1 px, radius %2 px").arg(reach).arg(r)));
        }
        QCOMPARE(image.pixelColor(centre + QPoint(int(r) + 3, 0)), QColor(Qt::white));
    }

    void pieShadowIsADarkerSideBeneath()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = pointsWith({QPointF(100, 50)}, {{5, 0, 0}});
        TEPieDiagramRender pie;
        addItems(pie);
        pie.SetRadius(20);
        QImage flat = draw(layer.get(), pie);
        pie.SetShowShadow(true);
        pie.SetShadowThickness(0.5);
        QImage raised = draw(layer.get(), pie);
        const QPoint centre = device(QPointF(100, 50));
        const double r = pointsToPixels(20, raised);
        // Below the rim, a quarter of the radius down: white without the
        // shadow, the slice's colour darkened with it; the top is unchanged.
        const QPoint below = centre + QPoint(0, int(r + r / 4.0));
        QCOMPARE(flat.pixelColor(below), QColor(Qt::white));
        QCOMPARE(raised.pixelColor(below).rgb(), Red.darker(150).rgb());
        QCOMPARE(raised.pixelColor(centre), Red);
        QCOMPARE(raised.pixelColor(centre + QPoint(0, int(r + r / 2.0) + 3)), QColor(Qt::white));
    }

    void histogramBarsScaleToTheLargestValueInView_data()
    {
        QTest::addColumn<bool>("vertical");
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("widthInPoints");
        QTest::newRow("vertical, points") << true << 0 << 10.0 << 10.0;
        QTest::newRow("horizontal, points") << false << 0 << 10.0 << 10.0;
        QTest::newRow("vertical, millimetres") << true << 1 << 4.0 << 4.0 / 25.4 * 72.0;
    }

    void histogramBarsScaleToTheLargestValueInView()
    {
        QFETCH(bool, vertical);
        QFETCH(int, unit);
        QFETCH(double, width);
        QFETCH(double, widthInPoints);
        // Left a = 10, b = 5; right a = 20: the right "a" bar is the tallest
        // in view and reaches the maximum height of 60 points.
        TERefPtr<TEMemoryFeatureLayer> layer =
            pointsWith({QPointF(50, 50), QPointF(150, 50)}, {{10, 5, QVariant()}, {20, 0, 0}});
        TEHistogramDiagramRender histogram;
        histogram.AddItem(L"a", L"a", AppFixture::fillStyle(Red));
        histogram.AddItem(L"b", L"b", AppFixture::fillStyle(Green));
        histogram.SetWidth(width);
        histogram.setUnitType(unit);
        histogram.setMaxHeight(60);
        histogram.SetVerticalDirection(vertical);
        int diagrams = 0;
        QImage image = draw(layer.get(), histogram, &diagrams);
        QCOMPARE(diagrams, 2);
        const double maxLength = pointsToPixels(60, image);
        const double barWidth = pointsToPixels(widthInPoints, image);
        // Bar i's middle across the anchor, and the way it grows.
        const QPoint along = vertical ? QPoint(0, -1) : QPoint(1, 0);
        auto length = [&](const QPointF& map, int bar, const QColor& color) {
            const double across = (bar - 0.5) * barWidth;
            const QPoint start = device(map) + (vertical ? QPoint(int(across), -2) : QPoint(2, int(across)));
            return runLength(image, start, along, color) + 2;
        };
        const struct { QPointF at; int bar; QColor color; double share; } bars[] = {
            {{50, 50}, 0, Red, 0.5}, {{50, 50}, 1, Green, 0.25}, {{150, 50}, 0, Red, 1.0}};
        for (const auto& bar : bars) {
            const int measured = length(bar.at, bar.bar, bar.color);
            QVERIFY2(qAbs(measured - bar.share * maxLength) <= 2.0,
                     qPrintable(QStringLiteral("%1 px, expected %2").arg(measured).arg(bar.share * maxLength)));
        }
        // Bars are as wide as asked: across the left "a" bar's middle.
        const QPoint middle = device(QPointF(50, 50)) + (vertical ? QPoint(0, -5) : QPoint(5, 0));
        const QPoint across = vertical ? QPoint(-1, 0) : QPoint(0, -1);
        const int measuredWidth = runLength(image, middle + across * 2, across, Red) + 2;
        QVERIFY2(qAbs(measuredWidth - barWidth) <= 2.0,
                 qPrintable(QStringLiteral("%1 px wide, expected %2").arg(measuredWidth).arg(barWidth)));
        // The right feature's zero "b" draws no bar.
        QCOMPARE(length(QPointF(150, 50), 1, Green), 2);
    }

    void labelsShowTheValuesWhenAsked_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("pie") << "pie";
        QTest::newRow("histogram") << "histogram";
        QTest::newRow("stack") << "stack";
    }

    void labelsShowTheValuesWhenAsked()
    {
        QFETCH(QString, kind);
        TERefPtr<TEMemoryFeatureLayer> layer = pointsWith({QPointF(100, 50)}, {{4, 4, 0}});
        std::unique_ptr<TEDiagramRender> render;
        if (kind == QLatin1String("pie"))
            render = std::make_unique<TEPieDiagramRender>();
        else if (kind == QLatin1String("histogram"))
            render = std::make_unique<TEHistogramDiagramRender>();
        else
            render = std::make_unique<TEStackDiagramRender>();
        addItems(*render);
        QImage plain = draw(layer.get(), *render);
        render->SetShowLabel(true);
        QImage labelled = draw(layer.get(), *render);
        // Two values of "4" in a small font: more than a few pixels change.
        QVERIFY(differingPixels(plain, labelled) > 20);
        QCOMPARE(differingPixels(plain, draw(layer.get(), *render)), differingPixels(plain, labelled));
    }

    void stackSegmentsScaleToTheLargestTotalInView()
    {
        // Left total 20 reaches the maximum height of 60 points; right 10,
        // half of it. Segments stack in item order from the anchor up.
        TERefPtr<TEMemoryFeatureLayer> layer =
            pointsWith({QPointF(50, 50), QPointF(150, 50)}, {{10, 10, 0}, {5, QVariant(), 5}});
        TEStackDiagramRender stack;
        addItems(stack);
        stack.SetWidth(12);
        stack.SetMaxHeight(60);
        QImage image = draw(layer.get(), stack);
        const double full = pointsToPixels(60, image);
        const QPoint up(0, -1);
        const struct { QPointF at; double middle; QColor color; double share; } segments[] = {
            {{50, 50}, 0.25, Red, 0.5}, {{50, 50}, 0.75, Green, 0.5},
            {{150, 50}, 0.125, Red, 0.25}, {{150, 50}, 0.375, Blue, 0.25}};
        for (const auto& segment : segments) {
            const QPoint middle = device(segment.at) + up * int(segment.middle * full);
            const int length = span(image, middle, up, segment.color);
            QVERIFY2(qAbs(length - segment.share * full) <= 3.0,
                     qPrintable(QStringLiteral("%1 px at %2, expected %3")
                                    .arg(length).arg(segment.at.x()).arg(segment.share * full)));
        }
        const QPoint left = device(QPointF(50, 50));
        // Nothing stands above the left bar.
        QCOMPARE(image.pixelColor(left + up * int(full + 4)), QColor(Qt::white));
    }
};

TZ_REGISTER_TEST(TestChartDiagramDrawing)

#include "TestChartDiagramDrawing.moc"
