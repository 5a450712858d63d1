#include "GradingFixtures.h"
#include "MessageBoxWatch.h"
#include "ModalAnswer.h"
#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZModelGradingSymbol.h"
#include "TZRenderPanelGradingSymbol.h"

#include "renders/TEGradingSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>

using namespace TZObjects;
using GradingFixtures::column;
using GradingFixtures::counts;

namespace {

const QList<double> Values = {0, 2, 5, 7.5, 10, 10};

QStringList categoryValues(const TECategorizedSymbolRender& render)
{
    QStringList values;
    for (int i = 0; i < render.GetItemCount(); ++i)
        values << render.GetCategoryRenderItem(i)->GetValue().toQString();
    return values;
}

} // namespace

class TestRenderPanelGradingSymbol : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    // Shows the dock on the layer with the grading page chosen.
    TZRenderPanelGradingSymbol* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelGradingSymbol*>();
        if (panel)
            mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->setCurrentText(panel->title());
        return panel;
    }

    template <class T>
    static T* child(QWidget* panel, const char* name)
    {
        return panel->findChild<T*>(QString::fromLatin1(name));
    }

    // Replaces the class rows by the ranges given.
    static void setRanges(TZRenderPanelGradingSymbol* panel, const QStringList& ranges)
    {
        TZModelGradingSymbol* model = panel->model();
        model->clear();
        for (const QString& range : ranges)
            model->addItem({model->createStyle(TEColor(1, 2, 3)), range, range, 0});
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    void offersNumericFieldsFromTheThirdOn()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Polygon, Values);
        TZRenderPanelGradingSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->currentText(), QStringLiteral("Grading symbol"));
        QComboBox* fields = child<QComboBox>(panel, "mComboBoxField");
        QCOMPARE(fields->count(), 2);
        QCOMPARE(fields->itemText(0), QStringLiteral("v"));
        QCOMPARE(fields->itemText(1), QStringLiteral("code"));
        QComboBox* levels = child<QComboBox>(panel, "mComboBoxLevel");
        QCOMPARE(levels->count(), 31);
        QCOMPARE(levels->currentText(), QStringLiteral("12"));
        // Set up with the field shown, so that Update works at once.
        QCOMPARE(panel->model()->field(), QStringLiteral("v"));
        QCOMPARE(panel->model()->rowCount(), 1);
        QTableView* table = child<QTableView>(panel, "tableView");
        QCOMPARE(table->horizontalHeader()->height(), 25);
        QCOMPARE(table->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("symbols"));

        // Choosing a field or a level starts the table afresh.
        child<QPushButton>(panel, "mButtonUpdate")->click();
        QCOMPARE(panel->model()->rowCount(), 13);
        fields->setCurrentIndex(1);
        QCOMPARE(panel->model()->field(), QStringLiteral("code"));
        QCOMPARE(panel->model()->rowCount(), 1);
        levels->setCurrentText(QStringLiteral("4"));
        child<QPushButton>(panel, "mButtonUpdate")->click();
        QCOMPARE(column(*panel->model(), 1).mid(1),
                 (QStringList{"0.00000,1.25000", "1.25000,2.50000", "2.50000,3.75000", "3.75000,5.00000"}));
    }

    // Apply writes the classes and the outline; a reset reads them back
    // with the same rows, labels, counts and symbols.
    void applyThenResetGivesTheSameClasses()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Polygon, Values);
        TZRenderPanelGradingSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        child<QComboBox>(panel, "mComboBoxLevel")->setCurrentText(QStringLiteral("3"));
        child<QDoubleSpinBox>(panel, "mDoubleSpinBoxOutlineWidth")->setValue(0.6);
        child<QPushButton>(panel, "mButtonUpdate")->click();
        TZModelGradingSymbol* model = panel->model();
        QVERIFY(model->setData(model->index(2, 2), QStringLiteral("middle")));
        model->setData(model->index(0, 1), Qt::Checked, Qt::CheckStateRole);
        const QStringList ranges = column(*model, 1);
        const QStringList labels = column(*model, 2);
        const QList<int> before = counts(*model);
        QCOMPARE(before.mid(1), (QList<int>{2, 1, 3}));
        const unsigned int secondColor = model->item(2).style->GetColor().GetColor();

        mDock->onApply();
        const TERefPtr<TEGradingSymbolRender> render = layer->GetSymbolRender().cast<TEGradingSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->GetExpression().toQString(), QStringLiteral("v"));
        QCOMPARE(render->GetLevel(), 3);
        QVERIFY(render->IsShowOtherValue());
        QCOMPARE(categoryValues(*render), ranges);
        QCOMPARE(render->GetCategoryRenderItem(2)->GetLabel().toQString(), QStringLiteral("middle"));
        auto* fill = dynamic_cast<TEStyleFill*>(render->GetCategoryRenderItem(1)->GetStyle().get());
        QVERIFY(fill && fill->GetOutline());
        QCOMPARE(fill->GetOutline()->GetWidth(), 0.6);
        // The table's symbols are not the render's: editing one later leaves
        // the applied render alone.
        QVERIFY(render->GetCategoryRenderItem(1)->GetStyle() != model->item(1).style);

        model->clear();
        mDock->onReset();
        QCOMPARE(column(*model, 1), ranges);
        QCOMPARE(column(*model, 2), labels);
        QCOMPARE(counts(*model).mid(1), before.mid(1));
        QCOMPARE(model->item(2).style->GetColor().GetColor(), secondColor);
        QCOMPARE(model->checkState(), int(Qt::Checked));
        QCOMPARE(child<QComboBox>(panel, "mComboBoxLevel")->currentText(), QStringLiteral("3"));
        QCOMPARE(child<QDoubleSpinBox>(panel, "mDoubleSpinBoxOutlineWidth")->value(), 0.6);
    }

    void applyChecksTheClassRows_data()
    {
        QTest::addColumn<QStringList>("ranges");
        QTest::addColumn<QString>("answer");    // the button pressed, empty when no box is expected
        QTest::addColumn<QString>("message");
        QTest::addColumn<QStringList>("applied"); // category values, empty when refused
        const QString all = TZModelGradingSymbol::AllOtherValues;
        const QString overlap = QStringLiteral("The ranges of the different grades intersect. Do you want to continue?");
        const QString incorrect = QStringLiteral("There is an incorrect grading item!");
        QTest::newRow("shared bound") << QStringList{"0,10", "10,20"} << QString() << QString()
                                      << QStringList{all, "0,10", "10,20"};
        QTest::newRow("overlap, OK") << QStringList{"0,10", "5,20"} << "OK" << overlap
                                     << QStringList{all, "0,10", "5,20"};
        QTest::newRow("overlap, Cancel") << QStringList{"0,10", "5,20"} << "Cancel" << overlap << QStringList{};
        QTest::newRow("full-width comma") << QStringList{QStringLiteral("0\uFF0C10")} << QString() << QString()
                                          << QStringList{all, "0,10"};
        QTest::newRow("no comma") << QStringList{"0,10", "15"} << "OK" << incorrect << QStringList{};
        QTest::newRow("not numbers") << QStringList{"low,high"} << "OK" << incorrect << QStringList{};
        QTest::newRow("no classes") << QStringList{} << QString() << QString() << QStringList{all};
    }
    void applyChecksTheClassRows()
    {
        QFETCH(QStringList, ranges);
        QFETCH(QString, answer);
        QFETCH(QString, message);
        QFETCH(QStringList, applied);
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Polygon, Values);
        const auto previous = MakeRef<TESingleSymbolRender>();
        layer->SetSymbolRender(previous);
        TZRenderPanelGradingSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        setRanges(panel, ranges);

        const MessageBoxWatch boxes(answer == QLatin1String("Cancel") ? QMessageBox::Cancel : QMessageBox::Ok);
        QCOMPARE(panel->onApply(), !applied.isEmpty());
        QCOMPARE(boxes.texts(), message.isEmpty() ? QStringList() : QStringList{message});
        if (applied.isEmpty()) {
            QCOMPARE(layer->GetSymbolRender().get(), static_cast<TEFeatureRender*>(previous.get()));
            return;
        }
        const TERefPtr<TEGradingSymbolRender> render = layer->GetSymbolRender().cast<TEGradingSymbolRender>();
        QVERIFY(render);
        QCOMPARE(categoryValues(*render), applied);
    }

    void deleteRemovesSelectedClassesOnly()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, Values);
        TZRenderPanelGradingSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        child<QComboBox>(panel, "mComboBoxLevel")->setCurrentText(QStringLiteral("3"));
        child<QPushButton>(panel, "mButtonUpdate")->click();

        ModalAnswer none("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        child<QPushButton>(panel, "mButtonDeleteValue")->click();
        QVERIFY(none.answered());
        QCOMPARE(none.dialogText(), QStringLiteral("No items selected!"));
        QCOMPARE(panel->model()->rowCount(), 4);

        QTableView* table = child<QTableView>(panel, "tableView");
        for (int row : {0, 2})
            table->selectionModel()->select(table->model()->index(row, 0),
                                            QItemSelectionModel::Select | QItemSelectionModel::Rows);
        child<QPushButton>(panel, "mButtonDeleteValue")->click();
        QCOMPARE(column(*panel->model(), 1),
                 (QStringList{TZModelGradingSymbol::AllOtherValues, "0.00000,3.33333", "6.66667,10.00000"}));

        child<QPushButton>(panel, "mButtonDeleteAllValues")->click();
        QCOMPARE(panel->model()->rowCount(), 1);
    }

    // Filter counts only the features passing the layer's filter and puts
    // the labels back to the ranges.
    void filterRecountsThroughTheLayerFilter()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, Values);
        TZRenderPanelGradingSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        child<QComboBox>(panel, "mComboBoxLevel")->setCurrentText(QStringLiteral("2"));
        child<QPushButton>(panel, "mButtonUpdate")->click();
        TZModelGradingSymbol* model = panel->model();
        QCOMPARE(counts(*model).mid(1), (QList<int>{3, 4}));
        model->setData(model->index(1, 2), QStringLiteral("low"));

        layer->SetQueryFilter(TEQueryFilter(TEString(L"v >= 5")));
        child<QPushButton>(panel, "mButtonFilter")->click();
        QCOMPARE(counts(*model).mid(1), (QList<int>{1, 4}));
        QCOMPARE(model->item(1).label, model->item(1).range);
    }

    // Add value offers the classes not yet in the table and counts the ones
    // the user keeps.
    void addValueOffersMissingClasses()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, Values);
        TZRenderPanelGradingSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        child<QComboBox>(panel, "mComboBoxLevel")->setCurrentText(QStringLiteral("2"));
        QStringList offered;
        ModalAnswer pick("TZDialogAddValueToUniqueValue", [&](QWidget* dialog) {
            auto* list = dialog->findChild<QAbstractItemView*>();
            for (int r = 0; r < list->model()->rowCount(); ++r)
                offered << list->model()->index(r, 0).data().toString();
            list->selectionModel()->select(list->model()->index(1, 0), QItemSelectionModel::Select);
            dialog->findChild<QPushButton*>("mButtonOk")->click();
        });
        child<QPushButton>(panel, "mButtonAddValue")->click();
        QVERIFY(pick.answered());
        QCOMPARE(offered, (QStringList{"0.00000,5.00000", "5.00000,10.00000"}));
        QCOMPARE(column(*panel->model(), 1).mid(1), QStringList{"5.00000,10.00000"});
        QCOMPARE(counts(*panel->model()).mid(1), QList<int>{4});
        QVERIFY(panel->model()->item(1).style);

        // Nothing left to offer.
        ModalAnswer noMore("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        panel->model()->addItem({nullptr, "0.00000,5.00000", "0.00000,5.00000", 0});
        child<QPushButton>(panel, "mButtonAddValue")->click();
        QCOMPARE(noMore.dialogText(), QStringLiteral("No other values"));
    }
};

TZ_REGISTER_TEST(TestRenderPanelGradingSymbol)
#include "TestRenderPanelGradingSymbol.moc"
