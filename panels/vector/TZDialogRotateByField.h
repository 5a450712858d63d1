#pragma once

#include "TZRenderExport.h"

#include "data/TEFeatureLayer.h"

#include <QDialog>

#include <memory>

namespace Ui {
class TZDialogRotateByField;
}
class QButtonGroup;

// Asks how point symbols are turned: not at all, by the angle in a numeric
// field, or by a random angle in a range, and whether angles count clockwise
// (geographic) or counter-clockwise (arithmetic). Opened for one layer, it
// starts from the rotation settings of the layer's render; the caller reads
// the results after exec() returned Accepted.
class TZRENDER_EXPORT TZDialogRotateByField : public QDialog
{
    Q_OBJECT
public:
    enum Mode { NoRotation = 0, RandomRotation = 1, FieldRotation = 2 };

    explicit TZDialogRotateByField(TZObjects::TEFeatureLayer* layer, QWidget* parent = nullptr);
    ~TZDialogRotateByField() override;

    bool isClockwise() const;
    int mode() const { return mMode; }
    // The chosen field name, "<none>" or "<random>".
    QString field() const { return mField; }
    double randomMinimum() const { return mRandomMinimum; }
    double randomMaximum() const { return mRandomMaximum; }

public Q_SLOTS:
    void onFieldSelectChanged(const QString& text);
    void onRandomRangeValueChanged();

private:
    void setRangeEnabled(bool enabled);

    std::unique_ptr<Ui::TZDialogRotateByField> mUi;
    QButtonGroup* mDirectionGroup = nullptr;
    TZObjects::TERefPtr<TZObjects::TEFeatureLayer> mLayer;
    double mRandomMinimum = 0.0;
    double mRandomMaximum = 360.0;
    QString mField;
    int mMode = NoRotation;
};
