#include "TZRenderPanelUniqueValuesByManyFields.h"

#include "TZCategoryPanelSupport.h"
#include "TZControlRender.h"
#include "TZLayerKinds.h"
#include "TZModelUniqueValuesByManyFields.h"
#include "TZSetupDialogDefautOutLineStyle.h"
#include "TZWidgetValueItem.h"

#include "ui_TZRenderPanelUniqueValuesByManyFields.h"

#include "renders/TECategorizedByManyFieldsSymbolRender.h"
#include "symbology/TEColorRamp.h"
#include "widgets/TZStyleSelectorDialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

using namespace TZObjects;

namespace {

const QString FieldSeparator = QStringLiteral(",");

} // namespace

TZRenderPanelUniqueValuesByManyFields::TZRenderPanelUniqueValuesByManyFields(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelUniqueValuesByManyFields>())
{
    mUi->setupUi(this);
    for (int unit = 0; unit < mUi->mComboBoxLineWidthUnitMF->count(); ++unit)
        mUi->mComboBoxLineWidthUnitMF->setItemData(unit, unit);
    mUi->mComboBoxLineWidthUnitMF->setCurrentIndex(1);
    mUi->mLineWidthBoxMF->setSingleStep(0.1);
    mUi->mLineWidthBoxMF->setDecimals(2);
    mUi->mLineWidthBoxMF->setValue(0.25);
    mUi->mLineColorBtnMF->setColor(TEColor(185, 185, 185).GetColor());
    mUi->mComboBoxRampMF->setDefaultGroup(QStringLiteral("Unique"), QStringLiteral("Default"));
    mUi->mButtonUpMF->setEnabled(false);
    mUi->mButtonDownMF->setEnabled(false);

    // The field chooser: a list of check boxes dropped down from the combo,
    // whose read-only text names the chosen fields.
    QComboBox* combo = mUi->mComboBoxValueFields;
    mFieldList = new QListWidget(combo);
    combo->setModel(mFieldList->model());
    combo->setView(mFieldList);
    combo->setEditable(true);
    combo->lineEdit()->setReadOnly(true);
    combo->setStyleSheet(QStringLiteral("QComboBox QAbstractItemView::item {min-height: 17px;}"));
    connect(combo, SIGNAL(editTextChanged(QString)), this, SLOT(onComboBoxTextChanged(QString)));

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelUniqueValuesByManyFields::~TZRenderPanelUniqueValuesByManyFields() = default;

QString TZRenderPanelUniqueValuesByManyFields::name() const
{
    return QStringLiteral("UniqueValuesManyFields");
}

QString TZRenderPanelUniqueValuesByManyFields::title() const
{
    return tr("Unique Values,Many Fields");
}

void TZRenderPanelUniqueValuesByManyFields::createModel()
{
    mModel = new TZModelUniqueValuesByManyFields(this);
    QTableView* table = mUi->mTableViewValuesMF;
    TZCategoryPanelSupport::setUpTable(table, mModel, 110, 110);

    connect(mUi->mButtonAddAllMF, SIGNAL(clicked(bool)), this, SLOT(onAddAllValues()));
    connect(mUi->mButtonAddMF, SIGNAL(clicked(bool)), this, SLOT(onAddValue()));
    connect(mUi->mButtonRemoveMF, SIGNAL(clicked(bool)), this, SLOT(onDeleteValue()));
    connect(mUi->mButtonRemoveAllMF, SIGNAL(clicked(bool)), this, SLOT(onDeleteAllValues()));
    connect(mUi->mButtonUpMF, SIGNAL(clicked(bool)), this, SLOT(onRowUp()));
    connect(mUi->mButtonDownMF, SIGNAL(clicked(bool)), this, SLOT(onRowDown()));
    connect(table->selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
            SLOT(onSelectionChanged(QItemSelection, QItemSelection)));
    connect(table, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(onItemDoubleClicked(QModelIndex)));
    connect(mUi->mComboBoxRampMF, SIGNAL(currentRampChanged()), this, SLOT(onColorRampChanged()));
    connect(mUi->mLineWidthBoxMF, SIGNAL(valueChanged(double)), this, SLOT(onColorRampChanged()));
    connect(mUi->mLineColorBtnMF, SIGNAL(colorChanged(QRgb)), this, SLOT(onColorRampChanged()));
    connect(mUi->mComboBoxLineWidthUnitMF, SIGNAL(currentIndexChanged(QString)), this,
            SLOT(onOutLineWidthUnitChanged(QString)));
    connect(mUi->mButtonRotate, SIGNAL(clicked(bool)), this, SLOT(onSetupRotation()));
    connect(mUi->mButtonSetupDefaultMF, SIGNAL(clicked(bool)), this, SLOT(onSetupDefault()));
    connect(mModel, &QAbstractItemModel::modelReset, this,
            [this] { onSelectionChanged(QItemSelection(), QItemSelection()); });
}

void TZRenderPanelUniqueValuesByManyFields::fillFieldList(TEFeatureLayer* layer)
{
    // The offered fields are those of the one-field panel.
    QComboBox names;
    TZCategoryPanelSupport::fillFieldCombo(&names, layer);
    const QSignalBlocker blocker(mUi->mComboBoxValueFields);
    mFieldList->clear();
    for (int i = 0; i < names.count(); ++i) {
        auto* row = new QListWidgetItem(mFieldList);
        auto* item = new TZWidgetValueItem(names.itemText(i), mFieldList);
        row->setSizeHint(item->sizeHint().expandedTo(QSize(0, 17)));
        mFieldList->setItemWidget(row, item);
        connect(item, SIGNAL(itemStatusChanged()), this, SLOT(onFieldsSelectChanged()));
    }
    mUi->mComboBoxValueFields->setCurrentIndex(-1);
    mUi->mComboBoxValueFields->setEditText(QString());
}

TZWidgetValueItem* TZRenderPanelUniqueValuesByManyFields::fieldItem(const QString& field) const
{
    for (int i = 0; i < mFieldList->count(); ++i) {
        auto* item = qobject_cast<TZWidgetValueItem*>(mFieldList->itemWidget(mFieldList->item(i)));
        if (item && item->fieldName() == field)
            return item;
    }
    return nullptr;
}

void TZRenderPanelUniqueValuesByManyFields::setChosenFields(const QStringList& fields)
{
    for (int i = 0; i < mFieldList->count(); ++i) {
        auto* item = qobject_cast<TZWidgetValueItem*>(mFieldList->itemWidget(mFieldList->item(i)));
        if (item)
            item->setChecked(fields.contains(item->fieldName()));
    }
    mUi->mComboBoxValueFields->setEditText(fields.join(FieldSeparator));
}

void TZRenderPanelUniqueValuesByManyFields::onFieldsSelectChanged()
{
    auto* item = qobject_cast<TZWidgetValueItem*>(sender());
    if (!item)
        return;
    // The text keeps the fields in the order they were checked.
    QStringList fields = mUi->mComboBoxValueFields->currentText().split(FieldSeparator, Qt::SkipEmptyParts);
    const QString field = item->fieldName();
    if (item->isChecked()) {
        if (!fields.contains(field))
            fields << field;
    } else {
        fields.removeAll(field);
    }
    mUi->mComboBoxValueFields->setEditText(fields.join(FieldSeparator));
}

void TZRenderPanelUniqueValuesByManyFields::onComboBoxTextChanged(const QString& text)
{
    if (mModel)
        mModel->setFields(text.split(FieldSeparator, Qt::SkipEmptyParts));
}

void TZRenderPanelUniqueValuesByManyFields::onReset()
{
    if (!isVisible())
        return;
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !layer->IsValid())
        return;
    const TERefPtr<TEFeatureLayer> held(layer);

    mUi->mButtonRotate->setVisible(TZLayerKinds::isPoint(layer->GetLayerType()));
    if (!mModel)
        createModel();

    fillFieldList(layer);
    mModel->setLayerAndFields(layer, QStringList());
    mUi->checkBox->setChecked(false);

    const TERefPtr<TEFeatureRender> featureRender = layer->GetSymbolRender();
    const TERefPtr<TECategorizedSymbolRender> render =
        featureRender && featureRender->GetType() == TEString(L"UniqueValuesManyFields")
        ? featureRender.cast<TECategorizedSymbolRender>()
        : nullptr;
    if (!render) {
        mModel->setShowOtherValuesState(Qt::Unchecked);
        mModel->setPriorityShown(false);
        mModel->resetModel();
        return;
    }
    const QString expression = render->GetExpression().toQString();
    setChosenFields(expression.split(FieldSeparator, Qt::SkipEmptyParts));
    mModel->setShowOtherValuesState(render->IsShowOtherValue() ? Qt::Checked : Qt::Unchecked);
    mModel->loadFromRender(render.get(), this, expression);

    const TECategorizedSymbolRender::OutLineInfo outline = render->GetOutLineInfo();
    mModel->setOutlineColor(outline.color);
    mModel->setOutlineUnit(outline.unit);
    mModel->setOutlineWidth(outline.width);
    showOutline(outline.color, outline.unit, outline.width);
    mUi->checkBox->setChecked(render->PriorityRender());
    mModel->setPriorityShown(mUi->checkBox->isChecked());
    mModel->resetModel();
}

void TZRenderPanelUniqueValuesByManyFields::showOutline(const TEColor& color, int unit, double width)
{
    // Showing a stored outline must not recolour the loaded symbols.
    const QSignalBlocker colorBlocker(mUi->mLineColorBtnMF);
    const QSignalBlocker unitBlocker(mUi->mComboBoxLineWidthUnitMF);
    const QSignalBlocker widthBlocker(mUi->mLineWidthBoxMF);
    mUi->mLineColorBtnMF->setColor(color.GetColor());
    mUi->mComboBoxLineWidthUnitMF->setCurrentIndex(unit);
    TZCategoryPanelSupport::fitWidthBoxToUnit(mUi->mLineWidthBoxMF, unit == 0);
    mUi->mLineWidthBoxMF->setValue(width);
}

bool TZRenderPanelUniqueValuesByManyFields::onApply()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer)
        return false;
    const TERefPtr<TEFeatureLayer> held(layer);

    cancelActiveDrawing();

    const QString fields = mUi->mComboBoxValueFields->currentText();
    if (fields.isEmpty() || !mModel)
        return false;

    const auto render = MakeRef<TECategorizedByManyFieldsSymbolRender>(TEString(fields));
    render->EnablePriorityRender(mUi->checkBox->isChecked());
    render->SetIsRotateByClockWise(mRotation.clockwise);
    mRotation.writeFieldAndRange(*render);

    mModel->writeCategories(*render);

    copyOutlineToModel();
    TECategorizedSymbolRender::OutLineInfo outline;
    outline.color = mModel->outlineColor();
    outline.width = mModel->outlineWidth();
    outline.unit = mModel->outlineUnit();
    render->SetOutLineInfo(outline);

    layer->SetSymbolRender(render);
    return true;
}

void TZRenderPanelUniqueValuesByManyFields::onAddAllValues()
{
    if (!mModel)
        return;
    copyOutlineToModel();
    mModel->addAllCombinations(mUi->mComboBoxRampMF->currentColorRamp(), this);
}

void TZRenderPanelUniqueValuesByManyFields::onAddValue()
{
    if (!mModel || mModel->fields().isEmpty())
        return;
    copyOutlineToModel();
    mModel->addValues(mUi->mComboBoxRampMF->currentColorRamp(), QStringLiteral("UniqueValuesByManyFields"), this);
}

void TZRenderPanelUniqueValuesByManyFields::onDeleteValue()
{
    if (!TZCategoryPanelSupport::removeSelectedRows(mUi->mTableViewValuesMF, mModel))
        QMessageBox::information(this, tr("Information"), tr("No items selected!"), QMessageBox::Ok);
}

void TZRenderPanelUniqueValuesByManyFields::onDeleteAllValues()
{
    if (!mModel)
        return;
    mModel->clear();
    mModel->setPriorityShown(mUi->checkBox->isChecked());
}

void TZRenderPanelUniqueValuesByManyFields::onRowUp()
{
    TZCategoryPanelSupport::moveSelectedRow(mUi->mTableViewValuesMF, mModel, -1);
}

void TZRenderPanelUniqueValuesByManyFields::onRowDown()
{
    TZCategoryPanelSupport::moveSelectedRow(mUi->mTableViewValuesMF, mModel, +1);
}

void TZRenderPanelUniqueValuesByManyFields::onSelectionChanged(const QItemSelection&, const QItemSelection&)
{
    bool up = false;
    bool down = false;
    if (mModel)
        TZCategoryPanelSupport::upDownState(TZCategoryPanelSupport::selectedRows(mUi->mTableViewValuesMF),
                                            mModel->rowCount(), up, down);
    mUi->mButtonUpMF->setEnabled(up);
    mUi->mButtonDownMF->setEnabled(down);
}

void TZRenderPanelUniqueValuesByManyFields::onItemDoubleClicked(const QModelIndex& index)
{
    if (!mModel || !index.isValid() || index.row() >= mModel->rowCount())
        return;
    TEStyle* chosen = selectStyle(mModel->row(index.row()).style.get());
    if (chosen)
        mModel->setRowStyle(index.row(), TERefPtr<TEStyle>(chosen));
}

void TZRenderPanelUniqueValuesByManyFields::onColorRampChanged()
{
    const TEColorRamp* ramp = mUi->mComboBoxRampMF->currentColorRamp();
    if (!ramp || !mModel || !ramp->isValid())
        return;
    copyOutlineToModel();
    const int rows = mModel->rowCount();
    if (rows < 2)
        return;
    mModel->recolorValueRows(ramp->split(rows - 1));
}

void TZRenderPanelUniqueValuesByManyFields::onOutLineWidthUnitChanged(const QString& unit)
{
    TZCategoryPanelSupport::fitWidthBoxToUnit(mUi->mLineWidthBoxMF, unit == tr("Point"));
    onColorRampChanged();
}

void TZRenderPanelUniqueValuesByManyFields::on_checkBox_clicked()
{
    if (mModel)
        mModel->setPriorityShown(mUi->checkBox->isChecked());
}

void TZRenderPanelUniqueValuesByManyFields::onSetupDefault()
{
    TZSetupDialogDefautOutLineStyle dialog(this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    double width = 0.0;
    int unit = 0;
    TEColor color;
    dialog.getOutLineStyle(width, unit, color);
    // The unit first: choosing "Point" resets the width box.
    mUi->mComboBoxLineWidthUnitMF->setCurrentIndex(mUi->mComboBoxLineWidthUnitMF->findData(unit));
    mUi->mLineWidthBoxMF->setValue(width);
    mUi->mLineColorBtnMF->setColor(color.GetColor());
}

void TZRenderPanelUniqueValuesByManyFields::onSetupRotation()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (layer && mRotation.editWithDialog(layer, this, TZRotationSettings::ReadBy::FieldText))
        TZControlRender::instance(nullptr)->onApply();
}

void TZRenderPanelUniqueValuesByManyFields::copyOutlineToModel()
{
    if (!mModel)
        return;
    TEColor color;
    color = uint32_t(mUi->mLineColorBtnMF->getColor());
    mModel->setOutlineColor(color);
    mModel->setOutlineUnit(mUi->mComboBoxLineWidthUnitMF->currentData().toInt());
    mModel->setOutlineWidth(mUi->mLineWidthBoxMF->value());
}
