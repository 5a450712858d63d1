#pragma once

#include "GradingSymbolItem.h"
#include "TZRenderExport.h"

#include "core/TEColor.h"
#include "data/TEFeatureLayer.h"
#include "symbology/TEColorRamp.h"

#include <QAbstractListModel>
#include <QHash>
#include <QStringList>

#include <functional>
#include <vector>

class QWidget;

namespace TZObjects {
class TEEvent;
}

// The class table of the grading panels: row 0 is the catch-all
// "<all other values>", then one row per class of a numeric field of the
// bound layer. It makes equal-interval classes from the field's values,
// counts the values inside each class (both bounds included, so a value on
// a shared bound counts twice), colours the classes from a ramp, reads and
// writes the classes as a text file, and keeps the counts up to date while
// features are added to or deleted from the layer.
class TZRENDER_EXPORT TZModelGradingSymbol : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Column { SymbolColumn = 0, RangeColumn, LabelColumn, CountColumn, ColumnCount };

    static const QString AllOtherValues;

    explicit TZModelGradingSymbol(QObject* parent = nullptr);
    ~TZModelGradingSymbol() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Binds layer, field, ramp and level, and clears the table to its
    // catch-all row and the values and ranges read before. The model then
    // follows the layer's feature-count events.
    void setup(TZObjects::TEFeatureLayer* layer, const QString& field, const TZObjects::TEColorRamp* ramp,
               int level);
    TZObjects::TEFeatureLayer* layer() const { return mLayer.get(); }
    QString field() const { return mField; }
    int level() const { return mLevel; }
    void setLevel(int level) { mLevel = level; }
    // Keeps a copy of the ramp the colour assignment divides.
    void setColorRamp(const TZObjects::TEColorRamp* ramp);

    double outlineWidth() const { return mOutlineWidth; }
    void setOutlineWidth(double width) { mOutlineWidth = width; }
    int outlineUnit() const { return mOutlineUnit; }
    void setOutlineUnit(int unit) { mOutlineUnit = unit; }
    TZObjects::TEColor outlineColor() const { return mOutlineColor; }
    void setOutlineColor(const TZObjects::TEColor& color) { mOutlineColor = color; }

    // 0 or 2 (Qt::Checked): whether features outside every class are drawn
    // with the catch-all symbol.
    int checkState() const { return mCheckState; }
    void setCheckState(int state);

    // Back to the single catch-all row; the values and ranges read stay.
    void clear();
    int itemCount() const { return int(mItems.size()); }
    const GradingSymbolItem& item(int row) const { return mItems.at(size_t(row)); }
    void addItem(const GradingSymbolItem& item);
    void setItemStyle(int row, const TZObjects::TERefPtr<TZObjects::TEStyle>& style);
    // Removes the rows given (never row 0).
    void removeItems(const QList<int>& rows);
    void moveItemUp(int row);
    void moveItemDown(int row);
    // Announces a change of every row, after a bulk change.
    void resetModel();

    // A new symbol of the colour for the layer's geometry; empty without a
    // layer or a field, or for a layer that is not point, line or polygon.
    virtual TZObjects::TERefPtr<TZObjects::TEStyle> createStyle(const TZObjects::TEColor& color) const;
    // Gives class row i colour i - 1 of the ramp divided into as many
    // colours as there are class rows. Row 0 keeps its symbol.
    void assignColors();

    // Number of read values v with lower <= v <= upper; 0 for a range that
    // is not two numbers.
    int countInRange(const QString& range) const;

    // "Update": reads every value of the field (behind the "Wait" dialog),
    // makes level equal-interval classes ending exactly at the maximum and
    // one counted, coloured row per class. False when the values cannot be
    // read.
    bool classifyAll(QWidget* dialogParent);
    // The reset's scan: reads the values and makes the classes like
    // classifyAll, without touching the rows. A second call on the same
    // unchanged layer, field and filter reuses the values read before.
    bool prepareRanges(QWidget* dialogParent);
    // The classes not yet in the table. Reads the values as text when none
    // were read (plus the unsaved features of the edit buffer, which are
    // counted but never widen the classes); every class that matches a row
    // raises that row's count by one.
    QStringList computeRanges(QWidget* dialogParent);
    // Counts afresh from the features passing the layer's current query
    // filter; every label goes back to its range.
    bool recount(QWidget* dialogParent);
    // Asks which of the classes computeRanges offers to add, in the
    // add-value dialog of renderType, and appends them counted and coloured.
    void addValues(const QString& renderType, QWidget* dialogParent);
    // Replaces the class rows by the classes of the file, counted and coloured.
    bool importFrom(const QString& path, QWidget* dialogParent);
    // Writes rows 1..n, one range a line.
    bool exportTo(const QString& path, QWidget* dialogParent);
    // The same behind the file dialogs.
    void importValues(QWidget* dialogParent);
    void exportValues(QWidget* dialogParent);

    const std::vector<double>& values() const { return mValues; }
    QStringList ranges() const { return mRanges; }

private:
    bool isCellIndex(const QModelIndex& index) const;
    // Reads the field's numbers (or texts read as numbers) behind the "Wait"
    // dialog; false when the layer cannot be searched.
    bool readNumbers(QWidget* dialogParent, const TZObjects::TEQueryFilter& filter, bool useCache,
                     std::vector<double>& values);
    bool runJob(QWidget* dialogParent, const std::function<void()>& job);
    // Fills the range list with level equal intervals from the minimum;
    // the last one ends at the maximum itself or at level intervals.
    void makeClasses(bool lastAtMaximum);
    void countItems();

    void bindLayerEvents();
    void unbindLayerEvents();
    TZObjects::TEString eventKey(const void* handler) const;
    static void featuresAddedHandler(TZModelGradingSymbol* model, void* sender, TZObjects::TEEvent* event);
    static void featuresDeletedHandler(TZModelGradingSymbol* model, void* sender, TZObjects::TEEvent* event);
    // The field's value of each feature of the event, by feature id; ids
    // whose feature can no longer be read are left out.
    QHash<int, double> eventNumbers(TZObjects::TEEvent* event) const;
    void applyCountChange(const QList<int>& ids, const QHash<int, double>& numbers, int delta);

    std::vector<GradingSymbolItem> mItems;
    TZObjects::TERefPtr<TZObjects::TEFeatureLayer> mLayer;
    QString mField;
    int mLevel = 12;
    TZObjects::TERefPtr<TZObjects::TEColorRamp> mRamp;
    double mOutlineWidth = 0.25;
    int mOutlineUnit = 1;
    TZObjects::TEColor mOutlineColor = TZObjects::TEColor(185, 185, 185);
    int mCheckState = 0;

    // Values of the features added while bound, for when they are deleted
    // again before a save and can no longer be read back.
    QHash<int, double> mAddedValues;

    QStringList mRanges;
    std::vector<double> mValues;
    double mMinimum = 0.0;
    double mMaximum = 0.0;

    // The numbers of the last full scan, and what they were read from.
    struct ScanKey
    {
        TZObjects::TERefPtr<TZObjects::TEFeatureLayer> layer;
        QString field;
        TZObjects::TEQueryFilter filter;
        unsigned revision = 0;
        bool operator==(const ScanKey& o) const
        {
            return layer.get() == o.layer.get() && field == o.field && filter == o.filter && revision == o.revision;
        }
    };
    bool mCacheValid = false;
    ScanKey mCacheKey;
    std::vector<double> mCachedValues;
};
