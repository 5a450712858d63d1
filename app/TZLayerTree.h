#pragma once

#include "core/TERefPtr.h"
#include "data/TELayer.h"

#include <QTreeWidget>

namespace TZObjects {
class TEFeatureLayer;
class TEFeatureRender;
class TEFourColorTheoremRender;
class TEStyle;
}

#include <vector>

// The layer list: one top-level item per layer, the top one drawn last,
// with a check box for its visibility; the list is reordered by dragging.
// Under a layer drawn by categories, classes or rules, the legend: one
// child item per class with its symbol and label; under a diagram layer,
// its background's legend and then one item per diagram part with its
// colour. A layer drawn with one symbol shows that symbol as its icon; a
// layer without a render (not drawn) has one child saying "Not rendered".
class TZLayerTree : public QTreeWidget
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
    QTreeWidgetItem* itemOf(const QString& guid) const;

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
    void onItemChanged(QTreeWidgetItem* item, int column);
    void onCurrentItemChanged(QTreeWidgetItem* current);

private:
    static QIcon symbolIcon(const TZObjects::TEStyle* style);
    static QIcon layerTypeIcon(const TZObjects::TELayer* layer);
    void addLegendItem(QTreeWidgetItem* parent, const TZObjects::TEStyle* style, const QString& label);
    void addLegendItem(QTreeWidgetItem* parent, const QIcon& icon, const QString& label);
    // A disc of the colour, diameter pixels across, as a legend icon.
    static QIcon swatchIcon(const QColor& color, int diameter);
    // The legend entries (or the layer icon) of a render; a diagram render
    // lists its background render's entries and then its own items.
    void fillLegend(QTreeWidgetItem* item, TZObjects::TELayer* layer, TZObjects::TEFeatureRender* render);
    void addFourColorLegend(QTreeWidgetItem* parent, const TZObjects::TEFeatureLayer* layer,
                            const TZObjects::TEFourColorTheoremRender* render);

    std::vector<TZObjects::TERefPtr<TZObjects::TELayer>> mLayers;
};
