#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZFeatureLayerDrawer.h"
#include "TZMapRenderJob.h"

#include "data/TEGeometry.h"
#include "data/TEMemoryFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEDiagramRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"
#include "view/TETrackCancel.h"

#include <QPainter>

#include <ogr_api.h>

#include <atomic>
#include <memory>

using namespace TZObjects;

namespace {

const QColor Mark(255, 0, 255);
const QColor Green(0, 160, 0);

// What the drawings of a MarkDiagramRender and its clones share.
struct MarkProbe
{
    std::atomic<int> drawn{0};
    TETrackCancel* cancel = nullptr;
    int cancelAfter = -1;
};

// A diagram that is a square mark centred on the anchor, as many pixels
// across as the feature's "size" value, so that a test sees both where the
// host put the anchor and that the values reached the diagram pass. It can
// pull the cancel flag after a given number of diagrams.
class MarkDiagramRender : public TEDiagramRender
{
public:
    explicit MarkDiagramRender(std::shared_ptr<MarkProbe> probe) : mProbe(std::move(probe))
    {
        AddItem(L"size", L"Size", AppFixture::fillStyle(Mark));
    }
    TEString GetType() const override { return L"TestMarkDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override { return MakeRef<MarkDiagramRender>(*this); }

    bool DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                     const TEDrawContext&) const override
    {
        const std::vector<double> values = ItemValues(feature);
        if (values.empty() || values.front() <= 0.0)
            return false;
        const double side = values.front();
        painter->fillRect(QRectF(anchor - QPointF(side / 2.0, side / 2.0), QSizeF(side, side)), Mark);
        if (++mProbe->drawn == mProbe->cancelAfter)
            mProbe->cancel->Cancel();
        return true;
    }

private:
    std::shared_ptr<MarkProbe> mProbe;
};

// One style for every feature, pulling the cancel flag once it has styled
// a given number of features.
class CancellingBackground : public TESingleSymbolRender
{
public:
    CancellingBackground(const TERefPtr<TEStyle>& style, TETrackCancel* cancel, int cancelAfter)
        : TESingleSymbolRender(style), mCancel(cancel), mCancelAfter(cancelAfter), mStyled(std::make_shared<int>(0))
    {
    }
    TERefPtr<TEFeatureRender> Clone() const override { return MakeRef<CancellingBackground>(*this); }
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale, bool ignore) const override
    {
        if (++*mStyled == mCancelAfter)
            mCancel->Cancel();
        return TESingleSymbolRender::GetStyleByFeature(feature, scale, ignore);
    }

private:
    TETrackCancel* mCancel;
    int mCancelAfter;
    std::shared_ptr<int> mStyled;
};

TERefPtr<TEStyle> greenStyle(TELayer::LayerType type)
{
    if (type == TELayer::LT_Point) {
        auto point = MakeRef<TEStyleSimplePoint>();
        point->SetShapeType(TEStyleSimplePoint::Square);
        point->SetSize(5.0); // 5 mm: about 19 pixels across
        point->SetColor(TEColor(Green.red(), Green.green(), Green.blue()));
        return point;
    }
    if (type == TELayer::LT_Line) {
        auto line = MakeRef<TEStyleSimpleLine>();
        line->SetWidth(3.0); // 3 mm: about 11 pixels wide
        line->SetColor(TEColor(Green.red(), Green.green(), Green.blue()));
        return line;
    }
    return AppFixture::fillStyle(Green);
}

TERefPtr<TEMemoryFeatureLayer> layerOf(TELayer::LayerType type, const QStringList& wkts, int size = 8)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("diagrams"), type,
        {{QStringLiteral("kind"), TEField::FT_String}, {QStringLiteral("size"), TEField::FT_Integer}},
        QStringLiteral("EPSG:3857"));
    for (int i = 0; i < wkts.size(); ++i)
        layer->AppendFeature(wkts[i], {TEVariant(TEString(QString(QChar('a' + i)))), TEVariant(size)});
    return layer;
}

// The device rectangle covered by mark-coloured pixels (empty when none).
QRect markPixels(const QImage& image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == Mark)
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

bool polygonContains(const QString& wkt, const QPointF& map)
{
    TERefPtr<TEGeometry> polygon = TEGeometry::FromWkt(wkt);
    TERefPtr<TEGeometry> point = TEGeometry::FromWkt(QStringLiteral("POINT(%1 %2)").arg(map.x()).arg(map.y()));
    return polygon && point && OGR_G_Contains(polygon->GetHandle(), point->GetHandle());
}

// A U whose centroid, (100, 43.3), lies in the gap between its arms.
const QString UShape = QStringLiteral("POLYGON((0 0,200 0,200 100,150 100,150 20,50 20,50 100,0 100,0 0))");

} // namespace

// tzmap's drawing of diagram renders: the background first, then each
// feature's diagram at the device position of its anchor.
class TestDiagramDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void diagramStandsOnItsAnchorOverTheBackground_data()
    {
        QTest::addColumn<int>("layerType");
        QTest::addColumn<QString>("wkt");
        // Null: anywhere inside the polygon.
        QTest::addColumn<QPointF>("anchor");
        QTest::newRow("point") << int(TELayer::LT_Point) << QStringLiteral("POINT(50 50)") << QPointF(50, 50);
        // 160 units long; halfway is 80 along, on the first segment.
        QTest::newRow("line, halfway along")
            << int(TELayer::LT_Line) << QStringLiteral("LINESTRING(20 20,120 20,120 80)") << QPointF(100, 20);
        QTest::newRow("polygon, inside though its centroid is not") << int(TELayer::LT_Polygon) << UShape << QPointF();
    }

    void diagramStandsOnItsAnchorOverTheBackground()
    {
        QFETCH(int, layerType);
        QFETCH(QString, wkt);
        QFETCH(QPointF, anchor);
        const auto type = TELayer::LayerType(layerType);
        TERefPtr<TEMemoryFeatureLayer> layer = layerOf(type, {wkt});
        QVERIFY(layer);
        auto probe = std::make_shared<MarkProbe>();
        MarkDiagramRender render(probe);
        render.SetBackgroundRender(MakeRef<TESingleSymbolRender>(greenStyle(type)).get());
        TZFeatureLayerDrawer drawer(layer, &render, nullptr);
        const TZMapViewport view = AppFixture::squaresViewport();
        QImage image = AppFixture::blankImage(view);
        {
            QPainter painter(&image);
            QVERIFY(drawer.draw(&painter, view, nullptr));
        }
        QCOMPARE(drawer.drawnCount(), 1);
        QCOMPARE(drawer.diagramCount(), 1);

        // An 8 x 8 mark: the feature's value made it to the second pass.
        const QRect mark = markPixels(image);
        QVERIFY2(mark.width() >= 7 && mark.width() <= 9 && mark.height() >= 7 && mark.height() <= 9,
                 qPrintable(QStringLiteral("mark %1 x %2").arg(mark.width()).arg(mark.height())));
        const QPointF centre = QRectF(mark).center();
        const QPointF mapCentre = view.toMap(centre);
        if (anchor.isNull()) {
            QVERIFY2(polygonContains(wkt, mapCentre), qPrintable(QStringLiteral("anchor (%1, %2) lies outside")
                                                                     .arg(mapCentre.x()).arg(mapCentre.y())));
        } else {
            const QPointF expected = view.toDevice(anchor);
            QVERIFY2(qAbs(centre.x() - expected.x()) <= 1.0 && qAbs(centre.y() - expected.y()) <= 1.0,
                     qPrintable(QStringLiteral("mark at (%1, %2), anchor at (%3, %4)")
                                    .arg(centre.x()).arg(centre.y()).arg(expected.x()).arg(expected.y())));
        }
        // The background lies under the mark, and shows right beside it.
        QCOMPARE(image.pixelColor((centre + QPointF(7, 0)).toPoint()), Green);
    }

    void featuresTheBackgroundLeavesOutStillGetTheirDiagrams_data()
    {
        QTest::addColumn<bool>("outOfScale");
        QTest::newRow("category of another value") << false;
        QTest::newRow("category out of its scale range") << true;
    }

    void featuresTheBackgroundLeavesOutStillGetTheirDiagrams()
    {
        QFETCH(bool, outOfScale);
        // "a" left, "b" right; the background draws "a" only, unless "a"
        // is restricted to scales the view is not at (about 1:1890).
        TERefPtr<TEMemoryFeatureLayer> layer = layerOf(
            TELayer::LT_Polygon, {QStringLiteral("POLYGON((0 0,100 0,100 100,0 100,0 0))"),
                                  QStringLiteral("POLYGON((100 0,200 0,200 100,100 100,100 0))")});
        auto background = MakeRef<TECategorizedSymbolRender>(TEString(L"kind"));
        background->AddCategory(L"a", L"a", AppFixture::fillStyle(Green), true, outOfScale ? 1.0 : 0.0,
                                outOfScale ? 100.0 : 0.0);
        background->SetIsShowOtherValue(false);
        auto probe = std::make_shared<MarkProbe>();
        MarkDiagramRender render(probe);
        render.SetBackgroundRender(background.get());
        TZFeatureLayerDrawer drawer(layer, &render, nullptr);
        const TZMapViewport view = AppFixture::squaresViewport();
        QImage image = AppFixture::blankImage(view);
        {
            QPainter painter(&image);
            QVERIFY(drawer.draw(&painter, view, nullptr));
        }
        QCOMPARE(drawer.drawnCount(), outOfScale ? 0 : 1);
        QCOMPARE(drawer.diagramCount(), 2);
        QCOMPARE(AppFixture::colorAt(image, view, QPointF(50, 50)), Mark);
        QCOMPARE(AppFixture::colorAt(image, view, QPointF(150, 50)), Mark);
        QCOMPARE(AppFixture::colorAt(image, view, QPointF(20, 20)), outOfScale ? QColor(Qt::white) : Green);
        QCOMPARE(AppFixture::colorAt(image, view, QPointF(180, 20)), QColor(Qt::white));
    }

    void diagramLayerIsDrawnByTheMapJob()
    {
        // As the canvas draws it: the drawer chosen for the layer's render,
        // run by a map job.
        TERefPtr<TEMemoryFeatureLayer> layer = layerOf(TELayer::LT_Polygon, {UShape});
        auto render = MakeRef<MarkDiagramRender>(std::make_shared<MarkProbe>());
        render->SetBackgroundRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Green)).get());
        layer->SetSymbolRender(render);
        std::vector<std::unique_ptr<TZLayerDrawer>> drawers;
        drawers.push_back(TZLayerDrawer::create(layer.get()));
        QVERIFY(drawers.front());
        TZMapRenderJob job(AppFixture::squaresViewport(), std::move(drawers), nullptr);
        job.run();
        QVERIFY(job.errors().isEmpty());
        const QImage image = job.image();
        QVERIFY(!markPixels(image).isEmpty());
        QCOMPARE(AppFixture::colorAt(image, job.viewport(), QPointF(10, 10)), Green);
    }

    void cancellingStopsTheDiagramDrawing_data()
    {
        QTest::addColumn<int>("cancelInBackgroundAfter");
        QTest::addColumn<int>("cancelInDiagramsAfter");
        QTest::addColumn<int>("diagramsDrawn");
        QTest::newRow("during the background") << 3 << -1 << 0;
        QTest::newRow("during the diagrams") << -1 << 4 << 4;
    }

    void cancellingStopsTheDiagramDrawing()
    {
        QFETCH(int, cancelInBackgroundAfter);
        QFETCH(int, cancelInDiagramsAfter);
        QFETCH(int, diagramsDrawn);
        QStringList points;
        for (int i = 0; i < 10; ++i)
            points << QStringLiteral("POINT(%1 50)").arg(10 + 20 * i);
        TERefPtr<TEMemoryFeatureLayer> layer = layerOf(TELayer::LT_Point, points);
        TETrackCancel cancel;
        auto probe = std::make_shared<MarkProbe>();
        probe->cancel = &cancel;
        probe->cancelAfter = cancelInDiagramsAfter;
        MarkDiagramRender render(probe);
        render.SetBackgroundRender(
            MakeRef<CancellingBackground>(greenStyle(TELayer::LT_Point), &cancel, cancelInBackgroundAfter).get());
        TZFeatureLayerDrawer drawer(layer, &render, nullptr);
        const TZMapViewport view = AppFixture::squaresViewport();
        QImage image = AppFixture::blankImage(view);
        QPainter painter(&image);

        QVERIFY(!drawer.draw(&painter, view, &cancel));
        QCOMPARE(probe->drawn.load(), diagramsDrawn);
        QCOMPARE(drawer.diagramCount(), diagramsDrawn);
    }
};

TZ_REGISTER_TEST(TestDiagramDrawing)

#include "TestDiagramDrawing.moc"
