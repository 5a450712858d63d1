#include "TzModelBandCheckList.h"

TzModelBandCheckList::TzModelBandCheckList(QObject* parent) : QAbstractTableModel(parent)
{
}

void TzModelBandCheckList::setRows(const QList<Row>& rows)
{
    beginResetModel();
    mRows = rows;
    endResetModel();
}

int TzModelBandCheckList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : mRows.size();
}

int TzModelBandCheckList::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant TzModelBandCheckList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = mRows[index.row()];
    if (index.column() == 0) {
        if (role == Qt::DisplayRole)
            return row.channel;
        if (role == Qt::CheckStateRole)
            return row.checked ? Qt::Checked : Qt::Unchecked;
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return row.band;
    return {};
}

bool TzModelBandCheckList::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return false;
    Row& row = mRows[index.row()];
    if (index.column() == 0 && role == Qt::CheckStateRole) {
        const bool checked = value.toInt() == Qt::Checked;
        if (checked == row.checked)
            return false;
        row.checked = checked;
        emit dataChanged(index, index, {Qt::CheckStateRole});
        return true;
    }
    if (index.column() == 1 && role == Qt::EditRole) {
        const QString band = value.toString();
        if (band == row.band)
            return false;
        row.band = band;
        emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
        return true;
    }
    return false;
}

Qt::ItemFlags TzModelBandCheckList::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags base = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == 0 ? base | Qt::ItemIsUserCheckable : base | Qt::ItemIsEditable;
}

QVariant TzModelBandCheckList::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (section == 0)
        return tr("Channel");
    if (section == 1)
        return tr("Band");
    return {};
}
