#include "TzImgRenderRGBCompositeDialog.h"

#include "TZControlRender.h"
#include "TZDialogBandPixHistogram.h"
#include "TzModelBandCheckList.h"
#include "UserDelegate.h"

#include "TzSlotGuard.h"

#include "ui_TzImgRenderRGBCompositeDialog.h"

#include "data/TERasterLayer.h"
#include "renders/TEMultiBandImageRender.h"

#include <QHeaderView>

using namespace TZObjects;

namespace {

QString significant6(double value)
{
    return QString::number(value, 'g', 6);
}

QRgb buttonColor(const TEColor& color)
{
    return qRgb(color.getR(), color.getG(), color.getB());
}

} // namespace

TzImgRenderRGBCompositeDialog::TzImgRenderRGBCompositeDialog(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TzImgRenderRGBCompositeDialog>())
{
    mUi->setupUi(this);
    mUi->comboBox_stretchType->addItem(tr("None"));
    mUi->comboBox_stretchType->addItem(tr("Percent Clip"));
    mUi->comboBox_stretchType->setCurrentIndex(TEMultiBandImageRender::PercentClip);
    mUi->toolButton_background->setColor(0);
    mUi->toolButton_nodata->setColor(0);
    connect(mUi->pushButton_histogram, SIGNAL(clicked(bool)), this, SLOT(onShowHistogram()));

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_MultiBandRaster;
}

TzImgRenderRGBCompositeDialog::~TzImgRenderRGBCompositeDialog() = default;

QString TzImgRenderRGBCompositeDialog::name() const
{
    return QStringLiteral("ImageRGBComposite");
}

QString TzImgRenderRGBCompositeDialog::title() const
{
    return tr("Image RGBComposite");
}

int TzImgRenderRGBCompositeDialog::bandNumber(const QString& name, int bandCount)
{
    if (name.isEmpty())
        return 0;
    for (int band = 1; band <= bandCount; ++band) {
        if (name == QStringLiteral("Band_%1").arg(band))
            return band;
    }
    return 0;
}

void TzImgRenderRGBCompositeDialog::fitColumns()
{
    // Half the visible width each, so that no scroll bar appears.
    const int half = mUi->tableView->viewport()->width() / 2;
    mUi->tableView->setColumnWidth(0, half);
    mUi->tableView->setColumnWidth(1, half);
}

void TzImgRenderRGBCompositeDialog::resizeEvent(QResizeEvent* event)
{
    TZRenderPanel::resizeEvent(event);
    if (mModel)
        fitColumns();
}

void TzImgRenderRGBCompositeDialog::showEvent(QShowEvent* event)
{
    TZRenderPanel::showEvent(event);
    if (mModel)
        fitColumns();
}

void TzImgRenderRGBCompositeDialog::onReset()
{
    if (!isVisible())
        return;
    mRasterLayer = currentRasterLayer();
    if (!mRasterLayer || !mRasterLayer->GetRaster())
        return;
    mBandCount = mRasterLayer->GetRaster()->GetBandCount();
    if (mBandCount < 3)
        return;
    if (!mModel) {
        mModel = new TzModelBandCheckList(this);
        mUi->tableView->setModel(mModel);
        mUi->tableView->setAlternatingRowColors(true);
        mUi->tableView->horizontalHeader()->setFixedHeight(25);
        mUi->tableView->verticalHeader()->hide();
        mUi->tableView->setEditTriggers(QAbstractItemView::SelectedClicked);
        mDelegate = new UserDelegate(mBandCount, this);
        mUi->tableView->setItemDelegateForColumn(1, mDelegate);
    }
    mDelegate->setBandCount(mBandCount);
    load();
    fitColumns();
}

void TzImgRenderRGBCompositeDialog::load()
{
    TERasterProps* raster = mRasterLayer->GetRaster().get();
    QLineEdit* const fields[3][4] = {
        {mUi->lineEdit_redMin, mUi->lineEdit_redMax, mUi->lineEdit_redMean, mUi->lineEdit_redStdDev},
        {mUi->lineEdit_greenMin, mUi->lineEdit_greenMax, mUi->lineEdit_greenMean, mUi->lineEdit_greenStdDev},
        {mUi->lineEdit_blueMin, mUi->lineEdit_blueMax, mUi->lineEdit_blueMean, mUi->lineEdit_blueStdDev}};
    for (int band = 1; band <= 3; ++band) {
        TERasterProps::BandStatistics s;
        const bool known = TzRasterBandReader::statistics(this, raster, band, s);
        const double values[4] = {s.minimum, s.maximum, s.mean, s.stdDev};
        for (int i = 0; i < 4; ++i)
            fields[band - 1][i]->setText(known ? significant6(values[i]) : QString());
    }

    // Red, green and blue always start from bands 1, 2 and 3.
    QList<TzModelBandCheckList::Row> rows{{tr("Red"), QStringLiteral("Band_1"), mUseRed},
                                          {tr("Green"), QStringLiteral("Band_2"), mUseGreen},
                                          {tr("Blue"), QStringLiteral("Band_3"), mUseBlue}};
    if (mBandCount > 3)
        rows.append({tr("Alpha"), QString(), mUseAlpha});

    const TERefPtr<TEImageRender> render = mRasterLayer->GetImageRender();
    if (render) {
        // White (all bits set) shows as no colour; so does a see-through
        // colour, which is what "no colour" is stored as.
        const TEColor background = render->GetBackgroundColor();
        mUi->toolButton_background->setColor(
            background == TEColor(0xFFFFFFFFu, 255) || background.getA() == 0 ? 0 : buttonColor(background));
        mUi->toolButton_nodata->setColor(render->GetNodataColorType() != 0 ? buttonColor(render->GetNodataColor()) : 0);
    }
    if (const auto multi = render.cast<TEMultiBandImageRender>()) {
        if (rows.size() > 3) {
            rows[3].checked = multi->getAlphaBandUse();
            const int alpha = multi->getAlphaBandNum();
            if (rows[3].checked && alpha >= 1 && alpha <= 4)
                rows[3].band = QStringLiteral("Band_%1").arg(alpha);
        }
        mUi->comboBox_stretchType->setCurrentIndex(multi->getStretchType());
    }
    mModel->setRows(rows);
}

bool TzImgRenderRGBCompositeDialog::onApply()
{
    if (!mModel || !mRasterLayer)
        return true;
    const QList<TzModelBandCheckList::Row> rows = mModel->rows();
    auto used = [&](int row) { return row < rows.size() && rows[row].checked; };
    auto band = [&](int row, int fallback) {
        const int number = row < rows.size() ? bandNumber(rows[row].band, mBandCount) : 0;
        return number > 0 ? number : fallback;
    };
    mUseRed = used(0);
    mUseGreen = used(1);
    mUseBlue = used(2);
    mUseAlpha = used(3);

    const QRgb backgroundButton = mUi->toolButton_background->getColor();
    const TEColor background = backgroundButton == 0
        ? TEColor(0, 0, 0, 0)
        : TEColor(qRed(backgroundButton), qGreen(backgroundButton), qBlue(backgroundButton));
    const int stretchType = mUi->comboBox_stretchType->currentIndex();
    const double stretchMin = mUi->lineEdit_stretchMin->text().toDouble();
    const double stretchMax = mUi->lineEdit_stretchMax->text().toDouble();

    const TERefPtr<TEImageRender> render = mRasterLayer->GetImageRender();
    if (!render)
        return true;
    const QRgb nodata = mUi->toolButton_nodata->getColor();
    if (nodata != 0) {
        render->SetNodataColorType(1);
        render->SetNodataColor(TEColor(qRed(nodata), qGreen(nodata), qBlue(nodata)));
    } else {
        render->SetNodataColorType(0);
    }
    render->SetBackgroundColor(background);

    const auto multi = render.cast<TEMultiBandImageRender>();
    if (!multi)
        return true;
    multi->setImageRenderMODE(5);
    multi->setUseRedBand(mUseRed);
    multi->setUseGreenBand(mUseGreen);
    multi->setUseBlueBand(mUseBlue);
    multi->setAlphaBandUse(mUseAlpha);
    multi->setRedBand(band(0, 1));
    multi->setGreenBand(band(1, 2));
    multi->setBlueBand(band(2, 3));
    if (mBandCount > 3)
        multi->setAlphaBandNum(band(3, 4));
    multi->setStretchMin(stretchMin);
    multi->setStretchMax(stretchMax);
    multi->setStretchType(stretchType);
    return true;
}

void TzImgRenderRGBCompositeDialog::onShowHistogram()
{
    tzRunSlotGuarded(this, [&] {
        TERasterLayer* layer = currentRasterLayer();
        const TERefPtr<TERasterProps> raster = layer ? layer->GetRaster() : TERefPtr<TERasterProps>();
        if (!raster)
            return;
        // Computed on the first press only, for every band, and kept.
        if (mHistograms.isEmpty()) {
            QList<int> bands;
            for (int band = 1; band <= raster->GetBandCount(); ++band)
                bands << band;
            if (!TzRasterBandReader::histograms(this, raster.get(), bands, mHistograms))
                return;
        }
        TZDialogBandPixHistogram dialog(this);
        dialog.setData(raster.get(), mHistograms);
        dialog.exec();
    });
}
