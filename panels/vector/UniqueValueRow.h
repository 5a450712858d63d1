#pragma once

#include "core/TERefPtr.h"
#include "symbology/TEStyle.h"

#include <QString>

// One category of a unique-values table: the symbol, the attribute value as
// text, the legend label and the number of features holding the value
// (-1 when the value was collected without counting).
struct UniqueValueRow
{
    TZObjects::TERefPtr<TZObjects::TEStyle> style;
    QString value;
    QString label;
    int count = 0;
};
