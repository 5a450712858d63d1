#pragma once

#include "TZRenderPanel.h"
#include "TzRasterBandReader.h"

#include "core/TERefPtr.h"

#include <memory>

namespace Ui {
class TzImgRenderRGBCompositeDialog;
}
namespace TZObjects {
class TERasterLayer;
}
class TzModelBandCheckList;
class UserDelegate;

// The panel of a multi-band raster drawn as an RGB composite: which bands
// feed red, green, blue and (on rasters of more than three bands) alpha,
// whether each is used, a percent clip or no stretch, and the background and
// no-data colours. Apply edits the layer's multi-band render in place.
class TzImgRenderRGBCompositeDialog : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TzImgRenderRGBCompositeDialog(QWidget* parent = nullptr);
    ~TzImgRenderRGBCompositeDialog() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

    // The number of a band name among "Band_1" to "Band_<bandCount>"
    // (case-sensitive); 0 for an empty or unknown name.
    static int bandNumber(const QString& name, int bandCount);

public Q_SLOTS:
    void onShowHistogram();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void load();
    void fitColumns();

    std::unique_ptr<Ui::TzImgRenderRGBCompositeDialog> mUi;
    TZObjects::TERefPtr<TZObjects::TERasterLayer> mRasterLayer;
    int mBandCount = 0;
    bool mUseRed = true;
    bool mUseGreen = true;
    bool mUseBlue = true;
    bool mUseAlpha = false;
    TzModelBandCheckList* mModel = nullptr;
    UserDelegate* mDelegate = nullptr;
    QList<TzBandHistogram> mHistograms;
};
