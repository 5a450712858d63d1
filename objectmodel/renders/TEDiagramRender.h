#pragma once

#include "renders/TEDiagramRenderItem.h"
#include "renders/TEFeatureRender.h"

#include <QPointF>
#include <QString>

#include <vector>

class QPainter;
typedef void* OGRGeometryH;

namespace TZObjects {

class TEDrawContext;

// Base of the renders that draw a diagram over every feature. The diagram
// is drawn over the background render, the symbology the layer had before;
// GetStyleByFeature gives the background render's style (none without one).
class TZOBJECTS_EXPORT TEDiagramRender : public TEFeatureRender
{
public:
    TEDiagramRender() = default;
    TEDiagramRender(const TEDiagramRender& other);

    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                        bool ignoreScaleRange = false) const override;
    std::vector<TEString> GetUsedAttributes() const override;
    bool FilterNeedsGeometry() const override;

    void AddItem(const TEString& field, const TEString& caption, const TERefPtr<TEStyle>& style);
    const std::vector<TERefPtr<TEDiagramRenderItem>>& GetItems() const { return mItems; }
    void RemoveAllItems() { mItems.clear(); }

    // The background render is kept as a reference; a diagram render given
    // as its own background (directly or through another) is refused.
    void SetBackgroundRender(TEFeatureRender* render);
    TERefPtr<TEFeatureRender> GetBackgroundRender() const { return mBackground; }

    bool IsShowLabel() const { return mShowLabel; }
    void SetShowLabel(bool show) { mShowLabel = show; }

    // Draws the feature's diagram at anchor, the device position of the
    // feature's anchor point (GetAnchor), over what the background render
    // drew; sizes are converted with context.ToPixels. With IsShowLabel the
    // values are written beside their parts. False when the render draws no
    // per-feature diagram or the feature gives it nothing to show. The
    // feature holds the fields of GetUsedAttributes(); a host may have
    // dropped its geometry once the anchor was found.
    virtual bool DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                             const TEDrawContext& context) const;

    // Called by a host with the features whose diagrams it is about to
    // draw (those in view), before the first DrawDiagram. Renders that size
    // diagrams against each other take their measure here: a bar's length
    // is its value over the largest value among these features, so bars
    // compare across the map, and panning to another part of it rescales
    // them to what is shown. Without this call every feature is measured
    // on its own. The base does nothing.
    virtual void PrepareDiagrams(const std::vector<TEFeature*>& features);

    // The map point a feature's diagram stands on: a point is itself (a
    // multi-point its first point), a line the point halfway along it (a
    // multi-line: along its longest part), a polygon a point inside it (a
    // multi-polygon: inside its largest part); a collection takes the
    // anchor of its first part that has one. False for a null or empty
    // geometry.
    static bool GetAnchor(OGRGeometryH geometry, QPointF& mapAnchor);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void VisitStyles(const StyleVisitor& visit) override;
    // The items' field values of the feature, negative and missing values as 0.
    std::vector<double> ItemValues(TEFeature* feature) const;
    // A value as its label shows it.
    static QString LabelText(double value);
    // Writes text in a small haloed font so that its reference point, placed
    // at position as alignment says (Qt::AlignLeft: text starts there,
    // Qt::AlignHCenter: centred on it, Qt::AlignRight: ends there; likewise
    // for the vertical flags), stays readable over any background.
    static void DrawLabel(QPainter* painter, const QString& text, const QPointF& position,
                          Qt::Alignment alignment, const TEDrawContext& context);

private:
    std::vector<TERefPtr<TEDiagramRenderItem>> mItems;
    TERefPtr<TEFeatureRender> mBackground;
    bool mShowLabel = false;
};

} // namespace TZObjects
