#pragma once

#include "core/TERefPtr.h"
#include "data/TELayer.h"

#include <QAbstractItemModel>
#include <QCache>
#include <QIcon>

#include <memory>
#include <vector>

class TZLayerLegend;

// The layers of the layer list, top of the list first, each with a check
// box for its visibility, and under each its legend (TZLayerLegend). A
// layer's legend is built when it is first shown: when the layer is visible,
// or when a view fetches its entries (canFetchMore/fetchMore). The icons of
// the entries are drawn when a view asks for them and kept in a bounded
// cache, so a legend of 100,000 classes costs only what is on screen. When
// two layers share a name, each shows its file name beside it.
class TZLayerTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role { GuidRole = Qt::UserRole };
    // Legends longer than this are shown collapsed, with their class count.
    static constexpr int LongLegend = 100;
    // How many legend icons are kept drawn.
    static constexpr int IconCacheSize = 2000;

    explicit TZLayerTreeModel(QObject* parent = nullptr);
    ~TZLayerTreeModel() override;

    // Puts the layer at row (0: top of the list); false when it is there already.
    bool addLayer(const TZObjects::TERefPtr<TZObjects::TELayer>& layer, bool visible, int row);
    bool removeLayer(const QString& guid);
    void clear();
    // Moves the layer at row from to the place before row to (rowCount() for the bottom).
    bool moveLayer(int from, int to);

    int layerCount() const { return int(mNodes.size()); }
    TZObjects::TELayer* layerAt(int row) const;
    bool isLayerVisible(int row) const;
    // The row of the layer, or an invalid index.
    QModelIndex indexOf(const QString& guid) const;
    // The layer of a layer's row or of one of its legend entries.
    TZObjects::TELayer* layerOf(const QModelIndex& index) const;
    // The number of entries of the layer's legend, -1 while it is not built.
    int legendCount(const QModelIndex& layer) const;

    // Builds the layer's legend again from its render, and its name and icon.
    void refreshLegend(const QString& guid);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override;

Q_SIGNALS:
    // A layer was shown or hidden with its check box.
    void visibilityChanged(const QString& guid, bool visible);

private:
    struct LayerNode;

    LayerNode* nodeOf(const QModelIndex& index) const;
    int rowOf(const LayerNode* node) const;
    void buildLegend(LayerNode* node);
    // The shown names: a layer whose name another layer shares gets its
    // file name beside it; a long legend adds its class count.
    void updateTexts();

    std::vector<std::unique_ptr<LayerNode>> mNodes;
    // The layer whose legend rows are being inserted or removed: a view
    // hearing of it must not fetch them again meanwhile.
    const LayerNode* mChanging = nullptr;
    // Drawn legend icons by layer node and row.
    mutable QCache<QPair<quintptr, int>, QIcon> mIcons;
};
