#pragma once

#include "TZRenderPanel.h"

#include "core/TEColor.h"
#include "data/TEFeatureLayer.h"

#include <QItemSelection>
#include <QModelIndex>

class QComboBox;
class QDoubleSpinBox;
class QPushButton;
class QTableView;
class TZColorBtn;
class TZColorSchemeComboBox;
class TZModelGradingSymbol;

// What the graded-class pages share: the field, level, ramp and outline
// boxes, the class table on a TZModelGradingSymbol and its buttons (update,
// add, delete, delete all, filter, export, import), and the checks apply
// makes on the class rows. A page builds its own form, then hands the model
// to initGradingWidgets, which finds the shared widgets by object name.
class TZRENDER_EXPORT TZRenderPanelGradingBase : public TZRenderPanel
{
    Q_OBJECT
public:
    explicit TZRenderPanelGradingBase(QWidget* parent = nullptr);
    ~TZRenderPanelGradingBase() override;

    TZModelGradingSymbol* model() const { return mModel; }

public Q_SLOTS:
    void onFieldChanged(int index);
    void onLevelChanged(int index);
    void onAddAllValues();
    void onAddValue();
    void onDeleteValue();
    void onDeleteAllValues();
    void onItemDoubleClicked(const QModelIndex& index);
    void onColorRampChanged();
    void onOutLineWidthUnitChanged(const QString& unit);
    // Classes keep the order they were made in: both are left empty.
    void onRowUp();
    void onRowDown();
    void onSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    void onFilterValue();
    void onExportValues();
    void onImportValues();

protected:
    // Finds the shared widgets of the page's form, sets up the table on the
    // model (which the page owns) and connects the slots.
    void initGradingWidgets(TZModelGradingSymbol* model);

    // First steps of a reset: the offered fields into the field box and an
    // empty table. Null when the page is hidden or there is no feature layer.
    TZObjects::TEFeatureLayer* startReset();
    // Shows a render's field and level and sets the model up with them.
    void showFieldAndLevel(TZObjects::TEFeatureLayer* layer, const QString& field, int level);
    // Sets the model up with the field and level shown.
    void setupFromBoxes();
    // The outline boxes into the model, for the symbols made next.
    void copyOutlineToModel();
    void showOutline(double width, int unit, const TZObjects::TEColor& color);

    QString currentField() const;
    int currentLevel() const;

    // Range or label with the full-width comma read as ",".
    static QString withAsciiComma(QString text);
    void warnIncorrectItem();
    // Asks whether to go on with classes that overlap; true for "OK".
    bool confirmIntersection();

    TZModelGradingSymbol* mModel = nullptr;
    QComboBox* mFieldBox = nullptr;
    QComboBox* mLevelBox = nullptr;
    TZColorSchemeComboBox* mRampBox = nullptr;
    QDoubleSpinBox* mWidthBox = nullptr;
    QComboBox* mUnitBox = nullptr;
    TZColorBtn* mOutlineColorButton = nullptr;
    QTableView* mTable = nullptr;

private:
    void fillFieldCombo(TZObjects::TEFeatureLayer* layer);
    QList<int> selectedRows() const;

    int mSymbolColumnWidth = 45;
    int mFirstRowHeight = 0;
};
