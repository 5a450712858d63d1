#pragma once

#include "TZModelPanelPieDiagram.h"

// The chosen fields of the histogram panel, one bar each; the rules are
// those of every diagram field model.
class TZRENDER_EXPORT TZModelPanelHistogramDiagram : public TZModelPanelPieDiagram
{
    Q_OBJECT
public:
    using TZModelPanelPieDiagram::TZModelPanelPieDiagram;
};
