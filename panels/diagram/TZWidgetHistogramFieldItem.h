#pragma once

#include "TZWidgetFieldItem.h"

// An entry of the histogram panel's field drop-down; it behaves as every
// diagram field entry does.
class TZRENDER_EXPORT TZWidgetHistogramFieldItem : public TZWidgetFieldItem
{
    Q_OBJECT
public:
    using TZWidgetFieldItem::TZWidgetFieldItem;
};
