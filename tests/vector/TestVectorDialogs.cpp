#include "ModalAnswer.h"
#include "TestRegistry.h"
#include "VectorFixtures.h"

#include "TZDialogAddValueToUniqueValue.h"
#include "TZDialogRotateByField.h"
#include "TZSetupDialogDefautOutLineStyle.h"

#include "renders/TESingleSymbolRender.h"
#include "widgets/TZColorBtn.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>

using namespace TZObjects;

namespace {

QStringList listRows(const TZDialogAddValueToUniqueValue& dialog)
{
    QStringList rows;
    const QAbstractItemModel* model = dialog.findChild<QListView*>("mListViewValues")->model();
    for (int r = 0; r < model->rowCount(); ++r)
        rows << model->index(r, 0).data().toString();
    return rows;
}

void typeNewValue(TZDialogAddValueToUniqueValue& dialog, const QString& text)
{
    dialog.findChild<QLineEdit*>("mLineEditNewValue")->setText(text);
    dialog.findChild<QPushButton*>("mButtonAddNewValue")->click();
}

QStringList comboItems(const QComboBox* combo)
{
    QStringList items;
    for (int i = 0; i < combo->count(); ++i)
        items << combo->itemText(i);
    return items;
}

TERefPtr<TEMemoryFeatureLayer> pointLayerRotating(bool byField, const QString& field, bool clockwise,
                                                  double minimum = 0.0, double maximum = 360.0)
{
    auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
    auto render = MakeRef<TESingleSymbolRender>(layer->GetDefaultStyle());
    render->SetIsRotateByField(byField);
    render->SetRotateField(TEString(field));
    render->SetIsRotateByClockWise(clockwise);
    render->SetRotateRandomRange(minimum, maximum);
    layer->SetSymbolRender(render);
    return layer;
}

} // namespace

class TestVectorDialogs : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void newValuesGoBeforeTheFirstGreaterNumber_data()
    {
        QTest::addColumn<QString>("renderType");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("between") << "UniqueValues" << QStringList{"1", "10"} << "5" << QStringList{"1", "5", "10"};
        QTest::newRow("text counts as zero")
            << "UniqueValues" << QStringList{"1", "2"} << "abc" << QStringList{"abc", "1", "2"};
        QTest::newRow("first comma part only")
            << "GradingSymbol" << QStringList{"3,1", "4,0"} << "3,7" << QStringList{"3,1", "3,7", "4,0"};
        QTest::newRow("equal goes after")
            << "UniqueValuesByManyFields" << QStringList{"2", "2", "9"} << "2" << QStringList{"2", "2", "2", "9"};
        QTest::newRow("greatest appended") << "UniqueValues" << QStringList{"1", "10"} << "99"
                                           << QStringList{"1", "10", "99"};
        QTest::newRow("empty list") << "UniqueValues" << QStringList{} << "7" << QStringList{"7"};
        QTest::newRow("caller order kept") << "UniqueValues" << QStringList{"9", "1"} << "5"
                                           << QStringList{"5", "9", "1"};
        QTest::newRow("other render type") << "Rule-based" << QStringList{"1"} << "0" << QStringList{"1"};
        QTest::newRow("nothing typed") << "UniqueValues" << QStringList{"1"} << "" << QStringList{"1"};
    }
    void newValuesGoBeforeTheFirstGreaterNumber()
    {
        QFETCH(QString, renderType);
        QFETCH(QStringList, rows);
        QFETCH(QString, typed);
        QFETCH(QStringList, expected);
        TZDialogAddValueToUniqueValue dialog(rows, renderType);
        typeNewValue(dialog, typed);
        QCOMPARE(listRows(dialog), expected);
        QVERIFY(dialog.findChild<QLineEdit*>("mLineEditNewValue")->text().isEmpty());
    }

    void matchToSymbolsOffersNoNewValue()
    {
        TZDialogAddValueToUniqueValue match({"a"}, "MatchToSymbols");
        QVERIFY(match.findChild<QGroupBox*>("mGroupBoxNewValue")->isHidden());
        TZDialogAddValueToUniqueValue unique({"a"}, "UniqueValues");
        QVERIFY(!unique.findChild<QGroupBox*>("mGroupBoxNewValue")->isHidden());
    }

    void okReturnsTheSelectedTexts()
    {
        TZDialogAddValueToUniqueValue dialog({"a", "b", "c", "d"}, "UniqueValues");
        auto* list = dialog.findChild<QListView*>("mListViewValues");
        list->selectionModel()->select(list->model()->index(3, 0), QItemSelectionModel::Select);
        list->selectionModel()->select(list->model()->index(1, 0), QItemSelectionModel::Select);
        dialog.findChild<QPushButton*>("mButtonOk")->click();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.selectedValues(), (QStringList{"d", "b"}));

        TZDialogAddValueToUniqueValue none({"a"}, "UniqueValues");
        none.findChild<QPushButton*>("mButtonOk")->click();
        QVERIFY(none.selectedValues().isEmpty());
    }

    void outlineDialogGivesWidthUnitAndColour_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::newRow("decimal point") << QLocale::c();
        QTest::newRow("decimal comma") << QLocale(QLocale::German, QLocale::Germany);
        QTest::newRow("comma, French") << QLocale(QLocale::French, QLocale::France);
    }
    void outlineDialogGivesWidthUnitAndColour()
    {
        QFETCH(QLocale, locale);
        const QLocale previous;
        QLocale::setDefault(locale);
        const auto restore = qScopeGuard([previous] { QLocale::setDefault(previous); });
        TZSetupDialogDefautOutLineStyle dialog;
        QCOMPARE(dialog.findChild<QDoubleSpinBox*>()->text(), locale.toString(2.0, 'f', 2));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Setup"));
        double width = -1.0;
        int unit = -1;
        TEColor color(1, 2, 3);
        dialog.getOutLineStyle(width, unit, color);
        QCOMPARE(width, 2.0);
        QCOMPARE(unit, 0);
        QCOMPARE(color.GetColor(), 0xFF000000u);

        dialog.findChild<QDoubleSpinBox*>()->setValue(0.75);
        auto* units = dialog.findChild<QComboBox*>();
        QCOMPARE(comboItems(units), (QStringList{"Point", "MM", "CM", "Inch"}));
        units->setCurrentIndex(3);
        dialog.findChild<TZColorBtn*>()->setColor(0xFF123456);
        dialog.getOutLineStyle(width, unit, color);
        QCOMPARE(width, 0.75);
        QCOMPARE(unit, 3);
        QCOMPARE(color.GetColor(), 0xFF123456u);
    }

    void rotationRefusesLayersThatAreNotPoints_data()
    {
        QTest::addColumn<int>("layerType");
        QTest::newRow("line") << int(TELayer::LT_Line);
        QTest::newRow("polygon") << int(TELayer::LT_Polygon);
    }
    void rotationRefusesLayersThatAreNotPoints()
    {
        QFETCH(int, layerType);
        auto layer = VectorFixtures::makeLayer(TELayer::LayerType(layerType), {QStringLiteral("a")});
        ModalAnswer answer("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        TZDialogRotateByField dialog(layer.get());
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogTitle(), QStringLiteral("Error!"));
        QCOMPARE(answer.dialogText(), QStringLiteral("Bad layer type"));
        QCOMPARE(dialog.findChild<QComboBox*>("mComboBoxFields")->count(), 0);
        QCOMPARE(dialog.mode(), int(TZDialogRotateByField::NoRotation));
    }

    void rotationWithoutRenderOffersNothing()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        layer->SetSymbolRender({});
        TZDialogRotateByField dialog(layer.get());
        QCOMPARE(dialog.findChild<QComboBox*>("mComboBoxFields")->count(), 0);
        QCOMPARE(dialog.mode(), int(TZDialogRotateByField::NoRotation));
        QVERIFY(dialog.isClockwise());
    }

    void rotationStartsFromTheRender_data()
    {
        QTest::addColumn<bool>("byField");
        QTest::addColumn<QString>("field");
        QTest::addColumn<bool>("clockwise");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("rangeEnabled");
        QTest::newRow("off") << false << "angle" << true << "<none>" << 0 << false;
        QTest::newRow("by field") << true << "angle" << false << "angle" << 2 << false;
        QTest::newRow("random") << true << "<random>" << true << "<random>" << 1 << true;
        QTest::newRow("missing field") << true << "gone" << true << "<none>" << 2 << false;
    }
    void rotationStartsFromTheRender()
    {
        QFETCH(bool, byField);
        QFETCH(QString, field);
        QFETCH(bool, clockwise);
        QFETCH(QString, shown);
        QFETCH(int, mode);
        QFETCH(bool, rangeEnabled);
        auto layer = pointLayerRotating(byField, field, clockwise, 15.0, 200.0);
        TZDialogRotateByField dialog(layer.get());
        auto* combo = dialog.findChild<QComboBox*>("mComboBoxFields");
        // Text fields cannot hold an angle and are not offered.
        QCOMPARE(comboItems(combo), (QStringList{"<none>", "<random>", "angle"}));
        QCOMPARE(combo->itemData(0).toInt(), -1);
        QCOMPARE(combo->itemData(1).toInt(), -2);
        QCOMPARE(combo->currentText(), shown);
        QCOMPARE(dialog.mode(), mode);
        QCOMPARE(dialog.field(), field);
        QCOMPARE(dialog.isClockwise(), clockwise);
        QCOMPARE(dialog.findChild<QRadioButton*>("mRadioButtonArithmetic")->isChecked(), !clockwise);
        QCOMPARE(dialog.findChild<QDoubleSpinBox*>("mDoubleSpinBoxMinimum")->isEnabled(), rangeEnabled);
        QCOMPARE(dialog.findChild<QDoubleSpinBox*>("mDoubleSpinBoxMaximum")->isEnabled(), rangeEnabled);
        if (mode == 1) {
            QCOMPARE(dialog.randomMinimum(), 15.0);
            QCOMPARE(dialog.randomMaximum(), 200.0);
            QCOMPARE(dialog.findChild<QDoubleSpinBox*>("mDoubleSpinBoxMaximum")->value(), 200.0);
        }
    }

    void rotationModesFollowTheChoice()
    {
        auto layer = pointLayerRotating(false, QString(), true);
        TZDialogRotateByField dialog(layer.get());
        auto* combo = dialog.findChild<QComboBox*>("mComboBoxFields");
        auto* minimum = dialog.findChild<QDoubleSpinBox*>("mDoubleSpinBoxMinimum");
        auto* maximum = dialog.findChild<QDoubleSpinBox*>("mDoubleSpinBoxMaximum");

        combo->setCurrentText("<random>");
        QCOMPARE(dialog.mode(), int(TZDialogRotateByField::RandomRotation));
        QVERIFY(minimum->isEnabled());
        QCOMPARE(dialog.randomMaximum(), 360.0);
        maximum->setValue(90.0);
        minimum->setValue(120.0);
        QCOMPARE(dialog.randomMinimum(), 120.0);
        QCOMPARE(dialog.randomMaximum(), 90.0);

        combo->setCurrentText("angle");
        QCOMPARE(dialog.mode(), int(TZDialogRotateByField::FieldRotation));
        QCOMPARE(dialog.field(), QStringLiteral("angle"));
        QVERIFY(!minimum->isEnabled());

        combo->setCurrentText("<none>");
        QCOMPARE(dialog.mode(), int(TZDialogRotateByField::NoRotation));

        dialog.findChild<QRadioButton*>("mRadioButtonArithmetic")->click();
        QVERIFY(!dialog.isClockwise());
        QVERIFY(!dialog.findChild<QRadioButton*>("mRadioButtonGeo")->isChecked());
    }
};

TZ_REGISTER_TEST(TestVectorDialogs)
#include "TestVectorDialogs.moc"
