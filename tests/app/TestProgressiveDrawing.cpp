#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerDrawer.h"
#include "TZMapCanvas.h"
#include "TZMapRenderJob.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/QuickStyle.h"
#include "view/TETrackCancel.h"

#include <QSignalSpy>

using namespace TZObjects;

namespace {

// 20,000 points over the squares' viewport, each off the pixel grid, so a
// drawing passes many checkpoints and copies symbols at every sub-pixel step.
TERefPtr<TEMemoryFeatureLayer> manyPoints()
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("many"), TELayer::LT_Point, {{QStringLiteral("n"), TEField::FT_Integer}},
        QStringLiteral("EPSG:3857"));
    unsigned state = 11;
    for (int i = 0; i < 20000; ++i) {
        state = state * 1103515245u + 12345u;
        const double x = (state >> 8) % 200000 / 1000.0;
        state = state * 1103515245u + 12345u;
        const double y = (state >> 8) % 100000 / 1000.0;
        layer->AppendFeature(QStringLiteral("POINT(%1 %2)").arg(x, 0, 'f', 3).arg(y, 0, 'f', 3), {TEVariant(i)});
    }
    layer->SetSymbolRender(MakeRef<TESingleSymbolRender>(
        QuickStyle::MakePointStyle(1, TEColor(200, 40, 40), 1.5, TEColor(0, 0, 0), 0.1)));
    return layer;
}

// The layer drawn by a job of its own; partials collects what it publishes.
QImage drawByJob(TELayer* layer, const TZMapViewport& viewport, int firstPartialMs, std::vector<QImage>* partials,
                 const QColor& background = Qt::white)
{
    std::vector<std::unique_ptr<TZLayerDrawer>> drawers;
    drawers.push_back(TZLayerDrawer::create(layer));
    TETrackCancel cancel;
    TZMapRenderJob job(viewport, std::move(drawers), &cancel, background);
    job.setPartialImageIntervals(firstPartialMs, 0);
    QObject::connect(&job, &TZMapRenderJob::partialImage, [partials](const QImage& image) {
        if (partials)
            partials->push_back(image);
    });
    job.run();
    return job.wasCancelled() ? QImage() : job.image();
}

int paintedPixels(const QImage& image, const QColor& background = Qt::white)
{
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            painted += image.pixelColor(x, y) != background ? 1 : 0;
    }
    return painted;
}

} // namespace

// A drawing shows what it has drawn so far while it goes on, ends with the
// image a drawing in one go makes, and the canvas shows the last image moved
// and scaled while the next one is drawn.
class TestProgressiveDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void partialImagesFillInAndEndAsTheOneShotDrawing()
    {
        const TERefPtr<TEMemoryFeatureLayer> layer = manyPoints();
        const TZMapViewport view = AppFixture::squaresViewport();
        std::vector<QImage> partials;
        const QImage progressive = drawByJob(layer.get(), view, 0, &partials);
        std::vector<QImage> none;
        const QImage oneShot = drawByJob(layer.get(), view, -1, &none);

        QVERIFY(none.empty());
        QVERIFY2(partials.size() >= 10, qPrintable(QString::number(partials.size())));
        // Each partial image holds at least what the one before it did.
        for (size_t i = 1; i < partials.size(); ++i)
            QVERIFY(paintedPixels(partials[i]) >= paintedPixels(partials[i - 1]));
        QVERIFY(paintedPixels(partials.front()) < paintedPixels(partials.back()));
        QVERIFY(!oneShot.isNull());
        QVERIFY(progressive == oneShot);
    }

    void canvasShowsPartialImagesAndEndsWithTheWholeDrawing()
    {
        const TERefPtr<TEMemoryFeatureLayer> layer = manyPoints();
        TZMapCanvas canvas;
        canvas.resize(400, 200);
        canvas.setPartialImageIntervals(0, 0);
        QSignalSpy shown(&canvas, &TZMapCanvas::partialImageShown);
        QSignalSpy finished(&canvas, &TZMapCanvas::drawingFinished);
        canvas.setLayers({TERefPtr<TELayer>(layer.get())});
        canvas.setViewport(AppFixture::squaresViewport());
        QVERIFY(finished.wait(20000));
        while (canvas.isDrawing())
            QVERIFY(finished.wait(20000));
        QVERIFY(finished.last().at(0).toBool());
        QVERIFY(shown.count() >= 1);
        const QColor background = canvas.palette().color(QPalette::Base);
        QVERIFY(canvas.mapImage() == drawByJob(layer.get(), canvas.viewport(), -1, nullptr, background));
    }

    void canvasMovesAndScalesTheLastImageAtOnce()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
            QStringLiteral("square"), TELayer::LT_Polygon, {}, QStringLiteral("EPSG:3857"));
        layer->AppendFeature(QStringLiteral("POLYGON((0 0,100 0,100 100,0 100,0 0))"), {});
        layer->SetSymbolRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::red)));
        TZMapCanvas canvas;
        canvas.resize(400, 200);
        QSignalSpy finished(&canvas, &TZMapCanvas::drawingFinished);
        canvas.setLayers({TERefPtr<TELayer>(layer.get())});
        canvas.setViewport(AppFixture::squaresViewport());
        QVERIFY(finished.wait(10000));
        while (canvas.isDrawing())
            QVERIFY(finished.wait(10000));
        const QColor base = canvas.palette().color(QPalette::Base);

        QImage seen = canvas.grab().toImage();
        QCOMPARE(seen.pixelColor(100, 100), QColor(Qt::red));
        // Dragged 200 pixels left: the square (device x 0..200) has gone
        // off the widget at once, before any new drawing.
        canvas.setViewport(canvas.viewport().movedByPixels(QPointF(-200, 0)));
        QVERIFY(canvas.isDrawing());
        seen = canvas.grab().toImage();
        QCOMPARE(seen.pixelColor(100, 100), base);
        QCOMPARE(seen.pixelColor(300, 100), base);
        // Zoomed out by two about the widget's centre: the square now
        // covers device x 100..200, y 50..150.
        canvas.setViewport(AppFixture::squaresViewport().zoomedAt(QPointF(200, 100), 0.5));
        seen = canvas.grab().toImage();
        QCOMPARE(seen.pixelColor(50, 100), base);
        QCOMPARE(seen.pixelColor(110, 60), QColor(Qt::red));
        QCOMPARE(seen.pixelColor(190, 140), QColor(Qt::red));
        QCOMPARE(seen.pixelColor(150, 40), base);
        QCOMPARE(seen.pixelColor(250, 100), base);
    }
};

TZ_REGISTER_TEST(TestProgressiveDrawing)
#include "TestProgressiveDrawing.moc"
