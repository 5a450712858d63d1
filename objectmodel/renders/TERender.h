#pragma once

#include "core/TERefBase.h"
#include "core/TERefPtr.h"
#include "core/TEString.h"

#include <QJsonObject>

namespace TZObjects {

// Base of every render: how a layer is drawn. Feature renders derive from
// TEFeatureRender, raster renders from TEImageRender. A render saves itself
// into a JSON object and reads itself back from one; TEFileFunc rebuilds a
// render of the right class from such an object by its type key.
class TZOBJECTS_EXPORT TERender : public TERefBase
{
public:
    ~TERender() override = default;

    // The render type key, also the "type" member of the saved JSON.
    virtual TEString GetType() const = 0;

    // A deep copy: styles, ramps, items and nested renders are copied too.
    virtual TERefPtr<TERender> CloneRender() const = 0;

    // Writes every setting into json (the "type" member is written by the
    // caller, TEFileFunc::SaveRender).
    virtual void save(QJsonObject& json) const = 0;
    // Reads the settings written by save. On failure returns false, leaves
    // an explanation in error (when given) and keeps what was read so far.
    virtual bool open(const QJsonObject& json, TEString* error = nullptr) = 0;
};

} // namespace TZObjects
