#pragma once

#include "data/TELayer.h"
#include "symbology/TEStyle.h"

// The vector panels' reading of a layer type: types 1 and 2 are point
// layers, drawn with point styles; type 3 takes line styles and every other
// type fill styles.
class TZLayerKinds
{
public:
    static bool isPoint(TZObjects::TELayer::LayerType type)
    {
        return type == TZObjects::TELayer::LT_Point || type == TZObjects::TELayer::LT_MultiPoint;
    }

    static TZObjects::TEStyle::StyleType styleType(TZObjects::TELayer::LayerType type)
    {
        if (isPoint(type))
            return TZObjects::TEStyle::PointStyle;
        return type == TZObjects::TELayer::LT_Line ? TZObjects::TEStyle::LineStyle : TZObjects::TEStyle::FillStyle;
    }
};
