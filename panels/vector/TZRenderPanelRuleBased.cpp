#include "TZRenderPanelRuleBased.h"

#include "TZControlRender.h"
#include "TZLayerKinds.h"
#include "TZRotationSettings.h"
#include "TZRuleBasedDialog.h"
#include "TZRuleBasedModel.h"
#include "TZScaleItemDelegate.h"

#include "ui_TZRenderPanelRuleBased.h"

#include "data/TEFeatureLayer.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "widgets/TZStyleSelectorDialog.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMessageBox>

#include <algorithm>

using namespace TZObjects;

namespace {

// Column widths of the rules table, widened where the header text needs it.
const int ColumnWidths[] = {45, 60, 80, 40, 40, 40};

// Runs a slot's body so that no exception leaves it; the user is told what
// went wrong and the table stays as it was before the failing step.
template <class Body>
bool runGuarded(QWidget* parent, Body&& body)
{
    QString what;
    try {
        body();
        return true;
    } catch (const std::exception& e) {
        what = QString::fromLocal8Bit(e.what());
    } catch (...) {
        what = QObject::tr("Unknown error");
    }
    QMessageBox::warning(parent, QObject::tr("Error!"), what, QMessageBox::Ok);
    return false;
}

} // namespace

TZRenderPanelRuleBased::TZRenderPanelRuleBased(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelRuleBased>())
    , mRotation(std::make_unique<TZRotationSettings>())
{
    mUi->setupUi(this);
    connect(mUi->mButtonRotate, SIGNAL(clicked(bool)), this, SLOT(onSetupRotation()));

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelRuleBased::~TZRenderPanelRuleBased() = default;

QString TZRenderPanelRuleBased::name() const
{
    return QStringLiteral("Rule-based");
}

QString TZRenderPanelRuleBased::title() const
{
    return tr("Rule-based");
}

void TZRenderPanelRuleBased::createModel()
{
    mModel = new TZRuleBasedModel(this);
    mModel->setColumnCount(6);
    QTableView* table = mUi->tableView;
    table->setModel(mModel);
    table->setAlternatingRowColors(true);
    table->setIconSize(mModel->defaultIconSize());
    QHeaderView* header = table->horizontalHeader();
    header->setFixedHeight(25);
    header->setStretchLastSection(true);
    for (int column = 0; column < 6; ++column)
        table->setColumnWidth(column, std::max(ColumnWidths[column], header->sectionSizeHint(column)));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    auto* scales = new TZScaleItemDelegate(table);
    table->setItemDelegateForColumn(TZRuleBasedModel::MinimumScaleColumn, scales);
    table->setItemDelegateForColumn(TZRuleBasedModel::MaximumScaleColumn, scales);
}

void TZRenderPanelRuleBased::onReset()
{
    if (!isVisible())
        return;
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer)
        return;
    mUi->mButtonRotate->setVisible(TZLayerKinds::isPoint(layer->GetLayerType()));
    if (!mModel)
        createModel();

    std::vector<TZRuleBasedModel::RulePtr> rules;
    runGuarded(this, [&] {
        if (const auto render = layer->GetRender().cast<TERuleBasedSymbolRender>()) {
            for (int i = 0; i < render->RuleCount(); ++i) {
                if (const TERefPtr<TERuleBasedSymbolRender::Rule> rule = render->GetRule(i))
                    rules.push_back(rule->Clone());
            }
        }
    });
    mModel->setRules(std::move(rules));
}

void TZRenderPanelRuleBased::on_toolButton_2_clicked()
{
    runGuarded(this, [&] {
        TELayer* layer = TZControlRender::instance(nullptr)->layer();
        if (!layer || !mModel)
            return;
        TZRuleBasedDialog dialog(layer, TERefPtr<TERuleBasedSymbolRender::Rule>(), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        mModel->appendRule(dialog.rule());
    });
}

void TZRenderPanelRuleBased::on_toolButton_5_clicked()
{
    runGuarded(this, [&] {
        if (!mModel)
            return;
        const QModelIndexList selected = mUi->tableView->selectionModel()->selectedRows();
        if (selected.isEmpty()) {
            QMessageBox::information(TZControlRender::instance(nullptr), tr("Information"), tr("No items selected!"),
                                     QMessageBox::Ok);
            return;
        }
        // Rows go in the order the selection lists them, each at its listed row
        // less the rows already taken out.
        int removed = 0;
        for (const QModelIndex& index : selected) {
            if (mModel->removeRule(index.row() - removed))
                ++removed;
        }
        mUi->tableView->selectionModel()->clearSelection();
    });
}

int TZRenderPanelRuleBased::firstSelectedRow() const
{
    if (!mModel)
        return -1;
    const QModelIndexList selected = mUi->tableView->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void TZRenderPanelRuleBased::selectRow(int row)
{
    QItemSelectionModel* selection = mUi->tableView->selectionModel();
    selection->clearSelection();
    selection->select(mModel->index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection->setCurrentIndex(mModel->index(row, 0), QItemSelectionModel::NoUpdate);
}

void TZRenderPanelRuleBased::on_toolButton_clicked()
{
    runGuarded(this, [&] {
        const int row = firstSelectedRow();
        if (row < 0 || row + 1 >= mModel->rowCount())
            return;
        mModel->swapRows(row, row + 1);
        selectRow(row + 1);
    });
}

void TZRenderPanelRuleBased::on_toolButton_6_clicked()
{
    runGuarded(this, [&] {
        const int row = firstSelectedRow();
        if (row <= 0)
            return;
        mModel->swapRows(row, row - 1);
        selectRow(row - 1);
    });
}

void TZRenderPanelRuleBased::on_tableView_doubleClicked(const QModelIndex& index)
{
    runGuarded(this, [&] {
        if (!mModel)
            return;
        const TZRuleBasedModel::RulePtr rule = mModel->rule(index.row());
        if (!rule)
            return;
        TELayer* layer = TZControlRender::instance(nullptr)->layer();
        if (index.column() == TZRuleBasedModel::SymbolColumn) {
            TEStyle* chosen = rule->Style() ? selectStyle(rule->Style().get())
                                            : selectStyle(TZLayerKinds::styleType(
                                                  layer ? layer->GetLayerType() : TELayer::LT_Polygon));
            if (chosen)
                mModel->setRuleStyle(index.row(), TERefPtr<TEStyle>(chosen));
            return;
        }
        TZRuleBasedDialog dialog(layer, rule, this);
        if (dialog.exec() == QDialog::Accepted)
            mModel->replaceRule(index.row(), dialog.rule());
    });
}

void TZRenderPanelRuleBased::onSetupRotation()
{
    runGuarded(this, [&] {
        if (TEFeatureLayer* layer = currentFeatureLayer())
            mRotation->editWithDialog(layer, this, TZRotationSettings::ReadBy::Mode);
    });
}

bool TZRenderPanelRuleBased::onApply()
{
    TELayer* layer = TZControlRender::instance(nullptr)->layer();
    if (!mModel || !layer)
        return false;
    const TERefPtr<TELayer> held(layer);

    cancelActiveDrawing();

    TERefPtr<TERuleBasedSymbolRender> render;
    const bool built = runGuarded(this, [&] {
        render = MakeRef<TERuleBasedSymbolRender>();
        // The render gets copies, so that later edits in the table change
        // the layer only on the next Apply.
        for (const TZRuleBasedModel::RulePtr& rule : mModel->rules())
            render->AddRule(rule ? rule->Clone() : rule);
        render->SetIsRotateByClockWise(mRotation->clockwise);
        mRotation->writeFieldAndRange(*render);
    });
    if (!built)
        return false;
    if (auto* features = dynamic_cast<TEFeatureLayer*>(layer))
        features->SetSymbolRender(render);
    return true;
}
