#pragma once

#include "TZModelUniqueValues.h"

#include "symbology/TEStyle.h"

#include <QHash>
#include <QPointer>

class TZWaitDialog;
namespace TZObjects {
class TEStyleDB;
}

// The category table of the match-to-symbols page: the unique-values table
// whose rows take their symbol from a style database, the style named
// exactly as the value, and carry a scale filter and range. Only values
// that name a style are collected. Columns: "Symbols", "Value", "Label",
// "Scale filter", "MinScale", "MaxScale", then the priority columns.
class TZRENDER_EXPORT TZModelMatchToSymbols : public TZModelUniqueValues
{
    Q_OBJECT
public:
    enum Column { ScaleFilterColumn = 3, MinScaleColumn, MaxScaleColumn, FirstMatchPriorityColumn };

    explicit TZModelMatchToSymbols(QObject* parent = nullptr);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // The headers, as the panel translates them; empty ones fall back to
    // the model's own.
    void setHeaderTexts(const QStringList& headers) { mHeaders = headers; }

    // The style kind looked up for a layer type: point styles for both
    // point kinds, line styles for lines, fill styles otherwise.
    static TZObjects::TEStyle::StyleType styleTypeFor(int layerType);

    // Takes the database's styles of the bound layer's style kind as the
    // styles to match (the first of two of the same name wins); false when
    // there is no database or it has no such style.
    bool setStyleDB(const TZObjects::TEStyleDB* db);
    int styleCount() const { return mStyles.size(); }
    // The style named exactly name, or null.
    TZObjects::TERefPtr<TZObjects::TEStyle> styleNamed(const QString& name) const;

    // Replaces the value rows by every matched value, in the order first
    // met (behind the "Wait" dialog); returns the number of rows added.
    int matchAllValues(QWidget* dialogParent);
    // The matched values that are not rows yet, collected behind the
    // "Wait" dialog.
    QStringList otherMatchedValues(QWidget* dialogParent);
    // Sets a row's scale filter and range.
    void setRowScale(int row, bool filter, double minScale, double maxScale);
    // Appends one row per value with its matched style.
    void appendMatchedValues(const QStringList& values);

protected:
    void collectValues(bool count) override;
    TZObjects::TERefPtr<TZObjects::TEStyle> symbolForNewRow(const QString& value,
                                                            const TZObjects::TEColorRampContainer& colors,
                                                            int colorIndex) const override;
    bool coloursFromRamp() const override { return false; }
    int firstPriorityColumn() const override { return FirstMatchPriorityColumn; }

private:
    QHash<QString, TZObjects::TERefPtr<TZObjects::TEStyle>> mStyles;
    QStringList mHeaders;
    QPointer<TZWaitDialog> mWaitDialog;
};
