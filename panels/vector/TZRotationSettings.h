#pragma once

#include "data/TEFeatureLayer.h"

#include <QString>

class QWidget;

// The rotation settings of the symbol panels: whether point symbols turn by
// a field or at random, the random range, the field ("<random>" for a random
// angle) and the sense. They are filled by the rotate-by-field dialog and
// written into the render a panel builds.
class TZRotationSettings
{
public:
    // How a panel reads the accepted dialog: by its mode (the single symbol
    // panel) or by the text of its field, "<none>", "<random>" or a field
    // name (the unique values panel).
    enum class ReadBy { Mode, FieldText };

    bool rotateByField = false;
    bool random = false;
    double randomMinimum = 0.0;
    double randomMaximum = 360.0;
    QString field;
    bool clockwise = true;

    // Opens the rotate-by-field dialog for the layer; on acceptance takes its
    // sense and then its choice. Returns whether the dialog was accepted.
    bool editWithDialog(TZObjects::TEFeatureLayer* layer, QWidget* parent, ReadBy readBy);

    // SetIsRotateByField, then SetRotateField while rotating by field and
    // SetRotateRandomRange while random (the sense is the caller's to write).
    void writeFieldAndRange(TZObjects::TEFeatureRender& render) const;
};
