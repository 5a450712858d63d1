#pragma once

#include "TZLayerDrawer.h"

#include "core/TERefPtr.h"
#include "data/TEFeatureLayer.h"
#include "renders/TEFeatureRender.h"
#include "symbology/TEStyle.h"

// Draws a vector layer: every feature in the viewport with the style its
// render picks for it at the viewport's scale (GetStyleByFeature, so
// categories, classes, rules and their scale ranges apply), turned by the
// render's rotation; a layer without a render in its default style. With
// priority rendering on, symbols are drawn in passes by their priority so
// that, say, every road casing lies below every road centre line.
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

private:
    struct Pending
    {
        TZObjects::TERefPtr<TZObjects::TEGeometry> geometry;
        TZObjects::TERefPtr<TZObjects::TEStyle> style;
        double angle = 0.0;
    };

    bool drawByPriority(QPainter* painter, const std::vector<Pending>& pending, const QTransform& toDevice,
                        const TZObjects::TETrackCancel* cancel);

    TZObjects::TERefPtr<TZObjects::TEFeatureLayer> mLayer;
    TZObjects::TERefPtr<TZObjects::TEFeatureRender> mRender;
    TZObjects::TERefPtr<TZObjects::TEStyle> mDefaultStyle;
    int mDrawnCount = 0;
};
