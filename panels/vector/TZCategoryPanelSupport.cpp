#include "TZCategoryPanelSupport.h"

#include "TZModelUniqueValues.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

using namespace TZObjects;

namespace TZCategoryPanelSupport {

void fillFieldCombo(QComboBox* combo, TEFeatureLayer* layer)
{
    const QSignalBlocker blocker(combo);
    combo->clear();
    const TERefPtr<TEFields> fields = layer ? layer->GetFields() : nullptr;
    if (!fields)
        return;
    for (int i = 1; i < fields->GetFieldCount(); ++i) {
        const TERefPtr<TEField> field = fields->GetField(i);
        if (!field || field->GetFieldType() == TEField::FT_Binary || field->IsSystemField() || field->IsGeoField())
            continue;
        combo->addItem(field->GetName().toQString());
    }
}

int findField(const QComboBox* combo, const QString& field)
{
    const int exact = combo->findText(field, Qt::MatchExactly | Qt::MatchCaseSensitive);
    return exact >= 0 ? exact : combo->findText(field, Qt::MatchFixedString);
}

void setUpTable(QTableView* table, TZModelUniqueValues* model, int valueWidth, int labelWidth)
{
    table->setModel(model);
    table->setAlternatingRowColors(true);
    table->setIconSize(QSize(32, 32));
    QHeaderView* header = table->horizontalHeader();
    header->setFixedHeight(25);
    // Count and the priority columns hold short numbers; the last column
    // takes what is left, and never less than the default size.
    header->setDefaultSectionSize(60);
    header->setStretchLastSection(true);
    // Row numbers add nothing to a category table and crowd its columns.
    table->verticalHeader()->hide();
    // 45 pixels, or more where the font would clip the "Symbols" header.
    table->setColumnWidth(0, std::max(45, header->sectionSizeHint(0)));
    table->setColumnWidth(1, valueWidth);
    table->setColumnWidth(2, labelWidth);
    // Wide enough for the columns and a vertical scroll bar, so that a
    // narrow dock does not clip the last one.
    table->setMinimumWidth(header->length() + 2 * table->frameWidth()
                           + table->verticalScrollBar()->sizeHint().width());
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
}

QList<int> selectedRows(const QTableView* table)
{
    QList<int> rows;
    if (!table->selectionModel())
        return rows;
    const QModelIndexList selected = table->selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void selectRow(QTableView* table, int row)
{
    table->clearSelection();
    table->selectRow(row);
}

void upDownState(const QList<int>& rows, int rowCount, bool& up, bool& down)
{
    up = false;
    down = false;
    if (rows.size() != 1)
        return;
    const int row = rows.first();
    up = row > 1 && row < rowCount;
    down = row >= 1 && row + 1 < rowCount;
}

bool moveSelectedRow(QTableView* table, TZModelUniqueValues* model, int delta)
{
    if (!model)
        return false;
    const QList<int> rows = selectedRows(table);
    bool up = false;
    bool down = false;
    upDownState(rows, model->rowCount(), up, down);
    if ((delta < 0 && !up) || (delta > 0 && !down))
        return false;
    const int row = rows.first();
    if (delta < 0)
        model->moveRowUp(row);
    else
        model->moveRowDown(row);
    selectRow(table, row + (delta < 0 ? -1 : 1));
    return true;
}

bool removeSelectedRows(QTableView* table, TZModelUniqueValues* model)
{
    QList<int> rows = selectedRows(table);
    if (rows.isEmpty())
        return false;
    // The catch-all row stays: every category table starts with it.
    rows.removeAll(0);
    if (model)
        model->removeRowList(rows);
    return true;
}

void fitWidthBoxToUnit(QDoubleSpinBox* box, bool points)
{
    if (points) {
        box->setSingleStep(1.0);
        box->setDecimals(0);
        box->setValue(1.0);
    } else {
        box->setSingleStep(0.1);
        box->setDecimals(2);
    }
}

} // namespace TZCategoryPanelSupport
