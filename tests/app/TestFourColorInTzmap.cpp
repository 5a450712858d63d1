#include "ModalAnswer.h"
#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerDrawer.h"
#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"
#include "TZSampleDataGenerator.h"

#include "TZControlRender.h"
#include "data/TEFeatureLayer.h"
#include "data/TEGeometryRelationalOperator.h"
#include "data/TEGeosContext.h"
#include "renders/TEFourColorTheoremRender.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>

#include <cmath>
#include <set>

using namespace TZObjects;

namespace {

struct Region
{
    int id;
    TERefPtr<TEGeometry> geometry;
};

QColor toQColor(const TEColor& colour)
{
    return QColor(colour.getR(), colour.getG(), colour.getB());
}

// Two points a few pixels either side of the middle of the longest piece of
// border a and b share; false when they share no line.
bool pointsAcrossBorder(const TEGeometry* a, const TEGeometry* b, double offset, QPointF& first, QPointF& second)
{
    GEOSContextHandle_t context = TEGeosContext::Current();
    GEOSGeometry* ga = TEGeosContext::ToGeos(context, a);
    GEOSGeometry* gb = TEGeosContext::ToGeos(context, b);
    GEOSGeometry* ba = GEOSBoundary_r(context, ga);
    GEOSGeometry* bb = GEOSBoundary_r(context, gb);
    GEOSGeometry* shared = GEOSIntersection_r(context, ba, bb);
    GEOSGeometry* merged = shared ? GEOSLineMerge_r(context, shared) : nullptr;
    const GEOSGeometry* longest = nullptr;
    double longestLength = 0.0;
    for (int i = 0; merged && i < GEOSGetNumGeometries_r(context, merged); ++i) {
        const GEOSGeometry* piece = GEOSGetGeometryN_r(context, merged, i);
        double length = 0.0;
        if (GEOSGeomTypeId_r(context, piece) == GEOS_LINESTRING && GEOSLength_r(context, piece, &length)
            && length > longestLength) {
            longest = piece;
            longestLength = length;
        }
    }
    bool found = false;
    if (longest && longestLength > 4 * offset) {
        GEOSGeometry* before = GEOSInterpolateNormalized_r(context, longest, 0.49);
        GEOSGeometry* after = GEOSInterpolateNormalized_r(context, longest, 0.51);
        double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
        GEOSGeomGetX_r(context, before, &x0);
        GEOSGeomGetY_r(context, before, &y0);
        GEOSGeomGetX_r(context, after, &x1);
        GEOSGeomGetY_r(context, after, &y1);
        const double length = std::hypot(x1 - x0, y1 - y0);
        if (length > 0) {
            const QPointF middle((x0 + x1) / 2, (y0 + y1) / 2);
            const QPointF normal(-(y1 - y0) / length * offset, (x1 - x0) / length * offset);
            first = middle + normal;
            second = middle - normal;
            found = true;
        }
        GEOSGeom_destroy_r(context, before);
        GEOSGeom_destroy_r(context, after);
    }
    for (GEOSGeometry* g : {merged, shared, bb, ba, gb, ga}) {
        if (g)
            GEOSGeom_destroy_r(context, g);
    }
    return found;
}

bool contains(const TEGeometry* polygon, const QPointF& point)
{
    OGRGeometryH probe = OGR_G_CreateGeometry(wkbPoint);
    OGR_G_SetPoint_2D(probe, 0, point.x(), point.y());
    const bool inside = OGR_G_Contains(polygon->GetHandle(), probe);
    OGR_G_DestroyGeometry(probe);
    return inside;
}

} // namespace

// The four-colour page applied to the sample regions in a tzmap window: no
// two neighbouring regions share a colour, in the render and on the map,
// and the legend lists the palette.
class TestFourColorInTzmap : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;
    QString mSample;

    static void waitForDrawing(TZMapCanvas* canvas)
    {
        QSignalSpy finished(canvas, &TZMapCanvas::drawingFinished);
        while (canvas->isDrawing())
            QVERIFY(finished.wait(20000));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        std::string error;
        QVERIFY2(TZSampleDataGenerator(mDir.path().toStdString()).generate(&error), error.c_str());
        mSample = QDir(mDir.path()).filePath(TZSampleDataGenerator::GeoPackageName);
    }

    // After a failed colouring the render holds colours for some features
    // only: those are drawn in their colour on the default style's outline,
    // the rest in the default style itself.
    void uncolouredFeaturesKeepTheDefaultStyle()
    {
        const QString vectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!vectors.isEmpty());
        TERefPtr<TEFeatureLayer> squares = TEFeatureLayer::Open(vectors, QStringLiteral("squares"));
        QVERIFY(squares);
        std::vector<int> ids;
        TERefPtr<TEFeatureCursor> cursor = squares->Search(TEQueryFilter());
        while (TERefPtr<TEFeature> feature = cursor->NextFeature())
            ids.push_back(feature->GetId());
        QCOMPARE(ids.size(), std::size_t(2));

        TERefPtr<TEStyle> base = AppFixture::fillStyle(QColor(200, 200, 200));
        auto render = MakeRef<TEFourColorTheoremRender>();
        render->setDefaultStyle(base);
        render->setColorMap({{ids[0], TEColor(10, 120, 230)}});
        squares->SetSymbolRender(render);

        const TZMapViewport view = AppFixture::squaresViewport();
        QImage image = AppFixture::blankImage(view);
        std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(squares.get());
        QVERIFY(drawer);
        {
            QPainter painter(&image);
            QVERIFY(drawer->draw(&painter, view, nullptr));
        }
        QCOMPARE(AppFixture::colorAt(image, view, {30, 70}), QColor(10, 120, 230));
        QCOMPARE(AppFixture::colorAt(image, view, {170, 30}), QColor(200, 200, 200));
        // Both keep the default style's outline.
        const QColor outline = AppFixture::colorAt(image, view, {100, 50});
        QVERIFY(outline != QColor(10, 120, 230) && outline != QColor(200, 200, 200));
        QCOMPARE(base->GetColor().GetColor() & 0xFFFFFFu, 0xC8C8C8u);
    }

    void neighbouringRegionsNeverShareAColour()
    {
        TZMapWindow window;
        window.resize(1200, 800);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(window.openPaths({mSample}) >= 1);
        TEFeatureLayer* regions = nullptr;
        for (const auto& layer : window.layerTree()->layers()) {
            if (layer->GetLayerName().toQString() == QLatin1String("regions"))
                regions = dynamic_cast<TEFeatureLayer*>(layer.get());
        }
        QVERIFY(regions);
        window.selectLayer(regions->GetGuidStr().toQString());
        QCoreApplication::processEvents();

        TZControlRender* dock = TZControlRender::instance(nullptr);
        QCOMPARE(dock->layer(), static_cast<TELayer*>(regions));
        auto* styles = dock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
        styles->setCurrentText(QStringLiteral("Four color themorem"));
        QCOMPARE(styles->currentText(), QStringLiteral("Four color themorem"));
        // Four colours are too few for the greedy pass on this grid, whose
        // cells meet four at a corner; five are enough.
        dock->findChild<QSpinBox*>(QStringLiteral("mSpinBoxColors"))->setValue(5);
        QSignalSpy changed(dock, SIGNAL(symbolChanged(QString)));
        ModalAnswer failure("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        dock->findChild<QDialogButtonBox*>(QStringLiteral("mButtonBox"))->button(QDialogButtonBox::Apply)->click();
        QVERIFY2(!failure.answered(), qPrintable(failure.dialogText()));
        QCOMPARE(changed.count(), 1);

        const auto render = regions->GetSymbolRender().cast<TEFourColorTheoremRender>();
        QVERIFY(render);
        const std::map<int, TEColor>& colours = render->getColorMap();

        std::vector<Region> features;
        TERefPtr<TEFeatureCursor> cursor = regions->Search(TEQueryFilter());
        while (TERefPtr<TEFeature> feature = cursor->NextFeature())
            features.push_back({feature->GetId(), feature->GetGeometry()});
        QVERIFY(features.size() > 100);
        QCOMPARE(colours.size(), features.size());

        // The colours of the result.
        std::vector<std::pair<std::size_t, std::size_t>> neighbours;
        for (std::size_t a = 0; a < features.size(); ++a) {
            for (std::size_t b = a + 1; b < features.size(); ++b) {
                if (TEGeometryRelationalOperator::IsIntersect(features[a].geometry, features[b].geometry, 0.001))
                    neighbours.emplace_back(a, b);
            }
        }
        QVERIFY(neighbours.size() > features.size());
        std::set<uint32_t> used;
        for (const auto& pair : neighbours) {
            const TEColor& ca = colours.at(features[pair.first].id);
            const TEColor& cb = colours.at(features[pair.second].id);
            QVERIFY2(!(ca == cb), qPrintable(QStringLiteral("regions %1 and %2")
                                                 .arg(features[pair.first].id)
                                                 .arg(features[pair.second].id)));
            used.insert(ca.GetColor());
            used.insert(cb.GetColor());
        }
        QVERIFY(used.size() <= 5);

        // The pixels on both sides of shared borders, drawn as tzmap draws.
        QRectF extent;
        QVERIFY(regions->GetExtent(extent));
        const TZMapViewport view = TZMapViewport::fitting(QSize(1200, 900), extent);
        QImage image = AppFixture::blankImage(view);
        {
            std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(regions);
            QVERIFY(drawer);
            QPainter painter(&image);
            QVERIFY(drawer->draw(&painter, view, nullptr));
        }
        int checked = 0;
        for (const auto& pair : neighbours) {
            const Region& a = features[pair.first];
            const Region& b = features[pair.second];
            QPointF first;
            QPointF second;
            if (!pointsAcrossBorder(a.geometry.get(), b.geometry.get(), 6 * view.unitsPerPixel(), first, second))
                continue;
            if (!contains(a.geometry.get(), first))
                std::swap(first, second);
            if (!contains(a.geometry.get(), first) || !contains(b.geometry.get(), second))
                continue;
            QCOMPARE(AppFixture::colorAt(image, view, first), toQColor(colours.at(a.id)));
            QCOMPARE(AppFixture::colorAt(image, view, second), toQColor(colours.at(b.id)));
            ++checked;
        }
        QVERIFY2(checked > int(neighbours.size()) / 2, qPrintable(QString::number(checked)));

        // The legend lists each colour of the palette once.
        waitForDrawing(window.canvas());
        QString guid;
        for (const auto& layer : window.layerTree()->layers()) {
            if (window.layerTree()->indexOf(layer->GetGuidStr().toQString()).data().toString() == QLatin1String("regions"))
                guid = layer->GetGuidStr().toQString();
        }
        QVERIFY(!guid.isEmpty());
        QSet<QString> legend;
        for (const QString& text : AppFixture::legendTexts(*window.layerTree(), guid))
            legend.insert(text);
        QSet<QString> expected;
        for (uint32_t colour : used)
            expected.insert(toQColor(TEColor(colour, 255)).name());
        QCOMPARE(legend, expected);

        if (!qEnvironmentVariableIsEmpty("TZ_SNAPSHOT_DIR"))
            window.grab().save(QDir(qEnvironmentVariable("TZ_SNAPSHOT_DIR")).filePath("fourcolor-tzmap.png"));
    }
};

TZ_REGISTER_TEST(TestFourColorInTzmap)
#include "TestFourColorInTzmap.moc"
