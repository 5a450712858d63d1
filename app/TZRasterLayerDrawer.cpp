#include "TZRasterLayerDrawer.h"

#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"
#include "view/TETrackCancel.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace TZObjects;

namespace {

// Side of the coarse whole-raster read behind percent clips.
constexpr int SampleSide = 256;

bool isNoData(double value, const std::pair<bool, double>& noData)
{
    return std::isnan(value) || (noData.first && value == noData.second);
}

} // namespace

TZRasterLayerDrawer::TZRasterLayerDrawer(TERefPtr<TERasterProps> raster, const TEImageRender* render)
    : mRaster(std::move(raster))
    , mRender(render ? render->CloneRender() : TERefPtr<TERender>())
{
}

bool TZRasterLayerDrawer::paintsBackground(const TEColor& color)
{
    return color.getA() != 0 && color != TEColor(255, 255, 255);
}

bool TZRasterLayerDrawer::percentClip(int band, double lowPercent, double highPercent, double& low, double& high) const
{
    const QSize sample(std::min(SampleSide, mRaster->GetWidth()), std::min(SampleSide, mRaster->GetHeight()));
    std::vector<double> values;
    if (!mRaster->ReadWindow(band, QRect(0, 0, mRaster->GetWidth(), mRaster->GetHeight()), sample, values))
        return false;
    bool hasNoData = false;
    const double noData = mRaster->GetNoDataValue(band, &hasNoData);
    values.erase(std::remove_if(values.begin(), values.end(),
                                [&](double v) { return isNoData(v, {hasNoData, noData}); }),
                 values.end());
    if (values.empty())
        return false;
    auto at = [&](double percent) {
        const auto index = static_cast<std::size_t>(std::clamp(percent / 100.0, 0.0, 1.0) * (values.size() - 1));
        std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(index), values.end());
        return values[index];
    };
    low = at(lowPercent);
    high = at(100.0 - highPercent);
    if (high <= low)
        high = low + 1.0;
    return true;
}

TZRasterLayerDrawer::Plan TZRasterLayerDrawer::makePlan() const
{
    Plan plan;
    const int bandCount = mRaster->GetBandCount();
    if (auto* single = dynamic_cast<const TESingleBandImageRender*>(mRender.get())) {
        plan.mode = Mode::SingleBand;
        plan.bands[0] = single->GetBandIndex();
    } else if (auto* multi = dynamic_cast<const TEMultiBandImageRender*>(mRender.get())) {
        if (multi->getImageRenderMODE() == 8) {
            // The chosen band between its own minimum and maximum, whatever
            // its data type.
            plan.mode = Mode::StretchOneBand;
            plan.bands = {{multi->GetStretchBandIndex(), 0, 0, 0}};
            TERasterProps::BandStatistics statistics;
            if (mRaster->GetStatistics(plan.bands[0], statistics, TERasterProps::Accuracy::ApproximateIfLarge)) {
                plan.low[0] = statistics.minimum;
                plan.high[0] = statistics.maximum;
            }
        } else {
            plan.mode = Mode::Composite;
            plan.bands = {{multi->getUseRedBand() ? multi->getRedBand() : 0,
                           multi->getUseGreenBand() ? multi->getGreenBand() : 0,
                           multi->getUseBlueBand() ? multi->getBlueBand() : 0,
                           multi->getAlphaBandUse() ? multi->getAlphaBandNum() : 0}};
            // The alpha band is an opacity as it is (0..255): clipping it
            // would turn a mostly opaque mask see-through.
            if (multi->getStretchType() == TEMultiBandImageRender::PercentClip) {
                for (int c = 0; c < 3; ++c) {
                    if (plan.bands[c] > 0 && plan.bands[c] <= bandCount)
                        percentClip(plan.bands[c], multi->getStretchMin(), multi->getStretchMax(), plan.low[c],
                                    plan.high[c]);
                }
            }
        }
    }
    for (int& band : plan.bands) {
        if (band > bandCount)
            band = 0;
    }
    return plan;
}

bool TZRasterLayerDrawer::draw(QPainter* painter, const TZMapViewport& viewport, const TETrackCancel* cancel)
{
    mErrorText.clear();
    const auto* imageRender = dynamic_cast<const TEImageRender*>(mRender.get());
    if (!mRaster || !imageRender || mRaster->GetWidth() <= 0 || mRaster->GetHeight() <= 0)
        return true;
    if (cancel && cancel->IsCancelled())
        return false;
    // A render set in code or by a panel may still name a band the raster
    // lacks; that is reported, not drawn from a band that is not there.
    TEString bandError;
    if (!imageRender->CheckBands(mRaster->GetBandCount(), &bandError)) {
        mErrorText = bandError.toQString();
        return false;
    }

    // North-up rasters only: the rotation terms of the geo-transform are not used.
    const std::array<double, 6> gt = mRaster->GetGeoTransform();
    if (gt[1] == 0.0 || gt[5] == 0.0) {
        mErrorText = QObject::tr("The raster has no usable geo-transform.");
        return false;
    }
    const QRectF rasterExtent = QRectF(QPointF(gt[0], gt[3]), QPointF(gt[0] + gt[1] * mRaster->GetWidth(),
                                                                      gt[3] + gt[5] * mRaster->GetHeight())).normalized();
    const QRectF visible = rasterExtent.intersected(viewport.mapExtent());
    if (visible.isEmpty())
        return true;

    // The whole raster pixels covering the visible part.
    auto toColumn = [&](double x) { return (x - gt[0]) / gt[1]; };
    auto toRow = [&](double y) { return (y - gt[3]) / gt[5]; };
    const double c0 = std::min(toColumn(visible.left()), toColumn(visible.right()));
    const double c1 = std::max(toColumn(visible.left()), toColumn(visible.right()));
    const double r0 = std::min(toRow(visible.top()), toRow(visible.bottom()));
    const double r1 = std::max(toRow(visible.top()), toRow(visible.bottom()));
    const int col0 = std::clamp(static_cast<int>(std::floor(c0)), 0, mRaster->GetWidth() - 1);
    const int row0 = std::clamp(static_cast<int>(std::floor(r0)), 0, mRaster->GetHeight() - 1);
    const int col1 = std::clamp(static_cast<int>(std::ceil(c1)), col0 + 1, mRaster->GetWidth());
    const int row1 = std::clamp(static_cast<int>(std::ceil(r1)), row0 + 1, mRaster->GetHeight());
    const QRect window(col0, row0, col1 - col0, row1 - row0);

    const QPointF corner0 = viewport.toDevice(QPointF(gt[0] + col0 * gt[1], gt[3] + row0 * gt[5]));
    const QPointF corner1 = viewport.toDevice(QPointF(gt[0] + col1 * gt[1], gt[3] + row1 * gt[5]));
    const QRectF target = QRectF(corner0, corner1).normalized();
    // Never read more pixels than the window holds; zoomed in, the image is
    // scaled up as it is painted.
    const QSize outSize(std::clamp(static_cast<int>(std::ceil(target.width())), 1, window.width()),
                        std::clamp(static_cast<int>(std::ceil(target.height())), 1, window.height()));

    const Plan plan = makePlan();
    std::array<std::vector<double>, 4> values;
    std::array<std::pair<bool, double>, 4> noData{};
    for (int c = 0; c < 4; ++c) {
        if (plan.bands[c] <= 0)
            continue;
        if (cancel && cancel->IsCancelled())
            return false;
        QString error;
        if (!mRaster->ReadWindow(plan.bands[c], window, outSize, values[c], &error)) {
            mErrorText = error;
            return false;
        }
        if (values[c].size() < static_cast<std::size_t>(outSize.width()) * outSize.height()) {
            mErrorText = QObject::tr("Band %1 returned fewer pixels than asked for.").arg(plan.bands[c]);
            return false;
        }
        bool has = false;
        const double value = mRaster->GetNoDataValue(plan.bands[c], &has);
        noData[c] = {has, value};
    }
    const QImage image = colorize(plan, values, noData, outSize, cancel);
    if (image.isNull())
        return false;
    painter->save();
    const TEColor background = imageRender->GetBackgroundColor();
    if (paintsBackground(background)) {
        // The raster's footprint in view, beneath its pixels.
        const QRectF footprint = QRectF(viewport.toDevice(visible.topLeft()), viewport.toDevice(visible.bottomRight()))
                                     .normalized();
        painter->fillRect(footprint, QColor::fromRgba(background.GetColor()));
    }
    painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter->drawImage(target, image);
    painter->restore();
    return true;
}

QImage TZRasterLayerDrawer::colorize(const Plan& plan, const std::array<std::vector<double>, 4>& values,
                                     const std::array<std::pair<bool, double>, 4>& noData, const QSize& size,
                                     const TETrackCancel* cancel) const
{
    const auto* imageRender = dynamic_cast<const TEImageRender*>(mRender.get());
    const auto* single = dynamic_cast<const TESingleBandImageRender*>(mRender.get());
    const auto* multi = dynamic_cast<const TEMultiBandImageRender*>(mRender.get());
    const QRgb noDataRgb = imageRender->NodataRgb();
    // A stretch works its range out once for the whole image, not per pixel.
    const TERefPtr<TEImageRenderInfo> info = single ? single->getRenderInfo() : TERefPtr<TEImageRenderInfo>();
    const auto* stretch = dynamic_cast<const TEImageStretchRenderInfo*>(info.get());
    double stretchLow = 0.0;
    double stretchHigh = 0.0;
    if (stretch)
        stretch->GetStretchRange(stretchLow, stretchHigh);

    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        if (cancel && cancel->IsCancelled())
            return QImage();
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const std::size_t k = static_cast<std::size_t>(y) * size.width() + x;
            switch (plan.mode) {
            case Mode::SingleBand: {
                const double v = plan.bands[0] > 0 ? values[0][k] : std::nan("");
                if (isNoData(v, noData[0]))
                    line[x] = noDataRgb;
                else
                    line[x] = stretch ? stretch->ColorIn(v, stretchLow, stretchHigh) : (info ? info->ColorOf(v) : 0);
                break;
            }
            case Mode::StretchOneBand: {
                const double v = plan.bands[0] > 0 ? values[0][k] : std::nan("");
                line[x] = isNoData(v, noData[0]) ? noDataRgb
                                                 : TEMultiBandImageRender::StretchGrey(v, plan.low[0], plan.high[0]);
                break;
            }
            case Mode::Composite: {
                // An alpha band the raster lacks leaves pixels opaque.
                double pixel[4] = {0, 0, 0, 255};
                bool missing = false;
                for (int c = 0; c < 4; ++c) {
                    if (plan.bands[c] <= 0)
                        continue;
                    pixel[c] = values[c][k];
                    missing = missing || (c < 3 && isNoData(pixel[c], noData[c]));
                }
                line[x] = missing ? noDataRgb : multi->ComposeRgb(pixel, plan.low.data(), plan.high.data());
                break;
            }
            }
        }
    }
    return image;
}
