#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerDrawer.h"
#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"

#include "TZControlRender.h"

#include "data/TEFeatureLayer.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QPainter>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>

using namespace TZObjects;

namespace {

using Rule = TERuleBasedSymbolRender::Rule;

TERefPtr<TEStyle> marker(const QColor& color, double sizeMm)
{
    auto style = MakeRef<TEStyleSimplePoint>();
    style->SetShapeType(TEStyleSimplePoint::Circle);
    style->SetSize(sizeMm);
    style->SetColor(TEColor(color.red(), color.green(), color.blue()));
    return style;
}

TERefPtr<Rule> rule(const TERefPtr<TEStyle>& style, const wchar_t* filter, const wchar_t* label,
                    double minimumScale = 0.0, double maximumScale = 0.0)
{
    auto made = MakeRef<Rule>(style, TEString(filter), TEString(label));
    made->SetScaleFilter(minimumScale != 0.0 || maximumScale != 0.0);
    made->SetMinimumScale(minimumScale);
    made->SetMaximumScale(maximumScale);
    return made;
}

QImage drawLayer(TELayer* layer, const TZMapViewport& viewport, bool* finished, QString* error)
{
    QImage image = AppFixture::blankImage(viewport);
    std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer);
    if (!drawer)
        return QImage();
    QPainter painter(&image);
    *finished = drawer->draw(&painter, viewport, nullptr);
    *error = drawer->errorText();
    return image;
}

void waitForDrawing(TZMapCanvas* canvas)
{
    QSignalSpy finished(canvas, &TZMapCanvas::drawingFinished);
    while (canvas->isDrawing())
        QVERIFY(finished.wait(10000));
}

TEFeatureLayer* layerNamed(const TZMapWindow& window, const QString& name)
{
    for (const auto& layer : window.layerTree()->layers()) {
        if (layer->GetLayerName().toQString() == name)
            return dynamic_cast<TEFeatureLayer*>(layer.get());
    }
    return nullptr;
}

} // namespace

// tzmap draws a rule render: every matching rule in rule order, only the
// rules whose scale range holds the view's scale, and a rule whose filter
// does not compile draws nothing while the others do, and is named.
class TestRuleDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mVectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!mVectors.isEmpty());
    }

    void everyMatchingRuleDrawsInRuleOrder()
    {
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(mVectors, QStringLiteral("spots"));
        QVERIFY(spots);
        const TZMapViewport view = AppFixture::squaresViewport();
        auto render = MakeRef<TERuleBasedSymbolRender>();
        // A large blue disc for "a", a small red dot over every spot, and a
        // green disc for "b" that is out of range at this scale.
        render->AddRule(rule(marker(Qt::blue, 6.0), L"kind = 'a'", L"A"));
        render->AddRule(rule(marker(Qt::red, 2.0), L"", L"All"));
        render->AddRule(rule(marker(Qt::green, 6.0), L"kind = 'b'", L"B far", view.scale() * 2, view.scale() * 10));
        spots->SetSymbolRender(render);

        bool finished = false;
        QString error;
        const QImage image = drawLayer(spots.get(), view, &finished, &error);
        QVERIFY2(finished, qPrintable(error));
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::red));
        // Around the red dot, the blue disc of the first rule.
        QCOMPARE(AppFixture::colorAt(image, view, {50, 54}), QColor(Qt::blue));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::red));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 54}), QColor(Qt::white));

        // Zoomed out into its range the green disc draws, last, over the
        // red dot.
        const TZMapViewport farther(view.deviceSize(), view.centre(), view.unitsPerPixel() * 4);
        const QImage zoomedOut = drawLayer(spots.get(), farther, &finished, &error);
        QVERIFY(finished);
        QCOMPARE(AppFixture::colorAt(zoomedOut, farther, {150, 50}), QColor(Qt::green));
        QCOMPARE(AppFixture::colorAt(zoomedOut, farther, {50, 50}), QColor(Qt::red));
    }

    void brokenFilterDrawsNothingAndNamesItsRule()
    {
        TERefPtr<TEFeatureLayer> squares = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        QVERIFY(squares);
        auto render = MakeRef<TERuleBasedSymbolRender>();
        render->AddRule(rule(AppFixture::fillStyle(Qt::red), L"landuse = = 'Forest'", L"Forest"));
        render->AddRule(rule(AppFixture::fillStyle(Qt::blue), L"landuse = 'Water'", L"Water"));
        squares->SetSymbolRender(render);
        const TZMapViewport view = AppFixture::squaresViewport();

        bool finished = true;
        QString error;
        const QImage image = drawLayer(squares.get(), view, &finished, &error);
        QVERIFY(!finished);
        QVERIFY2(error.startsWith(QStringLiteral("rule 1 \"Forest\": ")), qPrintable(error));
        QVERIFY2(!error.contains(QStringLiteral("rule 2")), qPrintable(error));
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::white));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::blue));
    }

    void windowReportsTheBrokenRuleAndKeepsRulesInTheProject()
    {
        const QString path = mDir.filePath(QStringLiteral("rules.tzmap"));
        {
            TZMapWindow window;
            window.setInteractive(false);
            window.show();
            QCOMPARE(window.openPaths({mVectors}), 2);
            TZMapCanvas* canvas = window.canvas();
            canvas->resize(400, 200);
            canvas->setViewport(AppFixture::squaresViewport());
            waitForDrawing(canvas);

            TEFeatureLayer* squares = layerNamed(window, QStringLiteral("squares"));
            QVERIFY(squares);
            auto render = MakeRef<TERuleBasedSymbolRender>();
            render->AddRule(rule(AppFixture::fillStyle(Qt::blue), L"landuse = 'Water'", L"Water"));
            render->AddRule(rule(AppFixture::fillStyle(Qt::red), L"landuse = \"Forest\"", L"Forest", 1, 100));
            squares->SetSymbolRender(render);
            // The layer list shows the rules by their labels.
            window.selectLayer(squares->GetGuidStr().toQString());
            Q_EMIT TZControlRender::instance(nullptr)->symbolChanged(squares->GetGuidStr().toQString());
            QCOMPARE(AppFixture::legendTexts(*window.layerTree(), squares->GetGuidStr().toQString()),
                     (QStringList{QStringLiteral("Water"), QStringLiteral("Forest")}));

            // At this scale the broken rule is out of range: nothing to say.
            Q_EMIT TZControlRender::instance(nullptr)->refreshMap();
            waitForDrawing(canvas);
            QCOMPARE(AppFixture::colorAt(canvas->mapImage(), canvas->viewport(), {170, 80}), QColor(Qt::blue));
            QVERIFY2(!window.statusBar()->currentMessage().contains(QStringLiteral("Forest")),
                     qPrintable(window.statusBar()->currentMessage()));

            // Zoomed in to its range, the broken rule is named with its layer.
            const TZMapViewport view = AppFixture::squaresViewport();
            const double near = 50.0 / view.scale();
            canvas->setViewport(TZMapViewport(view.deviceSize(), view.centre(), view.unitsPerPixel() * near));
            waitForDrawing(canvas);
            QVERIFY(canvas->viewport().scale() >= 1 && canvas->viewport().scale() <= 100);
            const QString message = window.statusBar()->currentMessage();
            QVERIFY2(message.contains(QStringLiteral("squares: rule 2 \"Forest\": ")), qPrintable(message));
            QCOMPARE(AppFixture::colorAt(canvas->mapImage(), canvas->viewport(), canvas->viewport().centre() + QPointF(1, 0.5)),
                     QColor(Qt::blue));

            QVERIFY(window.saveProject(path));
        }
        TZMapWindow reopened;
        QVERIFY(reopened.openProject(path));
        TEFeatureLayer* squares = layerNamed(reopened, QStringLiteral("squares"));
        QVERIFY(squares);
        const auto render = squares->GetSymbolRender().cast<TERuleBasedSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->RuleCount(), 2);
        QCOMPARE(render->GetRule(1)->Label().toQString(), QStringLiteral("Forest"));
        QCOMPARE(render->GetRule(1)->Expression().toQString(), QStringLiteral("landuse = \"Forest\""));
        QVERIFY(render->GetRule(1)->IsScaleFilter());
        QCOMPARE(render->GetRule(1)->MaximumScale(), 100.0);
        QCOMPARE(render->GetRule(0)->Style()->GetColor().GetColor(), TEColor(0, 0, 255).GetColor());
    }

private:
    QTemporaryDir mDir;
    QString mVectors;
};

TZ_REGISTER_TEST(TestRuleDrawing)
#include "TestRuleDrawing.moc"
