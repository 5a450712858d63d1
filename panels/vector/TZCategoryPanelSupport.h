#pragma once

#include "TZRenderExport.h"

#include "data/TEFeatureLayer.h"

#include <QList>
#include <QString>

class QComboBox;
class QDoubleSpinBox;
class QTableView;
class TZModelUniqueValues;

// What the category panels (unique values of one or several fields, symbols
// matched from a style database) do alike with their own widgets: the field
// list, the category table's look, the selection rules of Up, Down and
// Delete, the outline width box of a unit, and finding a render's field.
// Each panel passes its own widgets, whatever their object names.
namespace TZCategoryPanelSupport {

// Fills the combo with the layer's fields that can hold categories: from
// index 1 on (the feature id is never offered), leaving out binary, system
// and geometry fields. The combo's signals are blocked meanwhile.
TZRENDER_EXPORT void fillFieldCombo(QComboBox* combo, TZObjects::TEFeatureLayer* layer);

// The index of the combo item naming field: the exact spelling first, else
// the same name in another case (a render saved from another format); -1
// when the combo has no such field.
TZRENDER_EXPORT int findField(const QComboBox* combo, const QString& field);

// Puts the model into the table with the category table's look: alternating
// rows, a 25-pixel header, whole-row selection, the symbol column wide
// enough for its header and the value and label columns given widths.
TZRENDER_EXPORT void setUpTable(QTableView* table, TZModelUniqueValues* model, int valueWidth, int labelWidth);

// Selected rows in ascending order.
TZRENDER_EXPORT QList<int> selectedRows(const QTableView* table);
// Selects just this row.
TZRENDER_EXPORT void selectRow(QTableView* table, int row);
// Up and Down for a selection: only one row, never the catch-all row 0,
// no Up for row 1 and no Down for the last row.
TZRENDER_EXPORT void upDownState(const QList<int>& rows, int rowCount, bool& up, bool& down);
// Moves the one selected value row by delta (-1 up, +1 down) and keeps it
// selected; false when the selection does not allow it.
TZRENDER_EXPORT bool moveSelectedRow(QTableView* table, TZModelUniqueValues* model, int delta);
// Removes the selected value rows (the catch-all row stays); false, with
// nothing changed, when no row is selected (the panel then says "No items
// selected!" in its own words).
TZRENDER_EXPORT bool removeSelectedRows(QTableView* table, TZModelUniqueValues* model);

// The outline width box for a unit: "Point" (0) steps by 1 with no
// decimals and resets the width to 1; other units step 0.1 with 2 decimals
// and keep the width.
TZRENDER_EXPORT void fitWidthBoxToUnit(QDoubleSpinBox* box, bool points);

} // namespace TZCategoryPanelSupport
