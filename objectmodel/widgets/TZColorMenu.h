#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include <QColor>
#include <QMenu>

class QToolButton;

// A pop-up palette of common colours with a "More colors..." entry that opens
// the colour dialog. Run it with exec(pos); afterwards getColor() is the
// colour the user picked, or the colour it was given when the user dismissed
// the menu.
class TZHOSTWIDGETS_EXPORT TZColorMenu : public QMenu
{
    Q_OBJECT
public:
    explicit TZColorMenu(QWidget* parent = nullptr);

    void setColor(const QColor& color);
    QColor getColor() const { return mColor; }

Q_SIGNALS:
    void colorSelected(const QColor& color);

private:
    void pick(const QColor& color);
    void chooseMoreColors();
    void markCurrentSwatch();

    QColor mColor = Qt::black;
    QList<QToolButton*> mSwatches;
};
