#include "TzImgRenderMultiStretchDialog.h"

#include "TZControlRender.h"
#include "TzRasterBandReader.h"

#include "TzSlotGuard.h"

#include "ui_TzImgRenderMultiStretchDialog.h"

#include "data/TERasterLayer.h"
#include "renders/TEMultiBandImageRender.h"

using namespace TZObjects;

TzImgRenderMultiStretchDialog::TzImgRenderMultiStretchDialog(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TzImgRenderMultiStretchDialog>())
{
    mUi->setupUi(this);
    mUi->toolButton_background->setColor(0);
    mUi->toolButton_nodata->setColor(0);
    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_MultiBandRaster;
}

TzImgRenderMultiStretchDialog::~TzImgRenderMultiStretchDialog() = default;

QString TzImgRenderMultiStretchDialog::name() const
{
    return QStringLiteral("ImageMultiStretch");
}

QString TzImgRenderMultiStretchDialog::title() const
{
    return tr("Image Stretch");
}

QString TzImgRenderMultiStretchDialog::description() const
{
    return QStringLiteral("MultiBand");
}

void TzImgRenderMultiStretchDialog::onReset()
{
    if (!isVisible())
        return;
    mRasterLayer = currentRasterLayer();
    load();
}

void TzImgRenderMultiStretchDialog::showBandStatistics()
{
    TERasterProps::BandStatistics s;
    if (!mRasterLayer || !TzRasterBandReader::statistics(this, mRasterLayer->GetRaster().get(), mBand, s))
        return;
    mMinimum = s.minimum;
    mMaximum = s.maximum;
    mUi->lineEdit_min->setText(QString::number(mMinimum, 'g', 6));
    mUi->lineEdit_max->setText(QString::number(mMaximum, 'g', 6));
}

void TzImgRenderMultiStretchDialog::load()
{
    if (!mRasterLayer || !mRasterLayer->GetRaster())
        return;
    showBandStatistics();
    if (const TERefPtr<TEImageRender> render = mRasterLayer->GetImageRender()) {
        const TEColor nodata = render->GetNodataColor();
        mUi->toolButton_nodata->setColor(
            render->GetNodataColorType() != 0 ? qRgb(nodata.getR(), nodata.getG(), nodata.getB()) : 0);
    }
    // At most the first three bands are offered.
    const int offered = mRasterLayer->GetRaster()->GetBandCount() == 2 ? 2 : 3;
    mUi->comboBox_band->clear();
    for (int band = 1; band <= offered; ++band)
        mUi->comboBox_band->addItem(QStringLiteral("Band_%1").arg(band));
    mUi->comboBox_band->setCurrentIndex(0);
    // Made again at every load (the slot does the same however often it runs).
    connect(mUi->comboBox_band, SIGNAL(currentIndexChanged(int)), this, SLOT(onBandChanged(int)));
}

void TzImgRenderMultiStretchDialog::onBandChanged(int index)
{
    tzRunSlotGuarded(this, [&] {
        // Clearing the box reports index -1.
        if (index < 0)
            return;
        mBand = index + 1;
        showBandStatistics();
    });
}

bool TzImgRenderMultiStretchDialog::onApply()
{
    if (!mRasterLayer || mMinimum > mMaximum)
        return true;
    const QRgb backgroundButton = mUi->toolButton_background->getColor();
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
    render->SetBackgroundColor(TEColor(qRed(backgroundButton), qGreen(backgroundButton), qBlue(backgroundButton)));
    if (const auto multi = render.cast<TEMultiBandImageRender>()) {
        multi->setImageRenderMODE(8);
        multi->SetStretchBandIndex(mBand);
    }
    return true;
}
