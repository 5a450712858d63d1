#include "TZRotationSettings.h"

#include "TZDialogRotateByField.h"

using namespace TZObjects;

bool TZRotationSettings::editWithDialog(TEFeatureLayer* layer, QWidget* parent, ReadBy readBy)
{
    TZDialogRotateByField dialog(layer, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    clockwise = dialog.isClockwise();

    int mode = dialog.mode();
    if (readBy == ReadBy::FieldText) {
        // The text alone decides: a field that is neither "<none>" nor
        // "<random>" (even an empty one) turns rotation on.
        const QString chosen = dialog.field();
        mode = chosen == QLatin1String("<none>")     ? TZDialogRotateByField::NoRotation
            : chosen == QLatin1String("<random>") ? TZDialogRotateByField::RandomRotation
                                                   : TZDialogRotateByField::FieldRotation;
    }
    switch (mode) {
    case TZDialogRotateByField::NoRotation:
        rotateByField = false;
        break;
    case TZDialogRotateByField::RandomRotation:
        rotateByField = true;
        random = true;
        randomMinimum = dialog.randomMinimum();
        randomMaximum = dialog.randomMaximum();
        field = QStringLiteral("<random>");
        break;
    default:
        rotateByField = true;
        random = false;
        field = dialog.field();
        break;
    }
    return true;
}

void TZRotationSettings::writeFieldAndRange(TEFeatureRender& render) const
{
    render.SetIsRotateByField(rotateByField);
    if (rotateByField)
        render.SetRotateField(TEString(field));
    if (random)
        render.SetRotateRandomRange(randomMinimum, randomMaximum);
}
