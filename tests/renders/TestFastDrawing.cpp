#include "TestRegistry.h"

#include "symbology/QuickStyle.h"
#include "symbology/TEPointSymbolCache.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QImage>
#include <QPainter>
#include <QTransform>

#include <ogr_api.h>

#include <cmath>
#include <functional>

using namespace TZObjects;

Q_DECLARE_METATYPE(TERefPtr<TEStyle>)

namespace {

QImage blank(const QSize& size = QSize(320, 320))
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

QImage drawn(const std::function<void(QPainter&)>& draw, const QSize& size = QSize(320, 320))
{
    QImage image = blank(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    draw(painter);
    return image;
}

// The largest difference of one colour channel between two images of one
// size, and how many pixels differ at all.
struct Difference
{
    int largest = 0;
    int pixels = 0;
};

Difference compare(const QImage& a, const QImage& b)
{
    Difference d;
    for (int y = 0; y < a.height(); ++y) {
        const auto* lineA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* lineB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            const int channel = std::max({std::abs(qRed(lineA[x]) - qRed(lineB[x])),
                                          std::abs(qGreen(lineA[x]) - qGreen(lineB[x])),
                                          std::abs(qBlue(lineA[x]) - qBlue(lineB[x]))});
            d.largest = std::max(d.largest, channel);
            d.pixels += channel > 0 ? 1 : 0;
        }
    }
    return d;
}

// 15 x 15 points 20 pixels apart, each moved off the pixel grid by its own
// fraction of a pixel (whole 1/steps of one when steps is given); the first
// column at negative device x.
std::vector<QPointF> scatteredPoints(int steps = 0)
{
    std::vector<QPointF> points;
    unsigned state = 7;
    const auto fraction = [&state, steps] {
        state = state * 1103515245u + 12345u;
        const double f = ((state >> 8) % 1000) / 1000.0;
        return steps > 0 ? std::floor(f * steps) / steps : f;
    };
    for (int row = 0; row < 15; ++row) {
        for (int column = 0; column < 15; ++column)
            points.emplace_back(column * 20.0 - 3.0 + fraction(), row * 20.0 + 10.0 + fraction());
    }
    return points;
}

TERefPtr<TEStyle> simplePoint(int shape, const TEColor& color, double sizeMm, double angle = 0.0,
                              int transparency = 0, double offsetMm = 0.0)
{
    TERefPtr<TEStyle> style = QuickStyle::MakePointStyle(shape, color, sizeMm, TEColor(0, 0, 0), 0.3);
    auto* point = static_cast<TEStyleSimplePoint*>(style.get());
    point->SetAngle(angle);
    point->SetTransparency(transparency);
    point->SetOffset(offsetMm, -offsetMm);
    return style;
}

} // namespace

// The shortcuts of map drawing draw what the plain drawing draws: point
// symbols copied from images of them, and lines and polygons simplified to
// the pixel grid.
class TestFastDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiedPointSymbolsMatchStrokedOnes_data()
    {
        QTest::addColumn<TERefPtr<TEStyle>>("style");
        QTest::addColumn<double>("angle");
        QTest::addColumn<bool>("copied");
        QTest::addColumn<int>("steps");

        auto layered = MakeRef<TEStyleMultiLayer>(TEStyle::PointStyle);
        layered->AddLayer(simplePoint(TEStyleSimplePoint::Circle, TEColor(0, 160, 0), 4.0));
        layered->AddLayer(simplePoint(TEStyleSimplePoint::Cross, TEColor(255, 255, 255), 2.0));
        TERefPtr<TEStyle> pixel = simplePoint(TEStyleSimplePoint::Diamond, TEColor(0, 0, 0), 1.5);
        pixel->SetUnits(TEStyle::Pixel);
        const std::pair<const char*, TERefPtr<TEStyle>> styles[] = {
            {"outlined circle", simplePoint(TEStyleSimplePoint::Circle, TEColor(30, 120, 220), 3.0)},
            {"half transparent square", simplePoint(TEStyleSimplePoint::Square, TEColor(200, 30, 30), 2.5, 0.0, 50)},
            {"star turned by its own angle, shifted",
             simplePoint(TEStyleSimplePoint::Star, TEColor(250, 200, 0), 4.0, 30.0, 0, 1.0)},
            {"two layers", layered},
            {"one and a half pixels", pixel}};
        // A drawing of few symbols places copies to quarter pixels, one of
        // many symbols to half pixels, one of very many to whole pixels.
        for (const int steps : {4, 2, 1}) {
            for (const auto& [name, style] : styles)
                QTest::addRow("%s, 1/%d pixel", name, steps) << style << 0.0 << true << steps;
        }
        // Turned per feature: stroked, so it matches exactly.
        QTest::newRow("turned by the feature")
            << simplePoint(TEStyleSimplePoint::Triangle, TEColor(90, 0, 160), 3.0) << 25.0 << false << 4;
    }

    void copiedPointSymbolsMatchStrokedOnes()
    {
        QFETCH(TERefPtr<TEStyle>, style);
        QFETCH(double, angle);
        QFETCH(bool, copied);
        QFETCH(int, steps);
        TEPointSymbolCache cache(steps == 4 ? 1 : steps == 2 ? 1000 : 100000);
        // A first pass takes every symbol past the strokes that come before
        // its images are made.
        drawn([&](QPainter& painter) {
            for (const QPointF& point : scatteredPoints())
                cache.DrawPoint(&painter, style.get(), point, angle);
        });
        for (const bool onSteps : {true, false}) {
            const std::vector<QPointF> points = scatteredPoints(onSteps ? steps : 0);
            const qint64 copiedBefore = cache.GetCopiedCount();
            const QImage fast = drawn([&](QPainter& painter) {
                for (const QPointF& point : points)
                    QVERIFY(cache.DrawPoint(&painter, style.get(), point, angle));
            });
            // A copy is the marker stroked at the nearest step, up to
            // rounding; a marker turned per point is stroked where it is.
            const auto snapped = [&](const QPointF& point) {
                return copied ? QPointF(qRound64(point.x() * steps), qRound64(point.y() * steps)) / steps : point;
            };
            const QImage stroked = drawn([&](QPainter& painter) {
                for (const QPointF& point : points)
                    style->DrawPoint(&painter, snapped(point), angle);
            });
            QCOMPARE(cache.GetCopiedCount() - copiedBefore, copied ? qint64(points.size()) : 0);
            const Difference difference = compare(fast, stroked);
            QVERIFY2(difference.largest <= (copied ? 3 : 0),
                     qPrintable(QStringLiteral("largest difference %1").arg(difference.largest)));
        }
    }

    void copiesBlendedIntoTheImageMatchQPaintersBlending()
    {
        // Copies onto an unclipped image are blended straight into its
        // pixels, a few points behind; with a clip QPainter draws each at
        // once. Both must give the same pixels, in the same order: every
        // third point is turned, so it is stroked between copies that
        // overlap it, and the first column crosses the image's edge.
        const TERefPtr<TEStyle> circle = simplePoint(TEStyleSimplePoint::Circle, TEColor(30, 120, 220), 5.0);
        const TERefPtr<TEStyle> square =
            simplePoint(TEStyleSimplePoint::Square, TEColor(200, 30, 30), 4.0, 0.0, 40);
        TEPointSymbolCache cache;
        const auto draw = [&](QPainter& painter) {
            TEPointSymbolCache::Run run(cache, &painter);
            int index = 0;
            for (const QPointF& point : scatteredPoints()) {
                for (const QPointF& shifted : {point, point + QPointF(6.3, 4.1)}) {
                    const TEStyle* style = (index % 2 ? square : circle).get();
                    QVERIFY(run.DrawPoint(style, shifted, index % 3 == 0 ? 15.0 : 0.0));
                    ++index;
                }
            }
        };
        drawn(draw);
        const qint64 copiedBefore = cache.GetCopiedCount();
        const QImage direct = drawn(draw);
        // Two of every three of the 450 points are copied.
        QCOMPARE(cache.GetCopiedCount() - copiedBefore, qint64(300));
        const QImage clipped = drawn([&](QPainter& painter) {
            painter.setClipRect(QRect(QPoint(0, 0), QSize(320, 320)));
            draw(painter);
        });
        const Difference difference = compare(direct, clipped);
        QVERIFY2(difference.pixels == 0, qPrintable(QStringLiteral("%1 pixels differ").arg(difference.pixels)));
        QVERIFY(compare(direct, blank()).pixels > 0);
    }

    void copiesLandWhereThePointsAreInMapCoordinates()
    {
        // A multi-point drawn through a map transform, as a layer drawer
        // does; copies are made after the first strokes of a symbol.
        const TERefPtr<TEStyle> style = simplePoint(TEStyleSimplePoint::Circle, TEColor(220, 0, 0), 2.0);
        OGRGeometryH points = OGR_G_CreateGeometry(wkbMultiPoint);
        for (const QPointF& device : scatteredPoints()) {
            OGRGeometryH point = OGR_G_CreateGeometry(wkbPoint);
            OGR_G_SetPoint_2D(point, 0, device.x() / 2.0, 1000.0 - device.y() / 2.0);
            OGR_G_AddGeometryDirectly(points, point);
        }
        const QTransform toDevice(2.0, 0.0, 0.0, -2.0, 0.0, 2000.0);
        TEPointSymbolCache cache;
        drawn([&](QPainter& painter) { cache.Draw(&painter, style.get(), points, toDevice); });
        const QImage fast = drawn([&](QPainter& painter) { QVERIFY(cache.Draw(&painter, style.get(), points, toDevice)); });
        const QImage stroked = drawn([&](QPainter& painter) { style->Draw(&painter, points, toDevice); });
        // Every point of the second drawing was copied.
        QVERIFY(cache.GetCopiedCount() >= OGR_G_GetGeometryCount(points));
        OGR_G_DestroyGeometry(points);
        QVERIFY(compare(fast, stroked).largest <= 96);
    }

    void simplifiedPolygonsAndLinesMatchTheirFullDrawing_data()
    {
        QTest::addColumn<QString>("wkt");
        QTest::addColumn<int>("styleType");
        // A ring of 20,000 vertices, most of them sharing a pixel with the
        // one before, a line wiggling within pixels, and a triangle that
        // lies within one pixel, which must keep its fill.
        QString circle = QStringLiteral("POLYGON((");
        QString wiggle = QStringLiteral("LINESTRING(");
        for (int i = 0; i <= 20000; ++i) {
            const double a = 2.0 * M_PI * (i % 20000) / 20000.0;
            circle += QStringLiteral("%1 %2,").arg(160.0 + 120.0 * std::cos(a), 0, 'f', 6).arg(160.0 + 120.0 * std::sin(a), 0, 'f', 6);
            wiggle += QStringLiteral("%1 %2,").arg(20.0 + i * 0.014, 0, 'f', 6).arg(160.0 + 0.1 * std::sin(i * 1.7), 0, 'f', 6);
        }
        circle.chop(1);
        wiggle.chop(1);
        QTest::newRow("dense ring") << circle + QStringLiteral("))") << int(TEStyle::FillStyle);
        QTest::newRow("wiggling line") << wiggle + QStringLiteral(")") << int(TEStyle::LineStyle);
        QTest::newRow("triangle within a pixel")
            << QStringLiteral("POLYGON((10.1 10.1,10.9 10.2,10.5 10.9,10.1 10.1))") << int(TEStyle::FillStyle);
    }

    void simplifiedPolygonsAndLinesMatchTheirFullDrawing()
    {
        QFETCH(QString, wkt);
        QFETCH(int, styleType);
        const TERefPtr<TEStyle> style =
            QuickStyle::MakeDefaultStyle(TEStyle::StyleType(styleType), TEColor(40, 90, 200));
        OGRGeometryH geometry = nullptr;
        QByteArray text = wkt.toUtf8();
        char* cursor = text.data();
        QCOMPARE(OGR_G_CreateFromWkt(&cursor, nullptr, &geometry), OGRERR_NONE);
        // Map and device coordinates coincide here.
        const QImage simplified = drawn([&](QPainter& painter) { QVERIFY(style->Draw(&painter, geometry, QTransform())); });
        // The same geometry with every vertex, through the device-space calls.
        OGRGeometryH ring = styleType == TEStyle::FillStyle ? OGR_G_GetGeometryRef(geometry, 0) : geometry;
        QPolygonF full;
        for (int i = 0; i < OGR_G_GetPointCount(ring); ++i)
            full << QPointF(OGR_G_GetX(ring, i), OGR_G_GetY(ring, i));
        const QImage everyVertex = drawn([&](QPainter& painter) {
            if (styleType == TEStyle::FillStyle) {
                QPainterPath path;
                path.setFillRule(Qt::OddEvenFill);
                path.addPolygon(full);
                path.closeSubpath();
                style->DrawPolygon(&painter, path);
            } else {
                style->DrawLine(&painter, full);
            }
        });
        OGR_G_DestroyGeometry(geometry);
        QVERIFY(compare(simplified, blank()).pixels > 0);
        // Dropped vertices move an edge by less than a pixel: at most a
        // faint change along it.
        const Difference difference = compare(simplified, everyVertex);
        QVERIFY2(difference.largest <= 80, qPrintable(QStringLiteral("largest difference %1").arg(difference.largest)));
    }
};

TZ_REGISTER_TEST(TestFastDrawing)
#include "TestFastDrawing.moc"
