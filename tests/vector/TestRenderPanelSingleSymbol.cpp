#include "ModalAnswer.h"
#include "TestRegistry.h"
#include "VectorFixtures.h"

#include "TZControlRender.h"
#include "TZRenderPanelSingleSymbol.h"

#include "renders/TECategorizedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTableView>
#include <QToolButton>

using namespace TZObjects;

class TestRenderPanelSingleSymbol : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    TZRenderPanelSingleSymbol* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelSingleSymbol*>();
        if (!panel)
            return nullptr;
        QComboBox* styles = mDock->findChild<QComboBox*>("mComboBoxRenderStyle");
        if (styles->currentText() == panel->title())
            panel->onReset();
        else
            styles->setCurrentText(panel->title());
        return panel;
    }

    template <class T>
    static T* child(QWidget* panel, const char* name)
    {
        return panel->findChild<T*>(QString::fromLatin1(name));
    }

    static QAbstractItemModel* priorityTable(QWidget* panel) { return child<QTableView>(panel, "tableView")->model(); }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    void applyBuildsASingleSymbolRender()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        layer->SetSymbolRender({});
        TZRenderPanelSingleSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(panel->name(), QStringLiteral("SingleSymbol"));
        QVERIFY(!panel->getCurrentLayerStyle());
        child<QLineEdit>(panel, "mlineEditLabel")->setText(QStringLiteral("Wells"));
        QVERIFY(panel->onApply());

        auto render = layer->GetSymbolRender().cast<TESingleSymbolRender>();
        QVERIFY(render);
        QVERIFY(render->GetStyle());
        QCOMPARE(render->GetStyle()->GetStyleType(), TEStyle::PointStyle);
        QCOMPARE(render->GetStyleLabel().toQString(), QStringLiteral("Wells"));
        QVERIFY(!render->PriorityRender());
        QVERIFY(!render->IsRotateByField());
        QVERIFY(render->IsRotateByClockWise());
        QVERIFY(panel->getCurrentLayerStyle() == render->GetStyle().get());
    }

    void resetReadsLabelAndPriorityBack()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Polygon, {QStringLiteral("a")});
        auto style = layer->GetDefaultStyle();
        style->SetName(TEString(L"Parcel"));
        style->SetPriority(3);
        auto render = MakeRef<TESingleSymbolRender>(style);
        render->SetStyleLabel(TEString(L"Parcels"));
        render->EnablePriorityRender(true);
        layer->SetSymbolRender(render);

        TZRenderPanelSingleSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(child<QLineEdit>(panel, "mlineEditLabel")->text(), QStringLiteral("Parcels"));
        QVERIFY(child<QCheckBox>(panel, "checkBox")->isChecked());
        QVERIFY(!child<QToolButton>(panel, "mButtonRotate")->isVisible());
        QAbstractItemModel* table = priorityTable(panel);
        QCOMPARE(table->rowCount(), 1);
        QCOMPARE(table->columnCount(), 3);
        QCOMPARE(table->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Symbol"));
        QCOMPARE(table->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Symbol name"));
        QCOMPARE(table->headerData(2, Qt::Horizontal).toString(), QStringLiteral("-1-"));
        QCOMPARE(table->index(0, 1).data().toString(), QStringLiteral("Parcel"));
        QCOMPARE(table->index(0, 2).data().toString(), QStringLiteral("3"));

        child<QCheckBox>(panel, "checkBox")->click();
        QCOMPARE(table->rowCount(), 0);
    }

    void priorityEditsReachTheSymbol()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        auto symbol = MakeRef<TEStyleMultiLayer>(TEStyle::PointStyle);
        symbol->AddLayer(MakeRef<TEStyleSimplePoint>());
        symbol->AddLayer(MakeRef<TEStyleSimplePoint>());
        auto render = MakeRef<TESingleSymbolRender>(symbol);
        render->EnablePriorityRender(true);
        layer->SetSymbolRender(render);

        TZRenderPanelSingleSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        QAbstractItemModel* table = priorityTable(panel);
        QCOMPARE(table->columnCount(), 4);
        QCOMPARE(table->headerData(3, Qt::Horizontal).toString(), QStringLiteral("-2-"));
        QVERIFY(!(table->index(0, 1).flags() & Qt::ItemIsEditable));

        QVERIFY(table->setData(table->index(0, 3), QStringLiteral("7")));
        QCOMPARE(symbol->GetLayer(1)->GetPriority(), 7);
        QCOMPARE(symbol->GetLayer(0)->GetPriority(), 0);
        QVERIFY(table->setData(table->index(0, 1), QStringLiteral("9")));
        QCOMPARE(symbol->GetPriority(), 0);
        QCOMPARE(symbol->GetLayer(0)->GetPriority(), 0);
    }

    void otherRenderOpensWithTheDefaultSymbol()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Line, {QStringLiteral("a")});
        layer->SetSymbolRender(MakeRef<TECategorizedSymbolRender>(TEString(L"name")));
        TZRenderPanelSingleSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        QVERIFY(!child<QToolButton>(panel, "mButtonRotate")->isVisible());
        QVERIFY(panel->onApply());
        auto render = layer->GetSymbolRender().cast<TESingleSymbolRender>();
        QVERIFY(render && render->GetStyle());
        QCOMPARE(render->GetStyle()->GetStyleType(), TEStyle::LineStyle);
    }

    void randomRotationIsApplied()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        layer->SetSymbolRender(MakeRef<TESingleSymbolRender>(layer->GetDefaultStyle()));
        TZRenderPanelSingleSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        QVERIFY(child<QToolButton>(panel, "mButtonRotate")->isVisible());

        ModalAnswer answer("TZDialogRotateByField", [](QWidget* dialog) {
            dialog->findChild<QComboBox*>("mComboBoxFields")->setCurrentText("<random>");
            dialog->findChild<QDoubleSpinBox*>("mDoubleSpinBoxMaximum")->setValue(90.0);
            dialog->findChild<QRadioButton*>("mRadioButtonArithmetic")->click();
            static_cast<QDialog*>(dialog)->accept();
        });
        child<QToolButton>(panel, "mButtonRotate")->click();
        QVERIFY(answer.answered());
        QVERIFY(panel->onApply());

        auto render = layer->GetSymbolRender().cast<TESingleSymbolRender>();
        QVERIFY(render->IsRotateByField());
        QCOMPARE(render->GetRotateField().toQString(), QStringLiteral("<random>"));
        QVERIFY(!render->IsRotateByClockWise());
        double minimum = -1.0;
        double maximum = -1.0;
        render->GetRotateRandomRange(minimum, maximum);
        QCOMPARE(minimum, 0.0);
        QCOMPARE(maximum, 90.0);
    }

    void chosenSymbolIsHeldAndCancelKeepsIt()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("a")});
        TZRenderPanelSingleSymbol* panel = openPanel(layer.get());
        QVERIFY(panel);
        QVERIFY(panel->onApply());
        const TERefPtr<TEStyle> before = layer->GetSymbolRender().cast<TESingleSymbolRender>()->GetStyle();

        ModalAnswer accept("TZStyleSelectorDialog", [](QWidget* dialog) { static_cast<QDialog*>(dialog)->accept(); });
        child<QToolButton>(panel, "mToolButtonSymbolDetail")->click();
        QVERIFY(accept.answered());
        QVERIFY(panel->onApply());
        const TERefPtr<TEStyle> chosen = layer->GetSymbolRender().cast<TESingleSymbolRender>()->GetStyle();
        QVERIFY(chosen);
        QVERIFY(chosen != before);

        ModalAnswer cancel("TZStyleSelectorDialog", [](QWidget* dialog) { static_cast<QDialog*>(dialog)->reject(); });
        child<QToolButton>(panel, "mToolButtonSymbolDetail")->click();
        QVERIFY(cancel.answered());
        QVERIFY(panel->onApply());
        QVERIFY(layer->GetSymbolRender().cast<TESingleSymbolRender>()->GetStyle() == chosen);
    }
};

TZ_REGISTER_TEST(TestRenderPanelSingleSymbol)
#include "TestRenderPanelSingleSymbol.moc"
