#include "TZModelPanelPieDiagram.h"

#include "symbology/TEColorRampDivision.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "widgets/TZColorSchemeComboBox.h"
#include "widgets/TZSymbolUtils.h"

using namespace TZObjects;

TZModelPanelPieDiagram::TZModelPanelPieDiagram(QObject* parent)
    : QAbstractListModel(parent)
{
}

int TZModelPanelPieDiagram::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(mRows.size());
}

int TZModelPanelPieDiagram::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant TZModelPanelPieDiagram::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= rowCount() || index.column() < 0
        || index.column() > 1)
        return QVariant();
    const Row& r = mRows[std::size_t(index.row())];
    if (index.column() == 0 && role == Qt::DecorationRole)
        return TZSymbolUtils::symbolPreviewPixmap(r.style.get(), mPreviewSize);
    if (index.column() == 1 && role == Qt::DisplayRole)
        return r.field;
    return QVariant();
}

QVariant TZModelPanelPieDiagram::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 && section < 2)
        return mHeaders[section];
    return QAbstractListModel::headerData(section, orientation, role);
}

bool TZModelPanelPieDiagram::setHeaderData(int section, Qt::Orientation orientation, const QVariant& value,
                                           int role)
{
    if (orientation != Qt::Horizontal || section < 0 || section > 1
        || (role != Qt::EditRole && role != Qt::DisplayRole))
        return false;
    mHeaders[section] = value.toString();
    emit headerDataChanged(orientation, section, section);
    return true;
}

int TZModelPanelPieDiagram::indexOf(const QString& fieldName) const
{
    for (std::size_t i = 0; i < mRows.size(); ++i) {
        if (mRows[i].field == fieldName)
            return int(i);
    }
    return -1;
}

bool TZModelPanelPieDiagram::addField(const TEField* field)
{
    if (!field)
        return false;
    const QString name = field->GetName().toQString();
    if (indexOf(name) >= 0)
        return false;
    if (!mColorCombo)
        return true;
    const TEColorRamp* ramp = mColorCombo->currentColorRamp();
    if (!ramp)
        return false;
    const TEColorRampDivision colors(ramp, mRampSize);
    return addRow(name, makeSymbol(colors.color(rowCount())));
}

bool TZModelPanelPieDiagram::addRow(const QString& field, const TERefPtr<TEStyle>& style)
{
    if (indexOf(field) >= 0)
        return false;
    const int at = rowCount();
    beginInsertRows(QModelIndex(), at, at);
    mRows.push_back({style, field});
    endInsertRows();
    return true;
}

bool TZModelPanelPieDiagram::removeField(const QString& fieldName)
{
    const int at = indexOf(fieldName);
    if (at < 0)
        return false;
    beginRemoveRows(QModelIndex(), at, at);
    mRows.erase(mRows.begin() + at);
    endRemoveRows();
    return true;
}

void TZModelPanelPieDiagram::clear()
{
    if (mRows.empty())
        return;
    beginResetModel();
    mRows.clear();
    endResetModel();
}

void TZModelPanelPieDiagram::recolor()
{
    const TEColorRamp* ramp = mColorCombo ? mColorCombo->currentColorRamp() : nullptr;
    if (!ramp || mRows.empty())
        return;
    const TEColorRampDivision colors(ramp, mRampSize);
    for (std::size_t i = 0; i < mRows.size(); ++i)
        mRows[i].style = makeSymbol(colors.color(int(i)));
    emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

bool TZModelPanelPieDiagram::setRowStyle(int row, const TERefPtr<TEStyle>& style)
{
    if (row < 0 || row >= rowCount() || !style)
        return false;
    mRows[std::size_t(row)].style = style;
    emit dataChanged(index(row, 0), index(row, 1));
    return true;
}

TERefPtr<TEStyle> TZModelPanelPieDiagram::makeSymbol(const TEColor& color) const
{
    auto outline = MakeRef<TEStyleSimpleLine>();
    outline->SetWidth(mOutlineWidth);
    outline->SetUnits(mOutlineUnit);
    outline->SetColor(mOutlineColor);
    auto fill = MakeRef<TEStyleSimpleFill>();
    fill->SetColor(TEColor(color.getR(), color.getG(), color.getB(), 255));
    fill->SetOutline(outline);
    return fill;
}
