#pragma once

#include "core/TERefPtr.h"
#include "symbology/TEStyle.h"

#include <QString>

// One category of a category table: the symbol, the attribute value as text,
// the legend label and the number of features holding the value (-1 when the
// value was collected without counting). A category may also be drawn only
// inside a scale range (the match-to-symbols table edits that; the other
// tables leave it off).
struct UniqueValueRow
{
    TZObjects::TERefPtr<TZObjects::TEStyle> style;
    QString value;
    QString label;
    int count = 0;
    bool scaleFilter = false;
    double minScale = 0.0;
    double maxScale = 0.0;
};
