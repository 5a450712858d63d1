#include "TzImageRenderUniqueDialog.h"

#include "TZModelColorList.h"

#include "ui_TzImageRenderUniqueDialog.h"

#include "data/TERasterProps.h"
#include "renders/TEImageUniqueRenderInfo.h"

#include <QMessageBox>

using namespace TZObjects;

TzImageRenderUniqueDialog::TzImageRenderUniqueDialog(QWidget* parent)
    : TzImageRenderTableDialog(parent)
    , mUi(std::make_unique<Ui::TzImageRenderUniqueDialog>())
{
    mUi->setupUi(this);
    mUi->comboBox_color->setDefaultGroup(QStringLiteral("DEM"), QStringLiteral("Default"));
    mUi->toolButton_nodata->setColor(0);
    // The values are read from the raster; only their colours are edited,
    // through the colour column.
    mUi->tableView->setEditTriggers(QAbstractItemView::NoEditTriggers);

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_SingleBandRaster;
}

TzImageRenderUniqueDialog::~TzImageRenderUniqueDialog() = default;

QString TzImageRenderUniqueDialog::name() const
{
    return QStringLiteral("ImageUnique");
}

QString TzImageRenderUniqueDialog::title() const
{
    return tr("Image Unique");
}

QTableView* TzImageRenderUniqueDialog::tableView() const
{
    return mUi->tableView;
}

TZColorBtn* TzImageRenderUniqueDialog::nodataButton() const
{
    return mUi->toolButton_nodata;
}

TZColorSchemeComboBox* TzImageRenderUniqueDialog::colorCombo() const
{
    return mUi->comboBox_color;
}

void TzImageRenderUniqueDialog::connectSlots()
{
    connect(mUi->tableView, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(onItemDoubleClicked(QModelIndex)));
    connect(mUi->comboBox_color, SIGNAL(currentRampChanged()), this, SLOT(onColorChanged()));
}

TERefPtr<TEImageRenderInfo> TzImageRenderUniqueDialog::makeInfo() const
{
    return MakeRef<TEImageUniqueRenderInfo>();
}

qint64 TzImageRenderUniqueDialog::pixelCount(TERasterProps* raster) const
{
    return qint64(raster->GetWidth()) * qint64(raster->GetHeight());
}

bool TzImageRenderUniqueDialog::mayFillInfo(TERasterProps* raster)
{
    if (pixelCount(raster) <= LargePixelCount)
        return true;
    return QMessageBox::warning(this, tr("Warning"),
                                tr("This data big, get unique data is slowly,would you like to continus?"),
                                QMessageBox::Yes | QMessageBox::Cancel)
        == QMessageBox::Yes;
}

void TzImageRenderUniqueDialog::infoFilled()
{
    auto* info = dynamic_cast<TEImageUniqueRenderInfo*>(mInfo.get());
    if (info && !info->IsComplete()) {
        QMessageBox::information(this, tr("Information"),
                                 tr("The band has more than %1 distinct values. The scan stopped there, so the "
                                    "table is incomplete: values not listed are not drawn.")
                                     .arg(TEImageUniqueRenderInfo::MaxValueCount));
    }
}

void TzImageRenderUniqueDialog::fillRows()
{
    auto* info = dynamic_cast<TEImageUniqueRenderInfo*>(mInfo.get());
    const int count = info ? info->GetItemCount() : 0;
    QVector<QColor> colors;
    QStringList texts;
    colors.reserve(count);
    texts.reserve(count);
    for (int i = 0; i < count; ++i) {
        TEColor color;
        double value = 0.0;
        info->GetItemColr(i, &color);
        info->GetValue(i, value);
        colors.append(QColor(color.getR(), color.getG(), color.getB()));
        texts.append(QString::number(value, 'f', 6));
    }
    mModel->appendRows(colors, texts);
}

void TzImageRenderUniqueDialog::onItemDoubleClicked(const QModelIndex& index)
{
    pickRowColor(index);
}

void TzImageRenderUniqueDialog::onColorChanged()
{
    if (!mModel || mModel->rowCount() == 0)
        return;
    const int count = mModel->rowCount();
    const TERefPtr<TEColorRamp> ramp = currentRampSplit(count);
    if (!ramp)
        return;
    // Row i takes colour i of the ramp divided into as many colours as rows.
    QVector<QColor> colors;
    colors.reserve(count);
    for (int i = 0; i < count; ++i)
        colors.append(ramp->getColor(i).toQColor());
    mModel->setRowColors(colors);
}

bool TzImageRenderUniqueDialog::onApply()
{
    auto* info = dynamic_cast<TEImageUniqueRenderInfo*>(mInfo.get());
    if (!info || !mModel)
        return true;
    cancelActiveDrawing();
    keepAppliedRamp();
    const int count = std::min(mModel->rowCount(), info->GetItemCount());
    for (int i = 0; i < count; ++i) {
        const QColor color = mModel->rowColor(i);
        info->SetColorInfo(i, color.red(), color.green(), color.blue());
    }
    applyToRender();
    return true;
}
