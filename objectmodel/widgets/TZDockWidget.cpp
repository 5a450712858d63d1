#include "widgets/TZDockWidget.h"

#include <QCloseEvent>
#include <QShowEvent>

TZDockWidget::TZDockWidget(QWidget* parent, Qt::WindowFlags flags)
    : QDockWidget(parent, flags)
{
}

QSize TZDockWidget::sizeHint() const
{
    if (mLastSize.isValid())
        return mLastSize;
    const QSize base = QDockWidget::sizeHint();
    return QSize(qMax(base.width(), DefaultWidth), base.height());
}

void TZDockWidget::closeEvent(QCloseEvent* event)
{
    mLastSize = size();
    QDockWidget::closeEvent(event);
    if (event->isAccepted())
        emit closed();
}

void TZDockWidget::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    // A dock tabified with others is shown behind them; the host shows it
    // because the user asked for it, so its tab comes to the front.
    if (!event->spontaneous())
        raise();
    emit shown();
}
