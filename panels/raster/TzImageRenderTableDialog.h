#pragma once

#include "TZRenderPanel.h"

#include "core/TERefPtr.h"
#include "data/TERasterLayer.h"
#include "renders/TEImageRenderInfo.h"
#include "symbology/TEColorRamp.h"

#include <QModelIndex>

#include <functional>

class QTableView;
class TZColorBtn;
class TZColorSchemeComboBox;
class TZModelColorList;

namespace TZObjects {
class TEImageRender;
}

// What the raster class, unique-value and colour-map pages share: a table of
// colours and value texts (TZModelColorList) filled from a render info of the
// layer's single-band render, a no-data colour, and an apply that writes the
// info back into that render. The pages never make a render of their own.
class TZRENDER_EXPORT TzImageRenderTableDialog : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TzImageRenderTableDialog(QWidget* parent = nullptr);
    ~TzImageRenderTableDialog() override;

    // Reloads the table from the layer's render; only while the page shows.
    void onReset() override;

    // Null until the first reset.
    TZModelColorList* model() const { return mModel; }
    // The info the page edits; empty when none could be made.
    TZObjects::TERefPtr<TZObjects::TEImageRenderInfo> renderInfo() const { return mInfo; }

protected:
    // The image render mode the page reads back (4 class, 3 unique, 2 colour map).
    virtual int renderMode() const = 0;
    virtual QTableView* tableView() const = 0;
    virtual TZColorBtn* nodataButton() const = 0;
    // The page's ramp chooser; null when it has none.
    virtual TZColorSchemeComboBox* colorCombo() const { return nullptr; }
    // Connects the page's slots once the model exists.
    virtual void connectSlots() = 0;
    // A new, empty info of the page's kind.
    virtual TZObjects::TERefPtr<TZObjects::TEImageRenderInfo> makeInfo() const = 0;
    // Whether a new info may be filled from the raster (the unique page asks
    // first on large rasters); true by default.
    virtual bool mayFillInfo(TZObjects::TERasterProps* raster);
    // The page's own reads of the raster; runs off the GUI thread, in the
    // job that fills the info, and must touch no widget.
    virtual void readRaster(TZObjects::TERasterProps* raster);
    // Called on the GUI thread once the info is filled from the raster.
    virtual void infoFilled() {}
    // Appends one row per item of the info.
    virtual void fillRows() = 0;

    // Writes the no-data colour into the layer's render and, when the info is
    // new, sets the info on it; called at the end of each page's apply.
    void applyToRender();

    // Pops up the host colour menu for a row's colour (column 0), its lower
    // right corner at the lower left corner of the cell, and takes the
    // colour chosen.
    void pickRowColor(const QModelIndex& index);

    // Selects the ramp shown in the colour combo without the page reacting.
    void showRamp(TZObjects::TEColorRamp* ramp);
    void showDefaultRamp();

    // Narrows the colour column (down to a quarter of the viewport) when the
    // value texts need more room than half of it; call after filling rows.
    void fitValueColumn();

    // The current ramp divided into n colours; null without a ramp.
    TZObjects::TERefPtr<TZObjects::TEColorRamp> currentRampSplit(int n) const;
    // Keeps a copy of the current ramp as the applied one.
    void keepAppliedRamp();

    TZObjects::TERefPtr<TZObjects::TERasterLayer> mRasterLayer;
    TZObjects::TERefPtr<TZObjects::TEImageRenderInfo> mInfo;
    TZObjects::TERefPtr<TZObjects::TEColorRamp> mAppliedRamp;
    TZModelColorList* mModel = nullptr;
    bool mSetInfoOnApply = false;

private:
    void createModel();
    void load();
};
