#pragma once

#include "TZModelPanelPieDiagram.h"

// The chosen fields of the stack panel, one segment each; the rules are
// those of every diagram field model.
class TZRENDER_EXPORT TZModelPanelStackDiagram : public TZModelPanelPieDiagram
{
    Q_OBJECT
public:
    using TZModelPanelPieDiagram::TZModelPanelPieDiagram;
};
