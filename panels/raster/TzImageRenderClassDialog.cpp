#include "TzImageRenderClassDialog.h"

#include "TZModelColorList.h"

#include "ui_TzImageRenderClassDialog.h"

#include "data/TERasterProps.h"
#include "renders/TEImageClassRenderInfo.h"

#include <QMessageBox>
#include <QSignalBlocker>

using namespace TZObjects;

TzImageRenderClassDialog::TzImageRenderClassDialog(QWidget* parent)
    : TzImageRenderTableDialog(parent)
    , mUi(std::make_unique<Ui::TzImageRenderClassDialog>())
{
    mUi->setupUi(this);
    for (int count = 1; count <= 32; ++count)
        mUi->comboBox_classes->addItem(QString::number(count));
    mUi->comboBox_classes->setCurrentIndex(3);
    mUi->comboBox_color->setDefaultGroup(QStringLiteral("DEM"), QStringLiteral("Default"));
    mUi->toolButton_nodata->setColor(0);

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_SingleBandRaster;
}

TzImageRenderClassDialog::~TzImageRenderClassDialog() = default;

QString TzImageRenderClassDialog::name() const
{
    return QStringLiteral("ImageClass");
}

QString TzImageRenderClassDialog::title() const
{
    return tr("Image Class");
}

QTableView* TzImageRenderClassDialog::tableView() const
{
    return mUi->tableView;
}

TZColorBtn* TzImageRenderClassDialog::nodataButton() const
{
    return mUi->toolButton_nodata;
}

TZColorSchemeComboBox* TzImageRenderClassDialog::colorCombo() const
{
    return mUi->comboBox_color;
}

void TzImageRenderClassDialog::connectSlots()
{
    connect(mUi->comboBox_classes, SIGNAL(currentIndexChanged(int)), this, SLOT(onTypeChanged(int)));
    connect(mUi->comboBox_color, SIGNAL(currentRampChanged()), this, SLOT(onColorChanged()));
    connect(mUi->tableView, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(onItemDoubleClicked(QModelIndex)));
    connect(mModel, SIGNAL(rowDataChanged(int, QString)), this, SLOT(onItemEntered(int, QString)));
}

TERefPtr<TEImageRenderInfo> TzImageRenderClassDialog::makeInfo() const
{
    return MakeRef<TEImageClassRenderInfo>();
}

void TzImageRenderClassDialog::readRaster(TERasterProps* raster)
{
    TERasterProps::BandStatistics statistics;
    if (raster->GetStatistics(1, statistics)) {
        mMinimum = statistics.minimum;
        mMaximum = statistics.maximum;
    } else {
        mMinimum = mMaximum = 0.0;
    }
}

void TzImageRenderClassDialog::fillRows()
{
    auto* info = dynamic_cast<TEImageClassRenderInfo*>(mInfo.get());
    const int count = info ? info->GetItemCount() : 0;
    if (count <= 0)
        return;
    mLastIndex = count - 1;
    {
        const QSignalBlocker blocker(mUi->comboBox_classes);
        mUi->comboBox_classes->setCurrentIndex(std::min(count, mUi->comboBox_classes->count()) - 1);
    }
    QVector<QColor> colors;
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        double low = 0.0;
        double high = 0.0;
        TEColor color;
        info->GetClassItemInfo(i, low, high, color);
        colors.append(QColor(color.getR(), color.getG(), color.getB()));
        texts.append(rangeText(low, high));
    }
    mModel->appendRows(colors, texts);
}

bool TzImageRenderClassDialog::parseRange(const QString& text, double& low, double& high)
{
    QString normalised = text;
    normalised.replace(QChar(0xFF0C), QLatin1Char(','));
    const int comma = normalised.lastIndexOf(QLatin1Char(','));
    if (comma < 0)
        return false;
    bool lowOk = false;
    bool highOk = false;
    low = normalised.left(comma).trimmed().toDouble(&lowOk);
    high = normalised.mid(comma + 1).trimmed().toDouble(&highOk);
    return lowOk && highOk && low <= high;
}

QString TzImageRenderClassDialog::rangeText(double low, double high)
{
    return QString::number(low, 'f', 6) + QLatin1Char(',') + QString::number(high, 'f', 6);
}

void TzImageRenderClassDialog::makeEqualClasses(int count)
{
    if (!mModel || count < 1)
        return;
    const double step = (mMaximum - mMinimum) / count;
    const TERefPtr<TEColorRamp> ramp = currentRampSplit(count);
    QVector<QColor> colors;
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        const double low = mMinimum + i * step;
        colors.append(ramp ? ramp->getColor(i).toQColor() : QColor(Qt::gray));
        texts.append(rangeText(low, low + step));
    }
    mModel->clear();
    mModel->appendRows(colors, texts);
    fitValueColumn();
}

void TzImageRenderClassDialog::onTypeChanged(int index)
{
    // A band of one value has nothing to divide.
    if (mMinimum == mMaximum || index == mLastIndex || index < 0)
        return;
    mLastIndex = index;
    makeEqualClasses(index + 1);
}

void TzImageRenderClassDialog::onColorChanged()
{
    // Recolouring rebuilds every class: ranges edited by hand are replaced.
    if (mLastIndex >= 0)
        makeEqualClasses(mLastIndex + 1);
}

void TzImageRenderClassDialog::onItemDoubleClicked(const QModelIndex& index)
{
    pickRowColor(index);
}

void TzImageRenderClassDialog::onItemEntered(int row, QString text)
{
    if (!mModel || row < 0 || row >= mModel->rowCount())
        return;
    double low = 0.0;
    double high = 0.0;
    if (!parseRange(text, low, high)) {
        QMessageBox::warning(this, tr("Warning"), tr("Data is not standard!"));
        return;
    }
    if (row + 1 < mModel->rowCount()) {
        double nextLow = 0.0;
        double nextHigh = 0.0;
        parseRange(mModel->row(row + 1).text, nextLow, nextHigh);
        if (high >= nextHigh) {
            QMessageBox::warning(this, tr("Warning"), tr("Data is out of bound!"));
            return;
        }
        mModel->setRowText(row + 1, rangeText(high, nextHigh));
    }
    mModel->setRowText(row, text);
}

bool TzImageRenderClassDialog::onApply()
{
    auto* info = dynamic_cast<TEImageClassRenderInfo*>(mInfo.get());
    if (!info || !mModel)
        return true;
    cancelActiveDrawing();
    const int count = mModel->rowCount();
    keepAppliedRamp();
    info->SetClassCount(count);
    for (int i = 0; i < count; ++i) {
        double low = 0.0;
        double high = 0.0;
        parseRange(mModel->row(i).text, low, high);
        const QColor color = mModel->rowColor(i);
        info->SetClassItemInfo(i, low, high, TEColor(color.red(), color.green(), color.blue()));
    }
    applyToRender();
    return true;
}
