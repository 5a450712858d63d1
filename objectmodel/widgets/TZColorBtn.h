#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include <QRgb>
#include <QToolButton>

// A button that shows one colour as a swatch and lets the user pick another
// in a colour dialog. Colours are packed 0xAARRGGBB; 0 means "no colour" and
// is drawn as a crossed-out white swatch. The context menu offers "No color".
class TZHOSTWIDGETS_EXPORT TZColorBtn : public QToolButton
{
    Q_OBJECT
public:
    explicit TZColorBtn(QWidget* parent = nullptr);

    QRgb getColor() const { return mColor; }
    // Emits colorChanged when the colour differs from the current one.
    void setColor(QRgb color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void colorChanged(QRgb color);

protected:
    void paintEvent(QPaintEvent* event) override;

private Q_SLOTS:
    void chooseColor();

private:
    QRgb mColor = 0;
};
