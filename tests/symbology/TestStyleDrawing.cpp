#include "TestRegistry.h"
#include "SymbologyTestUtils.h"

#include "symbology/QuickStyle.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"

#include <ogr_api.h>

#include <QPainter>

using namespace TZObjects;
using namespace SymbologyTest;

namespace {

const QRgb kRed = qRgb(255, 0, 0);
const QRgb kBlue = qRgb(0, 0, 255);
const QRgb kGreen = qRgb(0, 160, 0);
const QRgb kWhite = qRgb(255, 255, 255);

// Owns an OGR geometry read from WKT.
struct Geometry
{
    explicit Geometry(const char* wkt)
    {
        char* text = const_cast<char*>(wkt);
        OGR_G_CreateFromWkt(&text, nullptr, &handle);
    }
    ~Geometry() { OGR_G_DestroyGeometry(handle); }
    OGRGeometryH handle = nullptr;
};

TERefPtr<TEStyleSimplePoint> pixelPoint(int shape, QRgb fill, double size, QRgb outline, double outlineWidth)
{
    auto point = QuickStyle::MakePointStyle(shape, TEColor(fill, 255), size, TEColor(outline, 255), outlineWidth)
                     .cast<TEStyleSimplePoint>();
    point->SetUnits(TEStyle::Pixel);
    return point;
}

TERefPtr<TEStyleSimpleFill> pixelFill(QRgb fill, QRgb outline, double outlineWidth)
{
    auto style = QuickStyle::MakeFillStyle(TEColor(fill, 255), TEColor(outline, 255), outlineWidth)
                     .cast<TEStyleSimpleFill>();
    style->GetOutline()->SetUnits(TEStyle::Pixel);
    return style;
}

} // namespace

// Styles painted into images land their colours where a map reader expects.
class TestStyleDrawing : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fillPaintsInsideAndOutlineOnTheEdge()
    {
        QImage image = whiteImage();
        QPainter painter(&image);
        QPainterPath square;
        square.addRect(20, 20, 60, 60);
        QVERIFY(pixelFill(kRed, kBlue, 4)->DrawPolygon(&painter, square));
        painter.end();
        QCOMPARE(pixel(image, 50, 50), kRed);
        QCOMPARE(pixel(image, 20, 50), kBlue);
        QCOMPARE(pixel(image, 50, 80), kBlue);
        QCOMPARE(pixel(image, 10, 10), kWhite);
    }

    void pointMarksItsCentreWithTheOutlineAround()
    {
        QImage image = whiteImage();
        QPainter painter(&image);
        QVERIFY(pixelPoint(TEStyleSimplePoint::Square, kRed, 20, kBlue, 4)->DrawPoint(&painter, QPointF(50, 50)));
        painter.end();
        QCOMPARE(pixel(image, 50, 50), kRed);
        QCOMPARE(pixel(image, 40, 50), kBlue);
        QCOMPARE(pixel(image, 50, 60), kBlue);
        QCOMPARE(pixel(image, 50, 65), kWhite);
    }

    void pointSizeFollowsUnitsAndDeviceDpi()
    {
        // 5 mm is 18.9 px at 96 DPI and 59 px at 300 DPI.
        auto point = QuickStyle::MakePointStyle(TEStyleSimplePoint::Square, TEColor(kRed, 255), 5.0,
                                                TEColor(kRed, 255), 0);
        QImage image = whiteImage();
        {
            QPainter painter(&image);
            point->DrawPoint(&painter, QPointF(50, 50));
        }
        QCOMPARE(pixel(image, 50 + 8, 50), kRed);
        QCOMPARE(pixel(image, 50 + 11, 50), kWhite);

        QImage fine = whiteImage();
        fine.setDotsPerMeterX(11811);
        fine.setDotsPerMeterY(11811);
        {
            QPainter painter(&fine);
            point->DrawPoint(&painter, QPointF(50, 50));
        }
        QCOMPARE(pixel(fine, 50 + 27, 50), kRed);
        QCOMPARE(pixel(fine, 50 + 32, 50), kWhite);
    }

    void angleAndOffsetMoveTheMarker()
    {
        // A 40 x 6 bar turned by 90 degrees stands upright.
        auto bar = pixelPoint(TEStyleSimplePoint::Square, kRed, 0, kRed, 0);
        bar->SetWidth(40);
        bar->SetHeight(6);
        QImage image = whiteImage();
        {
            QPainter painter(&image);
            bar->DrawPoint(&painter, QPointF(50, 50), 90.0);
        }
        QCOMPARE(pixel(image, 50, 30), kRed);
        QCOMPARE(pixel(image, 65, 50), kWhite);

        // Offsets point up on the map: +10 moves the marker up the image.
        auto dot = pixelPoint(TEStyleSimplePoint::Square, kBlue, 6, kBlue, 0);
        dot->SetOffset(0, 10);
        QImage shifted = whiteImage();
        {
            QPainter painter(&shifted);
            dot->DrawPoint(&painter, QPointF(50, 50));
        }
        QCOMPARE(pixel(shifted, 50, 40), kBlue);
        QCOMPARE(pixel(shifted, 50, 50), kWhite);
    }

    void lineStrokesItsPixelsOnly()
    {
        auto line = QuickStyle::MakeLineStyle(TEColor(kGreen, 255), 6).cast<TEStyleSimpleLine>();
        line->SetUnits(TEStyle::Pixel);
        QImage image = whiteImage();
        {
            QPainter painter(&image);
            QVERIFY(line->DrawLine(&painter, QPolygonF(QVector<QPointF>{QPointF(10, 50), QPointF(90, 50)})));
        }
        QCOMPARE(pixel(image, 50, 50), kGreen);
        QCOMPARE(pixel(image, 50, 52), kGreen);
        QCOMPARE(pixel(image, 50, 56), kWhite);
        QVERIFY(!line->DrawPoint(nullptr, QPointF()));
    }

    void transparencyLetsTheBackgroundThrough()
    {
        auto fill = pixelFill(kRed, kRed, 0);
        fill->SetOutline(TERefPtr<TEStyleLine>());
        fill->SetTransparency(50);
        QImage image = whiteImage();
        {
            QPainter painter(&image);
            QPainterPath all;
            all.addRect(0, 0, 100, 100);
            fill->DrawPolygon(&painter, all);
        }
        const QColor c(image.pixel(50, 50));
        QCOMPARE(c.red(), 255);
        QVERIFY(qAbs(c.green() - 127) <= 2);
    }

    void multiLayerDrawsTheHigherPriorityOnTop()
    {
        TEStyleMultiLayer symbol(TEStyle::PointStyle);
        auto red = pixelPoint(TEStyleSimplePoint::Square, kRed, 20, kRed, 0);
        auto blue = pixelPoint(TEStyleSimplePoint::Square, kBlue, 20, kBlue, 0);
        red->SetPriority(2);
        blue->SetPriority(1);
        symbol.AddLayer(red);
        symbol.AddLayer(blue);

        QImage image = whiteImage();
        {
            QPainter painter(&image);
            symbol.DrawPoint(&painter, QPointF(50, 50));
        }
        QCOMPARE(pixel(image, 50, 50), kRed);

        red->SetPriority(0);
        {
            QPainter painter(&image);
            symbol.DrawPoint(&painter, QPointF(50, 50));
        }
        QCOMPARE(pixel(image, 50, 50), kBlue);
    }

    void ogrPolygonKeepsItsHoleEmpty()
    {
        Geometry donut("POLYGON((0 0,10 0,10 10,0 10,0 0),(4 4,6 4,6 6,4 6,4 4))");
        QVERIFY(donut.handle);
        // Map 0..10 onto 0..100 pixels with y pointing up.
        const QTransform mapToDevice(10, 0, 0, -10, 0, 100);
        auto fill = pixelFill(kRed, kRed, 0);
        fill->SetOutline(TERefPtr<TEStyleLine>());
        QImage image = whiteImage();
        {
            QPainter painter(&image);
            QVERIFY(fill->Draw(&painter, donut.handle, mapToDevice));
        }
        QCOMPARE(pixel(image, 20, 80), kRed);
        QCOMPARE(pixel(image, 50, 50), kWhite);
    }

    void ogrMultiGeometriesDrawEveryPart()
    {
        const QTransform mapToDevice(10, 0, 0, -10, 0, 100);
        Geometry points("MULTIPOINT((2 2),(8 8))");
        Geometry lines("MULTILINESTRING((1 5,9 5),(5 1,5 9))");
        Geometry polygons("MULTIPOLYGON(((0 0,3 0,3 3,0 3,0 0)),((2 2,5 2,5 5,2 5,2 2)))");
        auto marker = pixelPoint(TEStyleSimplePoint::Circle, kBlue, 8, kBlue, 0);
        auto line = QuickStyle::MakeLineStyle(TEColor(kGreen, 255), 3);
        line->SetUnits(TEStyle::Pixel);
        auto fill = pixelFill(kRed, kRed, 0);
        fill->SetOutline(TERefPtr<TEStyleLine>());

        QImage image = whiteImage();
        {
            QPainter painter(&image);
            QVERIFY(marker->Draw(&painter, points.handle, mapToDevice));
            QVERIFY(line->Draw(&painter, lines.handle, mapToDevice));
            QVERIFY(fill->Draw(&painter, polygons.handle, mapToDevice));
            // A fill style has nothing to draw on points.
            QVERIFY(!fill->Draw(&painter, points.handle, mapToDevice));
        }
        QCOMPARE(pixel(image, 20, 80), kRed);  // overlap of the squares stays filled
        QCOMPARE(pixel(image, 40, 60), kRed);
        QCOMPARE(pixel(image, 80, 20), kBlue);
        QCOMPARE(pixel(image, 90 - 5, 50), kGreen);
        QCOMPARE(pixel(image, 50, 15), kGreen);
    }

    void previewsDrawEachKindInTheRect()
    {
        QImage image = whiteImage();
        {
            QPainter painter(&image);
            pixelPoint(TEStyleSimplePoint::Square, kRed, 10, kRed, 0)->DrawPreview(&painter, QRectF(0, 0, 50, 50));
            pixelFill(kBlue, kBlue, 0)->DrawPreview(&painter, QRectF(50, 0, 50, 50));
            auto line = QuickStyle::MakeLineStyle(TEColor(kGreen, 255), 3);
            line->SetUnits(TEStyle::Pixel);
            line->DrawPreview(&painter, QRectF(0, 50, 60, 50));
        }
        QCOMPARE(pixel(image, 25, 25), kRed);
        QCOMPARE(pixel(image, 75, 25), kBlue);
        QCOMPARE(pixel(image, 52, 2), kWhite);
        // The zigzag starts at the lower left of its inset rectangle.
        QCOMPARE(pixel(image, 8, 92), kGreen);
    }

    // The unit codes the panels store, measured on a drawn line: the ink
    // summed down one column of an antialiased horizontal line is its width.
    void lineWidthFollowsItsUnitCode_data()
    {
        QTest::addColumn<int>("units");
        QTest::addColumn<double>("width");
        QTest::addColumn<int>("dpi");
        QTest::addColumn<double>("pixels");
        QTest::newRow("1 mm at 96 dpi") << 1 << 1.0 << 96 << 96.0 / 25.4;
        QTest::newRow("\"Point\" (0) at 96 dpi") << 0 << 1.0 << 96 << 96.0 / 72.0;
        QTest::newRow("older point code 4") << 4 << 1.0 << 96 << 96.0 / 72.0;
        QTest::newRow("points at 192 dpi") << 0 << 3.0 << 192 << 8.0;
        QTest::newRow("0.1 cm") << 2 << 0.1 << 96 << 96.0 / 25.4;
        QTest::newRow("0.05 inch") << 3 << 0.05 << 96 << 4.8;
        QTest::newRow("pixels") << int(TEStyle::Pixel) << 3.0 << 96 << 3.0;
    }

    void lineWidthFollowsItsUnitCode()
    {
        QFETCH(int, units);
        QFETCH(double, width);
        QFETCH(int, dpi);
        QFETCH(double, pixels);
        auto line = MakeRef<TEStyleSimpleLine>();
        line->SetColor(TEColor(0, 0, 0));
        line->SetUnits(units);
        line->SetWidth(width);
        QImage image = whiteImage();
        image.setDotsPerMeterX(qRound(dpi / 0.0254));
        image.setDotsPerMeterY(qRound(dpi / 0.0254));
        {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing, true);
            QVERIFY(line->DrawLine(&painter, QPolygonF(QVector<QPointF>{QPointF(10, 50.3), QPointF(90, 50.3)})));
        }
        double ink = 0.0;
        for (int y = 0; y < image.height(); ++y)
            ink += (255 - qGray(image.pixel(50, y))) / 255.0;
        QVERIFY2(qAbs(ink - pixels) < 0.15, qPrintable(QStringLiteral("%1 pixels wide, expected %2").arg(ink).arg(pixels)));
    }
};

TZ_REGISTER_TEST(TestStyleDrawing)
#include "TestStyleDrawing.moc"
