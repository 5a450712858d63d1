#pragma once

#include "TZRenderExport.h"
#include "UniqueValueRow.h"

#include "core/TEColor.h"
#include "data/TEFeatureLayer.h"
#include "symbology/TEColorRampContainer.h"

#include <QAbstractListModel>
#include <QHash>
#include <QMutex>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <vector>

class TZWaitDialog;

namespace TZObjects {
class TEColorRamp;
class TECategorizedSymbolRender;
class TEEvent;
}

// The category table of the unique-values panels: row 0 is the catch-all
// "<all other values>", then one row per value of a field of the bound
// layer. It collects the distinct values (with or without counts), gives new
// rows symbols coloured from a ramp, and keeps the counts up to date while
// features are added to or deleted from the layer.
//
// The other category tables (unique values of several fields, symbols
// matched from a style database) derive from it and keep its rows, catch-all
// row, priority columns, ramp colouring, symbol making, row editing, loading
// from a render and writing into one. They change only what differs, through
// the protected virtual hooks below:
// - collectValues: what "Add all values" and "Add values" collect (a key of
//   several fields, or only the values that name a style); a job runs it off
//   the GUI thread and it hands its result over with setCollectedValues.
// - symbolForNewRow and coloursFromRamp: the symbol of a new row (a ramp
//   colour by default, or a style found by the value's name).
// - featureValue and hasCollectionKey: the key of a feature, which the
//   feature-count events use to keep the counts up to date.
// - firstPriorityColumn: a table with columns of its own after "Count" (the
//   scale filter and range) moves the priority columns to after them and
//   serves its own columns by overriding data, setData, flags and
//   headerData, calling these for the rest. Its constructor calls
//   resetModel() so that the column count takes the override in.
class TZRENDER_EXPORT TZModelUniqueValues : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Column { SymbolColumn = 0, ValueColumn, LabelColumn, CountColumn, FirstPriorityColumn };

    // Value and label of the catch-all row.
    static const QString AllOtherValues;
    // Colour of the default symbol of a fresh catch-all row.
    static const TZObjects::TEColor DefaultSymbolColor;

    explicit TZModelUniqueValues(QObject* parent = nullptr);
    ~TZModelUniqueValues() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Binds the model to a layer and a field: the feature-count handlers move
    // to the new layer and the table goes back to a fresh catch-all row.
    void setLayer(TZObjects::TEFeatureLayer* layer, const QString& fieldName);
    TZObjects::TEFeatureLayer* layer() const { return mLayer.get(); }
    QString fieldName() const { return mFieldName; }

    const UniqueValueRow& row(int row) const { return mRows[size_t(row)]; }
    // Row of the first category with that value, -1 when there is none.
    int findRow(const QString& value) const;

    void appendRow(const TZObjects::TERefPtr<TZObjects::TEStyle>& style, const QString& value,
                   const QString& label, int count);
    // Adds count to the row holding value (and replaces its symbol when one
    // is given), or appends a new row.
    void mergeRow(const TZObjects::TERefPtr<TZObjects::TEStyle>& style, const QString& value,
                  const QString& label, int count);
    void setRowStyle(int row, const TZObjects::TERefPtr<TZObjects::TEStyle>& style);
    void removeRowList(const QList<int>& rows);
    // Removes every row but the catch-all.
    void removeValueRows();
    // Back to a fresh catch-all row with the default symbol; the collected
    // values and counts are emptied.
    void clear();
    void moveRowUp(int row);
    void moveRowDown(int row);
    // Gives every value row a new symbol: row r takes colour r - 1. Labels,
    // values and counts stay.
    void recolorValueRows(const TZObjects::TEColorRampContainer& colors);
    void resetModel();

    Qt::CheckState showOtherValuesState() const { return mShowOtherValues; }
    void setShowOtherValuesState(Qt::CheckState state);

    double outlineWidth() const { return mOutlineWidth; }
    void setOutlineWidth(double width) { mOutlineWidth = width; }
    int outlineUnit() const { return mOutlineUnit; }
    void setOutlineUnit(int unit) { mOutlineUnit = unit; }
    TZObjects::TEColor outlineColor() const { return mOutlineColor; }
    void setOutlineColor(const TZObjects::TEColor& color) { mOutlineColor = color; }

    bool countWhileCollecting() const { return mCountWhileCollecting; }
    void setCountWhileCollecting(bool count) { mCountWhileCollecting = count; }
    bool isBusy() const { return mBusy; }

    bool priorityShown() const { return mPriorityShown; }
    void setPriorityShown(bool shown);

    // A new symbol of the colour for the bound layer's type (empty for a
    // layer that is neither point, line nor polygon, or without a layer).
    TZObjects::TERefPtr<TZObjects::TEStyle> makeSymbol(const TZObjects::TEColor& color) const;

    // The values collected last, in the order first met, and their counts.
    QStringList values() const;
    int valueCount(const QString& value) const;

    // Full scan of the features passing the layer's query filter, counting.
    bool collectWithCounts(const QString& fieldName);
    // The distinct values without counts (-1); false when the data source
    // cannot give them.
    bool collectDistinct(const QString& fieldName);

    // Replaces the value rows by every value of the field, coloured from the
    // ramp split into one colour more than there are values. The scan runs
    // behind the "Wait" dialog, parented to dialogParent.
    void addAllValues(const TZObjects::TEColorRamp* ramp, QWidget* dialogParent);
    // Lets the user pick values (and type new ones) in the add-value dialog
    // for renderType, and appends them.
    void addValues(const TZObjects::TEColorRamp* ramp, const QString& renderType, QWidget* dialogParent);
    // AddCategory for every row in order (the catch-all row with its own
    // value whatever its text, each row's scale filter and range), then
    // SetIsShowOtherValue from the catch-all check.
    void writeCategories(TZObjects::TECategorizedSymbolRender& render) const;

    // Counts the render's field (or fieldName, the layer's spelling of it)
    // behind the "Wait" dialog and merges the render's categories into the
    // table.
    void loadFromRender(const TZObjects::TECategorizedSymbolRender* render, QWidget* dialogParent,
                        const QString& fieldName = QString());

protected:
    // Collects what the add actions offer into the value list and counts.
    // Runs as the wait dialog's job, off the GUI thread: it may read the
    // layer but touch no widget and no row. The default collects the bound
    // field, counting when count is set (or when the source cannot give
    // distinct values alone).
    virtual void collectValues(bool count);
    // Collects the values and counts of a render's categories when a render
    // is loaded; the default counts field, a derived table its own key.
    virtual void collectRenderValues(const QString& field) { collectWithCounts(field); }
    // Replaces the value list (first-met order) and the counts; safe to call
    // from collectValues.
    void setCollectedValues(const QStringList& values, const QHash<QString, int>& counts);

    // The symbol of a new row for value: by default a symbol of colour
    // colorIndex of colors (makeSymbol). colors is empty when
    // coloursFromRamp() is false.
    virtual TZObjects::TERefPtr<TZObjects::TEStyle> symbolForNewRow(const QString& value,
                                                                    const TZObjects::TEColorRampContainer& colors,
                                                                    int colorIndex) const;
    // Whether new rows are coloured from a ramp; when true (the default) a
    // ramp that gives no colours adds no rows.
    virtual bool coloursFromRamp() const { return true; }

    // The value text of a feature, as collectValues would count it (the bound
    // field's ToString by default), and whether there is a key to read at all.
    virtual QString featureValue(const TZObjects::TEFeature& feature) const;
    virtual bool hasCollectionKey() const { return !mFieldName.isEmpty(); }

    // The first priority column; the columns before it are this class's four
    // and a derived table's own.
    virtual int firstPriorityColumn() const { return FirstPriorityColumn; }

    // A row for in-place edits of a derived table's own columns; announce
    // them with dataChanged.
    UniqueValueRow& mutableRow(int row);
    bool isCellIndex(const QModelIndex& index) const;

private:
    int wantedColumnCount() const;
    int priorityColumnCount() const;
    void updateColumnCount();
    void pushRow(const TZObjects::TERefPtr<TZObjects::TEStyle>& style, const QString& value,
                 const QString& label, int count);
    void invalidateRowIndex() { mRowIndexValid = false; }
    bool collect(const QString& fieldName, bool withCounts);
    // Merging without announcing it, for bulk changes inside a reset.
    void mergeQuietly(const TZObjects::TERefPtr<TZObjects::TEStyle>& style, const QString& value,
                      const QString& label, int count);
    void mergeInto(int row, const TZObjects::TERefPtr<TZObjects::TEStyle>& style, int count);
    void collectWithFallback(const QString& fieldName, bool count);
    // Runs a collection behind the Wait dialog on a worker thread, or at
    // once for a layer of at most SmallLayerFeatures features.
    void runCollection(QWidget* dialogParent, const std::function<void()>& job);
    static constexpr int SmallLayerFeatures = 20000;

    void bindLayerEvents();
    void unbindLayerEvents();
    TZObjects::TEString eventKey(const void* handler) const;
    static void featuresAddedHandler(TZModelUniqueValues* model, void* sender, TZObjects::TEEvent* event);
    static void featuresDeletedHandler(TZModelUniqueValues* model, void* sender, TZObjects::TEEvent* event);
    // Texts of the field's values of the features of the event.
    QStringList eventValues(TZObjects::TEEvent* event) const;
    void applyCountChange(const QStringList& values, int delta);

    std::vector<UniqueValueRow> mRows;
    mutable QHash<QString, int> mRowByValue;
    mutable bool mRowIndexValid = false;

    // Guards the collected values and counts, which a collection job fills
    // off the GUI thread.
    mutable QMutex mValuesMutex;
    QStringList mValues;
    QHash<QString, int> mCounts;

    TZObjects::TERefPtr<TZObjects::TEFeatureLayer> mLayer;
    QString mFieldName;
    Qt::CheckState mShowOtherValues = Qt::Unchecked;
    double mOutlineWidth = 0.25;
    int mOutlineUnit = 1;
    TZObjects::TEColor mOutlineColor = TZObjects::TEColor(185, 185, 185);
    bool mCountWhileCollecting = false;
    bool mBusy = false;
    bool mPriorityShown = false;
    int mColumnCount = FirstPriorityColumn;
    // The "Wait" dialog of the collections, made on first use.
    QPointer<TZWaitDialog> mWaitDialog;
};
