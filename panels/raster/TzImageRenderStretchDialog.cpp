#include "TzImageRenderStretchDialog.h"

#include "TZControlRender.h"
#include "TZDialogBandPixHistogram.h"

#include "TzSlotGuard.h"

#include "ui_TzImageRenderStretchDialog.h"

#include "data/TERasterDirLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TESingleBandImageRender.h"
#include "symbology/TEColorRamp.h"
#include "widgets/TZWaitDialog.h"

#include <algorithm>
#include <cmath>

using namespace TZObjects;

namespace {

enum Method { MinMax = 0, StandardDeviation = 1, PercentClip = 2 };

QString fixed6(double value)
{
    return QString::number(value, 'f', 6);
}

TERefPtr<TEImageStretchRenderInfo> stretchInfoOf(const TERefPtr<TERender>& render)
{
    const auto single = render.cast<TESingleBandImageRender>();
    return single ? single->getRenderInfo().cast<TEImageStretchRenderInfo>() : TERefPtr<TEImageStretchRenderInfo>();
}

int toByte(float channel)
{
    return std::clamp(int(std::lround(channel)), 0, 255);
}

} // namespace

TzImageRenderStretchDialog::TzImageRenderStretchDialog(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TzImageRenderStretchDialog>())
{
    mUi->setupUi(this);
    mUi->comboBox_method->addItem(tr("Min And Max Value Stretch"));
    mUi->comboBox_method->addItem(tr("Standard Deviation Stretch"));
    mUi->comboBox_method->addItem(tr("Percent Clip Stretch"));
    mUi->comboBox_method->setCurrentIndex(PercentClip);
    showParameters(PercentClip);
    mUi->comboBox_color->setDefaultGroup(QStringLiteral("DEM"), QStringLiteral("Default"), 0);
    mUi->toolButton_nodata->setColor(0);

    connect(mUi->comboBox_method, SIGNAL(currentIndexChanged(int)), this, SLOT(onMethodChanged(int)));
    connect(mUi->pushButton_histogram, SIGNAL(clicked(bool)), this, SLOT(onShowHistogram()));

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_SingleBandRaster << TELayer::LT_RasterDir;
}

TzImageRenderStretchDialog::~TzImageRenderStretchDialog() = default;

QString TzImageRenderStretchDialog::name() const
{
    return QStringLiteral("ImageStretch");
}

QString TzImageRenderStretchDialog::title() const
{
    return tr("Image Stretch");
}

QString TzImageRenderStretchDialog::description() const
{
    return QStringLiteral("SingleBand");
}

void TzImageRenderStretchDialog::showParameters(int method)
{
    mUi->label_standard->setVisible(method == StandardDeviation);
    mUi->lineEdit_standard->setVisible(method == StandardDeviation);
    mUi->label->setVisible(method == PercentClip);
    mUi->lineEdit_LeftStretchValue->setVisible(method == PercentClip);
    mUi->label_2->setVisible(method == PercentClip);
    mUi->lineEdit_RightStretchValue->setVisible(method == PercentClip);
}

void TzImageRenderStretchDialog::onMethodChanged(int index)
{
    showParameters(index);
}

void TzImageRenderStretchDialog::onReset()
{
    if (!isVisible())
        return;
    TELayer* layer = TZControlRender::instance(nullptr)->layer();
    if (!layer)
        return;
    mUi->comboBox_color->setDefaultGroup(QStringLiteral("DEM"), QStringLiteral("Default"), 0);
    mRasterLayer = dynamic_cast<TERasterLayer*>(layer);
    if (!mRasterLayer)
        mDirectoryLayer = true;

    const TERefPtr<TEImageStretchRenderInfo> info = stretchInfoOf(layer->GetRender());
    if (!info)
        return;
    if (info->GetAlgoType() == TEImageStretchRenderInfo::StandardDeviation)
        mLoadedMethod = StandardDeviation;
    else
        mLoadedMethod = info->IsPercentClip() ? PercentClip : MinMax;

    if (mDirectoryLayer) {
        {
            const QSignalBlocker blocker(mUi->comboBox_method);
            mUi->comboBox_method->clear();
            mUi->comboBox_method->addItem(tr("Min And Max Value Stretch"));
            mUi->comboBox_method->setCurrentIndex(0);
        }
        showParameters(-1);
        TERasterDirLayer* directory = currentRasterDirLayer();
        const TERefPtr<TEImageStretchRenderInfo> directoryInfo =
            directory ? stretchInfoOf(directory->GetRender()) : TERefPtr<TEImageStretchRenderInfo>();
        if (directoryInfo) {
            double minimum = 0.0;
            double maximum = 0.0;
            directoryInfo->GetMinMaxVal(minimum, maximum);
            mUi->lineEdit_min->setText(fixed6(minimum));
            mUi->lineEdit_max->setText(fixed6(maximum));
        }
        return;
    }

    {
        const QSignalBlocker blocker(mUi->comboBox_method);
        mUi->comboBox_method->setCurrentIndex(mLoadedMethod);
    }
    showParameters(mLoadedMethod);
    if (mLoadedMethod == PercentClip) {
        mUi->lineEdit_LeftStretchValue->setText(fixed6(info->GetLeftClipValue()));
        mUi->lineEdit_RightStretchValue->setText(fixed6(info->GetRightClipValue()));
    }
    load();
}

void TzImageRenderStretchDialog::load()
{
    if (!mRasterLayer)
        return;
    mStretchInfo = nullptr;
    const TERefPtr<TERasterProps> raster = mRasterLayer->GetRaster();
    if (!raster)
        return;
    TERasterProps::BandStatistics statistics;
    if (TzRasterBandReader::statistics(this, raster.get(), 1, statistics)) {
        mStdDev = statistics.stdDev;
        mMean = statistics.mean;
    }
    const int dataType = raster->GetDataType();

    const TERefPtr<TEImageRender> render = mRasterLayer->GetImageRender();
    if (render)
        mUi->toolButton_nodata->setColor(render->GetNodataColorType() != 0
                                             ? qRgb(render->GetNodataColor().getR(), render->GetNodataColor().getG(),
                                                    render->GetNodataColor().getB())
                                             : 0);
    if (const auto single = render.cast<TESingleBandImageRender>()) {
        if (single->getImageRenderMODE() != 1) {
            mUi->comboBox_color->setDefaultGroup(QStringLiteral("DEM"), QStringLiteral("Default"), 0);
        } else {
            mStretchInfo = single->getRenderInfo().cast<TEImageStretchRenderInfo>();
            if (mAppliedRamp)
                mUi->comboBox_color->setColorRamp(mAppliedRamp.get());
            else
                mUi->comboBox_color->setDefaultGroup(QStringLiteral("DEM"), QStringLiteral("Default"), 0);
        }
        if (!mStretchInfo) {
            // Reads the band's histogram as well: off the GUI thread.
            auto info = MakeRef<TEImageStretchRenderInfo>();
            bool filled = false;
            TZWaitDialog wait(tr("Reading the band..."), this);
            wait.WaitFor([&] { filled = info->AddFromRaster(raster.get(), 1); });
            if (filled)
                mStretchInfo = info;
        }
    }
    if (!mStretchInfo)
        return;
    mStretchInfo->GetMinMaxVal(mMinimum, mMaximum);
    const bool floating = dataType == 6 || dataType == 7;
    mUi->lineEdit_min->setText(floating ? fixed6(mMinimum) : QString::number(mMinimum, 'g', 6));
    mUi->lineEdit_max->setText(floating ? fixed6(mMaximum) : QString::number(mMaximum, 'g', 6));
}

bool TzImageRenderStretchDialog::onApply()
{
    if (mDirectoryLayer || !mStretchInfo || mMinimum > mMaximum)
        return true;
    const QString standardText = mUi->lineEdit_standard->text();
    // The method found at the last reset decides, not the one chosen now.
    if (standardText.isEmpty() && mLoadedMethod == PercentClip)
        return true;
    const int method = mUi->comboBox_method->currentIndex();
    if (method < 0)
        return true;

    // An empty text keeps 2.5 as it is, not as a multiple of the deviation.
    mStretchInfo->SetStandardValue(standardText.isEmpty() ? 2.5 : standardText.toDouble() * mStdDev);
    switch (method) {
    case MinMax:
        mStretchInfo->SetAlgoType(TEImageStretchRenderInfo::MinMax);
        mStretchInfo->SetPercentClip(false);
        break;
    case StandardDeviation:
        mStretchInfo->SetAlgoType(TEImageStretchRenderInfo::StandardDeviation);
        break;
    case PercentClip:
        mStretchInfo->SetAlgoType(TEImageStretchRenderInfo::MinMax);
        mStretchInfo->SetPercentClip(true);
        mStretchInfo->SetLeftClipValue(mUi->lineEdit_LeftStretchValue->text().toDouble());
        mStretchInfo->SetRightClipValue(mUi->lineEdit_RightStretchValue->text().toDouble());
        break;
    default:
        break;
    }
    mStretchInfo->SetMinMaxVal(mMinimum, mMaximum);
    mStretchInfo->SetMeanValue(mMean);

    const int count = mStretchInfo->GetItemCount();
    mAppliedRamp = nullptr;
    if (TEColorRamp* ramp = mUi->comboBox_color->currentColorRamp()) {
        mAppliedRamp = ramp->clone();
        mAppliedRamp->setLevel(count);
        for (int i = 0; i < count; ++i) {
            const rgb_color<float> c = mAppliedRamp->getColor(i);
            mStretchInfo->SetItemColr(i, TEColor(toByte(c.r), toByte(c.g), toByte(c.b)));
        }
    }

    const TERefPtr<TEImageRender> render = mRasterLayer ? mRasterLayer->GetImageRender() : TERefPtr<TEImageRender>();
    if (!render)
        return true;
    const QRgb nodata = mUi->toolButton_nodata->getColor();
    if (nodata != 0) {
        render->SetNodataColorType(1);
        render->SetNodataColor(TEColor(qRed(nodata), qGreen(nodata), qBlue(nodata)));
    } else {
        render->SetNodataColorType(0);
    }
    if (mSetInfoOnApply) {
        if (const auto single = render.cast<TESingleBandImageRender>())
            single->setRenderInfo(mStretchInfo);
    }
    return true;
}

void TzImageRenderStretchDialog::onShowHistogram()
{
    tzRunSlotGuarded(this, [&] {
        TERefPtr<TERasterProps> raster;
        if (TERasterLayer* layer = currentRasterLayer())
            raster = layer->GetRaster();
        else if (TERasterDirLayer* directory = currentRasterDirLayer())
            raster = directory->GetRaster();
        if (!raster)
            return;
        // Computed on the first press only, and kept.
        if (mHistograms.isEmpty() && !TzRasterBandReader::histograms(this, raster.get(), {1}, mHistograms))
            return;
        TZDialogBandPixHistogram dialog(this);
        dialog.setData(raster.get(), mHistograms);
        dialog.exec();
    });
}
