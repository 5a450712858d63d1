#pragma once

#include "TzImageRenderTableDialog.h"

#include <memory>

namespace Ui {
class TzImageRenderClassDialog;
}

// The "Image Class" page: the band's values in classes, each a range "low,high"
// (both ends included) with a colour. The class count makes equal intervals
// between the band's minimum and maximum coloured from the ramp; a range
// edited by hand moves the next class's lower bound so that the classes stay
// contiguous. Apply writes the classes into the layer's single-band render.
class TZRENDER_EXPORT TzImageRenderClassDialog : public TzImageRenderTableDialog
{
    Q_OBJECT
public:
    explicit TzImageRenderClassDialog(QWidget* parent = nullptr);
    ~TzImageRenderClassDialog() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;

    // A range text: the numbers before and after its last comma (a
    // full-width comma counts as one). False when the text is not of that form.
    static bool parseRange(const QString& text, double& low, double& high);
    static QString rangeText(double low, double high);

public Q_SLOTS:
    void onTypeChanged(int index);
    void onColorChanged();
    void onItemDoubleClicked(const QModelIndex& index);
    void onItemEntered(int row, QString text);

protected:
    int renderMode() const override { return 4; }
    QTableView* tableView() const override;
    TZColorBtn* nodataButton() const override;
    TZColorSchemeComboBox* colorCombo() const override;
    void connectSlots() override;
    TZObjects::TERefPtr<TZObjects::TEImageRenderInfo> makeInfo() const override;
    void readRaster(TZObjects::TERasterProps* raster) override;
    void fillRows() override;

private:
    // Equal intervals between the band's minimum and maximum, coloured from
    // the current ramp; replaces every row.
    void makeEqualClasses(int count);

    std::unique_ptr<Ui::TzImageRenderClassDialog> mUi;
    double mMinimum = 0.0;
    double mMaximum = 0.0;
    int mLastIndex = -1;
};
