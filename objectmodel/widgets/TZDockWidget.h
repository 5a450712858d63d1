#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include <QDockWidget>

// Base of the host's dockable windows. It brings a dock to the front of its
// tab group when it is shown, remembers the size the user gave it, and tells
// the host when the user closes it (so a menu entry can follow).
class TZHOSTWIDGETS_EXPORT TZDockWidget : public QDockWidget
{
    Q_OBJECT
public:
    explicit TZDockWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

    QSize sizeHint() const override;

Q_SIGNALS:
    void shown();
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // Width a dock gets the first time, before the user has resized it.
    static constexpr int DefaultWidth = 320;

    QSize mLastSize;
};
