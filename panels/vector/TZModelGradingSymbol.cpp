#include "TZModelGradingSymbol.h"

#include "TZDialogAddValueToUniqueValue.h"
#include "TZGradingValues.h"

#include "data/TEFeature.h"
#include "data/TEFeaturesCountEvent.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"
#include "widgets/TZSymbolUtils.h"
#include "widgets/TZWaitDialog.h"

#include <QFile>
#include <QFileDialog>
#include <QMessageBox>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>

using namespace TZObjects;

const QString TZModelGradingSymbol::AllOtherValues = QStringLiteral("<all other values>");

namespace {

const QSize SymbolIconSize(32, 32);
const TEColor CatchAllColor(185, 185, 185);
// Longer texts are shown cut short, so that a stray line of a huge values
// file cannot stall the table's text layout.
constexpr int MaxShownLength = 1000;

TEQueryFilter oneFieldFilter(TEQueryFilter filter, const TEString& field)
{
    filter.SetSubFields({field});
    filter.SetGeometryNeeded(false);
    return filter;
}

// The field's values as numbers the way a variant's GetDouble reads them
// (null as 0, texts converted), reading that one field without geometry.
bool readDoubles(const TEFeatureLayer* layer, const QString& fieldName, const TEQueryFilter& filter,
                 std::vector<double>& values)
{
    const TERefPtr<TEFields> fields = layer->GetFields();
    const int index = fields ? fields->FindField(TEString(fieldName)) : -1;
    if (index < 0)
        return false;
    const TERefPtr<TEField> field = fields->GetField(index);
    const TERefPtr<TEFeatureCursor> cursor = layer->Search(oneFieldFilter(filter, field->GetName()));
    if (!cursor)
        return false;
    const int ogrIndex = field->GetOgrIndex();
    OGRFieldType type = OFTString;
    bool typeKnown = false;
    while (OGRFeatureH feature = cursor->NextOgrFeature()) {
        double value = 0.0;
        if (ogrIndex < 0) {
            value = double(OGR_F_GetFID(feature));
        } else if (OGR_F_IsFieldSetAndNotNull(feature, ogrIndex)) {
            if (!typeKnown) {
                type = OGR_Fld_GetType(OGR_F_GetFieldDefnRef(feature, ogrIndex));
                typeKnown = true;
            }
            if (type == OFTReal)
                value = OGR_F_GetFieldAsDouble(feature, ogrIndex);
            else if (type == OFTInteger || type == OFTInteger64)
                value = double(OGR_F_GetFieldAsInteger64(feature, ogrIndex));
            else
                value = TEFeature::ReadOgrField(feature, ogrIndex).GetDouble();
        }
        values.push_back(value);
        OGR_F_Destroy(feature);
    }
    return true;
}

// The field's values as their texts read as numbers (a text that is not a
// number reads as 0).
bool readTextNumbers(const TEFeatureLayer* layer, const QString& fieldName, const TEQueryFilter& filter,
                     std::vector<double>& values)
{
    const TEString field(fieldName);
    const TERefPtr<TEFeatureCursor> cursor = layer->Search(oneFieldFilter(filter, field));
    if (!cursor)
        return false;
    while (const TERefPtr<TEFeature> feature = cursor->NextFeature())
        values.push_back(feature->GetValue(field).ToString().ToDouble());
    return true;
}

QList<int> eventIds(TEEvent* event)
{
    QList<int> ids;
    if (event) {
        for (int id : event->GetIds())
            ids.append(id);
    }
    return ids;
}

void minMax(const std::vector<double>& values, double& minimum, double& maximum)
{
    minimum = maximum = 0.0;
    if (values.empty())
        return;
    minimum = maximum = values.front();
    for (double v : values) {
        if (v < minimum)
            minimum = v;
        if (v > maximum)
            maximum = v;
    }
}

} // namespace

TZModelGradingSymbol::TZModelGradingSymbol(QObject* parent)
    : QAbstractListModel(parent)
{
    mItems.push_back({nullptr, AllOtherValues, AllOtherValues, 0});
}

TZModelGradingSymbol::~TZModelGradingSymbol()
{
    unbindLayerEvents();
}

int TZModelGradingSymbol::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(mItems.size());
}

int TZModelGradingSymbol::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

bool TZModelGradingSymbol::isCellIndex(const QModelIndex& index) const
{
    return index.isValid() && index.model() == this && index.row() < int(mItems.size())
        && index.column() < ColumnCount;
}

QVariant TZModelGradingSymbol::data(const QModelIndex& index, int role) const
{
    if (!isCellIndex(index))
        return QVariant();
    const GradingSymbolItem& item = mItems[size_t(index.row())];
    const int column = index.column();

    if (role == Qt::DecorationRole && column == SymbolColumn)
        return item.style ? QVariant(TZSymbolUtils::symbolPreviewIcon(item.style.get(), SymbolIconSize)) : QVariant();
    if (role == Qt::CheckStateRole && index.row() == 0 && column == RangeColumn)
        return mCheckState;
    if (role == Qt::TextAlignmentRole && column == CountColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)
        return QVariant();

    QString text;
    switch (column) {
    case RangeColumn:
        text = item.range;
        break;
    case LabelColumn:
        text = item.label;
        break;
    case CountColumn:
        return QString::number(item.count);
    default:
        return QVariant();
    }
    if (role != Qt::EditRole && text.size() > MaxShownLength)
        return text.left(MaxShownLength) + QChar(0x2026);
    return text;
}

bool TZModelGradingSymbol::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!isCellIndex(index))
        return false;
    if (role == Qt::CheckStateRole) {
        // Every call toggles, whatever state the view asks for.
        mCheckState = mCheckState == Qt::Checked ? Qt::Unchecked : Qt::Checked;
        const QModelIndex catchAll = this->index(0, RangeColumn);
        emit dataChanged(catchAll, catchAll, {Qt::CheckStateRole});
        return true;
    }
    if (role != Qt::EditRole)
        return QAbstractListModel::setData(index, value, role);
    GradingSymbolItem& item = mItems[size_t(index.row())];
    if (index.column() == RangeColumn && index.row() > 0)
        item.range = value.toString();
    else if (index.column() == LabelColumn)
        item.label = value.toString();
    else
        return QAbstractListModel::setData(index, value, role);
    emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
    return true;
}

QVariant TZModelGradingSymbol::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return QAbstractListModel::headerData(section, orientation, role);
    switch (section) {
    case SymbolColumn:
        return tr("symbols");
    case RangeColumn:
        return tr("Value");
    case LabelColumn:
        return tr("Label");
    default:
        return tr("Count");
    }
}

Qt::ItemFlags TZModelGradingSymbol::flags(const QModelIndex& index) const
{
    if (!isCellIndex(index))
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    // The catch-all row keeps its value; it carries the show-other-values check.
    if (index.column() == RangeColumn)
        result |= index.row() == 0 ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
    if (index.column() == LabelColumn)
        result |= Qt::ItemIsEditable;
    return result;
}

void TZModelGradingSymbol::setup(TEFeatureLayer* layer, const QString& field, const TEColorRamp* ramp, int level)
{
    if (layer != mLayer.get()) {
        unbindLayerEvents();
        mLayer = TERefPtr<TEFeatureLayer>(layer);
        mAddedValues.clear();
        bindLayerEvents();
    }
    mField = field;
    mLevel = level;
    setColorRamp(ramp);
    mRanges.clear();
    mValues.clear();
    mMinimum = mMaximum = 0.0;
    clear();
}

void TZModelGradingSymbol::setColorRamp(const TEColorRamp* ramp)
{
    mRamp = ramp ? ramp->clone() : nullptr;
}

void TZModelGradingSymbol::setCheckState(int state)
{
    state = state == Qt::Checked ? Qt::Checked : Qt::Unchecked;
    if (state == mCheckState)
        return;
    mCheckState = state;
    const QModelIndex catchAll = index(0, RangeColumn);
    emit dataChanged(catchAll, catchAll, {Qt::CheckStateRole});
}

void TZModelGradingSymbol::clear()
{
    beginResetModel();
    mItems.clear();
    mItems.push_back({createStyle(CatchAllColor), AllOtherValues, AllOtherValues, 0});
    endResetModel();
}

void TZModelGradingSymbol::addItem(const GradingSymbolItem& item)
{
    const int row = int(mItems.size());
    beginInsertRows(QModelIndex(), row, row);
    mItems.push_back(item);
    endInsertRows();
}

void TZModelGradingSymbol::setItemStyle(int row, const TERefPtr<TEStyle>& style)
{
    if (row < 0 || row >= int(mItems.size()))
        return;
    mItems[size_t(row)].style = style;
    const QModelIndex cell = index(row, SymbolColumn);
    emit dataChanged(cell, cell, {Qt::DecorationRole});
}

void TZModelGradingSymbol::removeItems(const QList<int>& rows)
{
    std::vector<char> remove(mItems.size(), 0);
    bool any = false;
    for (int row : rows) {
        if (row > 0 && row < int(mItems.size())) {
            remove[size_t(row)] = 1;
            any = true;
        }
    }
    if (!any)
        return;
    beginResetModel();
    std::vector<GradingSymbolItem> kept;
    kept.reserve(mItems.size());
    for (size_t i = 0; i < mItems.size(); ++i) {
        if (!remove[i])
            kept.push_back(std::move(mItems[i]));
    }
    mItems.swap(kept);
    endResetModel();
}

void TZModelGradingSymbol::moveItemUp(int row)
{
    if (row <= 1 || row >= int(mItems.size()))
        return;
    std::swap(mItems[size_t(row)], mItems[size_t(row - 1)]);
    emit dataChanged(index(row - 1, 0), index(row, ColumnCount - 1));
}

void TZModelGradingSymbol::moveItemDown(int row)
{
    if (row < 1 || row + 1 >= int(mItems.size()))
        return;
    std::swap(mItems[size_t(row)], mItems[size_t(row + 1)]);
    emit dataChanged(index(row, 0), index(row + 1, ColumnCount - 1));
}

void TZModelGradingSymbol::resetModel()
{
    beginResetModel();
    endResetModel();
}

TERefPtr<TEStyle> TZModelGradingSymbol::createStyle(const TEColor& color) const
{
    if (!mLayer || mField.isEmpty())
        return nullptr;
    const TEColor opaque(color.GetColor(), 255);
    switch (mLayer->GetLayerType()) {
    case TELayer::LT_Point:
    case TELayer::LT_MultiPoint: {
        auto point = MakeRef<TEStyleSimplePoint>();
        point->SetShapeType(1);
        point->SetColor(opaque);
        point->SetUnits(mOutlineUnit);
        point->SetOutlineColor(mOutlineColor);
        point->SetOutlineWidth(mOutlineWidth);
        point->SetWidth(2.0);
        point->SetHeight(2.0);
        return point;
    }
    case TELayer::LT_Line: {
        auto line = MakeRef<TEStyleSimpleLine>();
        line->SetUnits(mOutlineUnit);
        line->SetWidth(mOutlineWidth);
        line->SetColor(opaque);
        return line;
    }
    case TELayer::LT_Polygon: {
        auto outline = MakeRef<TEStyleSimpleLine>();
        outline->SetUnits(mOutlineUnit);
        outline->SetWidth(mOutlineWidth);
        outline->SetColor(mOutlineColor);
        auto fill = MakeRef<TEStyleSimpleFill>();
        fill->SetFillKind(TEStyleSimpleFill::Solid);
        fill->SetColor(opaque);
        fill->SetOutline(outline);
        return fill;
    }
    default:
        return nullptr;
    }
}

void TZModelGradingSymbol::assignColors()
{
    const int classes = int(mItems.size()) - 1;
    if (classes < 1 || !mRamp)
        return;
    const TERefPtr<TEColorRamp> ramp = mRamp->clone();
    ramp->setLevel(classes);
    for (int row = 1; row <= classes; ++row)
        mItems[size_t(row)].style = createStyle(ramp->getColor(row - 1).toTEColor(255));
    emit dataChanged(index(1, SymbolColumn), index(classes, SymbolColumn), {Qt::DecorationRole});
}

int TZModelGradingSymbol::countInRange(const QString& range) const
{
    double lower = 0.0;
    double upper = 0.0;
    if (!TZGradingValues::parseRange(range, lower, upper))
        return 0;
    int count = 0;
    for (double v : mValues) {
        if (lower <= v && v <= upper)
            ++count;
    }
    return count;
}

void TZModelGradingSymbol::countItems()
{
    // One pass over the values for all classes.
    struct Bounds
    {
        double lower;
        double upper;
        size_t row;
    };
    std::vector<Bounds> bounds;
    for (size_t row = 1; row < mItems.size(); ++row) {
        mItems[row].count = 0;
        double lower = 0.0;
        double upper = 0.0;
        if (TZGradingValues::parseRange(mItems[row].range, lower, upper))
            bounds.push_back({lower, upper, row});
    }
    std::vector<int> counts(mItems.size(), 0);
    for (double v : mValues) {
        for (const Bounds& b : bounds) {
            if (b.lower <= v && v <= b.upper)
                ++counts[b.row];
        }
    }
    for (const Bounds& b : bounds)
        mItems[b.row].count = counts[b.row];
}

bool TZModelGradingSymbol::runJob(QWidget* dialogParent, const std::function<void()>& job)
{
    TZWaitDialog wait(tr("Wait"), dialogParent);
    wait.setWindowTitle(tr("Wait"));
    return wait.WaitFor(job);
}

bool TZModelGradingSymbol::readNumbers(QWidget* dialogParent, const TEQueryFilter& filter, bool useCache,
                                       std::vector<double>& values)
{
    values.clear();
    if (!mLayer || mField.isEmpty())
        return false;
    ScanKey key;
    key.layer = mLayer;
    key.field = mField;
    key.filter = filter;
    key.revision = mLayer->GetDataRevision();
    if (useCache && mCacheValid && mCacheKey == key) {
        values = mCachedValues;
        return true;
    }

    // The job fills its own list; the model takes it once the wait is over,
    // so nothing the GUI thread reads changes under it.
    const TERefPtr<TEFeatureLayer> layer = mLayer;
    const QString field = mField;
    std::vector<double> read;
    bool ok = false;
    runJob(dialogParent, [&] { ok = readDoubles(layer.get(), field, filter, read); });
    if (!ok)
        return false;
    mCacheKey = key;
    mCachedValues = read;
    mCacheValid = true;
    values.swap(read);
    return true;
}

void TZModelGradingSymbol::makeClasses(bool lastAtMaximum)
{
    mRanges.clear();
    if (mLevel < 1)
        return;
    const double interval = (mMaximum - mMinimum) / mLevel;
    for (int i = 0; i < mLevel; ++i) {
        const double lower = i * interval + mMinimum;
        const double upper = lastAtMaximum && i == mLevel - 1 ? mMaximum : (i + 1) * interval + mMinimum;
        mRanges.append(TZGradingValues::formatRange(lower, upper));
    }
}

bool TZModelGradingSymbol::classifyAll(QWidget* dialogParent)
{
    clear();
    std::vector<double> values;
    if (!mLayer || !readNumbers(dialogParent, mLayer->query_filter(), false, values))
        return false;
    mValues.swap(values);
    minMax(mValues, mMinimum, mMaximum);
    makeClasses(true);

    beginResetModel();
    mItems.resize(1);
    mItems.reserve(size_t(mRanges.size()) + 1);
    for (const QString& range : qAsConst(mRanges))
        mItems.push_back({nullptr, range, range, 0});
    countItems();
    endResetModel();
    assignColors();
    return true;
}

bool TZModelGradingSymbol::prepareRanges(QWidget* dialogParent)
{
    std::vector<double> values;
    if (!mLayer || !readNumbers(dialogParent, mLayer->query_filter(), true, values))
        return false;
    mValues.swap(values);
    minMax(mValues, mMinimum, mMaximum);
    makeClasses(true);
    return true;
}

QStringList TZModelGradingSymbol::computeRanges(QWidget* dialogParent)
{
    if (mRanges.isEmpty()) {
        mValues.clear();
        mMinimum = mMaximum = 0.0;
        if (!mLayer)
            return {};
        const TERefPtr<TEFeatureLayer> layer = mLayer;
        const QString field = mField;
        const TEQueryFilter filter = layer->query_filter();
        std::vector<double> read;
        bool ok = false;
        runJob(dialogParent, [&] { ok = readTextNumbers(layer.get(), field, filter, read); });
        if (!ok)
            return {};
        mValues.swap(read);
        minMax(mValues, mMinimum, mMaximum);
        makeClasses(false);

        // Unsaved features count too, but the classes are already made.
        if (TELayerEditBuffer* buffer = mLayer->layer_edit_buffer()) {
            const TEString fieldName(mField);
            for (int id : buffer->Query(filter)) {
                TEFeatureEditBuffer* edit = buffer->GetActiveEditFeatureByFeatureId(id);
                if (!edit || edit->edit_operation() == TEFeatureEditBuffer::EO_Deleted)
                    continue;
                const TERefPtr<TEFeature> feature = edit->GetFeature();
                if (!feature)
                    continue;
                const TEVariant value = feature->GetValue(fieldName);
                if (value.IsNull())
                    continue;
                const double number = value.ToString().ToDouble();
                mValues.push_back(number);
                mMinimum = std::min(mMinimum, number);
                mMaximum = std::max(mMaximum, number);
            }
        }
    }

    std::set<QString> missing;
    bool counted = false;
    for (const QString& range : qAsConst(mRanges)) {
        const QStringList parts = range.split(QLatin1Char(','));
        bool matched = false;
        for (size_t row = 0; row < mItems.size(); ++row) {
            const QStringList itemParts = mItems[row].range.split(QLatin1Char(','));
            if (itemParts.size() == 2 && parts.size() == 2 && itemParts[0] == parts[0] && itemParts[1] == parts[1]) {
                ++mItems[row].count;
                matched = counted = true;
            }
        }
        if (!matched)
            missing.insert(range);
    }
    if (counted && mItems.size() > 1)
        emit dataChanged(index(0, CountColumn), index(int(mItems.size()) - 1, CountColumn));
    return QStringList(missing.begin(), missing.end());
}

bool TZModelGradingSymbol::recount(QWidget* dialogParent)
{
    std::vector<double> values;
    if (!mLayer || !readNumbers(dialogParent, mLayer->query_filter(), true, values))
        return false;
    beginResetModel();
    mValues.swap(values);
    for (size_t row = 1; row < mItems.size(); ++row)
        mItems[row].label = mItems[row].range;
    countItems();
    endResetModel();
    return true;
}

void TZModelGradingSymbol::addValues(const QString& renderType, QWidget* dialogParent)
{
    if (!mLayer || mField.isEmpty())
        return;
    const QStringList ranges = computeRanges(dialogParent);
    if (ranges.isEmpty()) {
        QMessageBox::warning(dialogParent, tr("Warning"), tr("No other values"), QMessageBox::Ok);
        return;
    }
    TZDialogAddValueToUniqueValue dialog(ranges, renderType, dialogParent);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QStringList chosen = dialog.selectedValues();
    if (chosen.isEmpty())
        return;
    beginResetModel();
    for (const QString& range : chosen)
        mItems.push_back({nullptr, range, range, countInRange(range)});
    endResetModel();
    assignColors();
}

bool TZModelGradingSymbol::importFrom(const QString& path, QWidget* dialogParent)
{
    QStringList lines;
    switch (TZGradingValues::readFile(path, mLevel, lines)) {
    case TZGradingValues::ReadResult::Read:
        break;
    case TZGradingValues::ReadResult::TooManyLines:
        QMessageBox::warning(dialogParent, tr("Warning"),
                             tr("The number of currently obtained grading symbol items is greater than the level set!"),
                             QMessageBox::Ok);
        return false;
    case TZGradingValues::ReadResult::Empty:
    case TZGradingValues::ReadResult::CannotOpen:
        return false;
    }
    clear();
    if (mValues.empty())
        computeRanges(dialogParent);
    beginResetModel();
    for (const QString& line : qAsConst(lines))
        mItems.push_back({nullptr, line, line, countInRange(line)});
    endResetModel();
    assignColors();
    return true;
}

bool TZModelGradingSymbol::exportTo(const QString& path, QWidget* dialogParent)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        QMessageBox::warning(dialogParent, tr("Warning"), tr("Export file failed!"), QMessageBox::Ok);
        return false;
    }
    QByteArray text;
    for (size_t row = 1; row < mItems.size(); ++row) {
        text += mItems[row].range.toUtf8();
        text += '\n';
    }
    const bool written = file.write(text) == text.size() && file.flush();
    file.close();
    if (!written) {
        QMessageBox::warning(dialogParent, tr("Warning"), tr("Export file failed!"), QMessageBox::Ok);
        return false;
    }
    QMessageBox::information(dialogParent, tr("Information"), tr("Export file successful!"), QMessageBox::Ok);
    return true;
}

void TZModelGradingSymbol::importValues(QWidget* dialogParent)
{
    QString path = QFileDialog::getOpenFileName(dialogParent, tr("Open file"), QString(), tr("Values(*.txt)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QLatin1String(".txt")))
        path += QLatin1String(".txt");
    importFrom(path, dialogParent);
}

void TZModelGradingSymbol::exportValues(QWidget* dialogParent)
{
    if (mItems.size() <= 1) {
        QMessageBox::warning(dialogParent, tr("Warning"), tr("Please add the grading symbol item first!"),
                             QMessageBox::Ok);
        return;
    }
    QString path = QFileDialog::getSaveFileName(dialogParent, tr("Export file"), QString(), tr("Values(*.txt)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QLatin1String(".txt")))
        path += QLatin1String(".txt");
    exportTo(path, dialogParent);
}

TEString TZModelGradingSymbol::eventKey(const void* handler) const
{
    TEString key;
    key.Format("%x %x", unsigned(reinterpret_cast<uintptr_t>(this)), unsigned(reinterpret_cast<uintptr_t>(handler)));
    return key;
}

void TZModelGradingSymbol::bindLayerEvents()
{
    if (!mLayer)
        return;
    mLayer->features_added().bind(eventKey(reinterpret_cast<const void*>(&featuresAddedHandler)),
                                  [this](void* sender, TEEvent* event) { featuresAddedHandler(this, sender, event); });
    mLayer->features_deleted().bind(
        eventKey(reinterpret_cast<const void*>(&featuresDeletedHandler)),
        [this](void* sender, TEEvent* event) { featuresDeletedHandler(this, sender, event); });
}

void TZModelGradingSymbol::unbindLayerEvents()
{
    if (!mLayer)
        return;
    mLayer->features_added().unbind(eventKey(reinterpret_cast<const void*>(&featuresAddedHandler)));
    mLayer->features_deleted().unbind(eventKey(reinterpret_cast<const void*>(&featuresDeletedHandler)));
}

QHash<int, double> TZModelGradingSymbol::eventNumbers(TEEvent* event) const
{
    QHash<int, double> numbers;
    if (!event || !mLayer || mField.isEmpty())
        return numbers;
    const TEString field(mField);
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
            numbers.insert(id, feature->GetValue(field).GetDouble());
    }
    return numbers;
}

void TZModelGradingSymbol::featuresAddedHandler(TZModelGradingSymbol* model, void*, TEEvent* event)
{
    const QHash<int, double> numbers = model->eventNumbers(event);
    const QList<int> ids = eventIds(event);
    QMetaObject::invokeMethod(model, [model, ids, numbers] { model->applyCountChange(ids, numbers, +1); });
}

void TZModelGradingSymbol::featuresDeletedHandler(TZModelGradingSymbol* model, void*, TEEvent* event)
{
    const QHash<int, double> numbers = model->eventNumbers(event);
    const QList<int> ids = eventIds(event);
    QMetaObject::invokeMethod(model, [model, ids, numbers] { model->applyCountChange(ids, numbers, -1); });
}

void TZModelGradingSymbol::applyCountChange(const QList<int>& ids, const QHash<int, double>& read, int delta)
{
    std::vector<double> numbers;
    for (int id : ids) {
        if (delta > 0) {
            if (read.contains(id)) {
                mAddedValues.insert(id, read.value(id));
                numbers.push_back(read.value(id));
            }
        } else if (mAddedValues.contains(id)) {
            numbers.push_back(mAddedValues.take(id));
        } else if (read.contains(id)) {
            numbers.push_back(read.value(id));
        }
    }
    if (numbers.empty())
        return;
    // The read values follow the layer, so that a later count agrees.
    for (double v : numbers) {
        if (delta > 0) {
            mValues.push_back(v);
        } else {
            const auto found = std::find(mValues.begin(), mValues.end(), v);
            if (found != mValues.end())
                mValues.erase(found);
        }
    }
    bool changed = false;
    for (size_t row = 1; row < mItems.size(); ++row) {
        double lower = 0.0;
        double upper = 0.0;
        if (!TZGradingValues::parseRange(mItems[row].range, lower, upper))
            continue;
        for (double v : numbers) {
            if (lower <= v && v <= upper) {
                mItems[row].count = std::max(0, mItems[row].count + delta);
                changed = true;
            }
        }
    }
    if (changed)
        emit dataChanged(index(1, CountColumn), index(int(mItems.size()) - 1, CountColumn), {Qt::DisplayRole});
}
