#pragma once

#include "core/TEColor.h"
#include "core/TERefBase.h"
#include "core/TERefPtr.h"
#include "core/TEString.h"
#include "core/TZObjectsExport.h"

#include <QColor>
#include <QPainterPath>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QTransform>

class QJsonObject;
class QPainter;
class QPaintDevice;
typedef void* OGRGeometryH;

namespace TZObjects {

class TEGeometry;

// Base of every symbol. A style knows its kind (point, line or fill), its
// class among the host's style classes, the properties shared by all
// symbols, and how to draw itself onto a QPainter and to and from JSON.
//
// Sizes are in the style's units; drawing converts them to device pixels
// with the DPI of the painter's device. Map coordinates go through the
// mapToDevice transform only, so symbols keep their size at every scale.
class TZOBJECTS_EXPORT TEStyle : public TERefBase
{
public:
    // The kind of geometry a style draws; the panels pick it from the
    // layer type (point layers 0, line layers 1, polygon layers 2).
    enum StyleType
    {
        PointStyle = 0,
        LineStyle = 1,
        FillStyle = 2,
    };

    // The host's style classes, in the order of their numeric type. Their
    // names (StyleClassName) are the "type" written into JSON.
    enum StyleClass
    {
        InvalidStyle = 0,
        MulLayerPoint,
        MulLayerLine,
        MulLayerPolygon,
        SimplePoint,
        CharacterPoint,
        BitmapPoint,
        ScriptPoint,
        SimpleLine,
        BrinkLine,
        PatternLine,
        PointDecorateLine,
        LineDecorateLine,
        ScriptLine,
        SimpleFill,
        PointFill,
        LineFill,
        ScriptFill,
        Label,
        VectorMetaPoint,
        Simple3DPoint,
        RegularShape3DPoint,
        Model3DPoint,
        Billboard3DPoint,
        Label3DPoint,
        Simple3DLine,
        RegularShape3DLine,
        SVGPoint,
        ParallelLine,
        StyleClassCount
    };

    // Units of sizes and widths, the codes every unit combo of the panels
    // stores: 0 typographic point (1/72 inch), 1 millimetre, 2 centimetre,
    // 3 inch. 4 is an older code for points and draws as 0 does; any other
    // code means device pixels (Pixel is the one to write).
    enum Units
    {
        Point = 0,
        Millimeter = 1,
        Centimeter = 2,
        Inch = 3,
        TypographicPoint = 4,
        Pixel = 5,
    };

    ~TEStyle() override = default;

    virtual StyleType GetStyleType() const = 0;
    virtual StyleClass GetStyleClass() const = 0;
    // The class name of this style ("SimplePoint", ...).
    TEString GetTypeName() const;

    // Deep copy: nothing is shared with the original.
    virtual TERefPtr<TEStyle> Clone() const = 0;

    static const char* StyleClassName(int styleClass);
    // InvalidStyle when the name is unknown.
    static StyleClass StyleClassFromName(const QString& name);

    // Converts a size in the given units to device pixels at dpi: the one
    // conversion used by styles, diagrams, heat map radii and dot sizes.
    static double SizeToPixels(double size, int units, double dpi);
    // The logical DPI of the painter's device (96 without a device).
    static double DeviceDpi(const QPainter* painter);

    const TEString& GetName() const { return mName; }
    void SetName(const TEString& name) { mName = name; }
    const TEString& GetAliasName() const { return mAliasName; }
    void SetAliasName(const TEString& alias) { mAliasName = alias; }
    virtual TEColor GetColor() const { return mColor; }
    virtual void SetColor(const TEColor& color) { mColor = color; }
    int GetUnits() const { return mUnits; }
    virtual void SetUnits(int units) { mUnits = units; }
    // Drawing order among the layers of a multi-layer symbol: lower first.
    int GetPriority() const { return mPriority; }
    void SetPriority(int priority) { mPriority = priority; }
    // 0 opaque .. 100 invisible.
    int GetTransparency() const { return mTransparency; }
    void SetTransparency(int percent);
    bool IsTestCollision() const { return mTestCollision; }
    void SetTestCollision(bool test) { mTestCollision = test; }
    bool IsWriteCollision() const { return mWriteCollision; }
    void SetWriteCollision(bool write) { mWriteCollision = write; }
    // Whether the symbol's extent grows its geometry's extent (collision
    // and label placement use it).
    bool GetExtendShape() const { return mExtendShape; }
    void SetExtendShape(bool extend) { mExtendShape = extend; }

    // Sets pen and brush of the painter from this style, at the painter's
    // device DPI.
    virtual void SetupDC(QPainter* painter) const = 0;

    // Draws an OGR geometry (points, lines, polygons, their multi forms and
    // collections) given in map coordinates. angle, in degrees counter-
    // clockwise on screen, is added to the style's own angle; renders use it
    // to rotate per feature. Returns false when nothing could be drawn.
    bool Draw(QPainter* painter, OGRGeometryH geometry, const QTransform& mapToDevice,
              double angle = 0.0) const;
    bool Draw(QPainter* painter, const TEGeometry* geometry, const QTransform& mapToDevice,
              double angle = 0.0) const;

    // Drawing in device coordinates, without OGR. A point style marks the
    // vertices of a line and the centre of a polygon; a line style strokes a
    // polygon's rings; a line style cannot draw a point nor a fill style a
    // point or a line: those return false.
    virtual bool DrawPoint(QPainter* painter, const QPointF& device, double angle = 0.0) const = 0;
    virtual bool DrawLine(QPainter* painter, const QPolygonF& device, double angle = 0.0) const = 0;
    virtual bool DrawPolygon(QPainter* painter, const QPainterPath& device, double angle = 0.0) const = 0;

    // The style drawn as a preview into rect: a point centred, a line as a
    // zigzag across, a fill as a rectangle inset from rect.
    void DrawPreview(QPainter* painter, const QRectF& rect) const;

    // Whether other is of the same class with every property equal, so
    // that both save the same JSON.
    virtual bool Equals(const TEStyle& other) const;

    // JSON of the style, "type" holding its class name.
    virtual void save(QJsonObject& json) const;
    virtual bool open(const QJsonObject& json);
    // Rebuilds any style from its JSON by its type name; empty with an
    // error text when the type is unknown or the content does not read.
    static TERefPtr<TEStyle> FromJson(const QJsonObject& json, QString* error = nullptr);
    // An empty style of the named class, or empty when it is not supported.
    static TERefPtr<TEStyle> Create(StyleClass styleClass);

protected:
    TEStyle() = default;
    TEStyle(const TEStyle&) = default;
    TEStyle& operator=(const TEStyle&) = default;

    // Applies the style's transparency to the painter's opacity.
    void applyTransparency(QPainter* painter) const;
    // The colour with the transparency folded into its alpha.
    static QColor toQColor(const TEColor& color);

    static QString colorToText(const TEColor& color);
    static bool colorFromText(const QString& text, TEColor& color);

private:
    bool drawGeometry(QPainter* painter, OGRGeometryH geometry, const QTransform& mapToDevice,
                      double angle) const;

    TEString mName;
    TEString mAliasName;
    TEColor mColor = TEColor(0, 0, 0);
    int mUnits = Millimeter;
    int mPriority = 0;
    int mTransparency = 0;
    bool mTestCollision = false;
    bool mWriteCollision = false;
    bool mExtendShape = false;
};

} // namespace TZObjects
