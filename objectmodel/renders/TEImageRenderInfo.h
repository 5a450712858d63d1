#pragma once

#include "core/TEColor.h"
#include "core/TERefBase.h"
#include "core/TERefPtr.h"
#include "core/TEString.h"

#include <QJsonObject>
#include <QRgb>

#include <functional>

namespace TZObjects {

class TERasterProps;

// How a single-band render turns a band value into a colour: the stretch,
// class, unique-value and colour-map infos derive from it.
class TZOBJECTS_EXPORT TEImageRenderInfo : public TERefBase
{
public:
    // Type key of the info, the "type" member of its JSON.
    virtual TEString GetType() const = 0;
    // The image render mode it belongs to (1 stretch, 2 colour map, 3
    // unique, 4 class).
    virtual int GetRenderMode() const = 0;
    virtual TERefPtr<TEImageRenderInfo> Clone() const = 0;

    // Fills the info from a band (1-based) of the raster: statistics,
    // classes, distinct values or the colour table. Returns false, with a
    // reason in error, when the band cannot be read.
    virtual bool AddFromRaster(TERasterProps* raster, int band, TEString* error = nullptr) = 0;
    virtual int GetItemCount() const = 0;

    // Colour of a band value; fully transparent when the value has none.
    virtual QRgb ColorOf(double value) const = 0;

    virtual void save(QJsonObject& json) const = 0;
    virtual bool open(const QJsonObject& json, TEString* error = nullptr) = 0;

    // Whole-object JSON with its "type" member, and the info rebuilt from it.
    QJsonObject ToJson() const;
    static TERefPtr<TEImageRenderInfo> FromJson(const QJsonObject& json, TEString* error = nullptr);
    // A new, empty info of the given type key (empty for an unknown key).
    static TERefPtr<TEImageRenderInfo> Create(const TEString& type);

protected:
    // Calls visit for every pixel value of the band that is not no-data,
    // reading the band in strips; visit returns false to stop early. False,
    // with error, when the band cannot be read.
    static bool ForEachValue(TERasterProps* raster, int band, const std::function<bool(double)>& visit,
                             TEString* error);
    static void SetError(TEString* error, const QString& text);
};

} // namespace TZObjects
