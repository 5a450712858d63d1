#pragma once

#include "TZRenderExport.h"

#include "core/TERefPtr.h"
#include "symbology/TEEvenColorRamp.h"

#include <QAbstractListModel>
#include <QCache>
#include <QColor>
#include <QIcon>
#include <QSize>
#include <QVector>

// The table of the raster class, unique-value and colour-map pages: one row
// per class, value or colour-table entry, each a colour and a value text.
// A row's colour is source colour 1 of its even ramp, whose preview is the
// row's icon in column "Color"; column "Value" shows the text. The model
// stores no edit of its own: an edit of a text is announced through
// rowDataChanged, and the page decides what the rows become.
class TZRENDER_EXPORT TZModelColorList : public QAbstractListModel
{
    Q_OBJECT
public:
    struct Row
    {
        TZObjects::TERefPtr<TZObjects::TEEvenColorRamp> ramp;
        QString text;
    };

    explicit TZModelColorList(const QSize& iconSize, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // An edit of column 1 emits rowDataChanged(row, text); true when the row
    // holds the new text afterwards.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    QSize iconSize() const { return mIconSize; }

    // Appends a row; the ramp is copied, so later changes to the caller's
    // ramp do not reach the row.
    void appendRow(const TZObjects::TEEvenColorRamp& ramp, const QString& text);
    // Appends a row of one colour.
    void appendRow(const QColor& color, const QString& text);
    // Appends rows of one colour each (colors and texts pair up), announced
    // as one insertion.
    void appendRows(const QVector<QColor>& colors, const QStringList& texts);
    // Removes every row.
    void clear();
    // The row at index; an empty row (no ramp, no text) when out of range.
    Row row(int index) const;

    // The row's colour (source colour 1 of its ramp); invalid when out of range.
    QColor rowColor(int index) const;
    // Makes the row one colour and announces the change.
    void setRowColor(int index, const QColor& color);
    // Recolours the first rows, row i with colors[i], announced as one change.
    void setRowColors(const QVector<QColor>& colors);
    // Sets the row's text and announces the change.
    void setRowText(int index, const QString& text);

Q_SIGNALS:
    void rowDataChanged(int row, QString text);

private:
    QIcon iconOf(int index) const;

    QSize mIconSize;
    QVector<Row> mRows;
    // Icons of the rows painted last, by row. An icon can be as large as the
    // view (see the pages), so only a screenful or so is kept.
    static constexpr int IconCacheSize = 64;
    mutable QCache<int, QIcon> mIcons{IconCacheSize};
};
