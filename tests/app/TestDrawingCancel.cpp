#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZFeatureLayerDrawer.h"
#include "TZMapRenderJob.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimplePoint.h"
#include "view/TETrackCancel.h"

#include <QPainter>

#include <atomic>
#include <memory>

using namespace TZObjects;

namespace {

constexpr int FeatureCount = 200;

// A render that pulls the cancel flag once it has styled a given number of
// features, as a user panning the map in the middle of a drawing would.
class CancellingRender : public TEFeatureRender
{
public:
    CancellingRender(TETrackCancel* cancel, int cancelAfter, std::shared_ptr<std::atomic<int>> styled)
        : mCancel(cancel), mCancelAfter(cancelAfter), mStyled(std::move(styled))
    {
        auto style = MakeRef<TEStyleSimplePoint>();
        style->SetColor(TEColor(0, 0, 255));
        mStyle = style;
    }
    TEString GetType() const override { return L"TestCancelling"; }
    TERefPtr<TEFeatureRender> Clone() const override
    {
        return MakeRef<CancellingRender>(mCancel, mCancelAfter, mStyled);
    }
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature*, const double&, bool) const override
    {
        if (++*mStyled == mCancelAfter)
            mCancel->Cancel();
        return mStyle;
    }

private:
    TETrackCancel* mCancel;
    int mCancelAfter;
    std::shared_ptr<std::atomic<int>> mStyled;
    TERefPtr<TEStyle> mStyle;
};

TERefPtr<TEMemoryFeatureLayer> pointGrid()
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("grid"), TELayer::LT_Point, {{QStringLiteral("n"), TEField::FT_Integer}}, QStringLiteral("EPSG:3857"));
    for (int i = 0; i < FeatureCount; ++i)
        layer->AppendFeature(QStringLiteral("POINT(%1 %2)").arg(10 + (i % 20) * 9).arg(10 + (i / 20) * 8), {TEVariant(i)});
    return layer;
}

} // namespace

// A drawing cancelled through the view's TETrackCancel stops early.
class TestDrawingCancel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawingCancelledMidwayStopsAtOnce()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = pointGrid();
        QVERIFY(layer);
        TETrackCancel cancel;
        auto styled = std::make_shared<std::atomic<int>>(0);
        CancellingRender render(&cancel, 10, styled);
        TZFeatureLayerDrawer drawer(layer, &render, nullptr);
        const TZMapViewport view = AppFixture::squaresViewport();
        QImage image = AppFixture::blankImage(view);
        QPainter painter(&image);

        QVERIFY(!drawer.draw(&painter, view, &cancel));
        // The feature being drawn when the flag went up is finished; no
        // further feature is looked at.
        QCOMPARE(styled->load(), 10);
        QCOMPARE(drawer.drawnCount(), 10);
    }

    void uncancelledDrawingDrawsEveryFeature()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = pointGrid();
        TETrackCancel cancel;
        auto styled = std::make_shared<std::atomic<int>>(0);
        CancellingRender render(&cancel, FeatureCount + 1, styled);
        TZFeatureLayerDrawer drawer(layer, &render, nullptr);
        const TZMapViewport view = AppFixture::squaresViewport();
        QImage image = AppFixture::blankImage(view);
        QPainter painter(&image);

        QVERIFY(drawer.draw(&painter, view, &cancel));
        QCOMPARE(drawer.drawnCount(), FeatureCount);
    }

    void jobCancelledBeforeItRunsDrawsNoLayer()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = pointGrid();
        TETrackCancel cancel;
        auto styled = std::make_shared<std::atomic<int>>(0);
        CancellingRender render(&cancel, FeatureCount + 1, styled);
        std::vector<std::unique_ptr<TZLayerDrawer>> drawers;
        drawers.push_back(std::make_unique<TZFeatureLayerDrawer>(layer, &render, nullptr));
        TZMapRenderJob job(AppFixture::squaresViewport(), std::move(drawers), &cancel);
        cancel.Cancel();

        job.run();
        QVERIFY(job.wasCancelled());
        QCOMPARE(styled->load(), 0);
    }

    void jobReportsACancelInsideALayer()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = pointGrid();
        TETrackCancel cancel;
        auto styled = std::make_shared<std::atomic<int>>(0);
        CancellingRender render(&cancel, 5, styled);
        std::vector<std::unique_ptr<TZLayerDrawer>> drawers;
        drawers.push_back(std::make_unique<TZFeatureLayerDrawer>(layer, &render, nullptr));
        drawers.push_back(std::make_unique<TZFeatureLayerDrawer>(layer, &render, nullptr));
        TZMapRenderJob job(AppFixture::squaresViewport(), std::move(drawers), &cancel);

        job.run();
        QVERIFY(job.wasCancelled());
        QVERIFY(job.errors().isEmpty());
        // The second layer never started.
        QCOMPARE(styled->load(), 5);
    }
};

TZ_REGISTER_TEST(TestDrawingCancel)
#include "TestDrawingCancel.moc"
