#include "ModalAnswer.h"
#include "TestRegistry.h"
#include "VectorFixtures.h"

#include "TZControlRender.h"
#include "TZRenderPanelRuleBased.h"
#include "TZRuleBasedDialog.h"
#include "TZRuleBasedModel.h"

#include "renders/TERuleBasedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/QuickStyle.h"
#include "symbology/TEStylePoint.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>

using namespace TZObjects;

namespace {

using Rule = TERuleBasedSymbolRender::Rule;

TERefPtr<TEStyle> pointStyle(double width, double height)
{
    TERefPtr<TEStyle> style = QuickStyle::MakePointStyle(0, TEColor(200, 30, 30), 2.0, TEColor(0, 0, 0), 0.2);
    auto* point = dynamic_cast<TEStylePoint*>(style.get());
    point->SetWidth(width);
    point->SetHeight(height);
    return style;
}

TERefPtr<Rule> makeRule(const QString& label, const QString& expression = QString())
{
    return MakeRef<Rule>(pointStyle(2.0, 2.0), TEString(expression), TEString(label));
}

// A layer whose render holds one rule per label, in order.
void setRules(TEFeatureLayer* layer, const QStringList& labels)
{
    auto render = MakeRef<TERuleBasedSymbolRender>();
    for (const QString& label : labels)
        render->AddRule(makeRule(label, QStringLiteral("name = '%1'").arg(label)));
    layer->SetSymbolRender(render);
}

QStringList labelsOf(const QAbstractItemModel* model)
{
    QStringList labels;
    for (int row = 0; row < model->rowCount(); ++row)
        labels << model->index(row, TZRuleBasedModel::LabelColumn).data().toString();
    return labels;
}

QSize iconSizeOf(const QVariant& decoration)
{
    const QList<QSize> sizes = qvariant_cast<QIcon>(decoration).availableSizes();
    return sizes.isEmpty() ? QSize() : sizes.first();
}

} // namespace

class TestRuleBased : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    TZRenderPanelRuleBased* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelRuleBased*>();
        if (!panel)
            return nullptr;
        auto* styles = mDock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
        if (styles->currentText() == panel->title())
            panel->onReset();
        else
            styles->setCurrentText(panel->title());
        return panel;
    }

    template <class T>
    static T* child(QObject* parent, const char* name)
    {
        return parent->findChild<T*>(QString::fromLatin1(name));
    }

    static QTableView* table(QWidget* panel) { return child<QTableView>(panel, "tableView"); }

    static void selectRows(QWidget* panel, const QList<int>& rows)
    {
        QTableView* view = table(panel);
        view->selectionModel()->clearSelection();
        for (int row : rows)
            view->selectionModel()->select(view->model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    // --- model ---

    void modelAnswersEachColumnByRole()
    {
        TZRuleBasedModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setDefaultIconSize(QSize(30, 20));
        auto scaled = MakeRef<Rule>(pointStyle(2.7, 3.9), TEString(L"pop > 5"), TEString(L"Towns"));
        scaled->SetScaleFilter(true);
        scaled->SetMinimumScale(1000);
        scaled->SetMaximumScale(50000);
        QVERIFY(!model.appendRule(TERefPtr<Rule>()));
        QVERIFY(model.appendRule(scaled));
        QVERIFY(model.appendRule(MakeRef<Rule>(QuickStyle::MakeLineStyle(TEColor(0, 0, 255), 0.5))));

        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.columnCount(), 6);
        const QStringList headers = {"Symbols", "Label", "Rule", "Scale filter", "Minimum scale", "Maximum scale"};
        for (int column = 0; column < headers.size(); ++column)
            QCOMPARE(model.headerData(column, Qt::Horizontal).toString(), headers[column]);

        // A point symbol shows at four times its size, each side truncated
        // first (2.7 -> 2 -> 8); other symbols at the default size.
        QCOMPARE(iconSizeOf(model.index(0, 0).data(Qt::DecorationRole)), QSize(8, 12));
        QCOMPARE(iconSizeOf(model.index(1, 0).data(Qt::DecorationRole)), QSize(30, 20));
        QVERIFY(!model.index(0, 0).data(Qt::DisplayRole).isValid());

        QCOMPARE(model.index(0, 1).data().toString(), QStringLiteral("Towns"));
        QCOMPARE(model.index(0, 1).data(Qt::EditRole), QVariant(true));
        QCOMPARE(model.index(1, 1).data(Qt::EditRole), QVariant(true));
        QVERIFY(!model.index(0, 1).data(Qt::DecorationRole).isValid());
        QCOMPARE(model.index(0, 2).data().toString(), QStringLiteral("pop > 5"));
        QCOMPARE(model.index(0, 3).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
        QCOMPARE(model.index(1, 3).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
        QVERIFY(!model.index(0, 3).data(Qt::DisplayRole).isValid());
        QCOMPARE(model.index(0, 4).data(), QVariant(1000.0));
        QCOMPARE(model.index(0, 5).data(), QVariant(50000.0));
        QCOMPARE(model.index(1, 4).data(), QVariant(0.0));

        // Past the end and beside the table there is nothing.
        QVERIFY(!model.index(2, 1).isValid());
        QVERIFY(!model.index(0, 6).isValid());
        QVERIFY(!model.data(model.index(1, 1).sibling(2, 1)).isValid());
        QVERIFY(!model.rule(2));
        QVERIFY(!model.rule(-1));
    }

    void modelAnnouncesExactlyTheRowsItChanges()
    {
        TZRuleBasedModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setRules({makeRule(QStringLiteral("a")), makeRule(QStringLiteral("b")), makeRule(QStringLiteral("c"))});

        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QVERIFY(model.swapRows(2, 1));
        QCOMPARE(labelsOf(&model), QStringList({"a", "c", "b"}));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed[0][0].toModelIndex(), model.index(1, 0));
        QCOMPARE(changed[0][1].toModelIndex(), model.index(2, 5));
        QVERIFY(!model.swapRows(2, 3));
        QCOMPARE(changed.count(), 1);

        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        QVERIFY(model.removeRule(0));
        QVERIFY(!model.removeRule(2));
        QCOMPARE(removed.count(), 1);
        QCOMPARE(labelsOf(&model), QStringList({"c", "b"}));
    }

    // --- rule dialog ---

    void dialogRefusesARuleWithoutSymbol()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        TZRuleBasedDialog dialog(layer.get(), TERefPtr<Rule>());
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Rule setting"));
        QVERIFY(!child<QGroupBox>(&dialog, "mGroupBoxScale")->isChecked());
        dialog.show();
        ModalAnswer answer("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        child<QDialogButtonBox>(&dialog, "mButtonBox")->button(QDialogButtonBox::Ok)->click();
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogTitle(), QStringLiteral("Information"));
        QCOMPARE(answer.dialogText(), QStringLiteral("Symbol can not be null"));
        QVERIFY(dialog.isVisible());
        QVERIFY(dialog.result() != QDialog::Accepted);
    }

    void dialogReadsScalesAsWholeNumbers_data()
    {
        QTest::addColumn<QString>("minimum");
        QTest::addColumn<QString>("maximum");
        QTest::addColumn<double>("storedMinimum");
        QTest::addColumn<double>("storedMaximum");
        QTest::newRow("whole numbers") << "1000" << "250000" << 1000.0 << 250000.0;
        QTest::newRow("a fraction is not a whole number") << "2500.5" << "100" << 0.0 << 100.0;
        QTest::newRow("words and blanks give 0") << "abc" << "" << 0.0 << 0.0;
        QTest::newRow("exponent is refused") << "1e4" << "-20" << 0.0 << -20.0;
    }
    void dialogReadsScalesAsWholeNumbers()
    {
        QFETCH(QString, minimum);
        QFETCH(QString, maximum);
        QFETCH(double, storedMinimum);
        QFETCH(double, storedMaximum);

        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        const TERefPtr<Rule> original = makeRule(QStringLiteral("Old"), QStringLiteral("name = 'a'"));
        original->SetMinimumScale(7);
        TZRuleBasedDialog dialog(layer.get(), original);
        QCOMPARE(child<QLineEdit>(&dialog, "mLineEditLabel")->text(), QStringLiteral("Old"));
        QCOMPARE(child<QLineEdit>(&dialog, "mLineEditFilter")->text(), QStringLiteral("name = 'a'"));
        QCOMPARE(child<QLineEdit>(&dialog, "mLineEditMinimumScale")->text(), QStringLiteral("7"));

        child<QLineEdit>(&dialog, "mLineEditLabel")->setText(QStringLiteral("New"));
        child<QLineEdit>(&dialog, "mLineEditFilter")->setText(QStringLiteral("name <> 'a'"));
        child<QGroupBox>(&dialog, "mGroupBoxScale")->setChecked(true);
        child<QLineEdit>(&dialog, "mLineEditMinimumScale")->setText(minimum);
        child<QLineEdit>(&dialog, "mLineEditMaximumScale")->setText(maximum);
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));

        const TERefPtr<Rule> rule = dialog.rule();
        QCOMPARE(rule->Label().toQString(), QStringLiteral("New"));
        QCOMPARE(rule->Expression().toQString(), QStringLiteral("name <> 'a'"));
        QVERIFY(rule->IsScaleFilter());
        QCOMPARE(rule->MinimumScale(), storedMinimum);
        QCOMPARE(rule->MaximumScale(), storedMaximum);
        // The dialog worked on a copy.
        QVERIFY(rule != original);
        QCOMPARE(original->Label().toQString(), QStringLiteral("Old"));
        QCOMPARE(original->MinimumScale(), 7.0);
    }

    void dialogStyleKindFollowsTheLayerType_data()
    {
        QTest::addColumn<int>("layerType");
        QTest::addColumn<int>("styleType");
        QTest::newRow("point") << int(TELayer::LT_Point) << int(TEStyle::PointStyle);
        QTest::newRow("multi-point") << int(TELayer::LT_MultiPoint) << int(TEStyle::PointStyle);
        QTest::newRow("line") << int(TELayer::LT_Line) << int(TEStyle::LineStyle);
        QTest::newRow("polygon") << int(TELayer::LT_Polygon) << int(TEStyle::FillStyle);
    }
    void dialogStyleKindFollowsTheLayerType()
    {
        QFETCH(int, layerType);
        QFETCH(int, styleType);
        auto layer = VectorFixtures::makeLayer(TELayer::LayerType(layerType), {QStringLiteral("a")});
        TZRuleBasedDialog dialog(layer.get(), TERefPtr<Rule>());
        QCOMPARE(int(dialog.styleType()), styleType);

        // The symbol chosen in the selector is of that kind and is kept.
        ModalAnswer pick("TZStyleSelectorDialog", [](QWidget* selector) { static_cast<QDialog*>(selector)->accept(); });
        child<QToolButton>(&dialog, "mButtonSymbol")->click();
        QVERIFY(pick.answered());
        QVERIFY(dialog.rule()->Style());
        QCOMPARE(int(dialog.rule()->Style()->GetStyleType()), styleType);
        QVERIFY(!child<QLabel>(&dialog, "mLabelSymbol")->pixmap(Qt::ReturnByValue).isNull());
    }

    // The query builder opened from the dialog tests the filter against the
    // data source: a clause that the source cannot evaluate is reported with
    // the source's own message rather than counted as no match.
    void dialogFilterIsBuiltAndTestedInTheQueryBuilder()
    {
        QTemporaryDir folder;
        auto layer = VectorFixtures::makeGeoPackage(folder.path(), TELayer::LT_Point,
                                                    {QStringLiteral("Alton"), QStringLiteral("Bexley")});
        QVERIFY(layer);
        TZRuleBasedDialog dialog(layer.get(), makeRule(QStringLiteral("r"), QStringLiteral("angle > 5")));
        dialog.show();

        QStringList statuses;
        ModalAnswer build("TZQueryBuilder", [&statuses](QWidget* builder) {
            auto* text = builder->findChild<QPlainTextEdit*>(QStringLiteral("mTextExpression"));
            auto* test = builder->findChild<QPushButton*>(QStringLiteral("mButtonTest"));
            auto* status = builder->findChild<QLabel*>(QStringLiteral("mLabelStatus"));
            statuses << text->toPlainText();
            for (const char* clause : {"name ILIKE 'a%'", "nosuch = 1", "name = 'Alton'"}) {
                text->setPlainText(QString::fromLatin1(clause));
                test->click();
                statuses << status->text();
            }
            static_cast<QDialog*>(builder)->accept();
        });
        child<QPushButton>(&dialog, "mButtonFilter")->click();
        QVERIFY(build.answered());
        QCOMPARE(statuses.size(), 4);
        QCOMPARE(statuses[0], QStringLiteral("angle > 5"));
        const QString notValid = QStringLiteral("The expression is not valid: ");
        for (int i : {1, 2}) {
            QVERIFY2(statuses[i].startsWith(notValid), qPrintable(statuses[i]));
            QVERIFY2(statuses[i].size() > notValid.size() + 5, qPrintable(statuses[i]));
        }
        QCOMPARE(statuses[3], QStringLiteral("The expression selects 1 feature(s)."));
        QCOMPARE(child<QLineEdit>(&dialog, "mLineEditFilter")->text(), QStringLiteral("name = 'Alton'"));
        QCOMPARE(dialog.rule()->Expression().toQString(), QStringLiteral("name = 'Alton'"));
    }

    // --- panel through the dock ---

    void resetAndApplyRoundTripTheRules()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Line, {QStringLiteral("a"), QStringLiteral("b")});
        setRules(layer.get(), {"a", "b", "c"});
        const TERefPtr<TERuleBasedSymbolRender> before = layer->GetSymbolRender().cast<TERuleBasedSymbolRender>();
        before->GetRule(1)->SetScaleFilter(true);
        before->GetRule(1)->SetMaximumScale(2500000);

        TZRenderPanelRuleBased* panel = openPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(panel->name(), QStringLiteral("Rule-based"));
        // Offered after the unique values, its place in the catalog.
        auto* styles = mDock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
        QCOMPARE(styles->currentText(), QStringLiteral("Rule-based"));
        QVERIFY(styles->currentIndex() > styles->findText(QStringLiteral("Unique Values")));
        QVERIFY(!child<QToolButton>(panel, "mButtonRotate")->isVisible());
        QAbstractItemModel* model = table(panel)->model();
        QCOMPARE(labelsOf(model), QStringList({"a", "b", "c"}));
        QCOMPARE(model->index(1, 3).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
        QCOMPARE(model->index(1, 5).data().toDouble(), 2500000.0);
        // The view shows scales as whole numbers, never in exponent form.
        QStyledItemDelegate* scales = qobject_cast<QStyledItemDelegate*>(table(panel)->itemDelegateForColumn(5));
        QVERIFY(scales);
        QString shown = scales->displayText(model->index(1, 5).data(), QLocale::c());
        QCOMPARE(shown.remove(QRegularExpression(QStringLiteral("[^0-9]"))), QStringLiteral("2500000"));

        QVERIFY(panel->onApply());
        const TERefPtr<TERuleBasedSymbolRender> after = layer->GetSymbolRender().cast<TERuleBasedSymbolRender>();
        QVERIFY(after);
        QVERIFY(after != before);
        QCOMPARE(after->RuleCount(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(after->GetRule(i)->Label(), before->GetRule(i)->Label());
            QCOMPARE(after->GetRule(i)->Expression(), before->GetRule(i)->Expression());
            QVERIFY(after->GetRule(i)->ScaleRange() == before->GetRule(i)->ScaleRange());
            QVERIFY(after->GetRule(i)->Style());
            // The layer's render owns its rules; editing the table later
            // does not reach into it.
            QVERIFY(after->GetRule(i) != before->GetRule(i));
        }
        panel->onReset();
        QCOMPARE(labelsOf(model), QStringList({"a", "b", "c"}));

        // A render of another kind opens an empty table, and Apply then
        // sets a rule render without rules.
        layer->SetSymbolRender(MakeRef<TESingleSymbolRender>(layer->GetDefaultStyle()));
        panel->onReset();
        QCOMPARE(model->rowCount(), 0);
        QVERIFY(panel->onApply());
        const TERefPtr<TERuleBasedSymbolRender> empty = layer->GetSymbolRender().cast<TERuleBasedSymbolRender>();
        QVERIFY(empty);
        QCOMPARE(empty->RuleCount(), 0);
    }

    void addingARuleGoesThroughTheDialog()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        setRules(layer.get(), {"first"});
        TZRenderPanelRuleBased* panel = openPanel(layer.get());
        QVERIFY(panel);

        // Cancelled: nothing is added.
        ModalAnswer cancel("TZRuleBasedDialog", ModalAnswer::click(QDialogButtonBox::Cancel));
        child<QToolButton>(panel, "toolButton_2")->click();
        QVERIFY(cancel.answered());
        QCOMPARE(table(panel)->model()->rowCount(), 1);

        std::unique_ptr<ModalAnswer> pick;
        ModalAnswer add("TZRuleBasedDialog", ModalAnswer::click(QDialogButtonBox::Ok, [&pick](QWidget* dialog) {
            pick = std::make_unique<ModalAnswer>(
                "TZStyleSelectorDialog", [](QWidget* selector) { static_cast<QDialog*>(selector)->accept(); });
            dialog->findChild<QToolButton*>(QStringLiteral("mButtonSymbol"))->click();
            dialog->findChild<QLineEdit*>(QStringLiteral("mLineEditLabel"))->setText(QStringLiteral("Big"));
            dialog->findChild<QLineEdit*>(QStringLiteral("mLineEditFilter"))->setText(QStringLiteral("angle > 5"));
            dialog->findChild<QGroupBox*>(QStringLiteral("mGroupBoxScale"))->setChecked(true);
            dialog->findChild<QLineEdit*>(QStringLiteral("mLineEditMinimumScale"))->setText(QStringLiteral("1000"));
            dialog->findChild<QLineEdit*>(QStringLiteral("mLineEditMaximumScale"))->setText(QStringLiteral("2500.5"));
        }));
        child<QToolButton>(panel, "toolButton_2")->click();
        QVERIFY(add.answered());
        QVERIFY(pick && pick->answered());

        QAbstractItemModel* model = table(panel)->model();
        QCOMPARE(labelsOf(model), QStringList({"first", "Big"}));
        QCOMPARE(model->index(1, 2).data().toString(), QStringLiteral("angle > 5"));
        QCOMPARE(model->index(1, 4).data().toDouble(), 1000.0);
        QCOMPARE(model->index(1, 5).data().toDouble(), 0.0);
        QVERIFY(panel->onApply());
        const auto render = layer->GetSymbolRender().cast<TERuleBasedSymbolRender>();
        QCOMPARE(render->RuleCount(), 2);
        QCOMPARE(render->GetRule(1)->Label().toQString(), QStringLiteral("Big"));
        QCOMPARE(render->GetRule(1)->Style()->GetStyleType(), TEStyle::PointStyle);
    }

    void deletionFollowsTheSelectionOrder_data()
    {
        QTest::addColumn<QList<int>>("selected");
        QTest::addColumn<QStringList>("remaining");
        QTest::newRow("1 then 3") << QList<int>{1, 3} << QStringList{"r0", "r2", "r4"};
        // Each listed row loses the count already removed: 3, then 1 - 1.
        QTest::newRow("3 then 1") << QList<int>{3, 1} << QStringList{"r1", "r2", "r4"};
        QTest::newRow("last row") << QList<int>{4} << QStringList{"r0", "r1", "r2", "r3"};
    }
    void deletionFollowsTheSelectionOrder()
    {
        QFETCH(QList<int>, selected);
        QFETCH(QStringList, remaining);
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Polygon, {QStringLiteral("a")});
        setRules(layer.get(), {"r0", "r1", "r2", "r3", "r4"});
        TZRenderPanelRuleBased* panel = openPanel(layer.get());
        QVERIFY(panel);
        QAbstractItemModelTester tester(table(panel)->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        selectRows(panel, selected);
        child<QToolButton>(panel, "toolButton_5")->click();
        QCOMPARE(labelsOf(table(panel)->model()), remaining);
        QVERIFY(!table(panel)->selectionModel()->hasSelection());
    }

    void deletingWithoutSelectionTellsTheUser()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Polygon, {QStringLiteral("a")});
        setRules(layer.get(), {"r0"});
        TZRenderPanelRuleBased* panel = openPanel(layer.get());
        QVERIFY(panel);
        table(panel)->selectionModel()->clearSelection();
        ModalAnswer answer("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        child<QToolButton>(panel, "toolButton_5")->click();
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogTitle(), QStringLiteral("Information"));
        QCOMPARE(answer.dialogText(), QStringLiteral("No items selected!"));
        QCOMPARE(labelsOf(table(panel)->model()), QStringList({"r0"}));
    }

    void movesSwapWithTheNeighbour_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("order");
        QTest::addColumn<int>("selectedAfter");
        QTest::newRow("down") << 0 << "toolButton" << QStringList{"b", "a", "c"} << 1;
        QTest::newRow("up") << 2 << "toolButton_6" << QStringList{"a", "c", "b"} << 1;
        QTest::newRow("last row down stays") << 2 << "toolButton" << QStringList{"a", "b", "c"} << 2;
        QTest::newRow("first row up stays") << 0 << "toolButton_6" << QStringList{"a", "b", "c"} << 0;
    }
    void movesSwapWithTheNeighbour()
    {
        QFETCH(int, row);
        QFETCH(QString, button);
        QFETCH(QStringList, order);
        QFETCH(int, selectedAfter);
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        setRules(layer.get(), {"a", "b", "c"});
        TZRenderPanelRuleBased* panel = openPanel(layer.get());
        QVERIFY(panel);
        selectRows(panel, {row});
        panel->findChild<QToolButton*>(button)->click();
        QCOMPARE(labelsOf(table(panel)->model()), order);
        const QModelIndexList selected = table(panel)->selectionModel()->selectedRows();
        QCOMPARE(selected.size(), 1);
        QCOMPARE(selected.first().row(), selectedAfter);
        // The new order is what Apply writes.
        QVERIFY(panel->onApply());
        const auto render = layer->GetSymbolRender().cast<TERuleBasedSymbolRender>();
        QCOMPARE(render->GetRule(0)->Label().toQString(), order.first());
    }

    void doubleClickEditsTheSymbolOrTheRule()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        setRules(layer.get(), {"a", "b"});
        TZRenderPanelRuleBased* panel = openPanel(layer.get());
        QVERIFY(panel);
        QAbstractItemModel* model = table(panel)->model();
        auto* ruleModel = qobject_cast<TZRuleBasedModel*>(model);
        QVERIFY(ruleModel);
        const TERefPtr<TEStyle> before = ruleModel->rule(1)->Style();

        QSignalSpy changed(model, &QAbstractItemModel::dataChanged);
        ModalAnswer pick("TZStyleSelectorDialog", [](QWidget* selector) { static_cast<QDialog*>(selector)->accept(); });
        panel->on_tableView_doubleClicked(model->index(1, 0));
        QVERIFY(pick.answered());
        QVERIFY(ruleModel->rule(1)->Style() != before);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed[0][0].toModelIndex(), model->index(1, 0));

        ModalAnswer cancel("TZRuleBasedDialog", ModalAnswer::click(QDialogButtonBox::Cancel, [](QWidget* dialog) {
            dialog->findChild<QLineEdit*>(QStringLiteral("mLineEditLabel"))->setText(QStringLiteral("lost"));
        }));
        panel->on_tableView_doubleClicked(model->index(0, 2));
        QVERIFY(cancel.answered());
        QCOMPARE(labelsOf(model), QStringList({"a", "b"}));

        ModalAnswer edit("TZRuleBasedDialog", ModalAnswer::click(QDialogButtonBox::Ok, [](QWidget* dialog) {
            QCOMPARE(dialog->findChild<QLineEdit*>(QStringLiteral("mLineEditLabel"))->text(), QStringLiteral("a"));
            dialog->findChild<QLineEdit*>(QStringLiteral("mLineEditLabel"))->setText(QStringLiteral("renamed"));
        }));
        panel->on_tableView_doubleClicked(model->index(0, 1));
        QVERIFY(edit.answered());
        QCOMPARE(labelsOf(model), QStringList({"renamed", "b"}));
        QCOMPARE(model->index(0, 2).data().toString(), QStringLiteral("name = 'a'"));
    }

    void rotationIsWrittenIntoTheRender()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        setRules(layer.get(), {"a"});
        TZRenderPanelRuleBased* panel = openPanel(layer.get());
        QVERIFY(panel);
        QVERIFY(child<QToolButton>(panel, "mButtonRotate")->isVisible());

        ModalAnswer byField("TZDialogRotateByField", [](QWidget* dialog) {
            dialog->findChild<QComboBox*>(QStringLiteral("mComboBoxFields"))->setCurrentText(QStringLiteral("angle"));
            dialog->findChild<QRadioButton*>(QStringLiteral("mRadioButtonArithmetic"))->click();
            static_cast<QDialog*>(dialog)->accept();
        });
        child<QToolButton>(panel, "mButtonRotate")->click();
        QVERIFY(byField.answered());
        QVERIFY(panel->onApply());
        auto render = layer->GetSymbolRender().cast<TERuleBasedSymbolRender>();
        QVERIFY(render->IsRotateByField());
        QCOMPARE(render->GetRotateField().toQString(), QStringLiteral("angle"));
        QVERIFY(!render->IsRotateByClockWise());
    }
};

TZ_REGISTER_TEST(TestRuleBased)
#include "TestRuleBased.moc"
