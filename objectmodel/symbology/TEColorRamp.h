#pragma once

#include "core/TERefBase.h"
#include "core/TERefPtr.h"
#include "core/TEString.h"
#include "symbology/TEColorRampContainer.h"

class QJsonObject;
class QPainter;
class QRectF;

namespace TZObjects {

// Base of colour ramps. A ramp gives any number of colours (split), a
// colour at any position from 0 to 1 (colorAt), and carries a "level", the
// number of colours it is currently divided into, so that callers can work
// on a copy:
//     TERefPtr<TEColorRamp> copy = ramp->clone();
//     copy->setLevel(n);
//     rgb_color<float> c = copy->getColor(i);
class TZOBJECTS_EXPORT TEColorRamp : public TERefBase
{
public:
    // What the ramp's colours are meant for.
    enum ColorRampType
    {
        Custom = 0,
        Sequential = 1,
        Diverging = 2,
        Qualitative = 3,
    };

    ~TEColorRamp() override = default;

    virtual TERefPtr<TEColorRamp> clone() const = 0;

    ColorRampType category() const { return mCategory; }
    void setCategory(ColorRampType category) { mCategory = category; }
    const TEString& getName() const { return mName; }
    void setName(const TEString& name) { mName = name; }
    const TEString& getGroup() const { return mGroup; }
    void setGroup(const TEString& group) { mGroup = group; }

    // n colours from the ramp; empty when n < 1 or the ramp has no colours.
    TEColorRampContainer split(int n) const;
    // The colour at t, 0 (start) to 1 (end), clamped.
    virtual rgb_color<float> colorAt(double t) const = 0;
    // Whether the ramp has colours to give.
    virtual bool isValid() const = 0;
    // Whether the ramp is a set of separate colours rather than a gradient.
    virtual bool isDiscrete() const { return false; }

    // The number of colours getColor divides the ramp into; until set it is
    // the ramp's own number of colours.
    int getLevel() const;
    void setLevel(int level) { mLevel = level < 0 ? 0 : level; }
    // Colour i of the ramp divided into getLevel() colours; i is clamped
    // into range.
    rgb_color<float> getColor(int i) const;

    // Paints the ramp across rect, start at the left.
    void DrawPreview(QPainter* painter, const QRectF& rect) const;

    virtual void save(QJsonObject& json) const;
    virtual bool open(const QJsonObject& json);
    // Rebuilds a ramp from its JSON ("kind" names the class); empty with an
    // error text on failure.
    static TERefPtr<TEColorRamp> FromJson(const QJsonObject& json, QString* error = nullptr);

    static const char* CategoryName(ColorRampType category);
    static ColorRampType CategoryFromName(const QString& name);

protected:
    TEColorRamp() = default;
    TEColorRamp(const TEColorRamp&) = default;
    TEColorRamp& operator=(const TEColorRamp&) = default;

    // The ramp's own number of colours.
    virtual int naturalLevel() const = 0;
    // Colour i of n (0 <= i < n) of the split.
    virtual rgb_color<float> splitColor(int i, int n) const = 0;

private:
    TEString mName;
    TEString mGroup;
    ColorRampType mCategory = Custom;
    int mLevel = 0;
};

} // namespace TZObjects
