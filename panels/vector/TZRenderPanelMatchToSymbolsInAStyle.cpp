#include "TZRenderPanelMatchToSymbolsInAStyle.h"

#include "TZCategoryPanelSupport.h"
#include "TZControlRender.h"
#include "TZDialogAddValueToUniqueValue.h"
#include "TZLayerKinds.h"
#include "TZModelMatchToSymbols.h"

#include "ui_TZRenderPanelMatchToSymbolsInAStyle.h"

#include "data/TEFeatureTable.h"
#include "renders/TEMatchToSymbolsRender.h"
#include "symbology/TEStyleDB.h"
#include "symbology/TEStyleSystem.h"
#include "widgets/TZStyleSelectorDialog.h"

#include <QHeaderView>
#include <QMessageBox>

#include <algorithm>

using namespace TZObjects;

namespace {

bool isSkippedType(int type)
{
    return type == TEField::FT_Binary || type == TEField::FT_Geometry;
}

const QString SystemPrefix = QStringLiteral("VELDDB_");

} // namespace

TZRenderPanelMatchToSymbolsInAStyle::TZRenderPanelMatchToSymbolsInAStyle(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelMatchToSymbolsInAStyle>())
{
    mUi->setupUi(this);
    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelMatchToSymbolsInAStyle::~TZRenderPanelMatchToSymbolsInAStyle() = default;

QString TZRenderPanelMatchToSymbolsInAStyle::name() const
{
    return QStringLiteral("MatchToSymbols");
}

QString TZRenderPanelMatchToSymbolsInAStyle::title() const
{
    return tr("Match to symbols in a style");
}

void TZRenderPanelMatchToSymbolsInAStyle::createModel()
{
    mModel = new TZModelMatchToSymbols(this);
    mModel->setHeaderTexts({tr("Symbols"), tr("Value"), tr("Label"), tr("Scale filter"), tr("MinScale"),
                            tr("MaxScale")});
    QTableView* table = mUi->mTableViewMatch;
    table->setModel(mModel);
    table->setAlternatingRowColors(true);
    table->horizontalHeader()->setFixedHeight(25);
    // The symbol and scale-filter columns are never narrower than their
    // headers, so that "Symbols" and "Scale filter" are not clipped.
    const int widths[] = {45, 100, 100, 40};
    for (int column = 0; column < 4; ++column)
        table->setColumnWidth(column, std::max(widths[column], table->horizontalHeader()->sectionSizeHint(column)));
    table->verticalHeader()->hide();
    table->setSelectionBehavior(QAbstractItemView::SelectRows);

    connect(mUi->mComboBoxSymbolDB, SIGNAL(currentIndexChanged(int)), this, SLOT(onSymbolDBSelectChanged(int)));
    connect(mUi->mComboBoxMatchField, SIGNAL(currentIndexChanged(int)), this, SLOT(onFieldChanged(int)));
    connect(table, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(onItemDoubleClicked(QModelIndex)));
    connect(mUi->mButtonMoreDetailMatch, SIGNAL(clicked(bool)), this, SLOT(onMoreDetail()));
    connect(mUi->mButtonAddAllMatch, SIGNAL(clicked(bool)), this, SLOT(onAddAllValues()));
    connect(mUi->mButtonRemoveAllMatch, SIGNAL(clicked(bool)), this, SLOT(onDeleteAllValues()));
    connect(mUi->mButtonRemoveMatch, SIGNAL(clicked(bool)), this, SLOT(onDeleteValue()));
    connect(mUi->mButtonAddMatch, SIGNAL(clicked(bool)), this, SLOT(onAddValue()));
    connect(mUi->checkBox, SIGNAL(clicked()), this, SLOT(onSymbolPriority()));
    connect(mUi->mButtonRotate, SIGNAL(clicked(bool)), this, SLOT(onSetupRotation()));
}

void TZRenderPanelMatchToSymbolsInAStyle::fillFieldCombo(TEFeatureLayer* layer)
{
    const QSignalBlocker blocker(mUi->mComboBoxMatchField);
    mUi->mComboBoxMatchField->clear();
    const TERefPtr<TEFields> fields = layer->GetFields();
    for (int i = 0; fields && i < fields->GetFieldCount(); ++i) {
        const TERefPtr<TEField> field = fields->GetField(i);
        const QString fieldName = field->GetName().toQString();
        if (isSkippedType(field->GetFieldType()) || fieldName.startsWith(SystemPrefix))
            continue;
        mUi->mComboBoxMatchField->addItem(fieldName);
    }
}

void TZRenderPanelMatchToSymbolsInAStyle::onReset()
{
    if (!isVisible())
        return;
    if (!mModel)
        createModel();
    const std::vector<TEStyleDB*> dbs = TEStyleSystem::GetInstance()->GetStyleDBs();
    if (dbs.empty())
        return;
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !layer->IsValid())
        return;
    const TERefPtr<TEFeatureLayer> held(layer);
    mUi->mButtonRotate->setVisible(TZLayerKinds::isPoint(layer->GetLayerType()));

    {
        const QSignalBlocker blocker(mUi->mComboBoxSymbolDB);
        mUi->mComboBoxSymbolDB->clear();
        for (TEStyleDB* db : dbs)
            mUi->mComboBoxSymbolDB->addItem(db ? db->GetName().toQString() : QString());
        mSymbolDBIndex = mUi->mComboBoxSymbolDB->currentIndex();
    }
    fillFieldCombo(layer);
    mModel->setLayer(layer, QString());
    mFieldIndex = -1;
    mUi->checkBox->setChecked(false);
    mModel->setShowOtherValuesState(Qt::Unchecked);

    const TERefPtr<TEFeatureRender> featureRender = layer->GetSymbolRender();
    const TERefPtr<TEMatchToSymbolsRender> render = featureRender && featureRender->GetType() == TEString(L"MatchToSymbols")
        ? featureRender.cast<TEMatchToSymbolsRender>()
        : nullptr;
    if (!render) {
        if (mUi->mComboBoxMatchField->count() > 0)
            onFieldChanged(mUi->mComboBoxMatchField->currentIndex());
        mModel->setPriorityShown(false);
        return;
    }
    const int fieldIndex = mUi->mComboBoxMatchField->findText(render->GetExpression().toQString());
    {
        const QSignalBlocker blocker(mUi->mComboBoxMatchField);
        mUi->mComboBoxMatchField->setCurrentIndex(fieldIndex);
    }
    onFieldChanged(fieldIndex);
    const int dbIndex = mUi->mComboBoxSymbolDB->findText(render->getSymbolDB().toQString());
    if (dbIndex >= 0) {
        const QSignalBlocker blocker(mUi->mComboBoxSymbolDB);
        mUi->mComboBoxSymbolDB->setCurrentIndex(dbIndex);
        mSymbolDBIndex = dbIndex;
    }
    mUi->checkBox->setChecked(render->PriorityRender());
    mModel->setShowOtherValuesState(render->IsShowOtherValue() ? Qt::Checked : Qt::Unchecked);
    for (int i = 0; i < render->GetItemCount(); ++i) {
        const TERefPtr<TECategoryRenderItem> item = render->GetCategoryRenderItem(i);
        if (!item)
            continue;
        const QString value = item->GetValue().toQString();
        if (value == TZModelUniqueValues::AllOtherValues) {
            if (item->GetStyle())
                mModel->setRowStyle(0, item->GetStyle());
            continue;
        }
        mModel->appendRow(item->GetStyle(), value, item->GetLabel().toQString(), -1);
        mModel->setRowScale(mModel->rowCount() - 1, item->IsScaleFilter(), item->GetMinScale(), item->GetMaxScale());
    }
    mModel->setPriorityShown(mUi->checkBox->isChecked());
}

bool TZRenderPanelMatchToSymbolsInAStyle::onApply()
{
    if (mUi->mComboBoxSymbolDB->currentText().isEmpty())
        return false;
    cancelActiveDrawing();
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !layer->IsValid() || !mModel)
        return false;
    const TERefPtr<TEFeatureLayer> held(layer);
    const QString field = mUi->mComboBoxMatchField->currentText();
    if (field.isEmpty())
        return false;

    const auto render = MakeRef<TEMatchToSymbolsRender>(TEString(field));
    render->setSymbolDB(TEString(mUi->mComboBoxSymbolDB->currentText()));
    render->EnablePriorityRender(mUi->checkBox->checkState() == Qt::Checked);
    render->SetIsRotateByClockWise(mRotation.clockwise);
    mRotation.writeFieldAndRange(*render);
    mModel->writeCategories(*render);
    layer->SetSymbolRender(render);
    return true;
}

void TZRenderPanelMatchToSymbolsInAStyle::onSymbolDBSelectChanged(int index)
{
    mSymbolDBIndex = index;
}

void TZRenderPanelMatchToSymbolsInAStyle::onFieldChanged(int index)
{
    if (index < 0 || !mModel)
        return;
    TEFeatureLayer* layer = currentFeatureLayer();
    const TERefPtr<TEFeatureTable> table = layer ? layer->GetDatasource() : nullptr;
    if (!table)
        return;
    TEFields* fields = table->GetFields();
    const bool memory = table->GetClassName() == TEString(L"TEMemoryFeatureLayer");
    // The combo leaves fields out; walk the layer's fields counting the ones
    // skipped before the chosen one.
    int fieldIndex = index;
    for (int i = 0; i <= fieldIndex && i < fields->GetFieldCount(); ++i) {
        const TERefPtr<TEField> field = fields->GetField(i);
        bool skipped = i < 2 && isSkippedType(field->GetFieldType());
        if (memory) {
            const QString alias = field->GetAliasName().toQString();
            skipped = skipped || alias == QLatin1String("FID") || alias == QLatin1String("GEOMETRY")
                || field->GetName().toQString().startsWith(SystemPrefix);
        }
        if (skipped)
            ++fieldIndex;
    }
    if (fieldIndex >= fields->GetFieldCount())
        return;
    mFieldIndex = fieldIndex;
    mModel->setLayer(layer, fields->GetField(fieldIndex)->GetName().toQString());
    mModel->setPriorityShown(mUi->checkBox->isChecked());
}

bool TZRenderPanelMatchToSymbolsInAStyle::prepareStyles()
{
    const std::vector<TEStyleDB*> dbs = TEStyleSystem::GetInstance()->GetStyleDBs();
    if (mSymbolDBIndex < 0 || mSymbolDBIndex >= int(dbs.size()) || !dbs[size_t(mSymbolDBIndex)])
        return false;
    return mModel->setStyleDB(dbs[size_t(mSymbolDBIndex)]);
}

void TZRenderPanelMatchToSymbolsInAStyle::onAddAllValues()
{
    if (!mModel || !mModel->layer() || mModel->fieldName().isEmpty())
        return;
    mModel->clear();
    if (!prepareStyles())
        return;
    if (mModel->matchAllValues(this) == 0)
        QMessageBox::information(TZControlRender::instance(nullptr), tr("Information"), tr("No matching values"));
    mModel->setPriorityShown(mUi->checkBox->isChecked());
}

void TZRenderPanelMatchToSymbolsInAStyle::onAddValue()
{
    if (!mModel || !mModel->layer() || mModel->fieldName().isEmpty() || !prepareStyles())
        return;
    const QStringList others = mModel->otherMatchedValues(this);
    if (others.isEmpty()) {
        QMessageBox::information(this, tr("Information"), tr("No other values"));
        return;
    }
    TZDialogAddValueToUniqueValue dialog(others, name(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    mModel->appendMatchedValues(dialog.selectedValues());
    mModel->setPriorityShown(mUi->checkBox->isChecked());
}

void TZRenderPanelMatchToSymbolsInAStyle::onDeleteValue()
{
    if (!TZCategoryPanelSupport::removeSelectedRows(mUi->mTableViewMatch, mModel))
        QMessageBox::information(this, tr("Information"), tr("No items selected!"), QMessageBox::Ok);
}

void TZRenderPanelMatchToSymbolsInAStyle::onDeleteAllValues()
{
    if (mModel)
        mModel->removeValueRows();
}

void TZRenderPanelMatchToSymbolsInAStyle::onItemDoubleClicked(const QModelIndex& index)
{
    if (!mModel || !index.isValid() || index.column() != 0 || index.row() >= mModel->rowCount())
        return;
    TEStyle* chosen = selectStyle(mModel->row(index.row()).style.get());
    if (chosen)
        mModel->setRowStyle(index.row(), TERefPtr<TEStyle>(chosen));
}

void TZRenderPanelMatchToSymbolsInAStyle::onMoreDetail()
{
    if (!mModel)
        return;
    const int styles = prepareStyles() ? mModel->styleCount() : 0;
    QMessageBox::information(this, tr("Information"),
                             tr("Style database: %1\nStyles of this layer's kind: %2\nMatched values: %3")
                                 .arg(mUi->mComboBoxSymbolDB->currentText())
                                 .arg(styles)
                                 .arg(mModel->rowCount() - 1));
}

void TZRenderPanelMatchToSymbolsInAStyle::onSymbolPriority()
{
    if (mModel)
        mModel->setPriorityShown(mUi->checkBox->isChecked());
}

void TZRenderPanelMatchToSymbolsInAStyle::onSetupRotation()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (layer && mRotation.editWithDialog(layer, this, TZRotationSettings::ReadBy::FieldText))
        TZControlRender::instance(nullptr)->onApply();
}
