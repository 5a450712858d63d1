#include "TZLayerTree.h"

#include "data/TEFeatureLayer.h"
#include "data/TEPostgresSource.h"
#include "data/TERasterDirLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEClusterDiagramRender.h"
#include "renders/TEDiagramRender.h"
#include "renders/TEFourColorTheoremRender.h"
#include "renders/TEDotDensityDiagramRender.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "renders/TEHeatMapperRender.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyle.h"

#include <QApplication>
#include <QColor>
#include <QDropEvent>
#include <QHeaderView>
#include <QLocale>
#include <QPainter>
#include <QStyle>

#include <algorithm>

using namespace TZObjects;

namespace {

constexpr int GuidRole = Qt::UserRole;
constexpr int ShownRole = Qt::UserRole + 1;
const QSize IconSize(20, 16);

} // namespace

TZLayerTree::TZLayerTree(QWidget* parent)
    : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("layerTree"));
    setHeaderHidden(true);
    setColumnCount(1);
    setIconSize(IconSize);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAnimated(true);
    invisibleRootItem()->setFlags(invisibleRootItem()->flags() | Qt::ItemIsDropEnabled);
    connect(this, &QTreeWidget::itemChanged, this, &TZLayerTree::onItemChanged);
    connect(this, &QTreeWidget::currentItemChanged, this, &TZLayerTree::onCurrentItemChanged);
}

void TZLayerTree::addLayer(const TERefPtr<TELayer>& layer, bool visible, int index)
{
    if (!layer || itemOf(layer->GetGuidStr().toQString()))
        return;
    mLayers.push_back(layer);
    const QString guid = layer->GetGuidStr().toQString();
    auto* item = new QTreeWidgetItem;
    item->setText(0, layer->GetLayerName().toQString());
    item->setToolTip(0, TEPostgresSource::WithoutPassword(layer->GetSource()));
    item->setData(0, GuidRole, guid);
    item->setData(0, ShownRole, visible);
    // Layers are dragged between layers, never dropped into one another.
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled);
    {
        const QSignalBlocker blocker(this);
        item->setCheckState(0, visible ? Qt::Checked : Qt::Unchecked);
        insertTopLevelItem(std::clamp(index, 0, topLevelItemCount()), item);
    }
    refreshLegend(guid);
    item->setExpanded(true);
    Q_EMIT layersChanged();
}

bool TZLayerTree::removeLayer(const QString& guid)
{
    QTreeWidgetItem* item = itemOf(guid);
    if (!item)
        return false;
    delete item;
    mLayers.erase(std::remove_if(mLayers.begin(), mLayers.end(),
                                 [&](const TERefPtr<TELayer>& l) { return l->GetGuidStr().toQString() == guid; }),
                  mLayers.end());
    Q_EMIT layersChanged();
    return true;
}

void TZLayerTree::clearLayers()
{
    clear();
    mLayers.clear();
    Q_EMIT layersChanged();
}

std::vector<TERefPtr<TELayer>> TZLayerTree::layers() const
{
    std::vector<TERefPtr<TELayer>> result;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (TELayer* layer = layerByGuid(topLevelItem(i)->data(0, GuidRole).toString()))
            result.emplace_back(layer);
    }
    return result;
}

std::vector<TERefPtr<TELayer>> TZLayerTree::visibleLayersBottomUp() const
{
    std::vector<TERefPtr<TELayer>> result;
    for (int i = topLevelItemCount() - 1; i >= 0; --i) {
        QTreeWidgetItem* item = topLevelItem(i);
        if (item->checkState(0) != Qt::Checked)
            continue;
        if (TELayer* layer = layerByGuid(item->data(0, GuidRole).toString()))
            result.emplace_back(layer);
    }
    return result;
}

bool TZLayerTree::isLayerVisible(const QString& guid) const
{
    QTreeWidgetItem* item = itemOf(guid);
    return item && item->checkState(0) == Qt::Checked;
}

void TZLayerTree::setLayerVisible(const QString& guid, bool visible)
{
    if (QTreeWidgetItem* item = itemOf(guid))
        item->setCheckState(0, visible ? Qt::Checked : Qt::Unchecked);
}

TELayer* TZLayerTree::currentLayer() const
{
    QTreeWidgetItem* item = currentItem();
    while (item && item->parent())
        item = item->parent();
    return item ? layerByGuid(item->data(0, GuidRole).toString()) : nullptr;
}

TELayer* TZLayerTree::layerByGuid(const QString& guid) const
{
    for (const TERefPtr<TELayer>& layer : mLayers) {
        if (layer->GetGuidStr().toQString() == guid)
            return layer.get();
    }
    return nullptr;
}

QTreeWidgetItem* TZLayerTree::itemOf(const QString& guid) const
{
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (topLevelItem(i)->data(0, GuidRole).toString() == guid)
            return topLevelItem(i);
    }
    return nullptr;
}

void TZLayerTree::refreshLegend(const QString& guid)
{
    QTreeWidgetItem* item = itemOf(guid);
    TELayer* layer = layerByGuid(guid);
    if (!item || !layer)
        return;
    const QSignalBlocker blocker(this);
    qDeleteAll(item->takeChildren());
    item->setText(0, layer->GetLayerName().toQString());

    // "Not to render" leaves a layer without a render, and tzmap draws nothing
    // of it; the legend says so, so that an empty map is not a puzzle.
    if (!layer->GetRender()) {
        // A vector layer keeps the look of its kind (point, line or fill), greyed.
        auto* vector = dynamic_cast<TEFeatureLayer*>(layer);
        const QIcon kind = vector ? symbolIcon(vector->GetDefaultStyle().get()) : QIcon();
        item->setIcon(0, kind.isNull() ? layerTypeIcon(layer) : QIcon(kind.pixmap(IconSize, QIcon::Disabled)));
        auto* note = new QTreeWidgetItem(item);
        note->setText(0, tr("Not rendered"));
        note->setFlags(Qt::ItemIsEnabled);
        note->setForeground(0, palette().brush(QPalette::Disabled, QPalette::Text));
        item->setExpanded(true);
        return;
    }

    auto* features = dynamic_cast<TEFeatureLayer*>(layer);
    if (!features) {
        item->setIcon(0, layerTypeIcon(layer));
        return;
    }
    const TERefPtr<TEFeatureRender> render = features->GetSymbolRender();
    if (!render)
        return;
    fillLegend(item, layer, render.get());
    item->setExpanded(true);
}

void TZLayerTree::fillLegend(QTreeWidgetItem* item, TELayer* layer, TEFeatureRender* render)
{
    if (auto* diagram = dynamic_cast<TEDiagramRender*>(render)) {
        // The background's entries first, then what the diagrams show.
        item->setIcon(0, QIcon());
        if (const TERefPtr<TEFeatureRender> background = diagram->GetBackgroundRender())
            fillLegend(item, layer, background.get());
        for (const TERefPtr<TEDiagramRenderItem>& part : diagram->GetItems()) {
            const QString caption = part->GetCaption().toQString();
            addLegendItem(item, part->GetStyle().get(), caption.isEmpty() ? part->GetField().toQString() : caption);
        }
        if (auto* dots = dynamic_cast<TEDotDensityDiagramRender*>(render)) {
            const TEColor color = dots->getDotColor();
            addLegendItem(item, swatchIcon(QColor(color.getR(), color.getG(), color.getB()), 4),
                          tr("1 dot = %1 %2")
                              .arg(QLocale().toString(dots->getNumberPerDot()), dots->getFieldName().toQString()));
        }
        if (auto* clusters = dynamic_cast<TEClusterDiagramRender*>(render)) {
            for (int sizeClass = 1; sizeClass < TEClusterDiagramRender::SizeClassCount; ++sizeClass) {
                const int lower = TEClusterDiagramRender::SizeClassLower(sizeClass);
                const QString label = sizeClass + 1 < TEClusterDiagramRender::SizeClassCount
                    ? QStringLiteral("%1 - %2").arg(QLocale().toString(lower),
                                                    QLocale().toString(TEClusterDiagramRender::SizeClassLower(sizeClass + 1) - 1))
                    : QStringLiteral("%1+").arg(QLocale().toString(lower));
                addLegendItem(item, swatchIcon(clusters->SizeClassColor(sizeClass), 8 + sizeClass), label);
            }
        }
        if (auto* graduated = dynamic_cast<TEGraduatedSymbolsDiagramRender*>(render)) {
            for (const TEGraduatedSymbolsDiagramItem& level : graduated->items())
                addLegendItem(item, level.style().get(),
                              QStringLiteral("%1 - %2").arg(QLocale().toString(level.lower()),
                                                            QLocale().toString(level.upper())));
        }
        return;
    }
    if (auto* heat = dynamic_cast<TEHeatMapperRender*>(render)) {
        // The ramp from sparse to dense, as the surface shows it.
        item->setIcon(0, QIcon());
        QPixmap pixmap(IconSize);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        for (int x = 0; x < pixmap.width(); ++x)
            painter.fillRect(QRect(x, 2, 1, pixmap.height() - 4), heat->DensityColor(double(x + 1) / pixmap.width()));
        painter.end();
        addLegendItem(item, QIcon(pixmap), tr("Density: sparse to dense"));
        return;
    }
    if (auto* categories = dynamic_cast<TECategorizedSymbolRender*>(render)) {
        item->setIcon(0, QIcon());
        for (int i = 0; i < categories->GetItemCount(); ++i) {
            const TERefPtr<TECategoryRenderItem> category = categories->GetCategoryRenderItem(i);
            const bool catchAll = category->GetValue() == TEString(TECategorizedSymbolRender::AllOtherValues);
            if (!category->IsVisible() || (catchAll && !categories->IsShowOtherValue()))
                continue;
            const QString label = category->GetLabel().toQString();
            addLegendItem(item, category->GetStyle().get(), label.isEmpty() ? category->GetValue().toQString() : label);
        }
    } else if (auto* rules = dynamic_cast<TERuleBasedSymbolRender*>(render)) {
        item->setIcon(0, QIcon());
        for (int i = 0; i < rules->RuleCount(); ++i) {
            const TERefPtr<TERuleBasedSymbolRender::Rule> rule = rules->GetRule(i);
            const QString label = rule->Label().toQString();
            addLegendItem(item, rule->Style().get(), label.isEmpty() ? rule->Expression().toQString() : label);
        }
    } else if (auto* fourColor = dynamic_cast<TEFourColorTheoremRender*>(render)) {
        item->setIcon(0, QIcon());
        addFourColorLegend(item, dynamic_cast<TEFeatureLayer*>(layer), fourColor);
    } else {
        const std::vector<TERefPtr<TEStyle>> styles = render->GetStyles();
        item->setIcon(0, styles.empty() ? layerTypeIcon(layer) : symbolIcon(styles.front().get()));
    }
}

void TZLayerTree::addFourColorLegend(QTreeWidgetItem* parent, const TEFeatureLayer* layer,
                                     const TEFourColorTheoremRender* render)
{
    // The palette, each colour once in the order the features use it, on the
    // default style's outline; then the default style itself when some
    // features were left uncoloured.
    const TERefPtr<TEStyle> base = render->getDefaultStyle();
    std::vector<uint32_t> shown;
    for (const auto& entry : render->getColorMap()) {
        const uint32_t rgb = entry.second.GetColor() & 0xFFFFFFu;
        if (std::find(shown.begin(), shown.end(), rgb) != shown.end())
            continue;
        shown.push_back(rgb);
        TERefPtr<TEStyle> swatch = base ? base->Clone() : TERefPtr<TEStyle>();
        if (swatch)
            swatch->SetColor(entry.second);
        addLegendItem(parent, swatch.get(),
                      QColor(entry.second.getR(), entry.second.getG(), entry.second.getB()).name());
    }
    if (layer && int(render->getColorMap().size()) < layer->GetFeatureCount())
        addLegendItem(parent, base.get(), tr("Uncolored"));
}

void TZLayerTree::addLegendItem(QTreeWidgetItem* parent, const QIcon& icon, const QString& label)
{
    auto* child = new QTreeWidgetItem(parent);
    child->setText(0, label);
    child->setIcon(0, icon);
    child->setFlags(Qt::ItemIsEnabled);
}

QIcon TZLayerTree::swatchIcon(const QColor& color, int diameter)
{
    QPixmap pixmap(IconSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setBrush(color);
    painter.setPen(QPen(color.darker(140), 1.0));
    const double d = std::min<double>(diameter, std::min(IconSize.width(), IconSize.height()) - 2);
    painter.drawEllipse(QRectF(QPointF(IconSize.width() - d, IconSize.height() - d) / 2.0, QSizeF(d, d)));
    painter.end();
    return QIcon(pixmap);
}

void TZLayerTree::addLegendItem(QTreeWidgetItem* parent, const TEStyle* style, const QString& label)
{
    auto* child = new QTreeWidgetItem(parent);
    child->setText(0, label);
    child->setIcon(0, symbolIcon(style));
    child->setFlags(Qt::ItemIsEnabled);
}

QIcon TZLayerTree::symbolIcon(const TEStyle* style)
{
    if (!style)
        return QIcon();
    QPixmap pixmap(IconSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing, true);
    style->DrawPreview(&painter, QRectF(QPointF(1, 1), QSizeF(IconSize) - QSizeF(2, 2)));
    painter.end();
    return QIcon(pixmap);
}

QIcon TZLayerTree::layerTypeIcon(const TELayer* layer)
{
    if (dynamic_cast<const TERasterDirLayer*>(layer))
        return QApplication::style()->standardIcon(QStyle::SP_DirIcon);
    // A small tiled square standing for a grid of pixels.
    QPixmap pixmap(IconSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const QColor shades[] = {QColor(70, 130, 90), QColor(200, 190, 120), QColor(120, 160, 200), QColor(150, 110, 80)};
    for (int i = 0; i < 4; ++i)
        painter.fillRect(QRect(3 + (i % 2) * 7, 1 + (i / 2) * 7, 7, 7), shades[i]);
    painter.setPen(QColor(60, 60, 60));
    painter.drawRect(QRect(3, 1, 13, 13));
    painter.end();
    return QIcon(pixmap);
}

void TZLayerTree::dropEvent(QDropEvent* event)
{
    QTreeWidget::dropEvent(event);
    for (int i = 0; i < topLevelItemCount(); ++i)
        topLevelItem(i)->setExpanded(true);
    Q_EMIT layersChanged();
}

void TZLayerTree::onItemChanged(QTreeWidgetItem* item, int column)
{
    if (column != 0 || item->parent())
        return;
    const bool shown = item->checkState(0) == Qt::Checked;
    if (item->data(0, ShownRole).toBool() == shown)
        return;
    {
        const QSignalBlocker blocker(this);
        item->setData(0, ShownRole, shown);
    }
    Q_EMIT layersChanged();
}

void TZLayerTree::onCurrentItemChanged(QTreeWidgetItem* current)
{
    Q_UNUSED(current);
    Q_EMIT currentLayerChanged(currentLayer());
}
