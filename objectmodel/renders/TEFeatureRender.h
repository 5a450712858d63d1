#pragma once

#include "renders/TERender.h"
#include "symbology/TEStyle.h"

#include <functional>
#include <vector>

class QPainter;

namespace TZObjects {

class TEDrawContext;
class TEFeature;
class TEFeatureCursor;

// Base of the vector renders: picks the style each feature is drawn with and
// carries the settings every vector render shares (symbol priority, rotation
// of point symbols by a field or at random). GetType() is the render type key
// that the dock matches against its panels.
class TZOBJECTS_EXPORT TEFeatureRender : public TERender
{
public:
    // Rotation field value that asks for a random angle per feature.
    static const wchar_t* const RandomRotateField;

    TEString GetType() const override = 0;

    // A deep copy of the render (styles included).
    virtual TERefPtr<TEFeatureRender> Clone() const = 0;
    TERefPtr<TERender> CloneRender() const override { return Clone(); }

    // The style a feature is drawn with at the given map scale (denominator),
    // or an empty pointer when the feature is not drawn (hidden category, no
    // matching class or rule, out of its scale range, ...). With
    // ignoreScaleRange the scale ranges are not applied (legends, counting).
    virtual TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                                bool ignoreScaleRange = false) const = 0;

    // Names of the attribute fields a drawing must read to call
    // GetStyleByFeature and GetRotationAngle, without duplicates.
    virtual std::vector<TEString> GetUsedAttributes() const;
    // Whether choosing a style needs the feature's geometry.
    virtual bool FilterNeedsGeometry() const { return false; }
    // Whether the style GetStyleByFeature gives at a scale follows from the
    // values of GetUsedAttributes() alone, so that a host drawing many
    // features may ask once per distinct set of values. False (the base)
    // for a render whose choice needs anything else of the feature (its
    // geometry, its id).
    virtual bool StyleFollowsUsedAttributes() const { return false; }
    // What kept the render from choosing styles as it was set up to since it
    // was made or copied (a rule filter that does not compile), for the host
    // to show; empty when nothing did. The features concerned are not drawn.
    virtual TEString GetLastError() const { return TEString(); }

    // Whether the render draws from the whole layer at once (a density
    // surface, clusters) rather than, or besides, a style per feature. A
    // host drawing such a render calls DrawLayer after the per-feature pass;
    // for a diagram render DrawLayer then replaces the per-feature diagrams.
    virtual bool DrawsWholeLayer() const { return false; }
    // Draws from every feature the cursor gives: the host opens it on the
    // features in view, with the fields of GetUsedAttributes() and their
    // geometry. Polls context.IsCancelled() as it goes; returns false when
    // cancelled or failed. The base draws nothing.
    virtual bool DrawLayer(QPainter* painter, TEFeatureCursor* cursor, const TEDrawContext& context) const;
    // Whether DrawLayer draws all there is to see (a density surface,
    // clusters that draw their lone points themselves), so that a host skips
    // the per-feature pass.
    virtual bool DrawsOnlyWholeLayer() const { return false; }
    // How far beyond the view, in painter pixels, features still change what
    // DrawLayer draws inside it (a kernel's reach); the host widens the
    // cursor's rectangle by it.
    virtual double DrawLayerMargin(const TEDrawContext& context) const { return 0.0; }

    // Every style the render holds, in render order (no empty pointers).
    std::vector<TERefPtr<TEStyle>> GetStyles() const;
    // The kind of symbol the render draws: that of its first style, or the
    // point style type when it holds none.
    TEStyle::StyleType GetStyleType() const;
    // Puts newStyle wherever oldStyle is used; returns whether any was.
    bool ReplaceStyle(const TEStyle* oldStyle, const TERefPtr<TEStyle>& newStyle);
    // The distinct drawing priorities of all styles and of the layers of
    // multi-layer styles, ascending: the passes of a priority drawing.
    std::vector<int> GetAllPriority() const;

    void EnablePriorityRender(bool enable) { mPriorityRender = enable; }
    bool PriorityRender() const { return mPriorityRender; }

    bool IsRotateByField() const { return mRotateByField; }
    void SetIsRotateByField(bool rotate) { mRotateByField = rotate; }
    TEString GetRotateField() const { return mRotateField; }
    void SetRotateField(const TEString& field) { mRotateField = field; }
    bool IsRotateByClockWise() const { return mRotateClockWise; }
    void SetIsRotateByClockWise(const bool& clockWise) { mRotateClockWise = clockWise; }
    void GetRotateRandomRange(double& minimum, double& maximum) const;
    void SetRotateRandomRange(double minimum, double maximum);

    // Angle in degrees by which a point symbol of the feature is turned,
    // counter-clockwise on the screen as TEStyle::Draw takes it: the rotation
    // field's value (negated when angles count clockwise), or for "<random>"
    // an angle in the random range that stays the same for a feature id from
    // one drawing to the next. 0 when rotation by field is off.
    double GetRotationAngle(TEFeature* feature) const;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    using StyleVisitor = std::function<void(TERefPtr<TEStyle>&)>;
    // Calls visit once per style slot of the render; a visitor may replace
    // the style in the slot. Renders holding styles override it.
    virtual void VisitStyles(const StyleVisitor& visit);

    // A copy of style (empty stays empty).
    static TERefPtr<TEStyle> CloneStyle(const TERefPtr<TEStyle>& style);
    // Appends field to fields unless it is empty or already there.
    static void AddUsedAttribute(std::vector<TEString>& fields, const TEString& field);

private:
    bool mPriorityRender = false;
    bool mRotateByField = false;
    TEString mRotateField;
    bool mRotateClockWise = true;
    double mRandomMinimum = 0.0;
    double mRandomMaximum = 360.0;
};

} // namespace TZObjects
