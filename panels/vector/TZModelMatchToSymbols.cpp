#include "TZModelMatchToSymbols.h"

#include "symbology/TEStyleDB.h"
#include "symbology/TEStylePoint.h"
#include "widgets/TZSymbolUtils.h"
#include "widgets/TZApplication.h"
#include "widgets/TZWaitDialog.h"

#include <QLocale>

using namespace TZObjects;

TZModelMatchToSymbols::TZModelMatchToSymbols(QObject* parent)
    : TZModelUniqueValues(parent)
{
    // The column count takes the later priority columns in.
    resetModel();
}

TEStyle::StyleType TZModelMatchToSymbols::styleTypeFor(int layerType)
{
    if (layerType == TELayer::LT_Point || layerType == TELayer::LT_MultiPoint)
        return TEStyle::StyleType(0);
    if (layerType == TELayer::LT_Line)
        return TEStyle::StyleType(1);
    return TEStyle::StyleType(2);
}

bool TZModelMatchToSymbols::setStyleDB(const TEStyleDB* db)
{
    mStyles.clear();
    if (!db || !layer())
        return false;
    const std::vector<TEStyle*> styles = db->GetStyles(styleTypeFor(layer()->GetLayerType()));
    mStyles.reserve(int(styles.size()));
    for (TEStyle* style : styles) {
        const QString name = style ? style->GetName().toQString() : QString();
        if (style && !mStyles.contains(name))
            mStyles.insert(name, TERefPtr<TEStyle>(style));
    }
    return !mStyles.isEmpty();
}

TERefPtr<TEStyle> TZModelMatchToSymbols::styleNamed(const QString& name) const
{
    return mStyles.value(name);
}

void TZModelMatchToSymbols::collectValues(bool)
{
    // The field's distinct values, then only those that name a style: one
    // hash lookup per distinct value.
    TZModelUniqueValues::collectValues(false);
    const QStringList all = values();
    QStringList matched;
    QHash<QString, int> counts;
    for (const QString& value : all) {
        if (mStyles.contains(value)) {
            matched << value;
            counts.insert(value, valueCount(value));
        }
    }
    setCollectedValues(matched, counts);
}

TERefPtr<TEStyle> TZModelMatchToSymbols::symbolForNewRow(const QString& value, const TEColorRampContainer&,
                                                         int) const
{
    // A copy, so that editing a row's symbol leaves the database alone.
    const TERefPtr<TEStyle> style = mStyles.value(value);
    return style ? style->Clone() : TERefPtr<TEStyle>();
}

int TZModelMatchToSymbols::matchAllValues(QWidget* dialogParent)
{
    clear();
    if (!layer() || fieldName().isEmpty() || mStyles.isEmpty())
        return 0;
    addAllValues(nullptr, dialogParent);
    return rowCount() - 1;
}

QStringList TZModelMatchToSymbols::otherMatchedValues(QWidget* dialogParent)
{
    if (!layer() || fieldName().isEmpty() || mStyles.isEmpty())
        return {};
    if (!mWaitDialog || mWaitDialog->parentWidget() != dialogParent) {
        delete mWaitDialog;
        mWaitDialog = new TZWaitDialog(tr("Wait"), dialogParent);
        mWaitDialog->setWindowTitle(tr("Wait"));
    }
    mWaitDialog->WaitFor([this] { collectValues(false); });
    QStringList others;
    for (const QString& value : values()) {
        if (findRow(value) < 0)
            others << value;
    }
    return others;
}

void TZModelMatchToSymbols::appendMatchedValues(const QStringList& values)
{
    for (const QString& value : values)
        appendRow(symbolForNewRow(value, TEColorRampContainer(), 0), value, value, -1);
}

void TZModelMatchToSymbols::setRowScale(int rowIndex, bool filter, double minScale, double maxScale)
{
    if (rowIndex < 0 || rowIndex >= rowCount())
        return;
    UniqueValueRow& r = mutableRow(rowIndex);
    r.scaleFilter = filter;
    r.minScale = minScale;
    r.maxScale = maxScale;
    Q_EMIT dataChanged(index(rowIndex, ScaleFilterColumn), index(rowIndex, MaxScaleColumn));
}

QVariant TZModelMatchToSymbols::data(const QModelIndex& index, int role) const
{
    if (!isCellIndex(index))
        return QVariant();
    const UniqueValueRow& r = row(index.row());
    const auto* point = dynamic_cast<const TEStylePoint*>(r.style.get());
    if (index.column() == SymbolColumn && role == Qt::DecorationRole && point) {
        // A point symbol is previewed at four times its own size.
        const QSize size(int(point->GetWidth()) * 4, int(point->GetHeight()) * 4);
        if (!size.isEmpty())
            return TZSymbolUtils::symbolPreviewIcon(r.style.get(), size);
    }
    switch (index.column()) {
    case ScaleFilterColumn:
        return role == Qt::CheckStateRole ? QVariant(int(r.scaleFilter ? Qt::Checked : Qt::Unchecked)) : QVariant();
    case MinScaleColumn:
    case MaxScaleColumn:
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return QVariant();
        return TZApplication::doubleToQString(index.column() == MinScaleColumn ? r.minScale : r.maxScale, 0);
    default:
        return TZModelUniqueValues::data(index, role);
    }
}

bool TZModelMatchToSymbols::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!isCellIndex(index))
        return false;
    UniqueValueRow& r = mutableRow(index.row());
    switch (index.column()) {
    case ScaleFilterColumn: {
        if (role != Qt::CheckStateRole)
            return false;
        const bool on = value.toInt() == Qt::Checked;
        if (on == r.scaleFilter)
            return false;
        r.scaleFilter = on;
        break;
    }
    case MinScaleColumn:
    case MaxScaleColumn: {
        if (role != Qt::EditRole)
            return false;
        bool ok = false;
        const double scale = QLocale().toDouble(value.toString(), &ok);
        const double number = ok ? scale : value.toString().toDouble();
        (index.column() == MinScaleColumn ? r.minScale : r.maxScale) = number;
        break;
    }
    default:
        return TZModelUniqueValues::setData(index, value, role);
    }
    Q_EMIT dataChanged(index, index, {role == Qt::CheckStateRole ? Qt::CheckStateRole : Qt::DisplayRole});
    return true;
}

QVariant TZModelMatchToSymbols::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 && section < mHeaders.size()
        && !mHeaders[section].isEmpty())
        return mHeaders[section];
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        switch (section) {
        case ScaleFilterColumn:
            return tr("Scale filter");
        case MinScaleColumn:
            return tr("MinScale");
        case MaxScaleColumn:
            return tr("MaxScale");
        default:
            break;
        }
    }
    return TZModelUniqueValues::headerData(section, orientation, role);
}

Qt::ItemFlags TZModelMatchToSymbols::flags(const QModelIndex& index) const
{
    if (!isCellIndex(index))
        return Qt::NoItemFlags;
    const Qt::ItemFlags base = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    switch (index.column()) {
    case ScaleFilterColumn:
        return base | Qt::ItemIsUserCheckable;
    case MinScaleColumn:
    case MaxScaleColumn:
        return base | Qt::ItemIsEditable;
    default:
        return TZModelUniqueValues::flags(index);
    }
}
