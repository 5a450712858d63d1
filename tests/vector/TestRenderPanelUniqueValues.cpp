#include "ModalAnswer.h"
#include "TestRegistry.h"
#include "VectorFixtures.h"

#include "TZControlRender.h"
#include "TZModelUniqueValues.h"
#include "TZRenderPanelUniqueValues.h"

#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEMatchToSymbolsRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "widgets/TZColorBtn.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QLocale>
#include <QScopeGuard>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QToolButton>

#include <memory>

using namespace TZObjects;

namespace {

const QStringList Cities = {QStringLiteral("Oslo"), QStringLiteral("Bergen"), QStringLiteral("Oslo"),
                            QStringLiteral("Tromso")};

struct RowText
{
    QString value;
    QString label;
    int count;
    unsigned int color;
    bool operator==(const RowText& o) const
    {
        return value == o.value && label == o.label && count == o.count && color == o.color;
    }
};

QList<RowText> rowTexts(const TZModelUniqueValues* model)
{
    QList<RowText> rows;
    for (int r = 0; r < model->rowCount(); ++r) {
        const UniqueValueRow& row = model->row(r);
        rows.append({row.value, row.label, row.count, row.style ? row.style->GetColor().GetColor() : 0u});
    }
    return rows;
}

} // namespace

class TestRenderPanelUniqueValues : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    // Shows the dock on the layer with the unique values page chosen.
    TZRenderPanelUniqueValues* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelUniqueValues*>();
        if (!panel)
            return nullptr;
        mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->setCurrentText(panel->title());
        return panel;
    }

    template <class T>
    static T* child(QWidget* panel, const char* name)
    {
        return panel->findChild<T*>(QString::fromLatin1(name));
    }

    static void selectRows(TZRenderPanelUniqueValues* panel, const QList<int>& rows)
    {
        QTableView* table = child<QTableView>(panel, "mTableViewValues");
        table->clearSelection();
        for (int row : rows)
            table->selectionModel()->select(table->model()->index(row, 0),
                                            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    static void addAllWithCounts(TZRenderPanelUniqueValues* panel)
    {
        QCheckBox* count = child<QCheckBox>(panel, "checkBox_2");
        if (!count->isChecked())
            count->click();
        child<QPushButton>(panel, "mButtonAddAll")->click();
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    void freshLayerShowsFieldsAndCatchAll_data()
    {
        QTest::addColumn<int>("layerType");
        QTest::addColumn<bool>("rotateVisible");
        QTest::newRow("point") << int(TELayer::LT_Point) << true;
        QTest::newRow("line") << int(TELayer::LT_Line) << false;
        QTest::newRow("polygon") << int(TELayer::LT_Polygon) << false;
    }
    void freshLayerShowsFieldsAndCatchAll()
    {
        QFETCH(int, layerType);
        QFETCH(bool, rotateVisible);
        auto layer = VectorFixtures::makeLayer(TELayer::LayerType(layerType), Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel && panel->model());
        QCOMPARE(panel->name(), QStringLiteral("UniqueValues"));
        QComboBox* fields = child<QComboBox>(panel, "mComboBoxValueField");
        QCOMPARE(fields->count(), 2);
        QCOMPARE(fields->itemText(0), QStringLiteral("name"));
        QCOMPARE(child<QPushButton>(panel, "mButtonRotate")->isVisible(), rotateVisible);
        QCOMPARE(panel->model()->rowCount(), 1);
        QVERIFY(panel->model()->row(0).style);
        QCOMPARE(panel->model()->fieldName(), QStringLiteral("name"));
        QCOMPARE(child<QComboBox>(panel, "mComboBoxLineWidthUnit")->currentIndex(), 1);
        QCOMPARE(child<QDoubleSpinBox>(panel, "mLineWidthBox")->value(), 0.25);
        QCOMPARE(child<TZColorBtn>(panel, "mLineColorBtn")->getColor(), QRgb(0xFFB9B9B9));
        // The "Symbols" header is not clipped by the 45-pixel column.
        QTableView* table = child<QTableView>(panel, "mTableViewValues");
        QVERIFY(table->columnWidth(0) >= table->horizontalHeader()->sectionSizeHint(0));
    }

    void countChoiceMadeBeforeTheFirstLoadIsKept()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZControlRender::instance(nullptr)->setLayer(layer.get());
        TZRenderPanelUniqueValues panel;
        panel.show();
        child<QCheckBox>(&panel, "checkBox_2")->click();
        panel.onReset();
        QVERIFY(panel.model());
        QVERIFY(panel.model()->countWhileCollecting());
        TZControlRender::instance(nullptr)->setLayer(nullptr);
    }

    // The unique values panel reads the dialog's field text, not its mode,
    // and applies at once: a dialog accepted untouched keeps the render's (empty) field
    // and so turns rotation on.
    void rotationGoesByTheChosenTextAndIsAppliedAtOnce_data()
    {
        QTest::addColumn<QStringList>("picks");
        QTest::addColumn<bool>("byField");
        QTest::addColumn<QString>("field");
        QTest::addColumn<bool>("clockwise");
        QTest::newRow("a field") << QStringList{"angle"} << true << "angle" << false;
        QTest::newRow("random") << QStringList{"<random>"} << true << "<random>" << true;
        QTest::newRow("none picked") << QStringList{"angle", "<none>"} << false << "" << true;
        QTest::newRow("accepted untouched") << QStringList{} << true << "" << true;
    }
    void rotationGoesByTheChosenTextAndIsAppliedAtOnce()
    {
        QFETCH(QStringList, picks);
        QFETCH(bool, byField);
        QFETCH(QString, field);
        QFETCH(bool, clockwise);
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        QVERIFY(panel->onApply());
        const TERefPtr<TEFeatureRender> before = layer->GetSymbolRender();

        ModalAnswer answer("TZDialogRotateByField", [&](QWidget* dialog) {
            for (const QString& pick : picks)
                child<QComboBox>(dialog, "mComboBoxFields")->setCurrentText(pick);
            child<QDoubleSpinBox>(dialog, "mDoubleSpinBoxMaximum")->setValue(90.0);
            child<QRadioButton>(dialog, clockwise ? "mRadioButtonGeo" : "mRadioButtonArithmetic")->click();
            static_cast<QDialog*>(dialog)->accept();
        });
        child<QPushButton>(panel, "mButtonRotate")->click();
        QVERIFY(answer.answered());

        const TERefPtr<TEFeatureRender> render = layer->GetSymbolRender();
        QVERIFY(render && render != before);
        QCOMPARE(render->IsRotateByField(), byField);
        QCOMPARE(render->IsRotateByClockWise(), clockwise);
        if (byField)
            QCOMPARE(render->GetRotateField().toQString(), field);
        if (field == QLatin1String("<random>")) {
            double minimum = -1.0;
            double maximum = -1.0;
            render->GetRotateRandomRange(minimum, maximum);
            QCOMPARE(maximum, 90.0);
        }
    }

    // The dialog's width box shows "0,75" under a decimal comma; the panel
    // must still apply 0.75, not 0.
    void defaultOutlineFromTheSetupDialogIsApplied_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::newRow("decimal point") << QLocale::c();
        QTest::newRow("decimal comma") << QLocale(QLocale::German, QLocale::Germany);
    }
    void defaultOutlineFromTheSetupDialogIsApplied()
    {
        QFETCH(QLocale, locale);
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Polygon, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        panel->setLocale(locale);
        const auto restore = qScopeGuard([panel] { panel->unsetLocale(); });
        addAllWithCounts(panel);
        ModalAnswer answer("TZSetupDialogDefautOutLineStyle", [](QWidget* dialog) {
            dialog->findChild<QDoubleSpinBox*>()->setValue(0.75);
            dialog->findChild<QComboBox*>()->setCurrentIndex(2);
            dialog->findChild<TZColorBtn*>()->setColor(0xFF123456);
            child<QPushButton>(dialog, "mButtonOk")->click();
        });
        child<QToolButton>(panel, "mButtonSetupDefault")->click();
        QVERIFY(answer.answered());
        QCOMPARE(child<QDoubleSpinBox>(panel, "mLineWidthBox")->value(), 0.75);
        QCOMPARE(child<QComboBox>(panel, "mComboBoxLineWidthUnit")->currentText(), QStringLiteral("CM"));

        QVERIFY(panel->onApply());
        const auto render = layer->GetSymbolRender().cast<TECategorizedSymbolRender>();
        QCOMPARE(render->GetOutLineInfo().width, 0.75);
        QCOMPARE(render->GetOutLineInfo().unit, 2);
        QCOMPARE(render->GetOutLineInfo().color.GetColor(), 0xFF123456u);
        // The value rows were given the new outline.
        auto* fill = dynamic_cast<TEStyleSimpleFill*>(panel->model()->row(1).style.get());
        QVERIFY(fill && fill->GetOutline());
        QCOMPARE(fill->GetOutline()->GetWidth(), 0.75);
        QCOMPARE(fill->GetOutline()->GetColor().GetColor(), 0xFF123456u);
    }

    void applyWithOnlyTheCatchAllRow()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        QVERIFY(panel->onApply());
        auto render = layer->GetSymbolRender().cast<TECategorizedSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->GetExpression().toQString(), QStringLiteral("name"));
        QCOMPARE(render->GetItemCount(), 1);
        QCOMPARE(render->GetCategoryRenderItem(0)->GetValue().toQString(), QStringLiteral("<all other values>"));
        // The panel's model outlives the layers it shows, and clearing it
        // keeps the catch-all check: the render follows whatever it is.
        TZModelUniqueValues* model = panel->model();
        const bool checked = model->showOtherValuesState() == Qt::Checked;
        QCOMPARE(render->IsShowOtherValue(), checked);

        // The check toggles the show-other-values flag of the next Apply.
        model->setData(model->index(0, 1), Qt::Checked, Qt::CheckStateRole);
        QVERIFY(panel->onApply());
        QCOMPARE(layer->GetSymbolRender().cast<TECategorizedSymbolRender>()->IsShowOtherValue(), !checked);
    }

    void catchAllValueIsAlwaysWrittenAsSuch()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        addAllWithCounts(panel);
        TZModelUniqueValues* model = panel->model();
        QVERIFY(model->setData(model->index(0, 2), QStringLiteral("Everything else")));
        QVERIFY(panel->onApply());
        auto render = layer->GetSymbolRender().cast<TECategorizedSymbolRender>();
        QCOMPARE(render->GetItemCount(), 4);
        QCOMPARE(render->GetCategoryRenderItem(0)->GetValue().toQString(), QStringLiteral("<all other values>"));
        QCOMPARE(render->GetCategoryRenderItem(0)->GetLabel().toQString(), QStringLiteral("Everything else"));
        QCOMPARE(render->GetCategoryRenderItem(1)->GetValue().toQString(), QStringLiteral("Oslo"));
    }

    void upAndDownFollowTheSelection_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<bool>("up");
        QTest::addColumn<bool>("down");
        QTest::newRow("catch-all") << QList<int>{0} << false << false;
        QTest::newRow("first value") << QList<int>{1} << false << true;
        QTest::newRow("middle") << QList<int>{2} << true << true;
        QTest::newRow("last") << QList<int>{3} << true << false;
        QTest::newRow("two rows") << QList<int>{1, 2} << false << false;
        QTest::newRow("none") << QList<int>{} << false << false;
    }
    void upAndDownFollowTheSelection()
    {
        QFETCH(QList<int>, rows);
        QFETCH(bool, up);
        QFETCH(bool, down);
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        addAllWithCounts(panel);
        QCOMPARE(panel->model()->rowCount(), 4);
        selectRows(panel, rows);
        QCOMPARE(child<QPushButton>(panel, "mButtonUp")->isEnabled(), up);
        QCOMPARE(child<QPushButton>(panel, "mButtonDown")->isEnabled(), down);
    }

    void movedRowStaysSelected()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        addAllWithCounts(panel);
        selectRows(panel, {1});
        child<QPushButton>(panel, "mButtonDown")->click();
        QCOMPARE(panel->model()->row(2).value, QStringLiteral("Oslo"));
        QCOMPARE(panel->model()->row(1).value, QStringLiteral("Bergen"));
        QVERIFY(child<QPushButton>(panel, "mButtonUp")->isEnabled());
        child<QPushButton>(panel, "mButtonUp")->click();
        QCOMPARE(panel->model()->row(1).value, QStringLiteral("Oslo"));
        QVERIFY(!child<QPushButton>(panel, "mButtonUp")->isEnabled());

        // Adding all values again resets the table; Up and Down follow.
        child<QPushButton>(panel, "mButtonAddAll")->click();
        QVERIFY(!child<QPushButton>(panel, "mButtonDown")->isEnabled());
    }

    void deleteNeedsASelection()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        addAllWithCounts(panel);
        selectRows(panel, {});

        ModalAnswer answer("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        child<QPushButton>(panel, "mButtonRemove")->click();
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogTitle(), QStringLiteral("Information"));
        QCOMPARE(answer.dialogText(), QStringLiteral("No items selected!"));
        QCOMPARE(panel->model()->rowCount(), 4);

        selectRows(panel, {0, 2});
        child<QPushButton>(panel, "mButtonRemove")->click();
        QCOMPARE(panel->model()->rowCount(), 3);
        QCOMPARE(panel->model()->row(0).value, QStringLiteral("<all other values>"));
        QCOMPARE(panel->model()->row(2).value, QStringLiteral("Tromso"));

        child<QPushButton>(panel, "mButtonRemoveAll")->click();
        QCOMPARE(panel->model()->rowCount(), 1);
        QVERIFY(panel->model()->row(0).style);
        QVERIFY(panel->model()->values().isEmpty());
    }

    void resetReadsTheAppliedRenderBack()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Polygon, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        child<QComboBox>(panel, "mComboBoxLineWidthUnit")->setCurrentIndex(2);
        child<QDoubleSpinBox>(panel, "mLineWidthBox")->setValue(0.5);
        child<TZColorBtn>(panel, "mLineColorBtn")->setColor(0xFF204060);
        addAllWithCounts(panel);
        TZModelUniqueValues* model = panel->model();
        QVERIFY(model->setData(model->index(2, 2), QStringLiteral("West coast")));
        model->setShowOtherValuesState(Qt::Checked);
        child<QCheckBox>(panel, "checkBox")->click();
        const QList<RowText> applied = rowTexts(model);
        QVERIFY(panel->onApply());

        auto render = layer->GetSymbolRender().cast<TECategorizedSymbolRender>();
        QCOMPARE(render->GetOutLineInfo().unit, 2);
        QCOMPARE(render->GetOutLineInfo().width, 0.5);
        QCOMPARE(render->GetOutLineInfo().color.GetColor(), 0xFF204060u);
        QVERIFY(render->PriorityRender());

        // Scramble the page, then load the render back.
        child<QPushButton>(panel, "mButtonRemoveAll")->click();
        child<QComboBox>(panel, "mComboBoxLineWidthUnit")->setCurrentIndex(1);
        // The dock finds the page by the render's type and has it load.
        mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->setCurrentIndex(0);
        mDock->showLayerStyle();
        QCOMPARE(mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->currentText(), panel->title());

        QCOMPARE(model->rowCount(), 4);
        QList<RowText> loaded = rowTexts(model);
        // The catch-all row comes back with the total count.
        QCOMPARE(loaded[0].count, Cities.size());
        loaded[0].count = applied[0].count;
        QCOMPARE(loaded, applied);
        QCOMPARE(model->showOtherValuesState(), Qt::Checked);
        QVERIFY(child<QCheckBox>(panel, "checkBox")->isChecked());
        QCOMPARE(model->columnCount(), 5);
        QCOMPARE(child<QComboBox>(panel, "mComboBoxLineWidthUnit")->currentIndex(), 2);
        QCOMPARE(child<QDoubleSpinBox>(panel, "mLineWidthBox")->value(), 0.5);
        QCOMPARE(child<TZColorBtn>(panel, "mLineColorBtn")->getColor(), QRgb(0xFF204060));
        QCOMPARE(child<QComboBox>(panel, "mComboBoxValueField")->currentText(), QStringLiteral("name"));
    }

    void otherCategorizedRendersLoadAsFresh()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        auto match = MakeRef<TEMatchToSymbolsRender>(TEString(L"angle"));
        match->AddCategory(TEString(L"Oslo"), TEString(L"Oslo"), layer->GetDefaultStyle());
        layer->SetSymbolRender(match);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(panel->model()->rowCount(), 1);
        QCOMPARE(child<QComboBox>(panel, "mComboBoxValueField")->currentText(), QStringLiteral("name"));
    }

    void pointUnitResetsTheWidth()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Line, Cities);
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        addAllWithCounts(panel);
        QComboBox* units = child<QComboBox>(panel, "mComboBoxLineWidthUnit");
        QDoubleSpinBox* width = child<QDoubleSpinBox>(panel, "mLineWidthBox");
        width->setValue(0.7);

        units->setCurrentIndex(0);
        QCOMPARE(width->value(), 1.0);
        QCOMPARE(width->decimals(), 0);
        QCOMPARE(width->singleStep(), 1.0);
        auto* line = dynamic_cast<TEStyleSimpleLine*>(panel->model()->row(1).style.get());
        QVERIFY(line);
        QCOMPARE(line->GetUnits(), 0);
        QCOMPARE(line->GetWidth(), 1.0);

        units->setCurrentIndex(3);
        QCOMPARE(width->decimals(), 2);
        QCOMPARE(width->singleStep(), 0.1);
        QCOMPARE(width->value(), 1.0);
        QCOMPARE(panel->model()->row(1).style->GetUnits(), 3);
    }

    // A render may name its field in another case than the layer (after a
    // change of format) or name a field the layer no longer has.
    void renderFieldIsMatchedIgnoringCase_data()
    {
        QTest::addColumn<QString>("renderField");
        QTest::addColumn<bool>("found");
        QTest::newRow("same case") << "name" << true;
        QTest::newRow("other case") << "NAME" << true;
        QTest::newRow("missing") << "town" << false;
    }
    void renderFieldIsMatchedIgnoringCase()
    {
        QFETCH(QString, renderField);
        QFETCH(bool, found);
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        auto render = MakeRef<TECategorizedSymbolRender>(TEString(renderField));
        render->AddCategory(TEString(L"<all other values>"), TEString(L"Other"), layer->GetDefaultStyle());
        render->AddCategory(TEString(L"Oslo"), TEString(L"Capital"), layer->GetDefaultStyle());
        layer->SetSymbolRender(render);

        // Loading tells the user which field is missing (a box of any kind
        // shown for a field that is there would make the panel hang here).
        std::unique_ptr<ModalAnswer> loadWarning;
        if (!found)
            loadWarning = std::make_unique<ModalAnswer>("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        if (!found) {
            QVERIFY(loadWarning->answered());
            QCOMPARE(loadWarning->dialogTitle(), QStringLiteral("Warning"));
            QVERIFY(loadWarning->dialogText().contains(QLatin1String("\"town\"")));
        }
        // The categories are shown either way; counted when the field is there.
        TZModelUniqueValues* model = panel->model();
        QCOMPARE(model->rowCount(), 2);
        QCOMPARE(model->row(1).label, QStringLiteral("Capital"));
        QCOMPARE(model->row(1).count, found ? 2 : 0);
        QCOMPARE(child<QComboBox>(panel, "mComboBoxValueField")->currentText(), QStringLiteral("name"));

        if (found) {
            QVERIFY(panel->onApply());
            const auto applied = layer->GetSymbolRender().cast<TECategorizedSymbolRender>();
            QVERIFY(applied && applied != render);
            QCOMPARE(applied->GetExpression().toQString(), QStringLiteral("name"));
            QCOMPARE(applied->GetItemCount(), 2);
        } else {
            // Not written onto "name": the layer keeps its render.
            ModalAnswer applyWarning("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
            QVERIFY(!panel->onApply());
            QVERIFY(applyWarning.answered());
            QVERIFY(applyWarning.dialogText().contains(QLatin1String("\"town\"")));
            QVERIFY(layer->GetSymbolRender() == render);
            // Once the user starts over on a field of the layer, Apply works.
            child<QPushButton>(panel, "mButtonRemoveAll")->click();
            QVERIFY(panel->onApply());
            QCOMPARE(layer->GetSymbolRender().cast<TECategorizedSymbolRender>()->GetItemCount(), 1);
        }
    }

    void applyWithoutFieldsIsRefused()
    {
        auto layer = TEMemoryFeatureLayer::Create(QStringLiteral("bare"), TELayer::LT_Point, {});
        layer->AppendFeature(QStringLiteral("POINT(0 0)"), {});
        TZRenderPanelUniqueValues* panel = openPanel(layer.get());
        QVERIFY(panel);
        const TERefPtr<TEFeatureRender> opening = layer->GetSymbolRender();
        QVERIFY(!panel->onApply());
        QCOMPARE(layer->GetSymbolRender(), opening);
    }
};

TZ_REGISTER_TEST(TestRenderPanelUniqueValues)
#include "TestRenderPanelUniqueValues.moc"
