#pragma once

#include "data/TEMemoryFeatureLayer.h"
#include "symbology/TEEvenColorRamp.h"

#include <QString>
#include <QStringList>

// Layers and ramps built in code for the vector panel tests.
namespace VectorFixtures {

// A memory layer of the type with the fields "name" (text) and "angle"
// (real); feature i gets names[i] and the angle 10 * i.
TZObjects::TERefPtr<TZObjects::TEMemoryFeatureLayer> makeLayer(TZObjects::TELayer::LayerType type,
                                                                const QStringList& names);

// A GeoPackage with the same content, written into folder and opened.
TZObjects::TERefPtr<TZObjects::TEFeatureLayer> makeGeoPackage(const QString& folder,
                                                               TZObjects::TELayer::LayerType type,
                                                               const QStringList& names);

// A two-colour ramp from pure red to pure blue.
TZObjects::TERefPtr<TZObjects::TEEvenColorRamp> redToBlue();

} // namespace VectorFixtures
