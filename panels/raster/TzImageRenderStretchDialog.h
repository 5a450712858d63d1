#pragma once

#include "TZRenderPanel.h"
#include "TzRasterBandReader.h"

#include "core/TERefPtr.h"

#include <memory>

namespace Ui {
class TzImageRenderStretchDialog;
}
namespace TZObjects {
class TEColorRamp;
class TEImageStretchRenderInfo;
class TERasterLayer;
class TERasterProps;
}

// The panel of a raster drawn by a single-band stretch: one band's values
// stretched linearly between two values (its minimum and maximum, the mean
// give or take a multiple of the standard deviation, or a percent clip) and
// coloured through a ramp. Apply edits the stretch info and the no-data
// colour of the single-band render already on the layer; it makes no new
// render. A raster directory layer is offered the min-max stretch only.
class TzImageRenderStretchDialog : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TzImageRenderStretchDialog(QWidget* parent = nullptr);
    ~TzImageRenderStretchDialog() override;

    QString name() const override;
    QString title() const override;
    QString description() const override;
    bool onApply() override;
    void onReset() override;

public Q_SLOTS:
    void onMethodChanged(int index);
    void onShowHistogram();

private:
    void load();
    // Shows the parameter widgets of a method (none for -1).
    void showParameters(int method);

    std::unique_ptr<Ui::TzImageRenderStretchDialog> mUi;
    double mMinimum = 0.0;
    double mMaximum = 0.0;
    double mStdDev = 0.0;
    double mMean = 0.0;
    // 0 min/max, 1 standard deviation, 2 percent clip, as found at the last
    // reset.
    int mLoadedMethod = 1;
    TZObjects::TERefPtr<TZObjects::TERasterLayer> mRasterLayer;
    TZObjects::TERefPtr<TZObjects::TEImageStretchRenderInfo> mStretchInfo;
    bool mSetInfoOnApply = true;
    TZObjects::TERefPtr<TZObjects::TEColorRamp> mAppliedRamp;
    // Set by a reset on a layer that is not a raster layer (a raster
    // directory layer) and kept for the panel's life; apply then does nothing.
    bool mDirectoryLayer = false;
    QList<TzBandHistogram> mHistograms;
};
