#pragma once

#include "data/TEMemoryFeatureLayer.h"

#include <QList>
#include <QString>
#include <QStringList>

class QAbstractItemModel;

// Layers and helpers for the grading tests.
namespace GradingFixtures {

// A memory layer of the type with the fields "name" (text), "v" (real) and
// "code" (integer); feature i gets the value values[i] in "v", its index in
// "code", and lies at (i % 10, i / 10).
TZObjects::TERefPtr<TZObjects::TEMemoryFeatureLayer> makeLayer(TZObjects::TELayer::LayerType type,
                                                                const QList<double>& values);

// Texts of a column of the model, row by row.
QStringList column(const QAbstractItemModel& model, int column);
// The Count column as numbers.
QList<int> counts(const QAbstractItemModel& model);

} // namespace GradingFixtures
