#pragma once

#include <QAbstractTableModel>
#include <QList>

// The channel table of the RGB composite panel: one row per channel
// (red, green, blue and, on rasters of more than three bands, alpha) with
// a check state (whether the channel is used) in column 0 and the name of
// the band that feeds it ("Band_1", ...) in column 1, which is editable.
class TzModelBandCheckList : public QAbstractTableModel
{
    Q_OBJECT
public:
    struct Row
    {
        QString channel;
        QString band;
        bool checked = true;
    };

    explicit TzModelBandCheckList(QObject* parent = nullptr);

    void setRows(const QList<Row>& rows);
    QList<Row> rows() const { return mRows; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QList<Row> mRows;
};
