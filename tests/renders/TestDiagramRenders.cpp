#include "TestRegistry.h"

#include "RenderFixtures.h"

#include "data/TEGeometry.h"
#include "renders/TEDrawContext.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "renders/TEHistogramDiagramRender.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TEStackDiagramRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QImage>
#include <QPainter>

#include <ogr_api.h>

#include <memory>

using namespace TZObjects;
using namespace RenderFixtures;

namespace {

const QRgb Red = qRgb(255, 0, 0);
const QPoint Anchor(100, 150);

TERefPtr<TEStyle> RedFill()
{
    auto style = MakeRef<TEStyleSimpleFill>();
    style->SetColor(TEColor(255, 0, 0));
    style->SetOutline(TERefPtr<TEStyleLine>());
    return style;
}

// A diagram of one item, "pop", in red: kind picks the class, size and
// unit set the measure the test looks at.
TERefPtr<TEDiagramRender> OneItemDiagram(const QString& kind, double size, int unit)
{
    TERefPtr<TEDiagramRender> render;
    if (kind == QLatin1String("pie")) {
        auto pie = MakeRef<TEPieDiagramRender>();
        pie->SetRadius(int(size));
        render = pie;
    } else if (kind == QLatin1String("histogram")) {
        auto histogram = MakeRef<TEHistogramDiagramRender>();
        histogram->SetWidth(size);
        histogram->setUnitType(unit);
        histogram->setMaxHeight(30);
        render = histogram;
    } else if (kind == QLatin1String("stack")) {
        auto stack = MakeRef<TEStackDiagramRender>();
        stack->SetWidth(int(size));
        stack->SetMaxHeight(30);
        render = stack;
    } else {
        auto graduated = MakeRef<TEGraduatedSymbolsDiagramRender>(L"pop");
        auto symbol = MakeRef<TEStyleSimplePoint>();
        symbol->SetShapeType(TEStyleSimplePoint::Square);
        symbol->SetUnits(unit);
        symbol->SetSize(size);
        symbol->SetColor(TEColor(255, 0, 0));
        symbol->SetOutlineWidth(0.0);
        graduated->setItems({TEGraduatedSymbolsDiagramItem(symbol, 0, 100)});
        render = graduated;
    }
    render->AddItem(L"pop", L"Population", RedFill());
    return render;
}

QImage DrawOne(const TEDiagramRender& render, double dpi, bool* drawn = nullptr)
{
    Attributes a;
    a.pop = 12;
    TERefPtr<TEFeature> feature = MakeFeature(a);
    TEDrawContext context;
    context.dpi = dpi;
    QImage image(200, 200, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const bool ok = render.DrawDiagram(&painter, feature.get(), Anchor, context);
    if (drawn)
        *drawn = ok;
    return image;
}

// Red pixels along the row just above the anchor, and up the anchor's column.
int RedAcross(const QImage& image)
{
    int count = 0;
    for (int x = 0; x < image.width(); ++x)
        count += image.pixel(x, Anchor.y() - 1) == Red;
    return count;
}

int RedUp(const QImage& image)
{
    int count = 0;
    for (int y = Anchor.y() - 1; y >= 0 && image.pixel(Anchor.x(), y) == Red; --y)
        ++count;
    return count;
}

bool Contains(const QString& wkt, const QPointF& point)
{
    TERefPtr<TEGeometry> area = TEGeometry::FromWkt(wkt);
    TERefPtr<TEGeometry> spot = TEGeometry::FromWkt(QStringLiteral("POINT(%1 %2)").arg(point.x()).arg(point.y()));
    return area && spot && OGR_G_Contains(area->GetHandle(), spot->GetHandle());
}

} // namespace

// The diagram renders' own drawing: anchors, sizes in their units, labels.
class TestDiagramRenders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anchorIsWhereTheDiagramStands_data()
    {
        QTest::addColumn<QString>("wkt");
        QTest::addColumn<bool>("found");
        QTest::addColumn<QPointF>("anchor");
        // Non-empty: the anchor must lie inside this area instead.
        QTest::addColumn<QString>("inside");
        QTest::newRow("point") << "POINT(3 4)" << true << QPointF(3, 4) << QString();
        QTest::newRow("multi-point: its first") << "MULTIPOINT((7 8),(1 1))" << true << QPointF(7, 8) << QString();
        QTest::newRow("line: halfway along, not the middle vertex")
            << "LINESTRING(0 0,10 0,10 10,10 30)" << true << QPointF(10, 10) << QString();
        QTest::newRow("3D line") << "LINESTRING Z (0 0 5,4 0 9)" << true << QPointF(2, 0) << QString();
        QTest::newRow("multi-line: its longest part")
            << "MULTILINESTRING((0 0,1 0),(10 10,10 30),(5 5,6 6))" << true << QPointF(10, 20) << QString();
        QTest::newRow("arc: halfway along the curve") << "CIRCULARSTRING(0 0,1 1,2 0)" << true << QPointF(1, 1)
                                                      << QString();
        const QString u = QStringLiteral("POLYGON((0 0,200 0,200 100,150 100,150 20,50 20,50 100,0 100,0 0))");
        QTest::newRow("polygon whose centroid lies outside") << u << true << QPointF() << u;
        QTest::newRow("multi-polygon: inside its largest part")
            << "MULTIPOLYGON(((0 0,1 0,1 1,0 1,0 0)),((10 10,30 10,30 30,10 30,10 10)),((50 50,52 50,52 52,50 50)))"
            << true << QPointF() << "POLYGON((10 10,30 10,30 30,10 30,10 10))";
        QTest::newRow("collection: its first part with an anchor")
            << "GEOMETRYCOLLECTION(POINT EMPTY,LINESTRING(0 0,4 0),POINT(9 9))" << true << QPointF(2, 0) << QString();
        QTest::newRow("empty point") << "POINT EMPTY" << false << QPointF() << QString();
        QTest::newRow("empty polygon") << "POLYGON EMPTY" << false << QPointF() << QString();
    }

    void anchorIsWhereTheDiagramStands()
    {
        QFETCH(QString, wkt);
        QFETCH(bool, found);
        QFETCH(QPointF, anchor);
        QFETCH(QString, inside);
        TERefPtr<TEGeometry> geometry = TEGeometry::FromWkt(wkt);
        QVERIFY(geometry);
        QPointF result(-1, -1);
        QCOMPARE(TEDiagramRender::GetAnchor(geometry->GetHandle(), result), found);
        if (!found)
            return;
        if (inside.isEmpty()) {
            QVERIFY2(qAbs(result.x() - anchor.x()) < 0.01 && qAbs(result.y() - anchor.y()) < 0.01,
                     qPrintable(QStringLiteral("anchor (%1, %2)").arg(result.x()).arg(result.y())));
        } else {
            QVERIFY2(Contains(inside, result), qPrintable(QStringLiteral("anchor (%1, %2) lies outside")
                                                              .arg(result.x()).arg(result.y())));
        }
        QVERIFY(!TEDiagramRender::GetAnchor(nullptr, result));
    }

    // Sizes go through one unit conversion: code 0 is points, 1 mm, 2 cm,
    // 3 inches; radius, bar heights and stack sizes count points.
    void diagramSizesFollowTheirUnitsAndDpi_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<double>("size");
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("dpi");
        QTest::addColumn<double>("across");
        QTest::addColumn<double>("up");
        QTest::newRow("pie radius, points") << "pie" << 15.0 << 0 << 96.0 << 40.0 << 20.0;
        QTest::newRow("pie radius at 192 dpi") << "pie" << 15.0 << 0 << 192.0 << 80.0 << 40.0;
        QTest::newRow("histogram width, \"Point\"") << "histogram" << 15.0 << 0 << 96.0 << 20.0 << 40.0;
        QTest::newRow("histogram width, mm") << "histogram" << 5.0 << 1 << 96.0 << 18.9 << 40.0;
        QTest::newRow("histogram width, cm") << "histogram" << 0.5 << 2 << 96.0 << 18.9 << 40.0;
        QTest::newRow("histogram width, inch") << "histogram" << 0.25 << 3 << 96.0 << 24.0 << 40.0;
        QTest::newRow("stack, points") << "stack" << 15.0 << 0 << 96.0 << 20.0 << 40.0;
        QTest::newRow("graduated symbol, in its own unit") << "graduated" << 5.0 << 1 << 96.0 << 18.9 << 9.4;
    }

    void diagramSizesFollowTheirUnitsAndDpi()
    {
        QFETCH(QString, kind);
        QFETCH(double, size);
        QFETCH(int, unit);
        QFETCH(double, dpi);
        QFETCH(double, across);
        QFETCH(double, up);
        TERefPtr<TEDiagramRender> render = OneItemDiagram(kind, size, unit);
        bool drawn = false;
        const QImage image = DrawOne(*render, dpi, &drawn);
        QVERIFY(drawn);
        QVERIFY2(qAbs(RedAcross(image) - across) <= 1.5,
                 qPrintable(QStringLiteral("%1 pixels across, expected %2").arg(RedAcross(image)).arg(across)));
        QVERIFY2(qAbs(RedUp(image) - up) <= 1.5,
                 qPrintable(QStringLiteral("%1 pixels up, expected %2").arg(RedUp(image)).arg(up)));
    }

    void labelsAreDrawnOnlyWhenAsked_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("pie") << "pie";
        QTest::newRow("histogram") << "histogram";
        QTest::newRow("stack") << "stack";
        QTest::newRow("graduated") << "graduated";
    }

    void labelsAreDrawnOnlyWhenAsked()
    {
        QFETCH(QString, kind);
        TERefPtr<TEDiagramRender> render = OneItemDiagram(kind, 10.0, 1);
        // Grey label ink (the diagram is red on white), only with labels on.
        auto darkPixels = [](const QImage& image) {
            int count = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const QRgb c = image.pixel(x, y);
                    count += qGray(c) < 160 && qAbs(qRed(c) - qGreen(c)) < 30 && qAbs(qGreen(c) - qBlue(c)) < 30;
                }
            }
            return count;
        };
        QCOMPARE(darkPixels(DrawOne(*render, 96.0)), 0);
        render->SetShowLabel(true);
        QVERIFY(darkPixels(DrawOne(*render, 96.0)) > 10);
    }
};

TZ_REGISTER_TEST(TestDiagramRenders)

#include "TestDiagramRenders.moc"
