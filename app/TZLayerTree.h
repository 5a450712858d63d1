#pragma once

#include "core/TERefPtr.h"
#include "data/TELayer.h"

#include <QTreeView>

#include <vector>

class TZLayerTreeModel;

// The layer list: one row per layer (TZLayerTreeModel), the top one drawn
// last, with a check box for its visibility; the list is reordered by
// dragging. Under each visible layer its legend, expanded unless it has more
// than TZLayerTreeModel::LongLegend entries, in which case the layer shows
// their count and the entries wait until the user expands it. A hidden
// layer's legend is built only when the layer is shown or expanded.
class TZLayerTree : public QTreeView
{
    Q_OBJECT

public:
    explicit TZLayerTree(QWidget* parent = nullptr);

    // Puts the layer on top of the list (or at index).
    void addLayer(const TZObjects::TERefPtr<TZObjects::TELayer>& layer, bool visible = true, int index = 0);
    // Takes the layer out of the list; false when it is not there.
    bool removeLayer(const QString& guid);
    void clearLayers();

    // Every layer, top of the list first.
    std::vector<TZObjects::TERefPtr<TZObjects::TELayer>> layers() const;
    // The checked layers in drawing order: bottom of the list first.
    std::vector<TZObjects::TERefPtr<TZObjects::TELayer>> visibleLayersBottomUp() const;
    bool isLayerVisible(const QString& guid) const;
    void setLayerVisible(const QString& guid, bool visible);

    TZObjects::TELayer* currentLayer() const;
    TZObjects::TELayer* layerByGuid(const QString& guid) const;
    // The layer's row, invalid when the layer is not in the list.
    QModelIndex indexOf(const QString& guid) const;
    TZLayerTreeModel* layerModel() const { return mModel; }

public Q_SLOTS:
    // Rebuilds a layer's legend and icon from its render.
    void refreshLegend(const QString& guid);

Q_SIGNALS:
    // Visibility or order changed: the map must be drawn again.
    void layersChanged();
    void currentLayerChanged(TZObjects::TELayer* layer);

protected:
    void dropEvent(QDropEvent* event) override;

private Q_SLOTS:
    void onCurrentChanged(const QModelIndex& current);

private:
    // Expands a visible layer's legend unless it is long.
    void applyExpansion(const QModelIndex& layer);

    TZLayerTreeModel* mModel = nullptr;
};
