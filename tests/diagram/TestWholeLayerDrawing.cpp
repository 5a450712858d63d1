#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZFeatureLayerDrawer.h"

#include "data/TEFeatureCursor.h"
#include "data/TEGeometry.h"
#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEDrawContext.h"
#include "symbology/TEStyleSimplePoint.h"
#include "view/TETrackCancel.h"

#include <QPainter>

#include <ogr_api.h>

#include <memory>
#include <set>

using namespace TZObjects;

namespace {

const QColor Dot(220, 0, 0);
const QColor Blue(0, 0, 255);

// What the drawings of a DotsLayerRender and its clones share.
struct DotsProbe
{
    int layerCalls = 0;
    int styled = 0;
    std::set<int> seen;
    int wrongValues = 0;
    TETrackCancel* cancel = nullptr;
    int cancelWhileStylingAfter = -1;
    int cancelWhileDrawingAfter = -1;
};

// A render drawn from the whole layer: a blue marker per feature as its
// per-feature style, then a 4 x 4 red dot at every point the cursor gives.
// It notes the features it saw and checks that each carries its "n" value.
// It can pull the view's cancel flag while styling or while drawing.
class DotsLayerRender : public TEFeatureRender
{
public:
    explicit DotsLayerRender(std::shared_ptr<DotsProbe> probe) : mProbe(std::move(probe))
    {
        auto marker = MakeRef<TEStyleSimplePoint>();
        marker->SetShapeType(TEStyleSimplePoint::Square);
        marker->SetSize(3.0); // about 11 pixels across
        marker->SetColor(TEColor(Blue.red(), Blue.green(), Blue.blue()));
        mMarker = marker;
    }
    TEString GetType() const override { return L"TestDotsLayer"; }
    TERefPtr<TEFeatureRender> Clone() const override { return MakeRef<DotsLayerRender>(*this); }
    std::vector<TEString> GetUsedAttributes() const override { return {TEString(L"n")}; }
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature*, const double&, bool) const override
    {
        if (++mProbe->styled == mProbe->cancelWhileStylingAfter)
            mProbe->cancel->Cancel();
        return mMarker;
    }

    bool DrawsWholeLayer() const override { return true; }
    bool DrawLayer(QPainter* painter, TEFeatureCursor* cursor, const TEDrawContext& context) const override
    {
        ++mProbe->layerCalls;
        while (TERefPtr<TEFeature> feature = cursor->NextFeature()) {
            if (context.IsCancelled())
                return false;
            TERefPtr<TEGeometry> geometry = feature->GetGeometry();
            if (!geometry)
                return false;
            const QPointF map(OGR_G_GetX(geometry->GetHandle(), 0), OGR_G_GetY(geometry->GetHandle(), 0));
            // The test layer's "n" is 1000 x + y of the point.
            if (feature->GetValue(L"n").GetDouble() != 1000.0 * map.x() + map.y())
                ++mProbe->wrongValues;
            mProbe->seen.insert(feature->GetId());
            painter->fillRect(QRectF(context.mapToDevice.map(map) - QPointF(2, 2), QSizeF(4, 4)), Dot);
            if (int(mProbe->seen.size()) == mProbe->cancelWhileDrawingAfter)
                mProbe->cancel->Cancel();
        }
        return !context.IsCancelled();
    }

private:
    std::shared_ptr<DotsProbe> mProbe;
    TERefPtr<TEStyle> mMarker;
};

// A 20 x 10 grid of points every 20 units from (-90, -45), half of them
// outside the squares viewport (0,0)-(200,100); fids of those inside go to
// inView.
TERefPtr<TEMemoryFeatureLayer> pointGrid(std::set<int>* inView = nullptr)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("grid"), TELayer::LT_Point,
        {{QStringLiteral("label"), TEField::FT_String}, {QStringLiteral("n"), TEField::FT_Double}},
        QStringLiteral("EPSG:3857"));
    for (int i = 0; i < 20; ++i) {
        for (int j = 0; j < 10; ++j) {
            const double x = -90 + 20 * i, y = -45 + 20 * j;
            const int fid = layer->AppendFeature(QStringLiteral("POINT(%1 %2)").arg(x).arg(y),
                                                 {TEVariant(TEString(L"p")), TEVariant(1000.0 * x + y)});
            if (inView && x > 0 && x < 200 && y > 0 && y < 100)
                inView->insert(fid);
        }
    }
    return layer;
}

} // namespace

// tzmap's drawing of renders that draw from the whole layer at once.
class TestWholeLayerDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeLayerRenderDrawsFromExactlyThePointsInView()
    {
        std::set<int> inView;
        TERefPtr<TEMemoryFeatureLayer> layer = pointGrid(&inView);
        QVERIFY(layer);
        QCOMPARE(int(inView.size()), 50);
        auto probe = std::make_shared<DotsProbe>();
        DotsLayerRender render(probe);
        TZFeatureLayerDrawer drawer(layer, &render, nullptr);
        const TZMapViewport view = AppFixture::squaresViewport();
        QImage image = AppFixture::blankImage(view);
        {
            QPainter painter(&image);
            QVERIFY(drawer.draw(&painter, view, nullptr));
        }
        QCOMPARE(probe->layerCalls, 1);
        QCOMPARE(probe->seen, inView);
        QCOMPARE(probe->wrongValues, 0);
        // The layer's drawing lies over the per-feature symbols.
        QCOMPARE(AppFixture::colorAt(image, view, QPointF(110, 55)), Dot);
        QCOMPARE(AppFixture::colorAt(image, view, QPointF(112, 55)), Blue);
        QCOMPARE(AppFixture::colorAt(image, view, QPointF(120, 55)), QColor(Qt::white));
    }

    void cancellingStopsTheWholeLayerDrawing_data()
    {
        QTest::addColumn<int>("cancelWhileStylingAfter");
        QTest::addColumn<int>("cancelWhileDrawingAfter");
        QTest::addColumn<int>("layerCalls");
        QTest::addColumn<int>("pointsDrawn");
        QTest::newRow("during the per-feature pass") << 5 << -1 << 0 << 0;
        QTest::newRow("during the layer drawing") << -1 << 7 << 1 << 7;
    }

    void cancellingStopsTheWholeLayerDrawing()
    {
        QFETCH(int, cancelWhileStylingAfter);
        QFETCH(int, cancelWhileDrawingAfter);
        QFETCH(int, layerCalls);
        QFETCH(int, pointsDrawn);
        TERefPtr<TEMemoryFeatureLayer> layer = pointGrid();
        TETrackCancel cancel;
        auto probe = std::make_shared<DotsProbe>();
        probe->cancel = &cancel;
        probe->cancelWhileStylingAfter = cancelWhileStylingAfter;
        probe->cancelWhileDrawingAfter = cancelWhileDrawingAfter;
        DotsLayerRender render(probe);
        TZFeatureLayerDrawer drawer(layer, &render, nullptr);
        const TZMapViewport view = AppFixture::squaresViewport();
        QImage image = AppFixture::blankImage(view);
        QPainter painter(&image);

        QVERIFY(!drawer.draw(&painter, view, &cancel));
        QCOMPARE(probe->layerCalls, layerCalls);
        QCOMPARE(int(probe->seen.size()), pointsDrawn);
        // A cancelled drawing is not a failure to report.
        QVERIFY(drawer.errorText().isEmpty());
    }
};

TZ_REGISTER_TEST(TestWholeLayerDrawing)

#include "TestWholeLayerDrawing.moc"
