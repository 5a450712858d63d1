#pragma once

#include "TZRenderPanel.h"

#include "core/TERefPtr.h"

#include <memory>

namespace Ui {
class TzImgRenderMultiStretchDialog;
}
namespace TZObjects {
class TERasterLayer;
}

// The panel of a multi-band raster drawn by stretching one of its bands
// (chosen among the first three) between that band's own minimum and
// maximum, with background and no-data colours. Apply edits the layer's
// multi-band render in place.
class TzImgRenderMultiStretchDialog : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TzImgRenderMultiStretchDialog(QWidget* parent = nullptr);
    ~TzImgRenderMultiStretchDialog() override;

    QString name() const override;
    QString title() const override;
    QString description() const override;
    bool onApply() override;
    void onReset() override;

public Q_SLOTS:
    void onBandChanged(int index);

private:
    void load();
    void showBandStatistics();

    std::unique_ptr<Ui::TzImgRenderMultiStretchDialog> mUi;
    TZObjects::TERefPtr<TZObjects::TERasterLayer> mRasterLayer;
    int mBand = 1;
    double mMinimum = 0.0;
    double mMaximum = 0.0;
};
