#pragma once

#include "core/TERefPtr.h"
#include "symbology/TEStyle.h"

#include <QString>

// One class of a grading table: the symbol, the class bounds as text (lower
// and upper bound joined by ","), the legend label and the number of values
// that fall inside the bounds.
struct GradingSymbolItem
{
    TZObjects::TERefPtr<TZObjects::TEStyle> style;
    QString range;
    QString label;
    int count = 0;
};
