#include "ModalAnswer.h"
#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"

#include "TZControlRender.h"
#include "TZRenderPanelUniqueValues.h"

#include "data/TEFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>

using namespace TZObjects;

// The single symbol and unique values panels used as a person uses them:
// through the "Symbol rendering" dock of a real tzmap window, with the map
// drawn by the canvas and the legend shown in the layer list.
class TestPanelsInTzmap : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;
    QString mVectors;

    // Points inside the two squares of the fixture, away from the spots
    // drawn at their centres.
    const QPointF InForest{20.0, 80.0};
    const QPointF InWater{180.0, 20.0};

    static void waitForDrawing(TZMapCanvas* canvas)
    {
        QSignalSpy finished(canvas, &TZMapCanvas::drawingFinished);
        while (canvas->isDrawing())
            QVERIFY(finished.wait(10000));
    }

    template <class T>
    static T* child(QWidget* parent, const char* name)
    {
        return parent->findChild<T*>(QString::fromLatin1(name));
    }

    // Shows the window with the fixture open and selects "squares", which
    // hands the layer to the dock; once the dock has taken its place beside
    // the canvas, the map is zoomed on both squares. Null on failure.
    TEFeatureLayer* openSquares(TZMapWindow& window)
    {
        window.resize(1200, 700);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window) || window.openPaths({mVectors}) != 2)
            return nullptr;
        TEFeatureLayer* squares = nullptr;
        for (const auto& layer : window.layerTree()->layers()) {
            if (layer->GetLayerName().toQString() == QLatin1String("squares"))
                squares = dynamic_cast<TEFeatureLayer*>(layer.get());
        }
        if (!squares)
            return nullptr;
        window.selectLayer(squares->GetGuidStr().toQString());
        QCoreApplication::processEvents();
        window.canvas()->zoomToExtent(QRectF(0.0, 0.0, 200.0, 100.0));
        waitForDrawing(window.canvas());
        return squares;
    }

    static QColor pixel(TZMapCanvas* canvas, const QPointF& map)
    {
        return AppFixture::colorAt(canvas->mapImage(), canvas->viewport(), map);
    }

    static QColor colorOf(const TEStyle* style) { return QColor::fromRgba(style->GetColor().GetColor()); }

    // Picks a rendering style in the dock's combo box as a user does.
    static void chooseStyle(TZControlRender* dock, const QString& title)
    {
        QComboBox* styles = child<QComboBox>(dock, "mComboBoxRenderStyle");
        const int index = styles->findText(title);
        QVERIFY(index > 0);
        styles->setCurrentIndex(index);
    }

    static void clickDockButton(TZControlRender* dock, QDialogButtonBox::StandardButton which)
    {
        child<QDialogButtonBox>(dock, "mButtonBox")->button(which)->click();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mVectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!mVectors.isEmpty());
    }

    void openedLayerShowsItsSingleSymbolAndNotToRenderTakesItOffTheMap()
    {
        TZMapWindow window;
        TEFeatureLayer* squares = openSquares(window);
        QVERIFY(squares);
        TZMapCanvas* canvas = window.canvas();
        TZControlRender* dock = TZControlRender::instance(nullptr);
        QComboBox* styles = child<QComboBox>(dock, "mComboBoxRenderStyle");
        QCOMPARE(styles->currentText(), QStringLiteral("Single symbol"));
        const auto render = squares->GetSymbolRender().cast<TESingleSymbolRender>();
        QVERIFY(render);
        QCOMPARE(pixel(canvas, InForest), colorOf(render->GetStyle().get()));

        styles->setCurrentIndex(0);
        QCOMPARE(styles->currentText(), QStringLiteral("Not to render"));
        clickDockButton(dock, QDialogButtonBox::Apply);
        QVERIFY(!squares->GetRender());
        waitForDrawing(canvas);
        const QColor empty = canvas->palette().color(QPalette::Base);
        QCOMPARE(pixel(canvas, InForest), empty);
        QCOMPARE(pixel(canvas, InWater), empty);
        QCOMPARE(AppFixture::legendTexts(*window.layerTree(), squares->GetGuidStr().toQString()),
                 QStringList{QStringLiteral("Not rendered")});
        window.setWindowModified(false);
    }

    void singleSymbolChosenInTheSelectorDrawsThePolygons()
    {
        TZMapWindow window;
        TEFeatureLayer* squares = openSquares(window);
        QVERIFY(squares);
        TZMapCanvas* canvas = window.canvas();
        TZControlRender* dock = TZControlRender::instance(nullptr);
        QVERIFY(dock->isVisible());
        QCOMPARE(dock->layer(), static_cast<TELayer*>(squares));
        chooseStyle(dock, QStringLiteral("Single symbol"));

        // The "..." button opens the style selector; its colour button opens
        // a colour dialog in which the user picks a colour.
        const QColor chosen(30, 160, 90);
        ModalAnswer selector("TZStyleSelectorDialog", [&chosen](QWidget* dialog) {
            ModalAnswer colours("QColorDialog",
                                ModalAnswer::click(QDialogButtonBox::Ok, [&chosen](QWidget* colourDialog) {
                                    static_cast<QColorDialog*>(colourDialog)->setCurrentColor(chosen);
                                }));
            child<QToolButton>(dialog, "mColorBtn")->click();
            QVERIFY(colours.answered());
            child<QDialogButtonBox>(dialog, "mButtonBox")->button(QDialogButtonBox::Ok)->click();
        });
        child<QToolButton>(dock, "mToolButtonSymbolDetail")->click();
        QVERIFY(selector.answered());

        clickDockButton(dock, QDialogButtonBox::Apply);
        QVERIFY(canvas->isDrawing());
        waitForDrawing(canvas);

        const auto render = squares->GetSymbolRender().cast<TESingleSymbolRender>();
        QVERIFY(render);
        QCOMPARE(colorOf(render->GetStyle().get()), chosen);
        QCOMPARE(pixel(canvas, InForest), chosen);
        QCOMPARE(pixel(canvas, InWater), chosen);
        window.setWindowModified(false);
    }

    void uniqueValuesDrawEachCategoryListItInTheLegendAndResetReadsItBack()
    {
        TZMapWindow window;
        TEFeatureLayer* squares = openSquares(window);
        QVERIFY(squares);
        const QString guid = squares->GetGuidStr().toQString();
        TZMapCanvas* canvas = window.canvas();
        TZControlRender* dock = TZControlRender::instance(nullptr);
        chooseStyle(dock, QStringLiteral("Unique Values"));

        QComboBox* fields = child<QComboBox>(dock, "mComboBoxValueField");
        QCOMPARE(fields->currentText(), QStringLiteral("landuse"));
        child<QCheckBox>(dock, "checkBox_2")->click();
        // The values are collected behind the wait dialog, which closes by
        // itself when the scan is done.
        child<QPushButton>(dock, "mButtonAddAll")->click();
        // The diagram pages have a table of that name too.
        QTableView* table = child<QTableView>(dock->findChild<TZRenderPanelUniqueValues*>(), "mTableViewValues");
        QAbstractItemModel* rows = table->model();
        QCOMPARE(rows->rowCount(), 3);
        QCOMPARE(rows->index(1, 1).data().toString(), QStringLiteral("Forest"));
        QCOMPARE(rows->index(2, 1).data().toString(), QStringLiteral("Water"));
        QCOMPARE(rows->index(1, 3).data().toString(), QStringLiteral("1"));
        // The legend label of the first category, edited in place.
        QVERIFY(rows->setData(rows->index(1, 2), QStringLiteral("Woodland")));

        clickDockButton(dock, QDialogButtonBox::Apply);
        QVERIFY(canvas->isDrawing());
        waitForDrawing(canvas);

        const auto render = squares->GetSymbolRender().cast<TECategorizedSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->GetExpression().toQString(), QStringLiteral("landuse"));
        const QColor forest = colorOf(render->GetStyle(TEString(L"Forest")).get());
        const QColor water = colorOf(render->GetStyle(TEString(L"Water")).get());
        QVERIFY(forest != water);
        QCOMPARE(pixel(canvas, InForest), forest);
        QCOMPARE(pixel(canvas, InWater), water);

        // The catch-all row is unchecked, so the legend lists the two values.
        QCOMPARE(AppFixture::legendTexts(*window.layerTree(), guid),
                 (QStringList{QStringLiteral("Woodland"), QStringLiteral("Water")}));

        // Emptied by the user, the table comes back from the layer on Reset.
        child<QPushButton>(dock, "mButtonRemoveAll")->click();
        QCOMPARE(rows->rowCount(), 1);
        clickDockButton(dock, QDialogButtonBox::Reset);
        QCOMPARE(rows->rowCount(), 3);
        QCOMPARE(rows->index(0, 1).data().toString(), QStringLiteral("<all other values>"));
        QCOMPARE(rows->index(1, 1).data().toString(), QStringLiteral("Forest"));
        QCOMPARE(rows->index(1, 2).data().toString(), QStringLiteral("Woodland"));
        QCOMPARE(rows->index(2, 2).data().toString(), QStringLiteral("Water"));
        QCOMPARE(rows->index(1, 3).data().toString(), QStringLiteral("1"));
        QCOMPARE(rows->index(0, 3).data().toString(), QStringLiteral("2"));
        QCOMPARE(fields->currentText(), QStringLiteral("landuse"));
        window.setWindowModified(false);
    }
};

TZ_REGISTER_TEST(TestPanelsInTzmap)
#include "TestPanelsInTzmap.moc"
