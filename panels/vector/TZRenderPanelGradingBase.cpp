#include "TZRenderPanelGradingBase.h"

#include "TZModelGradingSymbol.h"

#include "widgets/TZColorBtn.h"
#include "widgets/TZColorSchemeComboBox.h"
#include "widgets/TZStyleSelectorDialog.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>

#include <algorithm>

using namespace TZObjects;

namespace {

const QSize SymbolIconSize(32, 32);

} // namespace

TZRenderPanelGradingBase::TZRenderPanelGradingBase(QWidget* parent)
    : TZRenderPanel(parent)
{
    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelGradingBase::~TZRenderPanelGradingBase() = default;

void TZRenderPanelGradingBase::initGradingWidgets(TZModelGradingSymbol* model)
{
    mModel = model;
    mFieldBox = findChild<QComboBox*>(QStringLiteral("mComboBoxField"));
    mLevelBox = findChild<QComboBox*>(QStringLiteral("mComboBoxLevel"));
    mRampBox = findChild<TZColorSchemeComboBox*>(QStringLiteral("mComboBoxColorRamp"));
    mWidthBox = findChild<QDoubleSpinBox*>(QStringLiteral("mDoubleSpinBoxOutlineWidth"));
    mUnitBox = findChild<QComboBox*>(QStringLiteral("mComboBoxOutlineUnit"));
    mOutlineColorButton = findChild<TZColorBtn*>(QStringLiteral("mButtonOutlineColor"));
    mTable = findChild<QTableView*>(QStringLiteral("tableView"));
    Q_ASSERT(mFieldBox && mLevelBox && mRampBox && mWidthBox && mUnitBox && mOutlineColorButton && mTable);

    {
        const QSignalBlocker blocker(mLevelBox);
        mLevelBox->clear();
        for (int level = 1; level <= 31; ++level)
            mLevelBox->addItem(QString::number(level));
        mLevelBox->setCurrentText(QStringLiteral("12"));
    }
    for (int unit = 0; unit < mUnitBox->count(); ++unit)
        mUnitBox->setItemData(unit, unit);
    mUnitBox->setCurrentIndex(1);
    mWidthBox->setSingleStep(0.1);
    mWidthBox->setDecimals(2);
    mWidthBox->setValue(0.25);
    mOutlineColorButton->setColor(0xFFB9B9B9u);
    mRampBox->setDefaultGroup(QStringLiteral("Default"), QStringLiteral("Range"));
    copyOutlineToModel();
    mModel->setColorRamp(mRampBox->currentColorRamp());

    mTable->setModel(mModel);
    mTable->setAlternatingRowColors(true);
    mTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    mTable->setIconSize(SymbolIconSize);
    mTable->verticalHeader()->hide();
    QHeaderView* header = mTable->horizontalHeader();
    header->setFixedHeight(25);
    // 45 pixels, or more where the font would clip the header.
    mTable->setColumnWidth(0, std::max(45, header->sectionSizeHint(0)));
    mTable->setColumnWidth(1, 80);
    mTable->setColumnWidth(2, 80);
    mSymbolColumnWidth = mTable->columnWidth(0);
    // Ranges and labels share the width the dock gives; long ones are cut
    // short with the whole text in their tooltip, and the count stays in view.
    header->setSectionResizeMode(1, QHeaderView::Stretch);
    header->setSectionResizeMode(2, QHeaderView::Stretch);
    header->setSectionResizeMode(3, QHeaderView::ResizeToContents);
    mFirstRowHeight = mTable->verticalHeader()->defaultSectionSize();

    auto button = [this](const char* name) { return findChild<QPushButton*>(QString::fromLatin1(name)); };
    connect(mFieldBox, SIGNAL(currentIndexChanged(int)), this, SLOT(onFieldChanged(int)));
    connect(mLevelBox, SIGNAL(currentIndexChanged(int)), this, SLOT(onLevelChanged(int)));
    connect(button("mButtonUpdate"), SIGNAL(clicked(bool)), this, SLOT(onAddAllValues()));
    connect(button("mButtonAddValue"), SIGNAL(clicked(bool)), this, SLOT(onAddValue()));
    connect(button("mButtonDeleteValue"), SIGNAL(clicked(bool)), this, SLOT(onDeleteValue()));
    connect(button("mButtonDeleteAllValues"), SIGNAL(clicked(bool)), this, SLOT(onDeleteAllValues()));
    connect(button("mButtonRowUp"), SIGNAL(clicked(bool)), this, SLOT(onRowUp()));
    connect(button("mButtonRowDown"), SIGNAL(clicked(bool)), this, SLOT(onRowDown()));
    connect(button("mButtonFilter"), SIGNAL(clicked(bool)), this, SLOT(onFilterValue()));
    connect(button("mButtonExport"), SIGNAL(clicked(bool)), this, SLOT(onExportValues()));
    connect(button("mButtonImport"), SIGNAL(clicked(bool)), this, SLOT(onImportValues()));
    connect(mTable->selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
            SLOT(onSelectionChanged(QItemSelection, QItemSelection)));
    connect(mTable, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(onItemDoubleClicked(QModelIndex)));
    connect(mRampBox, SIGNAL(currentRampChanged()), this, SLOT(onColorRampChanged()));
    connect(mWidthBox, SIGNAL(valueChanged(double)), this, SLOT(onColorRampChanged()));
    connect(mOutlineColorButton, SIGNAL(colorChanged(QRgb)), this, SLOT(onColorRampChanged()));
    connect(mUnitBox, SIGNAL(currentIndexChanged(QString)), this, SLOT(onOutLineWidthUnitChanged(QString)));
}

QString TZRenderPanelGradingBase::currentField() const
{
    return mFieldBox->currentText();
}

int TZRenderPanelGradingBase::currentLevel() const
{
    return mLevelBox->currentText().toInt();
}

void TZRenderPanelGradingBase::fillFieldCombo(TEFeatureLayer* layer)
{
    const QSignalBlocker blocker(mFieldBox);
    mFieldBox->clear();
    const TERefPtr<TEFields> fields = layer->GetFields();
    if (!fields)
        return;
    // The first two fields (feature id and geometry) are never offered, nor
    // any field that does not hold numbers.
    for (int i = 2; i < fields->GetFieldCount(); ++i) {
        const TERefPtr<TEField> field = fields->GetField(i);
        if (field && int(field->GetFieldType()) < 4)
            mFieldBox->addItem(field->GetName().toQString());
    }
}

TEFeatureLayer* TZRenderPanelGradingBase::startReset()
{
    if (!isVisible() || !mModel)
        return nullptr;
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !layer->IsValid())
        return nullptr;
    fillFieldCombo(layer);
    mModel->clear();
    mTable->setColumnWidth(0, mSymbolColumnWidth);
    return layer;
}

void TZRenderPanelGradingBase::showFieldAndLevel(TEFeatureLayer* layer, const QString& field, int level)
{
    {
        const QSignalBlocker blocker(mLevelBox);
        if (level >= 1 && level <= mLevelBox->count())
            mLevelBox->setCurrentText(QString::number(level));
    }
    {
        const QSignalBlocker blocker(mFieldBox);
        mFieldBox->setCurrentText(field);
    }
    copyOutlineToModel();
    mModel->setup(layer, field, mRampBox->currentColorRamp(), level);
}

void TZRenderPanelGradingBase::setupFromBoxes()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!mModel || !layer)
        return;
    QString field;
    const TERefPtr<TEFields> fields = layer->GetFields();
    const QString shown = currentField();
    for (int i = 0; fields && i < fields->GetFieldCount() && !shown.isEmpty(); ++i) {
        const QString name = fields->GetField(i)->GetName().toQString();
        if (name.compare(shown, Qt::CaseInsensitive) == 0) {
            field = name;
            break;
        }
    }
    copyOutlineToModel();
    mModel->setup(layer, field, mRampBox->currentColorRamp(), currentLevel());
}

void TZRenderPanelGradingBase::onFieldChanged(int)
{
    setupFromBoxes();
}

void TZRenderPanelGradingBase::onLevelChanged(int)
{
    setupFromBoxes();
}

void TZRenderPanelGradingBase::onAddAllValues()
{
    if (!mModel || mModel->field().isEmpty())
        return;
    copyOutlineToModel();
    mModel->setLevel(currentLevel());
    mModel->setColorRamp(mRampBox->currentColorRamp());
    mModel->classifyAll(this);
    mTable->setColumnWidth(0, mSymbolColumnWidth);
    if (mFirstRowHeight > 0 && mModel->rowCount() > 0)
        mTable->setRowHeight(0, mFirstRowHeight);
}

void TZRenderPanelGradingBase::onAddValue()
{
    if (!mModel || !mModel->layer() || mModel->field().isEmpty())
        return;
    copyOutlineToModel();
    mModel->setColorRamp(mRampBox->currentColorRamp());
    mModel->addValues(QStringLiteral("GradingSymbol"), this);
}

QList<int> TZRenderPanelGradingBase::selectedRows() const
{
    QList<int> rows;
    const QModelIndexList selected = mTable->selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void TZRenderPanelGradingBase::onDeleteValue()
{
    if (!mModel)
        return;
    const QList<int> rows = selectedRows();
    if (rows.isEmpty()) {
        QMessageBox::warning(this, tr("Warning"), tr("No items selected!"), QMessageBox::Ok);
        return;
    }
    // The catch-all row stays.
    mModel->removeItems(rows);
}

void TZRenderPanelGradingBase::onDeleteAllValues()
{
    if (mModel)
        mModel->clear();
}

void TZRenderPanelGradingBase::onItemDoubleClicked(const QModelIndex& index)
{
    // Ranges and labels are edited in place; the symbol column opens the
    // style selector on the row's symbol.
    if (!mModel || !index.isValid() || index.column() != 0 || index.row() >= mModel->rowCount())
        return;
    TEStyle* current = mModel->item(index.row()).style.get();
    if (!current)
        return;
    TEStyle* chosen = selectStyle(current);
    if (chosen)
        mModel->setItemStyle(index.row(), TERefPtr<TEStyle>(chosen));
}

void TZRenderPanelGradingBase::onColorRampChanged()
{
    if (!mModel)
        return;
    copyOutlineToModel();
    const TEColorRamp* ramp = mRampBox->currentColorRamp();
    if (!ramp || !ramp->isValid())
        return;
    mModel->setColorRamp(ramp);
    mModel->assignColors();
}

void TZRenderPanelGradingBase::onOutLineWidthUnitChanged(const QString& unit)
{
    if (unit == tr("Point")) {
        mWidthBox->setSingleStep(1.0);
        mWidthBox->setDecimals(0);
        mWidthBox->setValue(1.0);
    } else {
        mWidthBox->setSingleStep(0.1);
        mWidthBox->setDecimals(2);
    }
    onColorRampChanged();
}

void TZRenderPanelGradingBase::onRowUp()
{
}

void TZRenderPanelGradingBase::onRowDown()
{
}

void TZRenderPanelGradingBase::onSelectionChanged(const QItemSelection&, const QItemSelection&)
{
    // Only class rows can be deleted: with the catch-all row alone selected
    // the delete button has nothing to do.
    const QList<int> rows = selectedRows();
    if (auto* remove = findChild<QPushButton*>(QStringLiteral("mButtonDeleteValue")))
        remove->setEnabled(!(rows.size() == 1 && rows.first() == 0));
}

void TZRenderPanelGradingBase::onFilterValue()
{
    if (mModel && mModel->layer() && !mModel->field().isEmpty())
        mModel->recount(this);
}

void TZRenderPanelGradingBase::onExportValues()
{
    if (mModel)
        mModel->exportValues(this);
}

void TZRenderPanelGradingBase::onImportValues()
{
    if (!mModel)
        return;
    copyOutlineToModel();
    mModel->setColorRamp(mRampBox->currentColorRamp());
    mModel->importValues(this);
}

void TZRenderPanelGradingBase::copyOutlineToModel()
{
    if (!mModel)
        return;
    mModel->setOutlineWidth(mWidthBox->value());
    mModel->setOutlineUnit(mUnitBox->currentData().toInt());
    mModel->setOutlineColor(TEColor(uint32_t(mOutlineColorButton->getColor()), 255));
}

void TZRenderPanelGradingBase::showOutline(double width, int unit, const TEColor& color)
{
    // Showing a stored outline must not recolour the loaded symbols.
    const QSignalBlocker colorBlocker(mOutlineColorButton);
    const QSignalBlocker unitBlocker(mUnitBox);
    const QSignalBlocker widthBlocker(mWidthBox);
    mOutlineColorButton->setColor(color.GetColor());
    mUnitBox->setCurrentIndex(std::max(0, mUnitBox->findData(unit)));
    const bool points = unit == 0;
    mWidthBox->setSingleStep(points ? 1.0 : 0.1);
    mWidthBox->setDecimals(points ? 0 : 2);
    mWidthBox->setValue(width);
    copyOutlineToModel();
}

QString TZRenderPanelGradingBase::withAsciiComma(QString text)
{
    return text.replace(QChar(0xFF0C), QLatin1Char(','));
}

void TZRenderPanelGradingBase::warnIncorrectItem()
{
    QMessageBox::warning(this, tr("Warning"), tr("There is an incorrect grading item!"), QMessageBox::Ok);
}

bool TZRenderPanelGradingBase::confirmIntersection()
{
    return QMessageBox::warning(this, tr("Warning"),
                                tr("The ranges of the different grades intersect. Do you want to continue?"),
                                QMessageBox::Ok | QMessageBox::Cancel)
        == QMessageBox::Ok;
}
