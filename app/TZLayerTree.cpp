#include "TZLayerTree.h"

#include "TZLayerTreeModel.h"
#include "TZMapIcons.h"

#include <QDropEvent>
#include <QItemSelectionModel>

#include <algorithm>

using namespace TZObjects;

TZLayerTree::TZLayerTree(QWidget* parent)
    : QTreeView(parent)
    , mModel(new TZLayerTreeModel(this))
{
    setObjectName(QStringLiteral("layerTree"));
    setModel(mModel);
    setHeaderHidden(true);
    setIconSize(TZMapIcons::LegendSize);
    // Every row is one line with an icon of the same size; a uniform height
    // keeps scrolling through a legend of 100,000 classes cheap.
    setUniformRowHeights(true);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAnimated(true);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &TZLayerTree::onCurrentChanged);
    // A legend's entries are made when the user first expands it.
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        if (mModel->canFetchMore(index))
            mModel->fetchMore(index);
    });
    connect(mModel, &TZLayerTreeModel::visibilityChanged, this, [this](const QString& guid, bool visible) {
        if (visible)
            applyExpansion(indexOf(guid));
        Q_EMIT layersChanged();
    });
}

void TZLayerTree::addLayer(const TERefPtr<TELayer>& layer, bool visible, int index)
{
    if (!mModel->addLayer(layer, visible, index))
        return;
    applyExpansion(indexOf(layer->GetGuidStr().toQString()));
    Q_EMIT layersChanged();
}

bool TZLayerTree::removeLayer(const QString& guid)
{
    if (!mModel->removeLayer(guid))
        return false;
    Q_EMIT layersChanged();
    return true;
}

void TZLayerTree::clearLayers()
{
    mModel->clear();
    Q_EMIT layersChanged();
}

std::vector<TERefPtr<TELayer>> TZLayerTree::layers() const
{
    std::vector<TERefPtr<TELayer>> result;
    for (int row = 0; row < mModel->layerCount(); ++row)
        result.emplace_back(mModel->layerAt(row));
    return result;
}

std::vector<TERefPtr<TELayer>> TZLayerTree::visibleLayersBottomUp() const
{
    std::vector<TERefPtr<TELayer>> result;
    for (int row = mModel->layerCount() - 1; row >= 0; --row) {
        if (mModel->isLayerVisible(row))
            result.emplace_back(mModel->layerAt(row));
    }
    return result;
}

bool TZLayerTree::isLayerVisible(const QString& guid) const
{
    return mModel->isLayerVisible(indexOf(guid).row());
}

void TZLayerTree::setLayerVisible(const QString& guid, bool visible)
{
    const QModelIndex index = indexOf(guid);
    if (index.isValid())
        mModel->setData(index, visible ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
}

TELayer* TZLayerTree::currentLayer() const
{
    return mModel->layerOf(currentIndex());
}

TELayer* TZLayerTree::layerByGuid(const QString& guid) const
{
    return mModel->layerAt(indexOf(guid).row());
}

QModelIndex TZLayerTree::indexOf(const QString& guid) const
{
    return mModel->indexOf(guid);
}

void TZLayerTree::refreshLegend(const QString& guid)
{
    mModel->refreshLegend(guid);
    applyExpansion(indexOf(guid));
}

void TZLayerTree::applyExpansion(const QModelIndex& layer)
{
    // A hidden layer stays as the user left it (collapsed when new).
    if (!layer.isValid() || !mModel->isLayerVisible(layer.row()))
        return;
    const int count = mModel->legendCount(layer);
    const bool expand = count >= 0 && count <= TZLayerTreeModel::LongLegend;
    setExpanded(layer, expand);
    // A layer expanded already does not signal it again.
    if (expand && mModel->canFetchMore(layer))
        mModel->fetchMore(layer);
}

void TZLayerTree::dropEvent(QDropEvent* event)
{
    // Only a layer of this list moves, and only between layers: the model
    // moves it, so the view must not remove the "moved" rows afterwards.
    const QModelIndexList dragged = selectionModel()->selectedRows();
    if (event->source() != this || dragged.isEmpty() || dragged.first().parent().isValid()) {
        event->ignore();
        return;
    }
    const QModelIndex target = indexAt(event->pos());
    int to = mModel->layerCount();
    if (target.isValid()) {
        const QModelIndex layer = target.parent().isValid() ? target.parent() : target;
        to = layer.row();
        if (target.parent().isValid() || dropIndicatorPosition() == QAbstractItemView::BelowItem)
            ++to;
    }
    const bool moved = mModel->moveLayer(dragged.first().row(), to);
    event->setDropAction(Qt::CopyAction);
    event->accept();
    stopAutoScroll();
    setState(QAbstractItemView::NoState);
    viewport()->update();
    if (moved)
        Q_EMIT layersChanged();
}

void TZLayerTree::onCurrentChanged(const QModelIndex& current)
{
    Q_UNUSED(current);
    Q_EMIT currentLayerChanged(currentLayer());
}
