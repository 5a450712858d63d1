#include "TZModelUniqueValues.h"

#include "TZDialogAddValueToUniqueValue.h"

#include "data/TEFeatureTable.h"
#include "data/TEFeaturesCountEvent.h"
#include "renders/TECategorizedSymbolRender.h"
#include "symbology/TEColorRamp.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"
#include "widgets/TZSymbolUtils.h"
#include "widgets/TZWaitDialog.h"

#include <QElapsedTimer>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdint>

using namespace TZObjects;

// The collection's timing lines are for whoever tunes it: off unless
// QT_LOGGING_RULES="tzrender.panels.vector.debug=true" turns them on.
Q_LOGGING_CATEGORY(lcUniqueValues, "tzrender.panels.vector", QtInfoMsg)

const QString TZModelUniqueValues::AllOtherValues = QStringLiteral("<all other values>");
const TEColor TZModelUniqueValues::DefaultSymbolColor = TEColor(185, 185, 185);

namespace {

const QSize SymbolIconSize(32, 32);

double elapsedSeconds(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e9;
}

} // namespace

TZModelUniqueValues::TZModelUniqueValues(QObject* parent)
    : QAbstractListModel(parent)
{
    mRows.push_back({nullptr, AllOtherValues, AllOtherValues, 0});
}

TZModelUniqueValues::~TZModelUniqueValues()
{
    unbindLayerEvents();
    // A dialog without a parent is the model's to delete; one with a parent
    // may already be gone with it.
    if (mWaitDialog && !mWaitDialog->parentWidget())
        delete mWaitDialog;
}

int TZModelUniqueValues::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(mRows.size());
}

int TZModelUniqueValues::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : mColumnCount;
}

bool TZModelUniqueValues::isCellIndex(const QModelIndex& index) const
{
    return index.isValid() && index.model() == this && index.row() < int(mRows.size())
        && index.column() < mColumnCount;
}

QVariant TZModelUniqueValues::data(const QModelIndex& index, int role) const
{
    if (!isCellIndex(index))
        return QVariant();
    const UniqueValueRow& r = mRows[size_t(index.row())];
    const int column = index.column();

    if (role == Qt::DecorationRole && column == SymbolColumn)
        return TZSymbolUtils::symbolPreviewIcon(r.style.get(), SymbolIconSize);
    if (role == Qt::CheckStateRole && index.row() == 0 && column == ValueColumn)
        return int(mShowOtherValues);
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return QVariant();

    switch (column) {
    case SymbolColumn:
        return QVariant();
    case ValueColumn:
        return r.value;
    case LabelColumn:
        return r.label;
    case CountColumn:
        return r.count < 0 ? QString() : QString::number(r.count);
    default:
        break;
    }
    if (column < firstPriorityColumn())
        return QVariant();

    const int layerIndex = column - firstPriorityColumn();
    if (!r.style)
        return QStringLiteral("??");
    if (auto* multi = dynamic_cast<TEStyleMultiLayer*>(r.style.get())) {
        if (layerIndex < multi->GetLayerCount())
            return multi->GetLayer(layerIndex)->GetPriority();
        return QStringLiteral("-");
    }
    if (layerIndex == 0)
        return r.style->GetPriority();
    return QStringLiteral("-");
}

bool TZModelUniqueValues::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!isCellIndex(index))
        return false;

    if (role == Qt::CheckStateRole) {
        // Every call toggles, whatever state the view asks for.
        mShowOtherValues = mShowOtherValues == Qt::Checked ? Qt::Unchecked : Qt::Checked;
        const QModelIndex catchAll = this->index(0, ValueColumn);
        emit dataChanged(catchAll, catchAll, {Qt::CheckStateRole});
        return true;
    }
    if (role != Qt::EditRole)
        return QAbstractListModel::setData(index, value, role);

    UniqueValueRow& r = mRows[size_t(index.row())];
    if (index.column() == LabelColumn) {
        r.label = value.toString();
        emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
        return true;
    }
    if (index.column() >= firstPriorityColumn() && r.style) {
        const int priority = value.toString().toInt(nullptr, 10);
        const int layerIndex = index.column() - firstPriorityColumn();
        if (auto* multi = dynamic_cast<TEStyleMultiLayer*>(r.style.get())) {
            if (layerIndex >= multi->GetLayerCount())
                return false;
            multi->GetLayer(layerIndex)->SetPriority(priority);
        } else {
            r.style->SetPriority(priority);
        }
        emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
        return true;
    }
    return QAbstractListModel::setData(index, value, role);
}

QVariant TZModelUniqueValues::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= mColumnCount)
        return QAbstractListModel::headerData(section, orientation, role);
    switch (section) {
    case SymbolColumn:
        return tr("Symbols");
    case ValueColumn:
        return tr("Value");
    case LabelColumn:
        return tr("Label");
    case CountColumn:
        return tr("Count");
    default:
        if (section < firstPriorityColumn())
            return QVariant();
        return QStringLiteral("-%1-").arg(section - firstPriorityColumn() + 1);
    }
}

Qt::ItemFlags TZModelUniqueValues::flags(const QModelIndex& index) const
{
    if (!isCellIndex(index))
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.row() == 0 && index.column() == ValueColumn)
        result |= Qt::ItemIsUserCheckable;
    if (index.column() == LabelColumn)
        result |= Qt::ItemIsEditable;
    if (index.column() >= firstPriorityColumn()) {
        const UniqueValueRow& r = mRows[size_t(index.row())];
        const int layerIndex = index.column() - firstPriorityColumn();
        if (auto* multi = dynamic_cast<TEStyleMultiLayer*>(r.style.get())) {
            if (layerIndex < multi->GetLayerCount())
                result |= Qt::ItemIsEditable;
        } else if (r.style && layerIndex == 0) {
            result |= Qt::ItemIsEditable;
        }
    }
    return result;
}

void TZModelUniqueValues::setLayer(TEFeatureLayer* layer, const QString& fieldName)
{
    if (layer != mLayer.get()) {
        unbindLayerEvents();
        mLayer = TERefPtr<TEFeatureLayer>(layer);
        bindLayerEvents();
    }
    mFieldName = fieldName;
    clear();
}

int TZModelUniqueValues::findRow(const QString& value) const
{
    if (!mRowIndexValid) {
        mRowByValue.clear();
        mRowByValue.reserve(int(mRows.size()));
        // Backwards, so that the first of several equal values wins.
        for (int i = int(mRows.size()) - 1; i >= 0; --i)
            mRowByValue.insert(mRows[size_t(i)].value, i);
        mRowIndexValid = true;
    }
    return mRowByValue.value(value, -1);
}

void TZModelUniqueValues::pushRow(const TERefPtr<TEStyle>& style, const QString& value, const QString& label,
                                  int count)
{
    if (mRowIndexValid && !mRowByValue.contains(value))
        mRowByValue.insert(value, int(mRows.size()));
    mRows.push_back({style, value, label, count});
}

void TZModelUniqueValues::appendRow(const TERefPtr<TEStyle>& style, const QString& value, const QString& label,
                                    int count)
{
    const int row = int(mRows.size());
    beginInsertRows(QModelIndex(), row, row);
    pushRow(style, value, label, count);
    endInsertRows();
    updateColumnCount();
}

void TZModelUniqueValues::mergeRow(const TERefPtr<TEStyle>& style, const QString& value, const QString& label,
                                   int count)
{
    const int row = findRow(value);
    if (row < 0) {
        appendRow(style, value, label, count);
        return;
    }
    mergeInto(row, style, count);
    emit dataChanged(index(row, 0), index(row, mColumnCount - 1));
    if (style)
        updateColumnCount();
}

void TZModelUniqueValues::mergeQuietly(const TERefPtr<TEStyle>& style, const QString& value, const QString& label,
                                       int count)
{
    const int row = findRow(value);
    if (row < 0)
        pushRow(style, value, label, count);
    else
        mergeInto(row, style, count);
}

void TZModelUniqueValues::mergeInto(int row, const TERefPtr<TEStyle>& style, int count)
{
    UniqueValueRow& r = mRows[size_t(row)];
    r.count += count;
    if (style)
        r.style = style;
}

void TZModelUniqueValues::setRowStyle(int row, const TERefPtr<TEStyle>& style)
{
    if (row < 0 || row >= int(mRows.size()))
        return;
    mRows[size_t(row)].style = style;
    emit dataChanged(index(row, 0), index(row, mColumnCount - 1));
    updateColumnCount();
}

void TZModelUniqueValues::removeRowList(const QList<int>& rows)
{
    if (rows.isEmpty())
        return;
    std::vector<char> remove(mRows.size(), 0);
    for (int row : rows) {
        if (row >= 0 && row < int(mRows.size()))
            remove[size_t(row)] = 1;
    }
    beginResetModel();
    std::vector<UniqueValueRow> kept;
    kept.reserve(mRows.size());
    for (size_t i = 0; i < mRows.size(); ++i) {
        if (!remove[i])
            kept.push_back(std::move(mRows[i]));
    }
    mRows.swap(kept);
    invalidateRowIndex();
    mColumnCount = wantedColumnCount();
    endResetModel();
}

void TZModelUniqueValues::removeValueRows()
{
    if (mRows.size() <= 1)
        return;
    beginRemoveRows(QModelIndex(), 1, int(mRows.size()) - 1);
    mRows.resize(1);
    invalidateRowIndex();
    endRemoveRows();
    updateColumnCount();
}

void TZModelUniqueValues::clear()
{
    beginResetModel();
    mRows.clear();
    mRows.push_back({makeSymbol(DefaultSymbolColor), AllOtherValues, AllOtherValues, 0});
    invalidateRowIndex();
    {
        QMutexLocker locker(&mValuesMutex);
        mValues.clear();
        mCounts.clear();
    }
    mColumnCount = wantedColumnCount();
    endResetModel();
}

void TZModelUniqueValues::moveRowUp(int row)
{
    if (row <= 0 || row >= int(mRows.size()))
        return;
    std::swap(mRows[size_t(row)], mRows[size_t(row - 1)]);
    invalidateRowIndex();
    emit dataChanged(index(row - 1, 0), index(row, mColumnCount - 1));
}

void TZModelUniqueValues::moveRowDown(int row)
{
    if (row < 0 || row + 1 >= int(mRows.size()))
        return;
    std::swap(mRows[size_t(row)], mRows[size_t(row + 1)]);
    invalidateRowIndex();
    emit dataChanged(index(row, 0), index(row + 1, mColumnCount - 1));
}

void TZModelUniqueValues::recolorValueRows(const TEColorRampContainer& colors)
{
    if (mRows.size() < 2)
        return;
    for (size_t r = 1; r < mRows.size(); ++r)
        mRows[r].style = makeSymbol(colors.getColor(int(r) - 1).toTEColor(255));
    emit dataChanged(index(1, 0), index(int(mRows.size()) - 1, mColumnCount - 1));
    updateColumnCount();
}

void TZModelUniqueValues::resetModel()
{
    beginResetModel();
    mColumnCount = wantedColumnCount();
    endResetModel();
}

void TZModelUniqueValues::setShowOtherValuesState(Qt::CheckState state)
{
    if (mShowOtherValues == state)
        return;
    mShowOtherValues = state;
    const QModelIndex catchAll = index(0, ValueColumn);
    emit dataChanged(catchAll, catchAll, {Qt::CheckStateRole});
}

void TZModelUniqueValues::setPriorityShown(bool shown)
{
    mPriorityShown = shown;
    updateColumnCount();
}

int TZModelUniqueValues::priorityColumnCount() const
{
    if (!mPriorityShown)
        return 0;
    int layers = 1;
    for (const UniqueValueRow& r : mRows) {
        if (auto* multi = dynamic_cast<const TEStyleMultiLayer*>(r.style.get()))
            layers = std::max(layers, multi->GetLayerCount());
    }
    return layers;
}

void TZModelUniqueValues::updateColumnCount()
{
    const int wanted = wantedColumnCount();
    if (wanted > mColumnCount) {
        beginInsertColumns(QModelIndex(), mColumnCount, wanted - 1);
        mColumnCount = wanted;
        endInsertColumns();
    } else if (wanted < mColumnCount) {
        beginRemoveColumns(QModelIndex(), wanted, mColumnCount - 1);
        mColumnCount = wanted;
        endRemoveColumns();
    } else {
        return;
    }
    emit headerDataChanged(Qt::Horizontal, 0, mColumnCount - 1);
}

TERefPtr<TEStyle> TZModelUniqueValues::makeSymbol(const TEColor& color) const
{
    if (!mLayer)
        return nullptr;
    switch (mLayer->GetLayerType()) {
    case TELayer::LT_Point:
    case TELayer::LT_MultiPoint: {
        auto point = MakeRef<TEStyleSimplePoint>();
        point->SetShapeType(1);
        point->SetColor(color);
        point->SetUnits(1);
        point->SetOutlineColor(mOutlineColor);
        point->SetWidth(2.0);
        point->SetHeight(2.0);
        point->SetOutlineWidth(0.1);
        return point;
    }
    case TELayer::LT_Line: {
        auto line = MakeRef<TEStyleSimpleLine>();
        line->SetUnits(mOutlineUnit);
        line->SetWidth(mOutlineWidth);
        line->SetColor(color);
        return line;
    }
    case TELayer::LT_Polygon: {
        auto outline = MakeRef<TEStyleSimpleLine>();
        outline->SetUnits(mOutlineUnit);
        outline->SetWidth(mOutlineWidth);
        outline->SetColor(mOutlineColor);
        auto fill = MakeRef<TEStyleSimpleFill>();
        fill->SetColor(color);
        fill->SetOutline(outline);
        return fill;
    }
    default:
        return nullptr;
    }
}

QStringList TZModelUniqueValues::values() const
{
    QMutexLocker locker(&mValuesMutex);
    return mValues;
}

int TZModelUniqueValues::valueCount(const QString& value) const
{
    QMutexLocker locker(&mValuesMutex);
    return mCounts.value(value, 0);
}

bool TZModelUniqueValues::collectWithCounts(const QString& fieldName)
{
    return collect(fieldName, true);
}

bool TZModelUniqueValues::collectDistinct(const QString& fieldName)
{
    return collect(fieldName, false);
}

bool TZModelUniqueValues::collect(const QString& fieldName, bool withCounts)
{
    {
        QMutexLocker locker(&mValuesMutex);
        mValues.clear();
        mCounts.clear();
    }
    const TERefPtr<TEFeatureTable> table = mLayer ? mLayer->GetDatasource() : nullptr;
    if (!table)
        return false;

    // The table gives the values in the order a scan of the layer as edited
    // meets them first; without counting they are marked not counted (-1).
    QStringList values;
    std::vector<int> found;
    if (!table->GetValueTexts(TEString(fieldName), mLayer->query_filter(), values, found))
        return false;
    QHash<QString, int> countByValue;
    countByValue.reserve(values.size());
    for (int i = 0; i < values.size(); ++i)
        countByValue.insert(values[i], withCounts ? found[size_t(i)] : -1);
    QMutexLocker locker(&mValuesMutex);
    mValues.swap(values);
    mCounts.swap(countByValue);
    return true;
}

void TZModelUniqueValues::collectWithFallback(const QString& fieldName, bool count)
{
    if (count || !collectDistinct(fieldName))
        collectWithCounts(fieldName);
}

void TZModelUniqueValues::collectValues(bool count)
{
    collectWithFallback(mFieldName, count);
}

TERefPtr<TEStyle> TZModelUniqueValues::symbolForNewRow(const QString&, const TEColorRampContainer& colors,
                                                       int colorIndex) const
{
    return makeSymbol(colors.getColor(colorIndex).toTEColor(255));
}

void TZModelUniqueValues::setCollectedValues(const QStringList& values, const QHash<QString, int>& counts)
{
    QMutexLocker locker(&mValuesMutex);
    mValues = values;
    mCounts = counts;
}

QString TZModelUniqueValues::featureValue(const TEFeature& feature) const
{
    return feature.GetValue(TEString(mFieldName)).ToString().toQString();
}

int TZModelUniqueValues::wantedColumnCount() const
{
    return firstPriorityColumn() + priorityColumnCount();
}

UniqueValueRow& TZModelUniqueValues::mutableRow(int row)
{
    return mRows[size_t(row)];
}

void TZModelUniqueValues::writeCategories(TECategorizedSymbolRender& render) const
{
    for (size_t r = 0; r < mRows.size(); ++r) {
        const UniqueValueRow& row = mRows[r];
        // The catch-all row is written as such whatever its text became.
        const QString value = r == 0 ? AllOtherValues : row.value;
        render.AddCategory(TEString(value), TEString(row.label), row.style, row.scaleFilter, row.minScale,
                           row.maxScale);
    }
    render.SetIsShowOtherValue(mShowOtherValues == Qt::Checked);
}

void TZModelUniqueValues::runCollection(QWidget* dialogParent, const std::function<void()>& job)
{
    // A small local layer is read in a few milliseconds, less than handing
    // the job to a worker thread and back would take.
    if (mLayer && mLayer->HasFewFeatures(SmallLayerFeatures)) {
        try {
            job();
        } catch (const std::exception& e) {
            qCWarning(lcUniqueValues) << "collecting values failed:" << e.what();
        } catch (...) {
            qCWarning(lcUniqueValues) << "collecting values failed";
        }
        return;
    }
    // The dialog is kept for the next collection: building its widgets
    // would cost a small layer more than reading it.
    if (!mWaitDialog || mWaitDialog->parentWidget() != dialogParent) {
        delete mWaitDialog;
        mWaitDialog = new TZWaitDialog(tr("Wait"), dialogParent);
        mWaitDialog->setWindowTitle(tr("Wait"));
    }
    mWaitDialog->WaitFor(job);
}

void TZModelUniqueValues::addAllValues(const TEColorRamp* ramp, QWidget* dialogParent)
{
    mBusy = true;
    QElapsedTimer timer;
    timer.start();

    const bool count = mCountWhileCollecting;
    runCollection(dialogParent, [this, count] { collectValues(count); });
    qCDebug(lcUniqueValues) << " coast time 1:" << elapsedSeconds(timer);

    timer.restart();
    const QStringList collected = values();
    beginResetModel();
    mRows.resize(1);
    invalidateRowIndex();
    // One colour more than there are values; the last one stays unused.
    const TEColorRampContainer colors =
        ramp && coloursFromRamp() ? ramp->split(collected.size() + 1) : TEColorRampContainer();
    if (!colors.isEmpty() || !coloursFromRamp()) {
        mRows.reserve(size_t(collected.size()) + 1);
        QMutexLocker locker(&mValuesMutex);
        for (int i = 0; i < collected.size(); ++i) {
            const QString& value = collected[i];
            pushRow(symbolForNewRow(value, colors, i), value, value, mCounts.value(value, 0));
        }
    }
    mColumnCount = wantedColumnCount();
    endResetModel();
    qCDebug(lcUniqueValues) << " coast time 2:" << elapsedSeconds(timer);
    mBusy = false;
}

void TZModelUniqueValues::addValues(const TEColorRamp* ramp, const QString& renderType, QWidget* dialogParent)
{
    runCollection(dialogParent, [this] { collectValues(false); });

    TZDialogAddValueToUniqueValue dialog(values(), renderType, dialogParent);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QStringList chosen = dialog.selectedValues();
    if (chosen.isEmpty())
        return;

    const int rows = int(mRows.size());
    const TEColorRampContainer colors =
        ramp && coloursFromRamp() ? ramp->split(rows + chosen.size()) : TEColorRampContainer();
    beginResetModel();
    {
        QMutexLocker locker(&mValuesMutex);
        for (int i = 0; i < chosen.size(); ++i) {
            const QString& value = chosen[i];
            pushRow(symbolForNewRow(value, colors, rows + i), value, value, mCounts.value(value, 0));
        }
    }
    mColumnCount = wantedColumnCount();
    endResetModel();
}

void TZModelUniqueValues::loadFromRender(const TECategorizedSymbolRender* render, QWidget* dialogParent,
                                         const QString& fieldName)
{
    if (!render)
        return;
    const QString field = fieldName.isEmpty() ? render->GetExpression().toQString() : fieldName;
    runCollection(dialogParent, [this, field] { collectRenderValues(field); });

    // One reset for the whole table: merging row by row would announce, and
    // recount the priority columns, once per category.
    beginResetModel();
    QMutexLocker locker(&mValuesMutex);
    int total = 0;
    for (int c : qAsConst(mCounts))
        total += c;
    mergeQuietly(nullptr, AllOtherValues, AllOtherValues, total);

    for (int i = 0; i < render->GetItemCount(); ++i) {
        const TERefPtr<TECategoryRenderItem> item = render->GetCategoryRenderItem(i);
        if (!item)
            continue;
        const QString value = item->GetValue().toQString();
        // The catch-all item only gives the catch-all row its symbol.
        const int count = value == AllOtherValues ? 0 : mCounts.value(value, 0);
        mergeQuietly(item->GetStyle(), value, item->GetLabel().toQString(), count);
    }
    locker.unlock();
    mColumnCount = wantedColumnCount();
    endResetModel();
}

TEString TZModelUniqueValues::eventKey(const void* handler) const
{
    TEString key;
    key.Format("%x %x", unsigned(reinterpret_cast<uintptr_t>(this)), unsigned(reinterpret_cast<uintptr_t>(handler)));
    return key;
}

void TZModelUniqueValues::bindLayerEvents()
{
    if (!mLayer)
        return;
    mLayer->features_added().bind(eventKey(reinterpret_cast<const void*>(&featuresAddedHandler)),
                                  [this](void* sender, TEEvent* event) { featuresAddedHandler(this, sender, event); });
    mLayer->features_deleted().bind(
        eventKey(reinterpret_cast<const void*>(&featuresDeletedHandler)),
        [this](void* sender, TEEvent* event) { featuresDeletedHandler(this, sender, event); });
}

void TZModelUniqueValues::unbindLayerEvents()
{
    if (!mLayer)
        return;
    mLayer->features_added().unbind(eventKey(reinterpret_cast<const void*>(&featuresAddedHandler)));
    mLayer->features_deleted().unbind(eventKey(reinterpret_cast<const void*>(&featuresDeletedHandler)));
}

QStringList TZModelUniqueValues::eventValues(TEEvent* event) const
{
    QStringList result;
    if (!event || !mLayer || !hasCollectionKey())
        return result;
    for (int id : event->GetIds()) {
        TERefPtr<TEFeature> feature;
        // A feature not yet saved, or one just deleted, lives in the edit
        // buffer; saved ones are read from the source.
        if (TELayerEditBuffer* buffer = mLayer->layer_edit_buffer()) {
            if (TEFeatureEditBuffer* edit = buffer->GetActiveEditFeatureByFeatureId(id))
                feature = edit->GetFeature();
        }
        if (!feature)
            feature = mLayer->GetFeature(id);
        if (feature)
            result.append(featureValue(*feature));
    }
    return result;
}

void TZModelUniqueValues::featuresAddedHandler(TZModelUniqueValues* model, void*, TEEvent* event)
{
    const QStringList values = model->eventValues(event);
    QMetaObject::invokeMethod(model, [model, values] { model->applyCountChange(values, +1); });
}

void TZModelUniqueValues::featuresDeletedHandler(TZModelUniqueValues* model, void*, TEEvent* event)
{
    const QStringList values = model->eventValues(event);
    QMetaObject::invokeMethod(model, [model, values] { model->applyCountChange(values, -1); });
}

void TZModelUniqueValues::applyCountChange(const QStringList& values, int delta)
{
    if (values.isEmpty())
        return;
    {
        QMutexLocker locker(&mValuesMutex);
        for (const QString& value : values) {
            auto it = mCounts.find(value);
            if (it == mCounts.end()) {
                if (delta > 0) {
                    mCounts.insert(value, delta);
                    mValues.append(value);
                }
            } else if (it.value() >= 0) {
                it.value() = std::max(0, it.value() + delta);
            }
        }
    }
    beginResetModel();
    for (const QString& value : values) {
        const int row = findRow(value);
        if (row > 0 && mRows[size_t(row)].count >= 0)
            mRows[size_t(row)].count = std::max(0, mRows[size_t(row)].count + delta);
    }
    endResetModel();
}
