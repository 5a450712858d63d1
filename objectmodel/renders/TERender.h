#pragma once

#include "core/TERefBase.h"
#include "core/TERefPtr.h"
#include "core/TEString.h"

namespace TZObjects {

// Base of every render: how a layer is drawn. Feature renders derive from
// TEFeatureRender, raster renders from TEImageRender.
class TZOBJECTS_EXPORT TERender : public TERefBase
{
public:
    ~TERender() override = default;
};

} // namespace TZObjects
