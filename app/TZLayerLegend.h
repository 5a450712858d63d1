#pragma once

#include "core/TERefPtr.h"

#include <QCoreApplication>
#include <QIcon>
#include <QString>

#include <vector>

namespace TZObjects {
class TECategoryRenderItem;
class TEFeatureLayer;
class TEFeatureRender;
class TEFourColorTheoremRender;
class TELayer;
class TEStyle;
}

// The legend of one layer as the layer list shows it: under a layer drawn
// by categories, classes or rules, one entry per class with its symbol and
// label; under a diagram layer, its background's entries and then one per
// diagram part; under a layer left without a render, the note "Not
// rendered". An entry keeps a reference to what it stands for and makes its
// text and icon only when asked, so a render of 100,000 classes costs a few
// pointers per class until its entries are shown.
class TZLayerLegend
{
    // Its texts keep the layer list's translation context.
    Q_DECLARE_TR_FUNCTIONS(TZLayerTree)

public:
    // The legend of the layer's render as it is now.
    explicit TZLayerLegend(TZObjects::TELayer* layer);
    ~TZLayerLegend();

    int count() const { return int(mEntries.size()); }
    QString label(int row) const;
    // Drawn on each call: the caller keeps the icons it shows.
    QIcon icon(int row) const;
    // Whether the entry is a remark about the layer rather than a class.
    bool isNote(int row) const;

    // The icon of the layer's own row: its symbol when one symbol draws it,
    // its kind greyed when it has no render, a raster's kind; null when its
    // legend lists classes.
    static QIcon layerIcon(TZObjects::TELayer* layer);
    // Whether the layer's legend has entries, without building it (a
    // categorized render whose classes are all hidden counts as having some).
    static bool hasEntries(const TZObjects::TELayer* layer);

private:
    struct Entry
    {
        // A class of a categorized render: its label and symbol are read
        // from it when shown, so that a long list costs one pointer a class.
        TZObjects::TERefPtr<TZObjects::TECategoryRenderItem> category;
        TZObjects::TERefPtr<TZObjects::TEStyle> style;
        QString label;
        // For entries drawn without a style (colour discs, a ramp).
        QIcon icon;
        bool note = false;
    };

    void addRender(TZObjects::TELayer* layer, TZObjects::TEFeatureRender* render);
    void addFourColor(const TZObjects::TEFeatureLayer* layer, const TZObjects::TEFourColorTheoremRender* render);
    void add(const TZObjects::TERefPtr<TZObjects::TEStyle>& style, const QString& label);
    void add(const QIcon& icon, const QString& label);

    std::vector<Entry> mEntries;
};
