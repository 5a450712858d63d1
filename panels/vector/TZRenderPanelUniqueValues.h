#pragma once

#include "TZRenderPanel.h"
#include "TZRotationSettings.h"

#include "core/TEColor.h"
#include "data/TEFeatureLayer.h"

#include <QItemSelection>
#include <QModelIndex>

#include <memory>

namespace Ui {
class TZRenderPanelUniqueValues;
}
class TZModelUniqueValues;

// The "Unique Values" page: each distinct value of one attribute field gets
// its own symbol. The table lists the catch-all "<all other values>" row and
// one row per value; values are collected from the layer, symbols coloured
// from a ramp with a common outline. Apply sets a TECategorizedSymbolRender
// on the layer.
class TZRENDER_EXPORT TZRenderPanelUniqueValues : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelUniqueValues(QWidget* parent = nullptr);
    ~TZRenderPanelUniqueValues() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

    // Created by the first load; null before.
    TZModelUniqueValues* model() const { return mModel; }

public Q_SLOTS:
    void onFieldChanged(int index);
    void onAddAllValues();
    void onAddValue();
    void onDeleteValue();
    void onDeleteAllValues();
    void onRowUp();
    void onRowDown();
    void onSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    void onItemDoubleClicked(const QModelIndex& index);
    void onColorRampChanged();
    void onOutLineWidthUnitChanged(const QString& unit);
    void onSetupRotation();
    void on_checkBox_clicked();
    void on_checkBox_2_clicked();
    void onSetupDefault();

private:
    void createModel();
    void refreshPriorityColumns();
    void copyOutlineToModel();
    void fitSymbolColumn(const QSize& preview);
    // Tells the user that the loaded render's field is not in the layer.
    void warnMissingField();

    std::unique_ptr<Ui::TZRenderPanelUniqueValues> mUi;
    TZModelUniqueValues* mModel = nullptr;
    double mOutlineWidth = 0.25;
    int mOutlineUnit = 1;
    TZObjects::TEColor mOutlineColor = TZObjects::TEColor(185, 185, 185);
    TZRotationSettings mRotation;
    int mSymbolColumnWidth = 0;
    int mRowHeight = 0;
    // The field of the loaded render when the layer has none of that name
    // (in any case); while set, the table holds that field's categories.
    QString mMissingField;
};
