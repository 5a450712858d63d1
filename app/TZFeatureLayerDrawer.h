#pragma once

#include "TZLayerDrawer.h"

#include "core/TERefPtr.h"
#include "data/TEFeatureLayer.h"
#include "renders/TEFeatureRender.h"
#include "symbology/TEPointSymbolCache.h"
#include "symbology/TEStyle.h"

namespace TZObjects {
class TEDiagramRender;
class TEDrawContext;
class TEFeature;
class TEFeatureBatchCursor;
}

// Draws a vector layer: every feature in the viewport with the style its
// render picks for it at the viewport's scale (GetStyleByFeature, so
// categories, classes, rules and their scale ranges apply), turned by the
// render's rotation; a layer without a render in its default style. With
// priority rendering on, symbols are drawn in passes by their priority so
// that, say, every road casing lies below every road centre line.
//
// Point symbols are copied from an image of each symbol (TEPointSymbolCache)
// and features are read with the render's fields only, in Arrow batches where
// the source gives them fast (the render is then asked once per distinct set
// of values); the drawing calls checkpoint() every few hundred features so
// that the host can show it.
//
// A diagram render's style is its background render's; once the background
// is drawn, each feature in view, styled or not, gets its diagram at the
// device position of its anchor. Only the anchors and the values the
// diagrams read are kept between the two passes. A render that draws from
// the whole layer is then handed a cursor over the features in view.
class TZFeatureLayerDrawer : public TZLayerDrawer
{
public:
    // render may be empty (then defaultStyle draws every feature); the
    // drawer keeps its own copy of render.
    TZFeatureLayerDrawer(TZObjects::TERefPtr<TZObjects::TEFeatureLayer> layer,
                         const TZObjects::TEFeatureRender* render,
                         TZObjects::TERefPtr<TZObjects::TEStyle> defaultStyle);

    bool draw(QPainter* painter, const TZMapViewport& viewport, const TZObjects::TETrackCancel* cancel) override;

    // Features drawn (with a style) by the last draw.
    int drawnCount() const { return mDrawnCount; }
    // Diagrams drawn by the last draw.
    int diagramCount() const { return mDiagramCount; }

private:
    struct Diagram
    {
        QPointF mapAnchor;
        // The feature's values, its geometry dropped once anchored.
        TZObjects::TERefPtr<TZObjects::TEFeature> values;
    };

    struct Pending
    {
        TZObjects::TERefPtr<TZObjects::TEGeometry> geometry;
        TZObjects::TERefPtr<TZObjects::TEStyle> style;
        double angle = 0.0;
    };

    // The features read through a cursor: the per-feature pass, then the
    // priority passes or the diagrams.
    bool drawFeatures(QPainter* painter, const TZObjects::TEQueryFilter& filter, const TZObjects::TEDrawContext& context,
                      TZObjects::TEDiagramRender* diagram, bool byPriority);
    // The features read in batches, each drawn as it comes. Where remember
    // is set (the style follows the values of the fields the render uses),
    // the render is asked once per distinct set of values and its answer
    // reused.
    bool drawBatches(QPainter* painter, TZObjects::TEFeatureBatchCursor* batches,
                     const TZObjects::TEDrawContext& context, bool remember);
    bool drawByPriority(QPainter* painter, const std::vector<Pending>& pending, const QTransform& toDevice,
                        const TZObjects::TETrackCancel* cancel);
    bool drawDiagrams(QPainter* painter, TZObjects::TEDiagramRender* render,
                      const std::vector<Diagram>& diagrams, const TZObjects::TEDrawContext& context);
    bool drawWholeLayer(QPainter* painter, const TZObjects::TEDrawContext& context);
    TZObjects::TEQueryFilter viewFilter(const QRectF& rect) const;
    // Whether the render's style for a feature follows from the values of
    // the layer's own fields it uses (not the id or geometry).
    bool styleFollowsFieldValues() const;

    TZObjects::TERefPtr<TZObjects::TEFeatureLayer> mLayer;
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> mRender;
    TZObjects::TERefPtr<TZObjects::TEStyle> mDefaultStyle;
    // Images of the point symbols of the drawer's own styles.
    TZObjects::TEPointSymbolCache mSymbols;
    int mDrawnCount = 0;
    int mDiagramCount = 0;
};
