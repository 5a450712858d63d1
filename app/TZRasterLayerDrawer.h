#pragma once

#include "TZLayerDrawer.h"

#include "core/TERefPtr.h"
#include "data/TERasterProps.h"
#include "renders/TEImageRender.h"

#include <QImage>

#include <array>

// Draws a raster: the part of it inside the viewport is read at screen
// resolution and coloured by the layer's image render (a single-band render
// through its render info, a multi-band render as an RGB composite or a
// stretched band). Without a render it picks what a user expects: the
// colour table of a paletted raster, red/green/blue from the first three
// bands of a 3- or 4-band image, and a grey stretch of a single band.
// No-data pixels are transparent unless the render gives them a colour.
class TZRasterLayerDrawer : public TZLayerDrawer
{
public:
    // render may be null; the drawer keeps its own copy.
    TZRasterLayerDrawer(TZObjects::TERefPtr<TZObjects::TERasterProps> raster, const TZObjects::TEImageRender* render);

    bool draw(QPainter* painter, const TZMapViewport& viewport, const TZObjects::TETrackCancel* cancel) override;

private:
    // How pixels become colours for this drawing.
    enum class Mode { SingleBandRender, Composite, StretchOneBand, Palette };

    struct Plan
    {
        Mode mode = Mode::StretchOneBand;
        std::array<int, 4> bands{{1, 0, 0, 0}};  // 0: channel unused
        std::array<double, 4> low{{0, 0, 0, 0}};
        std::array<double, 4> high{{255, 255, 255, 255}};
        bool clipped = false;  // low/high come from a percent clip
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
    std::vector<QRgb> mColorTable;  // the first band's palette, if any
};
