#include "TZRenderPanelUniqueValues.h"

#include "TZCategoryPanelSupport.h"
#include "TZControlRender.h"
#include "TZLayerKinds.h"
#include "TZModelUniqueValues.h"
#include "TZSetupDialogDefautOutLineStyle.h"

#include "ui_TZRenderPanelUniqueValues.h"

#include "renders/TECategorizedSymbolRender.h"
#include "symbology/TEColorRamp.h"
#include "widgets/TZStyleSelectorDialog.h"

#include <QHeaderView>
#include <QMessageBox>

#include <algorithm>

using namespace TZObjects;

namespace {

const QSize SymbolIconSize(32, 32);

} // namespace

TZRenderPanelUniqueValues::TZRenderPanelUniqueValues(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelUniqueValues>())
{
    mUi->setupUi(this);
    for (int unit = 0; unit < mUi->mComboBoxLineWidthUnit->count(); ++unit)
        mUi->mComboBoxLineWidthUnit->setItemData(unit, unit);
    mUi->mComboBoxLineWidthUnit->setCurrentIndex(mOutlineUnit);
    mUi->mLineWidthBox->setSingleStep(0.1);
    mUi->mLineWidthBox->setDecimals(2);
    mUi->mLineWidthBox->setValue(mOutlineWidth);
    mUi->mLineColorBtn->setColor(mOutlineColor.GetColor());
    mUi->mComboBoxRamp->setDefaultGroup(QStringLiteral("Unique"), QStringLiteral("Default"));
    mUi->mButtonUp->setEnabled(false);
    mUi->mButtonDown->setEnabled(false);

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelUniqueValues::~TZRenderPanelUniqueValues() = default;

QString TZRenderPanelUniqueValues::name() const
{
    return QStringLiteral("UniqueValues");
}

QString TZRenderPanelUniqueValues::title() const
{
    return tr("Unique Values");
}

void TZRenderPanelUniqueValues::createModel()
{
    mModel = new TZModelUniqueValues(this);
    QTableView* table = mUi->mTableViewValues;
    TZCategoryPanelSupport::setUpTable(table, mModel, 80, 80);
    mModel->setCountWhileCollecting(mUi->checkBox_2->isChecked());

    connect(mUi->mComboBoxValueField, SIGNAL(currentIndexChanged(int)), this, SLOT(onFieldChanged(int)));
    connect(mUi->mButtonAddAll, SIGNAL(clicked(bool)), this, SLOT(onAddAllValues()));
    connect(mUi->mButtonAdd, SIGNAL(clicked(bool)), this, SLOT(onAddValue()));
    connect(mUi->mButtonRemove, SIGNAL(clicked(bool)), this, SLOT(onDeleteValue()));
    connect(mUi->mButtonRemoveAll, SIGNAL(clicked(bool)), this, SLOT(onDeleteAllValues()));
    connect(mUi->mButtonUp, SIGNAL(clicked(bool)), this, SLOT(onRowUp()));
    connect(mUi->mButtonDown, SIGNAL(clicked(bool)), this, SLOT(onRowDown()));
    connect(table->selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
            SLOT(onSelectionChanged(QItemSelection, QItemSelection)));
    connect(table, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(onItemDoubleClicked(QModelIndex)));
    connect(mUi->mComboBoxRamp, SIGNAL(currentRampChanged()), this, SLOT(onColorRampChanged()));
    connect(mUi->mLineWidthBox, SIGNAL(valueChanged(double)), this, SLOT(onColorRampChanged()));
    connect(mUi->mLineColorBtn, SIGNAL(colorChanged(QRgb)), this, SLOT(onColorRampChanged()));
    connect(mUi->mComboBoxLineWidthUnit, SIGNAL(currentIndexChanged(QString)), this,
            SLOT(onOutLineWidthUnitChanged(QString)));
    connect(mUi->mButtonRotate, SIGNAL(clicked(bool)), this, SLOT(onSetupRotation()));
    connect(mUi->mButtonSetupDefault, SIGNAL(clicked(bool)), this, SLOT(onSetupDefault()));
    // A reset drops the selection without announcing it; Up and Down follow.
    connect(mModel, &QAbstractItemModel::modelReset, this,
            [this] { onSelectionChanged(QItemSelection(), QItemSelection()); });
}

void TZRenderPanelUniqueValues::onReset()
{
    if (!isVisible())
        return;
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !layer->IsValid())
        return;
    const TERefPtr<TEFeatureLayer> held(layer);

    mUi->mButtonRotate->setVisible(TZLayerKinds::isPoint(layer->GetLayerType()));

    const bool firstLoad = !mModel;
    if (firstLoad)
        createModel();

    TZCategoryPanelSupport::fillFieldCombo(mUi->mComboBoxValueField, layer);

    mModel->setLayer(layer, QString());
    mMissingField.clear();
    mUi->checkBox->setChecked(false);

    const TERefPtr<TEFeatureRender> featureRender = layer->GetSymbolRender();
    const TERefPtr<TECategorizedSymbolRender> render =
        featureRender && featureRender->GetType() == TEString(L"UniqueValues")
        ? featureRender.cast<TECategorizedSymbolRender>()
        : nullptr;
    if (render) {
        mModel->setShowOtherValuesState(render->IsShowOtherValue() ? Qt::Checked : Qt::Unchecked);
        const QString renderField = render->GetExpression().toQString();
        // A render saved from another format may name the field in another
        // case; the layer's own spelling is what the combo and the scan use.
        const int comboIndex = TZCategoryPanelSupport::findField(mUi->mComboBoxValueField, renderField);
        if (comboIndex >= 0) {
            const QSignalBlocker blocker(mUi->mComboBoxValueField);
            mUi->mComboBoxValueField->setCurrentIndex(comboIndex);
        }
        const QString field = comboIndex >= 0 ? mUi->mComboBoxValueField->itemText(comboIndex)
                                              : mUi->mComboBoxValueField->currentText();
        mModel->setLayer(layer, field);
        // Without the field the categories are still shown, so that nothing
        // is lost, but Apply will not write them onto the field in the combo.
        mMissingField = comboIndex >= 0 ? QString() : renderField;
        mModel->loadFromRender(render.get(), this, comboIndex >= 0 ? field : QString());

        const TECategorizedSymbolRender::OutLineInfo outline = render->GetOutLineInfo();
        mOutlineColor = outline.color;
        mOutlineUnit = outline.unit;
        mOutlineWidth = outline.width;
        mModel->setOutlineColor(outline.color);
        mModel->setOutlineUnit(outline.unit);
        mModel->setOutlineWidth(outline.width);
        {
            // Showing the stored outline must not recolour the loaded symbols.
            const QSignalBlocker colorBlocker(mUi->mLineColorBtn);
            const QSignalBlocker unitBlocker(mUi->mComboBoxLineWidthUnit);
            const QSignalBlocker widthBlocker(mUi->mLineWidthBox);
            mUi->mLineColorBtn->setColor(outline.color.GetColor());
            mUi->mComboBoxLineWidthUnit->setCurrentIndex(outline.unit);
            const bool points = outline.unit == 0;
            mUi->mLineWidthBox->setSingleStep(points ? 1.0 : 0.1);
            mUi->mLineWidthBox->setDecimals(points ? 0 : 2);
            mUi->mLineWidthBox->setValue(outline.width);
        }
        mUi->checkBox->setChecked(render->PriorityRender());
        mModel->setPriorityShown(mUi->checkBox->isChecked());
        mModel->resetModel();
    } else {
        // A fresh table: the catch-all row does not keep the last layer's check.
        mModel->setShowOtherValuesState(Qt::Unchecked);
        refreshPriorityColumns();
        if (mUi->mComboBoxValueField->count() > 0)
            onFieldChanged(0);
        mModel->resetModel();
    }

    QTableView* table = mUi->mTableViewValues;
    if (!mMissingField.isEmpty())
        warnMissingField();
    if (firstLoad) {
        mSymbolColumnWidth = table->columnWidth(0);
        mRowHeight = table->verticalHeader()->defaultSectionSize();
    } else {
        table->setColumnWidth(0, mSymbolColumnWidth);
        table->verticalHeader()->setDefaultSectionSize(mRowHeight);
    }
}

bool TZRenderPanelUniqueValues::onApply()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer)
        return false;
    const TERefPtr<TEFeatureLayer> held(layer);

    cancelActiveDrawing();

    const QString field = mUi->mComboBoxValueField->currentText();
    if (field.isEmpty() || !mModel)
        return false;
    if (!mMissingField.isEmpty()) {
        warnMissingField();
        return false;
    }

    const auto render = MakeRef<TECategorizedSymbolRender>(TEString(field));
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

void TZRenderPanelUniqueValues::onFieldChanged(int index)
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (index >= 0 && layer && layer->IsValid() && mModel) {
        const QString field = mUi->mComboBoxValueField->currentText();
        const TERefPtr<TEFields> fields = layer->GetFields();
        if (fields && fields->FindField(TEString(field)) >= 0) {
            mModel->setLayer(layer, field);
            mMissingField.clear();
        }
    }
    refreshPriorityColumns();
}

void TZRenderPanelUniqueValues::onAddAllValues()
{
    if (!mModel)
        return;
    mModel->addAllValues(mUi->mComboBoxRamp->currentColorRamp(), this);
    // Every value row now belongs to the field in the combo.
    mMissingField.clear();
}

void TZRenderPanelUniqueValues::onAddValue()
{
    if (!mModel)
        return;
    mModel->addValues(mUi->mComboBoxRamp->currentColorRamp(), name(), this);
}

void TZRenderPanelUniqueValues::onDeleteValue()
{
    if (!TZCategoryPanelSupport::removeSelectedRows(mUi->mTableViewValues, mModel))
        QMessageBox::information(this, tr("Information"), tr("No items selected!"), QMessageBox::Ok);
}

void TZRenderPanelUniqueValues::onDeleteAllValues()
{
    if (!mModel)
        return;
    mModel->clear();
    mMissingField.clear();
    refreshPriorityColumns();
}

void TZRenderPanelUniqueValues::warnMissingField()
{
    QMessageBox::warning(this, tr("Warning"),
                         tr("The layer has no field \"%1\" that its unique values render classifies by. "
                            "Its categories are shown but are not applied to another field: choose a field "
                            "and add its values.")
                             .arg(mMissingField),
                         QMessageBox::Ok);
}

void TZRenderPanelUniqueValues::onRowUp()
{
    TZCategoryPanelSupport::moveSelectedRow(mUi->mTableViewValues, mModel, -1);
}

void TZRenderPanelUniqueValues::onRowDown()
{
    TZCategoryPanelSupport::moveSelectedRow(mUi->mTableViewValues, mModel, +1);
}

void TZRenderPanelUniqueValues::onSelectionChanged(const QItemSelection&, const QItemSelection&)
{
    bool up = false;
    bool down = false;
    if (mModel)
        TZCategoryPanelSupport::upDownState(TZCategoryPanelSupport::selectedRows(mUi->mTableViewValues),
                                            mModel->rowCount(), up, down);
    mUi->mButtonUp->setEnabled(up);
    mUi->mButtonDown->setEnabled(down);
}

void TZRenderPanelUniqueValues::onItemDoubleClicked(const QModelIndex& index)
{
    if (!mModel || !index.isValid() || index.row() >= mModel->rowCount())
        return;
    TEStyle* chosen = selectStyle(mModel->row(index.row()).style.get());
    if (!chosen)
        return;
    mModel->setRowStyle(index.row(), TERefPtr<TEStyle>(chosen));
    fitSymbolColumn(SymbolIconSize);
}

void TZRenderPanelUniqueValues::fitSymbolColumn(const QSize& preview)
{
    QTableView* table = mUi->mTableViewValues;
    table->setIconSize(preview);
    mSymbolColumnWidth = std::max(table->columnWidth(0), preview.width() + 13);
    mRowHeight = std::max(table->verticalHeader()->defaultSectionSize(), preview.height() + 4);
    table->setColumnWidth(0, mSymbolColumnWidth);
    table->verticalHeader()->setDefaultSectionSize(mRowHeight);
}

void TZRenderPanelUniqueValues::onColorRampChanged()
{
    const TEColorRamp* ramp = mUi->mComboBoxRamp->currentColorRamp();
    if (!ramp || !mModel)
        return;
    if (!ramp->isValid()) {
        refreshPriorityColumns();
        return;
    }
    copyOutlineToModel();
    const int rows = mModel->rowCount();
    if (rows < 2)
        return;
    // As many colours as value rows (adding all values splits into one more).
    mModel->recolorValueRows(ramp->split(rows - 1));
    refreshPriorityColumns();
}

void TZRenderPanelUniqueValues::onOutLineWidthUnitChanged(const QString& unit)
{
    TZCategoryPanelSupport::fitWidthBoxToUnit(mUi->mLineWidthBox, unit == tr("Point"));
    onColorRampChanged();
}

void TZRenderPanelUniqueValues::on_checkBox_clicked()
{
    refreshPriorityColumns();
}

void TZRenderPanelUniqueValues::on_checkBox_2_clicked()
{
    if (mModel)
        mModel->setCountWhileCollecting(mUi->checkBox_2->isChecked());
}

void TZRenderPanelUniqueValues::onSetupDefault()
{
    TZSetupDialogDefautOutLineStyle dialog(this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    double width = 0.0;
    int unit = 0;
    TEColor color;
    dialog.getOutLineStyle(width, unit, color);
    mOutlineWidth = width;
    mOutlineUnit = unit;
    mOutlineColor = color;
    // The unit first: choosing "Point" resets the width box.
    mUi->mComboBoxLineWidthUnit->setCurrentIndex(mUi->mComboBoxLineWidthUnit->findData(unit));
    mUi->mLineWidthBox->setValue(width);
    mUi->mLineColorBtn->setColor(color.GetColor());
}

void TZRenderPanelUniqueValues::onSetupRotation()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (layer && mRotation.editWithDialog(layer, this, TZRotationSettings::ReadBy::FieldText))
        TZControlRender::instance(nullptr)->onApply();
}

void TZRenderPanelUniqueValues::refreshPriorityColumns()
{
    if (mModel)
        mModel->setPriorityShown(mUi->checkBox->isChecked());
}

void TZRenderPanelUniqueValues::copyOutlineToModel()
{
    if (!mModel)
        return;
    mOutlineColor = uint32_t(mUi->mLineColorBtn->getColor());
    mOutlineUnit = mUi->mComboBoxLineWidthUnit->currentData().toInt();
    mOutlineWidth = mUi->mLineWidthBox->value();
    mModel->setOutlineColor(mOutlineColor);
    mModel->setOutlineUnit(mOutlineUnit);
    mModel->setOutlineWidth(mOutlineWidth);
}
