#include "ModalAnswer.h"
#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZModelPanelPieDiagram.h"
#include "TZRenderPanelHistogramDiagram.h"
#include "TZRenderPanelPieDiagram.h"
#include "TZRenderPanelStackDiagram.h"
#include "TZWidgetFieldItem.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEHistogramDiagramRender.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TESingleSymbolRender.h"
#include "renders/TEStackDiagramRender.h"
#include "symbology/TEColorRampDivision.h"
#include "symbology/TEStyleSimpleFill.h"
#include "widgets/TZColorSchemeComboBox.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTableView>

using namespace TZObjects;

namespace {

// Regions with a name and the population by age group; "code" is numeric
// too, so the field list shows which numeric fields are offered.
TERefPtr<TEMemoryFeatureLayer> regions()
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("regions"), TELayer::LT_Polygon,
        {{QStringLiteral("name"), TEField::FT_String},
         {QStringLiteral("young"), TEField::FT_Integer},
         {QStringLiteral("working"), TEField::FT_Double},
         {QStringLiteral("updated"), TEField::FT_DateTime},
         {QStringLiteral("elderly"), TEField::FT_Int16}},
        QStringLiteral("EPSG:3857"));
    layer->AppendFeature(QStringLiteral("POLYGON((0 0,100 0,100 100,0 100,0 0))"),
                         {TEVariant(TEString(L"North")), TEVariant(10), TEVariant(30.0), TEVariant(), TEVariant(5)});
    return layer;
}

TERefPtr<TEStyle> fill(const QColor& color)
{
    auto style = MakeRef<TEStyleSimpleFill>();
    style->SetColor(TEColor(color.red(), color.green(), color.blue()));
    return style;
}

QStringList modelFields(const TZModelPanelPieDiagram* model)
{
    QStringList fields;
    for (int r = 0; r < model->rowCount(); ++r)
        fields << model->data(model->index(r, 1)).toString();
    return fields;
}

QStringList itemFields(const TEDiagramRender* render)
{
    QStringList fields;
    for (const TERefPtr<TEDiagramRenderItem>& item : render->GetItems())
        fields << item->GetField().toQString();
    return fields;
}

} // namespace

// The pie, histogram and stack pages as a user works them through the
// dock: fields chosen from the drop-down, Apply, and reset reading back.
class TestDiagramPanels : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    // Shows the dock on the layer with the page of the given title chosen.
    template <class Panel>
    Panel* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<Panel*>();
        if (!panel)
            return nullptr;
        mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->setCurrentText(panel->title());
        return panel->isVisible() ? panel : nullptr;
    }

    template <class T>
    static T* child(QWidget* panel, const char* name)
    {
        return panel->findChild<T*>(QString::fromLatin1(name));
    }

    static TZModelPanelPieDiagram* modelOf(QWidget* panel)
    {
        return qobject_cast<TZModelPanelPieDiagram*>(child<QTableView>(panel, "mTableViewValues")->model());
    }

    static TZWidgetFieldItem* entry(QWidget* panel, const QString& field)
    {
        QListWidget* list = panel->findChild<QListWidget*>();
        for (int i = 0; list && i < list->count(); ++i) {
            auto* item = qobject_cast<TZWidgetFieldItem*>(list->itemWidget(list->item(i)));
            if (item && item->fieldName() == field)
                return item;
        }
        return nullptr;
    }

    static QStringList offered(QWidget* panel)
    {
        QStringList names;
        QListWidget* list = panel->findChild<QListWidget*>();
        for (int i = 0; list && i < list->count(); ++i)
            names << qobject_cast<TZWidgetFieldItem*>(list->itemWidget(list->item(i)))->fieldName();
        return names;
    }

    // Clicks the entries as a user does in the drop-down.
    static void choose(QWidget* panel, const QStringList& fields)
    {
        for (const QString& field : fields) {
            TZWidgetFieldItem* item = entry(panel, field);
            QVERIFY2(item, qPrintable(field));
            QTest::mouseClick(item, Qt::LeftButton);
        }
    }

    // Presses Apply; true when the dock announced a new symbology.
    bool apply()
    {
        if (!mDock)
            return false;
        QSignalSpy changed(mDock, SIGNAL(symbolChanged(QString)));
        mDock->onApply();
        return changed.count() == 1;
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    void pagesStandInTheCatalogAfterTheHeatMapPlace()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        mDock = TZControlRender::instance(nullptr);
        mDock->setLayer(layer.get());
        mDock->showLayerStyle();
        QStringList titles;
        QComboBox* styles = mDock->findChild<QComboBox*>("mComboBoxRenderStyle");
        for (int i = 0; i < styles->count(); ++i)
            titles << styles->itemText(i);
        const int pie = titles.indexOf(QStringLiteral("Pie Diagram"));
        QVERIFY(pie > 0);
        QCOMPARE(titles.mid(pie, 3), (QStringList{"Pie Diagram", "Histogram Diagram", "Stack Diagram"}));
        // Only the stack page, the dot density page and the rasters' follow.
        for (const QString& later : titles.mid(pie + 3))
            QVERIFY2(later.contains(QLatin1String("ot density")) || later.startsWith(QLatin1String("Image")),
                     qPrintable(later));
    }

    void chosenFieldsTakeRampColoursInTheOrderChosen()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        auto* panel = openPanel<TZRenderPanelPieDiagram>(layer.get());
        QVERIFY(panel);
        // Numeric fields from the third on: the name and the date are not offered.
        QCOMPARE(offered(panel), (QStringList{"young", "working", "elderly"}));
        TZModelPanelPieDiagram* model = modelOf(panel);
        QVERIFY(model);
        QAbstractItemModelTester tester(model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Symbols"));
        QCOMPARE(model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Field"));

        choose(panel, {"elderly", "young"});
        QCOMPARE(modelFields(model), (QStringList{"elderly", "young"}));
        // The combo lists them in list order, the colours follow the row count.
        QCOMPARE(child<QComboBox>(panel, "mComboBoxValueFields")->currentText(), QStringLiteral("young,elderly"));
        const TEColorRampDivision colors(child<TZColorSchemeComboBox>(panel, "mComboBoxRamp")->currentColorRamp(), 3);
        QVERIFY(colors.isValid());
        QCOMPARE(model->row(0).style->GetColor().GetColor(), colors.color(0).GetColor());
        QCOMPARE(model->row(1).style->GetColor().GetColor(), colors.color(1).GetColor());
        QVERIFY(colors.color(0).GetColor() != colors.color(1).GetColor());

        // A field already listed is not added again.
        TERefPtr<TEField> young = layer->GetFields()->GetField(layer->GetFields()->FindField(L"young"));
        QVERIFY(!model->addField(young.get()));
        QCOMPARE(model->rowCount(), 2);

        // Unchecking removes the row; checking again appends it with the
        // colour of the new row count.
        choose(panel, {"elderly"});
        QCOMPARE(modelFields(model), QStringList{"young"});
        choose(panel, {"elderly"});
        QCOMPARE(modelFields(model), (QStringList{"young", "elderly"}));
        QCOMPARE(model->row(1).style->GetColor().GetColor(), colors.color(1).GetColor());
    }

    void rampChangeRecoloursAndDoubleClickChangesOneSymbol()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        auto* panel = openPanel<TZRenderPanelStackDiagram>(layer.get());
        QVERIFY(panel);
        choose(panel, {"young", "working"});
        TZModelPanelPieDiagram* model = modelOf(panel);
        auto* ramp = child<TZColorSchemeComboBox>(panel, "mComboBoxRamp");
        QVERIFY(ramp->count() > 2);
        ramp->setCurrentIndex(ramp->currentIndex() == ramp->count() - 1 ? 1 : ramp->count() - 1);
        const TEColorRampDivision colors(ramp->currentColorRamp(), 3);
        QCOMPARE(model->row(0).style->GetColor().GetColor(), colors.color(0).GetColor());
        QCOMPARE(model->row(1).style->GetColor().GetColor(), colors.color(1).GetColor());

        const TEStyle* before = model->row(1).style.get();
        QSignalSpy changed(model, &QAbstractItemModel::dataChanged);
        QTableView* table = child<QTableView>(panel, "mTableViewValues");
        {
            ModalAnswer cancel("TZStyleSelectorDialog", ModalAnswer::click(QDialogButtonBox::Cancel));
            emit table->doubleClicked(model->index(1, 0));
            QVERIFY(cancel.answered());
        }
        QCOMPARE(model->row(1).style.get(), before);
        QCOMPARE(changed.count(), 0);
        // The field column opens nothing.
        emit table->doubleClicked(model->index(1, 1));
        {
            ModalAnswer ok("TZStyleSelectorDialog", ModalAnswer::click(QDialogButtonBox::Ok));
            emit table->doubleClicked(model->index(1, 0));
            QVERIFY(ok.answered());
        }
        QVERIFY(model->row(1).style && model->row(1).style.get() != before);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex(), model->index(1, 0));
        QCOMPARE(changed.first().at(1).toModelIndex(), model->index(1, 1));
    }

    void pieApplyReusesTheRenderAndResetReadsItBack()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        auto* panel = openPanel<TZRenderPanelPieDiagram>(layer.get());
        QVERIFY(panel);
        choose(panel, {"working", "young"});
        auto* radius = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxRadius");
        radius->setValue(20.7);
        QCOMPARE(radius->value(), 21.0);
        radius->setValue(400);
        QCOMPARE(radius->value(), 300.0);
        radius->setValue(35);
        child<QCheckBox>(panel, "mCheckBoxShowShadow")->setChecked(true);
        child<QSlider>(panel, "mSliderShadowThickness")->setValue(35);
        QCheckBox* showData = child<QCheckBox>(panel, "mCheckBoxShowLabel");
        showData->click();
        showData->click();
        QVERIFY(!showData->isChecked());
        showData->click();
        QVERIFY(showData->isChecked());
        QVERIFY(apply());

        TERefPtr<TEPieDiagramRender> pie = layer->GetRender().cast<TEPieDiagramRender>();
        QVERIFY(pie);
        QCOMPARE(itemFields(pie.get()), (QStringList{"working", "young"}));
        QCOMPARE(pie->GetItems().front()->GetCaption().toQString(), QStringLiteral("working"));
        QCOMPARE(pie->GetRadius(), 35);
        QVERIFY(pie->IsShowLabel());
        QVERIFY(pie->IsShowShadow());
        QCOMPARE(pie->GetShadowThickness(), 0.35);
        // The single symbol the layer opened with lies beneath.
        QVERIFY(pie->GetBackgroundRender());
        QCOMPARE(pie->GetBackgroundRender()->GetType().toQString(), QStringLiteral("SingleSymbol"));

        // Reset reads it all back; a second apply edits the same render and
        // replaces its items.
        radius->setValue(5);
        child<QSlider>(panel, "mSliderShadowThickness")->setValue(0);
        mDock->onReset();
        QCOMPARE(radius->value(), 35.0);
        QCOMPARE(child<QSlider>(panel, "mSliderShadowThickness")->value(), 35);
        QCOMPARE(modelFields(modelOf(panel)), (QStringList{"working", "young"}));
        QCOMPARE(child<QComboBox>(panel, "mComboBoxValueFields")->currentText(), QStringLiteral("working,young"));
        QVERIFY(entry(panel, "young")->isSelected() && !entry(panel, "elderly")->isSelected());
        choose(panel, {"elderly"});
        QVERIFY(apply());
        QCOMPARE(layer->GetRender().get(), static_cast<TERender*>(pie.get()));
        QCOMPARE(itemFields(pie.get()), (QStringList{"working", "young", "elderly"}));
    }

    void switchingDiagramsKeepsTheOriginalBackground_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::newRow("histogram, then pie") << "HistogramDiagram" << "PieDiagram";
        QTest::newRow("pie, then histogram") << "PieDiagram" << "HistogramDiagram";
        QTest::newRow("stack, then pie") << "StackDiagram" << "PieDiagram";
        QTest::newRow("pie, then stack") << "PieDiagram" << "StackDiagram";
    }

    void switchingDiagramsKeepsTheOriginalBackground()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        auto original = MakeRef<TESingleSymbolRender>(fill(Qt::darkGreen));
        layer->SetSymbolRender(original);
        for (const QString& kind : {first, second}) {
            TZRenderPanel* panel = nullptr;
            if (kind == QLatin1String("PieDiagram"))
                panel = openPanel<TZRenderPanelPieDiagram>(layer.get());
            else if (kind == QLatin1String("HistogramDiagram"))
                panel = openPanel<TZRenderPanelHistogramDiagram>(layer.get());
            else
                panel = openPanel<TZRenderPanelStackDiagram>(layer.get());
            QVERIFY(panel);
            QCOMPARE(panel->name(), kind);
            choose(panel, {"young"});
            QVERIFY(apply());
            QCOMPARE(layer->GetRender()->GetType().toQString(), kind);
            auto diagram = layer->GetRender().cast<TEDiagramRender>();
            QVERIFY(diagram);
            QCOMPARE(diagram->GetBackgroundRender().get(), static_cast<TEFeatureRender*>(original.get()));
        }
    }

    void backgroundHeldForOneLayerIsNotSetUnderAnothersDiagram()
    {
        // The page first sees a layer with a single symbol, then one that
        // already has a pie over its own background.
        TERefPtr<TEMemoryFeatureLayer> plain = regions();
        QVERIFY(openPanel<TZRenderPanelPieDiagram>(plain.get()));
        TERefPtr<TEMemoryFeatureLayer> charted = regions();
        auto own = MakeRef<TESingleSymbolRender>(fill(Qt::yellow));
        auto pie = MakeRef<TEPieDiagramRender>();
        pie->AddItem(L"young", L"young", fill(Qt::red));
        pie->SetBackgroundRender(own.get());
        charted->SetSymbolRender(pie);
        auto* panel = openPanel<TZRenderPanelPieDiagram>(charted.get());
        QVERIFY(panel);
        QCOMPARE(modelFields(modelOf(panel)), QStringList{"young"});
        QVERIFY(apply());
        QCOMPARE(charted->GetRender().get(), static_cast<TERender*>(pie.get()));
        QCOMPARE(pie->GetBackgroundRender().get(), static_cast<TEFeatureRender*>(own.get()));
    }

    void histogramWidthUnitsConvertByThePageFactors_data()
    {
        QTest::addColumn<QList<int>>("units");
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("expected");
        // 20 x 0.0353 x 10 = 7.06; 7.06 / 0.353 = 20.
        QTest::newRow("point to mm") << QList<int>{1} << 20.0 << 7.06;
        QTest::newRow("point to mm and back") << QList<int>{1, 0} << 20.0 << 20.0;
        QTest::newRow("point to cm") << QList<int>{2} << 20.0 << 0.706;
        QTest::newRow("mm to inch") << QList<int>{1, 3} << 20.0 << 0.278;
        // 100 points show as 1.3898 inches (four decimals), then / 0.01389761.
        QTest::newRow("inch to point") << QList<int>{3, 0} << 100.0 << 1.3898 / 0.01389761;
        QTest::newRow("cm to mm") << QList<int>{2, 1} << 20.0 << 7.06;
    }

    void histogramWidthUnitsConvertByThePageFactors()
    {
        QFETCH(QList<int>, units);
        QFETCH(double, width);
        QFETCH(double, expected);
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        auto* panel = openPanel<TZRenderPanelHistogramDiagram>(layer.get());
        QVERIFY(panel);
        QComboBox* unit = child<QComboBox>(panel, "mComboBoxWidthUnit");
        QCOMPARE(unit->itemData(3).toInt(), 3);
        // The page keeps its unit from one layer to the next; start in points.
        unit->setCurrentIndex(0);
        auto* box = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxWidth");
        box->setValue(width);
        for (int code : units)
            unit->setCurrentIndex(code);
        QVERIFY2(qAbs(box->value() - expected) < 0.00011, qPrintable(QString::number(box->value(), 'f', 6)));
    }

    void histogramApplyStoresItsParametersAndReadsThemBack()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        auto* panel = openPanel<TZRenderPanelHistogramDiagram>(layer.get());
        QVERIFY(panel);
        choose(panel, {"young", "elderly"});
        child<QComboBox>(panel, "mComboBoxWidthUnit")->setCurrentIndex(2);
        auto* width = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxWidth");
        width->setValue(12.5);
        auto* height = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxMaxHeight");
        height->setValue(900);
        QCOMPARE(height->value(), 500.0);
        height->setValue(80);
        QRadioButton* vertical = child<QRadioButton>(panel, "mRadioButtonVertical");
        QRadioButton* horizontal = child<QRadioButton>(panel, "mRadioButtonHorizontal");
        QVERIFY(vertical->isChecked());
        horizontal->click();
        QVERIFY(horizontal->isChecked() && !vertical->isChecked());
        QVERIFY(apply());

        TERefPtr<TEHistogramDiagramRender> histogram = layer->GetRender().cast<TEHistogramDiagramRender>();
        QVERIFY(histogram);
        QCOMPARE(itemFields(histogram.get()), (QStringList{"young", "elderly"}));
        QCOMPARE(histogram->GetWidth(), 12.5);
        QCOMPARE(histogram->getUnitType(), 2);
        QCOMPARE(histogram->GetMaxHeight(), 80);
        QVERIFY(!histogram->IsVerticalDirection());

        // Read back: the unit, the width truncated to 12, the max height.
        child<QComboBox>(panel, "mComboBoxWidthUnit")->setCurrentIndex(0);
        height->setValue(3);
        mDock->onReset();
        QCOMPARE(child<QComboBox>(panel, "mComboBoxWidthUnit")->currentIndex(), 2);
        QCOMPARE(width->value(), 12.0);
        QCOMPARE(height->value(), 80.0);
        vertical->click();
        QVERIFY(vertical->isChecked() && !horizontal->isChecked());
        QVERIFY(apply());
        QCOMPARE(layer->GetRender().get(), static_cast<TERender*>(histogram.get()));
        QVERIFY(histogram->IsVerticalDirection());
        QCOMPARE(histogram->GetWidth(), 12.0);
    }

    void stackApplyTruncatesAndResetRestoresTheDefaultHeight()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        auto* panel = openPanel<TZRenderPanelStackDiagram>(layer.get());
        QVERIFY(panel);
        auto* width = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxWidth");
        auto* height = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxMaxHeight");
        QCOMPARE(width->value(), 20.0);
        QCOMPARE(height->value(), 100.0);
        QVERIFY(height->decimals() >= 1);
        choose(panel, {"working"});
        width->setValue(14);
        height->setValue(99.6);
        child<QCheckBox>(panel, "mCheckBoxShowLabel")->click();
        QVERIFY(apply());
        TERefPtr<TEStackDiagramRender> stack = layer->GetRender().cast<TEStackDiagramRender>();
        QVERIFY(stack);
        QCOMPARE(stack->GetMaxHeight(), 99);
        QCOMPARE(stack->GetWidth(), 14);
        QVERIFY(stack->IsShowLabel());
        QCOMPARE(itemFields(stack.get()), QStringList{"working"});

        height->setValue(7);
        mDock->onReset();
        QCOMPARE(height->value(), 99.0);
        QCOMPARE(width->value(), 14.0);

        // On a layer whose render is not a stack, the height is back at 100
        // and the width stays as it was.
        TERefPtr<TEMemoryFeatureLayer> other = regions();
        QVERIFY(openPanel<TZRenderPanelStackDiagram>(other.get()) == panel);
        QCOMPARE(height->value(), 100.0);
        QCOMPARE(width->value(), 14.0);
        QCOMPARE(modelOf(panel)->rowCount(), 0);
        QCOMPARE(child<QComboBox>(panel, "mComboBoxValueFields")->currentText(), QString());
    }

    void applyWithoutALayerSetsNothing()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = regions();
        auto* panel = openPanel<TZRenderPanelHistogramDiagram>(layer.get());
        QVERIFY(panel);
        mDock->setLayer(nullptr);
        QVERIFY(!panel->onApply());
        QCOMPARE(layer->GetRender()->GetType().toQString(), QStringLiteral("SingleSymbol"));
    }
};

TZ_REGISTER_TEST(TestDiagramPanels)

#include "TestDiagramPanels.moc"
