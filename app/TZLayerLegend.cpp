#include "TZLayerLegend.h"

#include "TZMapIcons.h"

#include "data/TEFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEClusterDiagramRender.h"
#include "renders/TEDiagramRender.h"
#include "renders/TEDotDensityDiagramRender.h"
#include "renders/TEFourColorTheoremRender.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "renders/TEHeatMapperRender.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "symbology/TEStyle.h"

#include <QLocale>

#include <algorithm>

using namespace TZObjects;

namespace {

bool listsClasses(const TEFeatureRender* render)
{
    return dynamic_cast<const TEDiagramRender*>(render) || dynamic_cast<const TEHeatMapperRender*>(render)
        || dynamic_cast<const TECategorizedSymbolRender*>(render) || dynamic_cast<const TERuleBasedSymbolRender*>(render)
        || dynamic_cast<const TEFourColorTheoremRender*>(render);
}

} // namespace

TZLayerLegend::TZLayerLegend(TELayer* layer)
{
    if (!layer)
        return;
    // "Not to render" leaves a layer without a render, and tzmap draws nothing
    // of it; the legend says so, so that an empty map is not a puzzle.
    if (!layer->GetRender()) {
        Entry note;
        note.label = tr("Not rendered");
        note.note = true;
        mEntries.push_back(std::move(note));
        return;
    }
    if (auto* features = dynamic_cast<TEFeatureLayer*>(layer)) {
        if (const TERefPtr<TEFeatureRender> render = features->GetSymbolRender())
            addRender(layer, render.get());
    }
}

TZLayerLegend::~TZLayerLegend() = default;

QString TZLayerLegend::label(int row) const
{
    if (row < 0 || row >= count())
        return QString();
    const Entry& entry = mEntries[size_t(row)];
    if (!entry.category)
        return entry.label;
    const QString label = entry.category->GetLabel().toQString();
    return label.isEmpty() ? entry.category->GetValue().toQString() : label;
}

QIcon TZLayerLegend::icon(int row) const
{
    if (row < 0 || row >= count())
        return QIcon();
    const Entry& entry = mEntries[size_t(row)];
    if (entry.category)
        return TZMapIcons::symbol(entry.category->GetStyle().get());
    return entry.style ? TZMapIcons::symbol(entry.style.get()) : entry.icon;
}

bool TZLayerLegend::isNote(int row) const
{
    return row >= 0 && row < count() && mEntries[size_t(row)].note;
}

QIcon TZLayerLegend::layerIcon(TELayer* layer)
{
    if (!layer)
        return QIcon();
    auto* features = dynamic_cast<TEFeatureLayer*>(layer);
    if (!layer->GetRender()) {
        // A vector layer keeps the look of its kind (point, line or fill), greyed.
        const QIcon kind = features ? TZMapIcons::symbol(features->GetDefaultStyle().get()) : QIcon();
        return kind.isNull() ? TZMapIcons::rasterLayer(layer)
                             : QIcon(kind.pixmap(TZMapIcons::LegendSize, QIcon::Disabled));
    }
    if (!features)
        return TZMapIcons::rasterLayer(layer);
    // A diagram layer shows its background's symbol, if it has one.
    TERefPtr<TEFeatureRender> render = features->GetSymbolRender();
    while (auto* diagram = dynamic_cast<TEDiagramRender*>(render.get()))
        render = diagram->GetBackgroundRender();
    if (!render || listsClasses(render.get()))
        return QIcon();
    const std::vector<TERefPtr<TEStyle>> styles = render->GetStyles();
    return styles.empty() ? TZMapIcons::rasterLayer(layer) : TZMapIcons::symbol(styles.front().get());
}

bool TZLayerLegend::hasEntries(const TELayer* layer)
{
    if (!layer)
        return false;
    if (!layer->GetRender())
        return true;
    auto* features = dynamic_cast<const TEFeatureLayer*>(layer);
    const TERefPtr<TEFeatureRender> render = features ? features->GetSymbolRender() : TERefPtr<TEFeatureRender>();
    return render && listsClasses(render.get());
}

void TZLayerLegend::addRender(TELayer* layer, TEFeatureRender* render)
{
    if (auto* diagram = dynamic_cast<TEDiagramRender*>(render)) {
        // The background's entries first, then what the diagrams show.
        if (const TERefPtr<TEFeatureRender> background = diagram->GetBackgroundRender())
            addRender(layer, background.get());
        for (const TERefPtr<TEDiagramRenderItem>& part : diagram->GetItems()) {
            const QString caption = part->GetCaption().toQString();
            add(part->GetStyle(), caption.isEmpty() ? part->GetField().toQString() : caption);
        }
        if (auto* dots = dynamic_cast<TEDotDensityDiagramRender*>(render)) {
            const TEColor color = dots->getDotColor();
            add(TZMapIcons::swatch(QColor(color.getR(), color.getG(), color.getB()), 4),
                tr("1 dot = %1 %2").arg(QLocale().toString(dots->getNumberPerDot()), dots->getFieldName().toQString()));
        }
        if (auto* clusters = dynamic_cast<TEClusterDiagramRender*>(render)) {
            for (int sizeClass = 1; sizeClass < TEClusterDiagramRender::SizeClassCount; ++sizeClass) {
                const int lower = TEClusterDiagramRender::SizeClassLower(sizeClass);
                const QString label = sizeClass + 1 < TEClusterDiagramRender::SizeClassCount
                    ? QStringLiteral("%1 - %2").arg(QLocale().toString(lower),
                                                    QLocale().toString(TEClusterDiagramRender::SizeClassLower(sizeClass + 1) - 1))
                    : QStringLiteral("%1+").arg(QLocale().toString(lower));
                add(TZMapIcons::swatch(clusters->SizeClassColor(sizeClass), 8 + sizeClass), label);
            }
        }
        if (auto* graduated = dynamic_cast<TEGraduatedSymbolsDiagramRender*>(render)) {
            for (const TEGraduatedSymbolsDiagramItem& level : graduated->items())
                add(level.style(), QStringLiteral("%1 - %2").arg(QLocale().toString(level.lower()),
                                                                  QLocale().toString(level.upper())));
        }
    } else if (auto* heat = dynamic_cast<TEHeatMapperRender*>(render)) {
        // The ramp from sparse to dense, as the surface shows it.
        add(TZMapIcons::ramp([heat](double t) { return heat->DensityColor(t); }), tr("Density: sparse to dense"));
    } else if (auto* categories = dynamic_cast<TECategorizedSymbolRender*>(render)) {
        const int itemCount = categories->GetItemCount();
        mEntries.reserve(mEntries.size() + size_t(itemCount));
        const TEString catchAllValue(TECategorizedSymbolRender::AllOtherValues);
        for (int i = 0; i < itemCount; ++i) {
            TERefPtr<TECategoryRenderItem> category = categories->GetCategoryRenderItem(i);
            if (!category->IsVisible() || (!categories->IsShowOtherValue() && category->GetValue() == catchAllValue))
                continue;
            Entry entry;
            entry.category = std::move(category);
            mEntries.push_back(std::move(entry));
        }
    } else if (auto* rules = dynamic_cast<TERuleBasedSymbolRender*>(render)) {
        for (int i = 0; i < rules->RuleCount(); ++i) {
            const TERefPtr<TERuleBasedSymbolRender::Rule> rule = rules->GetRule(i);
            const QString label = rule->Label().toQString();
            add(rule->Style(), label.isEmpty() ? rule->Expression().toQString() : label);
        }
    } else if (auto* fourColor = dynamic_cast<TEFourColorTheoremRender*>(render)) {
        addFourColor(dynamic_cast<TEFeatureLayer*>(layer), fourColor);
    }
}

void TZLayerLegend::addFourColor(const TEFeatureLayer* layer, const TEFourColorTheoremRender* render)
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
        add(swatch, QColor(entry.second.getR(), entry.second.getG(), entry.second.getB()).name());
    }
    if (layer && int(render->getColorMap().size()) < layer->GetFeatureCount())
        add(base, tr("Uncolored"));
}

void TZLayerLegend::add(const TERefPtr<TEStyle>& style, const QString& label)
{
    Entry entry;
    entry.style = style;
    entry.label = label;
    mEntries.push_back(std::move(entry));
}

void TZLayerLegend::add(const QIcon& icon, const QString& label)
{
    Entry entry;
    entry.label = label;
    entry.icon = icon;
    mEntries.push_back(std::move(entry));
}
