#pragma once

#include "TZRenderPanel.h"
#include "TZRotationSettings.h"

#include "core/TEColor.h"

#include <QItemSelection>
#include <QModelIndex>
#include <QStringList>

#include <memory>

namespace Ui {
class TZRenderPanelUniqueValuesByManyFields;
}
class QListWidget;
class TZModelUniqueValuesByManyFields;
class TZWidgetValueItem;

// The "Unique Values,Many Fields" page: each combination of the values of
// several chosen fields gets its own symbol. Fields are checked in a drop-down
// list whose text is the chosen names joined by "," in the order checked;
// the table is the unique-values table keyed by the combined values. Apply
// sets a TECategorizedByManyFieldsSymbolRender on the layer.
class TZRENDER_EXPORT TZRenderPanelUniqueValuesByManyFields : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelUniqueValuesByManyFields(QWidget* parent = nullptr);
    ~TZRenderPanelUniqueValuesByManyFields() override;

    QString name() const override;
    QString title() const override;
    bool onApply() override;
    void onReset() override;

    // Created by the first load; null before.
    TZModelUniqueValuesByManyFields* model() const { return mModel; }
    // The field chooser's row for a field, null when the layer has none.
    TZWidgetValueItem* fieldItem(const QString& field) const;

public Q_SLOTS:
    void onFieldsSelectChanged();
    void onComboBoxTextChanged(const QString& text);
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
    void onSetupDefault();

private:
    void createModel();
    void fillFieldList(TZObjects::TEFeatureLayer* layer);
    void setChosenFields(const QStringList& fields);
    void copyOutlineToModel();
    void showOutline(const TZObjects::TEColor& color, int unit, double width);

    std::unique_ptr<Ui::TZRenderPanelUniqueValuesByManyFields> mUi;
    QListWidget* mFieldList = nullptr;
    TZModelUniqueValuesByManyFields* mModel = nullptr;
    TZRotationSettings mRotation;
};
