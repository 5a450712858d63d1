#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZFeatureLayerDrawer.h"
#include "TZLayerDrawer.h"

#include "data/TEFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QPainter>
#include <QTemporaryDir>

using namespace TZObjects;

namespace {

TERefPtr<TEStyle> marker(const QColor& color, double sizeMm)
{
    auto style = MakeRef<TEStyleSimplePoint>();
    style->SetShapeType(TEStyleSimplePoint::Circle);
    style->SetSize(sizeMm);
    style->SetColor(TEColor(color.red(), color.green(), color.blue()));
    return style;
}

// Draws a layer as the canvas would, through the drawer chosen for it.
QImage drawLayer(TELayer* layer, const TZMapViewport& viewport, bool* finished = nullptr)
{
    QImage image = AppFixture::blankImage(viewport);
    std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer);
    if (!drawer)
        return QImage();
    QPainter painter(&image);
    const bool done = drawer->draw(&painter, viewport, nullptr);
    if (finished)
        *finished = done;
    return image;
}

} // namespace

// Layers drawn with known renders into an image have the expected colours
// at known pixels.
class TestLayerDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mVectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!mVectors.isEmpty());
    }

    void singleSymbolFillsThePolygonsInside()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        squares->SetSymbolRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::red)));
        const TZMapViewport view = AppFixture::squaresViewport();
        bool finished = false;
        const QImage image = drawLayer(squares.get(), view, &finished);
        QVERIFY(finished);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::red));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::red));
    }

    void categoriesDrawEachValueInItsColour()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        render->AddCategory(L"Forest", L"Forest", AppFixture::fillStyle(QColor(0, 128, 0)));
        render->AddCategory(L"Water", L"Water", AppFixture::fillStyle(QColor(0, 0, 255)));
        squares->SetSymbolRender(render);
        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(squares.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(0, 128, 0));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(0, 0, 255));
    }

    void featureWithoutCategoryIsLeftOut()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        render->AddCategory(L"Forest", L"Forest", AppFixture::fillStyle(QColor(0, 128, 0)));
        render->SetIsShowOtherValue(false);
        squares->SetSymbolRender(render);
        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(squares.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(0, 128, 0));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::white));
    }

    void categoryOutsideItsScaleRangeIsNotDrawn()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        const TZMapViewport view = AppFixture::squaresViewport();
        const double scale = view.scale();
        auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        render->AddCategory(L"Forest", L"Forest", AppFixture::fillStyle(Qt::red), true, scale * 2.0, scale * 10.0);
        render->AddCategory(L"Water", L"Water", AppFixture::fillStyle(Qt::blue), true, scale / 2.0, scale * 2.0);
        squares->SetSymbolRender(render);
        const QImage image = drawLayer(squares.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::white));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::blue));
    }

    void pointSymbolIsCentredOnThePoint()
    {
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(mVectors, QStringLiteral("spots"));
        QVERIFY(spots);
        spots->SetSymbolRender(MakeRef<TESingleSymbolRender>(marker(Qt::blue, 3.0)));
        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(spots.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::blue));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::blue));
        // 3 mm at 96 dpi is about 11 pixels across, 5.5 map units here.
        QCOMPARE(AppFixture::colorAt(image, view, {50, 65}), QColor(Qt::white));
    }

    void openedLayerIsDrawnWithItsDefaultSymbol()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(squares.get(), view);
        const TEColor color = squares->GetDefaultStyle()->GetColor();
        const QColor expected(color.getR(), color.getG(), color.getB());
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}).rgb(), expected.rgb());
    }

    void viewportOutsideTheDataDrawsNothing()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        squares->SetSymbolRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::red)));
        const TZMapViewport away(QSize(100, 100), QPointF(5000, 5000), 1.0);
        const QImage image = drawLayer(squares.get(), away);
        QCOMPARE(image, AppFixture::blankImage(away));
    }

private:
    TERefPtr<TEFeatureLayer> openSquares()
    {
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        if (!layer)
            QTest::qFail("cannot open the squares", __FILE__, __LINE__);
        return layer;
    }

    QTemporaryDir mDir;
    QString mVectors;
};

TZ_REGISTER_TEST(TestLayerDrawing)
#include "TestLayerDrawing.moc"
