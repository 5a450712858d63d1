#pragma once

#include "TZRenderExport.h"

#include <QWidget>

class QCheckBox;

// One row of the many-fields chooser: a check box titled with a field name.
// Clicking it announces itemStatusChanged().
class TZRENDER_EXPORT TZWidgetValueItem : public QWidget
{
    Q_OBJECT
public:
    explicit TZWidgetValueItem(const QString& fieldName, QWidget* parent = nullptr);

    QString fieldName() const;
    bool isChecked() const;
    // Checks or unchecks without announcing it.
    void setChecked(bool checked);
    QCheckBox* checkBox() const { return mCheckBox; }

Q_SIGNALS:
    void itemStatusChanged();

public Q_SLOTS:
    void onClick();

private:
    QCheckBox* mCheckBox = nullptr;
};
