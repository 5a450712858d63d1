#pragma once

#include "TZLayerDrawer.h"

#include "core/TERefPtr.h"
#include "data/TERasterProps.h"
#include "renders/TEImageRender.h"

#include <QImage>

#include <array>
#include <vector>

// Draws a raster with its image render: the part of it inside the viewport
// is read at screen resolution and coloured pixel by pixel.
// - A single-band render (stretch, colour map, unique values, classes)
//   colours its band through its render info.
// - A multi-band render in mode 8 stretches its chosen band in grey between
//   that band's own minimum and maximum.
// - A multi-band render in any other mode is an RGB composite: each band in
//   use feeds its channel, taken as a byte or stretched by a percent clip,
//   and an alpha band (used as it is) makes pixels see-through.
// No-data pixels are transparent unless the render gives them a colour. A
// background colour other than fully transparent or the default white
// fills the raster's footprint beneath its pixels.
class TZRasterLayerDrawer : public TZLayerDrawer
{
public:
    // The drawer keeps its own copy of render; a null render draws nothing.
    TZRasterLayerDrawer(TZObjects::TERefPtr<TZObjects::TERasterProps> raster, const TZObjects::TEImageRender* render);

    bool draw(QPainter* painter, const TZMapViewport& viewport, const TZObjects::TETrackCancel* cancel) override;

private:
    // Whether a background colour is painted under the raster: not when it
    // is fully transparent or the default white.
    static bool paintsBackground(const TZObjects::TEColor& color);

    // How pixels become colours for this drawing.
    enum class Mode { SingleBand, StretchOneBand, Composite };

    struct Plan
    {
        Mode mode = Mode::SingleBand;
        std::array<int, 4> bands{{1, 0, 0, 0}};  // 0: channel unused
        std::array<double, 4> low{{0, 0, 0, 0}};
        std::array<double, 4> high{{255, 255, 255, 255}};
    };

    Plan makePlan() const;
    // Values at the low and high percent ends of a band, from a coarse read
    // of the whole raster.
    bool percentClip(int band, double lowPercent, double highPercent, double& low, double& high) const;
    QImage colorize(const Plan& plan, const std::array<std::vector<double>, 4>& values,
                    const std::array<std::pair<bool, double>, 4>& noData, const QSize& size,
                    const TZObjects::TETrackCancel* cancel) const;

    TZObjects::TERefPtr<TZObjects::TERasterProps> mRaster;
    TZObjects::TERefPtr<TZObjects::TERender> mRender;
};
