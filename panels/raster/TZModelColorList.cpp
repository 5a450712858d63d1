#include "TZModelColorList.h"

#include <QPainter>
#include <QPixmap>

#include <algorithm>

using namespace TZObjects;

namespace {

TERefPtr<TEEvenColorRamp> singleColorRamp(const QColor& color)
{
    const rgb_color<float> rgb = rgb_color<float>::fromQColor(color);
    return MakeRef<TEEvenColorRamp>(rgb, rgb);
}

} // namespace

TZModelColorList::TZModelColorList(const QSize& iconSize, QObject* parent)
    : QAbstractListModel(parent)
    , mIconSize(iconSize.isValid() && !iconSize.isEmpty() ? iconSize : QSize(16, 16))
{
}

int TZModelColorList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : mRows.size();
}

int TZModelColorList::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant TZModelColorList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    if (index.column() == 0 && role == Qt::DecorationRole)
        return iconOf(index.row());
    if (index.column() == 1 && (role == Qt::DisplayRole || role == Qt::EditRole))
        return mRows[index.row()].text;
    return QVariant();
}

QVariant TZModelColorList::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractListModel::headerData(section, orientation, role);
    switch (section) {
    case 0:
        return tr("Color");
    case 1:
        return tr("Value");
    default:
        return QVariant();
    }
}

Qt::ItemFlags TZModelColorList::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    switch (index.column()) {
    case 0:
        return Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled;
    case 1:
        return Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled;
    default:
        return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    }
}

bool TZModelColorList::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)
        || role != Qt::EditRole || index.column() != 1)
        return false;
    const QString text = value.toString();
    const int row = index.row();
    emit rowDataChanged(row, text);
    // The receiver may have cleared or refilled the model.
    return row < mRows.size() && mRows[row].text == text;
}

void TZModelColorList::appendRow(const TEEvenColorRamp& ramp, const QString& text)
{
    const int row = mRows.size();
    beginInsertRows(QModelIndex(), row, row);
    mRows.append(Row{MakeRef<TEEvenColorRamp>(ramp), text});
    endInsertRows();
}

void TZModelColorList::appendRow(const QColor& color, const QString& text)
{
    appendRow(*singleColorRamp(color), text);
}

void TZModelColorList::appendRows(const QVector<QColor>& colors, const QStringList& texts)
{
    const int count = std::min(colors.size(), texts.size());
    if (count == 0)
        return;
    const int first = mRows.size();
    beginInsertRows(QModelIndex(), first, first + count - 1);
    mRows.reserve(first + count);
    for (int i = 0; i < count; ++i)
        mRows.append(Row{singleColorRamp(colors[i]), texts[i]});
    endInsertRows();
}

void TZModelColorList::clear()
{
    if (mRows.isEmpty())
        return;
    beginRemoveRows(QModelIndex(), 0, mRows.size() - 1);
    mRows.clear();
    mIcons.clear();
    endRemoveRows();
}

TZModelColorList::Row TZModelColorList::row(int index) const
{
    if (index < 0 || index >= mRows.size())
        return Row();
    return mRows[index];
}

QColor TZModelColorList::rowColor(int index) const
{
    if (index < 0 || index >= mRows.size() || !mRows[index].ramp)
        return QColor();
    return mRows[index].ramp->getSourceColor(1).toQColor();
}

void TZModelColorList::setRowColor(int index, const QColor& color)
{
    if (index < 0 || index >= mRows.size() || !color.isValid())
        return;
    const rgb_color<float> rgb = rgb_color<float>::fromQColor(color);
    Row& row = mRows[index];
    if (!row.ramp)
        row.ramp = singleColorRamp(color);
    // Source 0 follows, so that the icon shows the one colour.
    row.ramp->setSourceColor(0, rgb);
    row.ramp->setSourceColor(1, rgb);
    mIcons.remove(index);
    const QModelIndex cell = this->index(index, 0);
    emit dataChanged(cell, cell, {Qt::DecorationRole});
}

void TZModelColorList::setRowColors(const QVector<QColor>& colors)
{
    const int count = std::min(colors.size(), mRows.size());
    if (count == 0)
        return;
    for (int i = 0; i < count; ++i) {
        const rgb_color<float> rgb = rgb_color<float>::fromQColor(colors[i]);
        if (!mRows[i].ramp)
            mRows[i].ramp = singleColorRamp(colors[i]);
        mRows[i].ramp->setSourceColor(0, rgb);
        mRows[i].ramp->setSourceColor(1, rgb);
    }
    mIcons.clear();
    emit dataChanged(index(0, 0), index(count - 1, 0), {Qt::DecorationRole});
}

void TZModelColorList::setRowText(int index, const QString& text)
{
    if (index < 0 || index >= mRows.size() || mRows[index].text == text)
        return;
    mRows[index].text = text;
    const QModelIndex cell = this->index(index, 1);
    emit dataChanged(cell, cell, {Qt::DisplayRole, Qt::EditRole});
}

QIcon TZModelColorList::iconOf(int index) const
{
    if (const QIcon* cached = mIcons.object(index))
        return *cached;
    QPixmap pixmap(mIconSize);
    pixmap.fill(Qt::transparent);
    if (const TERefPtr<TEEvenColorRamp>& ramp = mRows[index].ramp) {
        QPainter painter(&pixmap);
        ramp->DrawPreview(&painter, QRectF(QPointF(0, 0), QSizeF(mIconSize)));
    }
    auto* icon = new QIcon(pixmap);
    mIcons.insert(index, icon);
    return *icon;
}
