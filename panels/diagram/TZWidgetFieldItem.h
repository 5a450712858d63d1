#pragma once

#include "TZRenderExport.h"

#include <QWidget>

class QLabel;
class QToolButton;

// One entry of a diagram panel's field drop-down: the field's name and a
// check mark. A click on the mark, or a left-button release anywhere on the
// entry, flips the selection and announces it; setSelected flips it quietly
// (a panel reading a render back uses it).
class TZRENDER_EXPORT TZWidgetFieldItem : public QWidget
{
    Q_OBJECT
public:
    explicit TZWidgetFieldItem(const QString& fieldName, QWidget* parent = nullptr);

    QString fieldName() const { return mFieldName; }
    bool isSelected() const { return mSelected; }
    // Sets the selection without emitting itemStatusChanged.
    void setSelected(bool selected);

Q_SIGNALS:
    void itemStatusChanged();

public Q_SLOTS:
    void onClick();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void showSelection();

    QString mFieldName;
    bool mSelected = false;
    QLabel* mLabel = nullptr;
    QToolButton* mButton = nullptr;
};
