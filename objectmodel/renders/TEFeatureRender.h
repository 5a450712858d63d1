#pragma once

#include "renders/TERender.h"

namespace TZObjects {

// Base of the vector renders. GetType() is the render type key.
class TZOBJECTS_EXPORT TEFeatureRender : public TERender
{
public:
    virtual TEString GetType() const = 0;
};

} // namespace TZObjects
