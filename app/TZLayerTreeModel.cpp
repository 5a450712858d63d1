#include "TZLayerTreeModel.h"

#include "TZLayerLegend.h"

#include "data/TEPostgresSource.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QHash>
#include <QPalette>

#include <algorithm>

using namespace TZObjects;

struct TZLayerTreeModel::LayerNode
{
    TERefPtr<TELayer> layer;
    QString guid;
    bool visible = true;
    QString text;
    QIcon icon;
    std::unique_ptr<TZLayerLegend> legend;
    // The legend entries the views have been given (fetchMore).
    int shownRows = 0;
};

TZLayerTreeModel::TZLayerTreeModel(QObject* parent)
    : QAbstractItemModel(parent)
    , mIcons(IconCacheSize)
{
}

TZLayerTreeModel::~TZLayerTreeModel() = default;

bool TZLayerTreeModel::addLayer(const TERefPtr<TELayer>& layer, bool visible, int row)
{
    if (!layer || indexOf(layer->GetGuidStr().toQString()).isValid())
        return false;
    auto node = std::make_unique<LayerNode>();
    node->layer = layer;
    node->guid = layer->GetGuidStr().toQString();
    node->visible = visible;
    node->icon = TZLayerLegend::layerIcon(layer.get());
    if (visible)
        buildLegend(node.get());
    row = std::clamp(row, 0, layerCount());
    beginInsertRows(QModelIndex(), row, row);
    mNodes.insert(mNodes.begin() + row, std::move(node));
    endInsertRows();
    updateTexts();
    return true;
}

bool TZLayerTreeModel::removeLayer(const QString& guid)
{
    const QModelIndex index = indexOf(guid);
    if (!index.isValid())
        return false;
    beginRemoveRows(QModelIndex(), index.row(), index.row());
    mNodes.erase(mNodes.begin() + index.row());
    endRemoveRows();
    mIcons.clear();
    updateTexts();
    return true;
}

void TZLayerTreeModel::clear()
{
    beginResetModel();
    mNodes.clear();
    mIcons.clear();
    endResetModel();
}

bool TZLayerTreeModel::moveLayer(int from, int to)
{
    if (from < 0 || from >= layerCount() || to < 0 || to > layerCount() || to == from || to == from + 1)
        return false;
    beginMoveRows(QModelIndex(), from, from, QModelIndex(), to);
    if (to > from)
        std::rotate(mNodes.begin() + from, mNodes.begin() + from + 1, mNodes.begin() + to);
    else
        std::rotate(mNodes.begin() + to, mNodes.begin() + from, mNodes.begin() + from + 1);
    endMoveRows();
    return true;
}

TELayer* TZLayerTreeModel::layerAt(int row) const
{
    return row >= 0 && row < layerCount() ? mNodes[size_t(row)]->layer.get() : nullptr;
}

bool TZLayerTreeModel::isLayerVisible(int row) const
{
    return row >= 0 && row < layerCount() && mNodes[size_t(row)]->visible;
}

QModelIndex TZLayerTreeModel::indexOf(const QString& guid) const
{
    for (int row = 0; row < layerCount(); ++row) {
        if (mNodes[size_t(row)]->guid == guid)
            return createIndex(row, 0);
    }
    return QModelIndex();
}

TELayer* TZLayerTreeModel::layerOf(const QModelIndex& index) const
{
    if (!index.isValid() || index.model() != this)
        return nullptr;
    return index.parent().isValid() ? layerAt(index.parent().row()) : layerAt(index.row());
}

int TZLayerTreeModel::legendCount(const QModelIndex& layer) const
{
    const LayerNode* node = nodeOf(layer);
    return node && node->legend ? node->legend->count() : -1;
}

void TZLayerTreeModel::refreshLegend(const QString& guid)
{
    const QModelIndex index = indexOf(guid);
    LayerNode* node = nodeOf(index);
    if (!node)
        return;
    // Entries a view shows are replaced at once; others wait to be shown.
    const bool wasShown = node->shownRows > 0;
    mIcons.clear();
    if (wasShown) {
        mChanging = node;
        beginRemoveRows(index, 0, node->shownRows - 1);
        node->shownRows = 0;
        node->legend.reset();
        endRemoveRows();
        mChanging = nullptr;
    }
    node->legend.reset();
    if (node->visible || wasShown)
        buildLegend(node);
    if (wasShown)
        fetchMore(index);
    node->icon = TZLayerLegend::layerIcon(node->layer.get());
    Q_EMIT dataChanged(index, index, {Qt::DecorationRole});
    updateTexts();
}

QModelIndex TZLayerTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (column != 0 || row < 0)
        return QModelIndex();
    if (!parent.isValid())
        return row < layerCount() ? createIndex(row, 0) : QModelIndex();
    LayerNode* node = nodeOf(parent);
    return node && row < node->shownRows ? createIndex(row, 0, node) : QModelIndex();
}

QModelIndex TZLayerTreeModel::parent(const QModelIndex& child) const
{
    // A legend entry carries its layer's node; a layer's row carries none.
    const auto* node = static_cast<const LayerNode*>(child.internalPointer());
    if (!child.isValid() || !node)
        return QModelIndex();
    const int row = rowOf(node);
    return row < 0 ? QModelIndex() : createIndex(row, 0);
}

int TZLayerTreeModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return layerCount();
    const LayerNode* node = nodeOf(parent);
    return node ? node->shownRows : 0;
}

int TZLayerTreeModel::columnCount(const QModelIndex& parent) const
{
    Q_UNUSED(parent);
    return 1;
}

bool TZLayerTreeModel::hasChildren(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return layerCount() > 0;
    const LayerNode* node = nodeOf(parent);
    if (!node)
        return false;
    return node->legend ? node->legend->count() > 0 : TZLayerLegend::hasEntries(node->layer.get());
}

bool TZLayerTreeModel::canFetchMore(const QModelIndex& parent) const
{
    const LayerNode* node = nodeOf(parent);
    if (!node || node == mChanging)
        return false;
    return node->legend ? node->shownRows < node->legend->count() : TZLayerLegend::hasEntries(node->layer.get());
}

void TZLayerTreeModel::fetchMore(const QModelIndex& parent)
{
    LayerNode* node = nodeOf(parent);
    if (!node)
        return;
    if (!node->legend) {
        buildLegend(node);
        updateTexts();
    }
    const int count = node->legend->count();
    if (count <= node->shownRows)
        return;
    mChanging = node;
    beginInsertRows(parent, node->shownRows, count - 1);
    node->shownRows = count;
    endInsertRows();
    mChanging = nullptr;
}

QVariant TZLayerTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.model() != this)
        return QVariant();
    if (const auto* owner = static_cast<const LayerNode*>(index.internalPointer())) {
        const TZLayerLegend* legend = owner->legend.get();
        if (!legend || index.row() >= owner->shownRows)
            return QVariant();
        switch (role) {
        case Qt::DisplayRole:
            return legend->label(index.row());
        case Qt::DecorationRole: {
            const QPair<quintptr, int> key(quintptr(owner), index.row());
            if (const QIcon* icon = mIcons.object(key))
                return *icon;
            const QIcon icon = legend->icon(index.row());
            mIcons.insert(key, new QIcon(icon));
            return icon;
        }
        case Qt::ForegroundRole:
            if (legend->isNote(index.row()))
                return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
            return QVariant();
        default:
            return QVariant();
        }
    }
    const LayerNode* node = nodeOf(index);
    if (!node)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return node->text;
    case Qt::DecorationRole:
        return node->icon;
    case Qt::ToolTipRole:
        return TEPostgresSource::WithoutPassword(node->layer->GetSource());
    case Qt::CheckStateRole:
        return node->visible ? Qt::Checked : Qt::Unchecked;
    case GuidRole:
        return node->guid;
    default:
        return QVariant();
    }
}

bool TZLayerTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    LayerNode* node = nodeOf(index);
    if (!node || role != Qt::CheckStateRole)
        return false;
    const bool visible = value.toInt() == Qt::Checked;
    if (node->visible == visible)
        return false;
    node->visible = visible;
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    // A layer shown for the first time gets its legend now.
    if (visible && !node->legend) {
        buildLegend(node);
        updateTexts();
    }
    Q_EMIT visibilityChanged(node->guid, visible);
    return true;
}

Qt::ItemFlags TZLayerTreeModel::flags(const QModelIndex& index) const
{
    // Layers are dragged between layers, never dropped into one another.
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    if (index.internalPointer())
        return Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled;
}

Qt::DropActions TZLayerTreeModel::supportedDropActions() const
{
    return Qt::MoveAction;
}

TZLayerTreeModel::LayerNode* TZLayerTreeModel::nodeOf(const QModelIndex& index) const
{
    // Only a layer's own row (no node pointer) stands for the layer.
    if (!index.isValid() || index.model() != this || index.internalPointer() || index.row() >= layerCount())
        return nullptr;
    return mNodes[size_t(index.row())].get();
}

int TZLayerTreeModel::rowOf(const LayerNode* node) const
{
    const auto found = std::find_if(mNodes.begin(), mNodes.end(),
                                    [node](const std::unique_ptr<LayerNode>& n) { return n.get() == node; });
    return found == mNodes.end() ? -1 : int(found - mNodes.begin());
}

void TZLayerTreeModel::buildLegend(LayerNode* node)
{
    node->legend = std::make_unique<TZLayerLegend>(node->layer.get());
}

void TZLayerTreeModel::updateTexts()
{
    QHash<QString, int> nameCount;
    QHash<QString, QStringList> fileNames;
    // A server's connection is shown whole, its password left out.
    const auto sourceOf = [](const TELayer* layer) { return TEPostgresSource::WithoutPassword(layer->GetSource()); };
    const auto fileNameOf = [&sourceOf](const TELayer* layer) {
        const QString source = sourceOf(layer);
        const QString name = source.startsWith(QLatin1String("PG:"), Qt::CaseInsensitive)
            ? QString()
            : QFileInfo(source).fileName();
        return name.isEmpty() ? source : name;
    };
    for (const auto& node : mNodes) {
        const QString name = node->layer->GetLayerName().toQString();
        ++nameCount[name];
        fileNames[name] << fileNameOf(node->layer.get());
    }
    for (int row = 0; row < layerCount(); ++row) {
        LayerNode* node = mNodes[size_t(row)].get();
        const QString name = node->layer->GetLayerName().toQString();
        QString text = name;
        if (nameCount.value(name) > 1) {
            // The file name tells them apart, unless they share it too.
            const QString file = fileNameOf(node->layer.get());
            text = tr("%1 (%2)").arg(name, fileNames.value(name).count(file) > 1 ? sourceOf(node->layer.get()) : file);
        }
        if (node->legend && node->legend->count() > LongLegend)
            text = tr("%1 \u2014 %L2 classes").arg(text).arg(node->legend->count());
        if (text != node->text) {
            node->text = text;
            const QModelIndex index = createIndex(row, 0);
            Q_EMIT dataChanged(index, index, {Qt::DisplayRole});
        }
    }
}
