#pragma once

#include "TzImageRenderTableDialog.h"

#include <memory>

namespace Ui {
class TzImageRenderUniqueDialog;
}

// The "Image Unique" page: one row per distinct value of the band, each with
// its colour. The values are collected from the raster off the GUI thread
// (after asking first on rasters above LargePixelCount pixels); the ramp
// recolours the rows. Apply writes the colours into the layer's single-band
// render.
class TZRENDER_EXPORT TzImageRenderUniqueDialog : public TzImageRenderTableDialog
{
    Q_OBJECT
public:
    // Rasters with more pixels than this are scanned only when the user agrees.
    static constexpr qint64 LargePixelCount = 25000000;

    explicit TzImageRenderUniqueDialog(QWidget* parent = nullptr);
    ~TzImageRenderUniqueDialog() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;

public Q_SLOTS:
    void onItemDoubleClicked(const QModelIndex& index);
    void onColorChanged();

protected:
    int renderMode() const override { return 3; }
    QTableView* tableView() const override;
    TZColorBtn* nodataButton() const override;
    TZColorSchemeComboBox* colorCombo() const override;
    void connectSlots() override;
    TZObjects::TERefPtr<TZObjects::TEImageRenderInfo> makeInfo() const override;
    bool mayFillInfo(TZObjects::TERasterProps* raster) override;
    void infoFilled() override;
    void fillRows() override;

    // The number of pixels a scan reads (width x height of the raster).
    virtual qint64 pixelCount(TZObjects::TERasterProps* raster) const;

private:
    std::unique_ptr<Ui::TzImageRenderUniqueDialog> mUi;
};
