#pragma once

#include "TzImageRenderTableDialog.h"

#include <memory>

namespace Ui {
class TzImageRenderColormapDialog;
}

// The "Image Colormap" page: the band's colour table, one row per entry
// (pixel value i, colour i). Colours are edited through the colour column;
// apply writes the table into the layer's single-band render.
class TZRENDER_EXPORT TzImageRenderColormapDialog : public TzImageRenderTableDialog
{
    Q_OBJECT
public:
    explicit TzImageRenderColormapDialog(QWidget* parent = nullptr);
    ~TzImageRenderColormapDialog() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;

public Q_SLOTS:
    void onItemDoubleClicked(const QModelIndex& index);

protected:
    int renderMode() const override { return 2; }
    QTableView* tableView() const override;
    TZColorBtn* nodataButton() const override;
    void connectSlots() override;
    TZObjects::TERefPtr<TZObjects::TEImageRenderInfo> makeInfo() const override;
    void fillRows() override;

private:
    std::unique_ptr<Ui::TzImageRenderColormapDialog> mUi;
};
