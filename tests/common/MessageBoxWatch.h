#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>

// Answers every message box that opens while the watch lives, with the
// given button (or the box's only button), and keeps their texts in order.
// Unlike a one-shot answer, it stops with its scope, so a check that no box
// opens cannot leave a poller behind to answer a later test's box.
class MessageBoxWatch
{
public:
    explicit MessageBoxWatch(QMessageBox::StandardButton answer)
    {
        mTimer.setInterval(10);
        QObject::connect(&mTimer, &QTimer::timeout, [this, answer] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box || !box->isVisible())
                return;
            mTexts << box->text();
            QAbstractButton* button = box->button(answer);
            if (!button && box->buttons().size() == 1)
                button = box->buttons().first();
            if (button)
                button->click();
        });
        mTimer.start();
    }

    QStringList texts() const { return mTexts; }

private:
    QTimer mTimer;
    QStringList mTexts;
};
