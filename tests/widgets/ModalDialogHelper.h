#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

// Answers the next modal dialog of a test. Arm it before the call that opens
// the dialog: it polls QApplication::activeModalWidget(), lets prepare() fill
// the dialog in, then clicks the wanted standard button (of a message box or
// of the dialog's button box). answered() tells whether it happened.
class ModalDialogHelper
{
public:
    using Prepare = std::function<void(QWidget* dialog)>;

    explicit ModalDialogHelper(QDialogButtonBox::StandardButton button, Prepare prepare = {},
                               int timeoutMs = 10000)
        : mState(std::make_shared<State>())
    {
        mState->button = button;
        mState->prepare = std::move(prepare);
        mState->remainingPolls = timeoutMs / PollMs;
        poll(mState);
    }

    bool answered() const { return mState->answered; }
    // Class name of the dialog that was answered.
    QString dialogClass() const { return mState->dialogClass; }

private:
    static constexpr int PollMs = 20;

    struct State
    {
        QDialogButtonBox::StandardButton button = QDialogButtonBox::Ok;
        Prepare prepare;
        int remainingPolls = 0;
        bool answered = false;
        QString dialogClass;
    };

    static QAbstractButton* findButton(QWidget* dialog, QDialogButtonBox::StandardButton which)
    {
        if (auto* box = qobject_cast<QMessageBox*>(dialog))
            return box->button(QMessageBox::StandardButton(int(which)));
        const auto boxes = dialog->findChildren<QDialogButtonBox*>();
        for (QDialogButtonBox* buttons : boxes) {
            if (QAbstractButton* button = buttons->button(which))
                return button;
        }
        return nullptr;
    }

    static void poll(std::shared_ptr<State> state)
    {
        QTimer::singleShot(PollMs, [state] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog && dialog->isVisible()) {
                QPointer<QWidget> guard(dialog);
                if (state->prepare)
                    state->prepare(dialog);
                if (guard) {
                    if (QAbstractButton* button = findButton(dialog, state->button)) {
                        state->answered = true;
                        state->dialogClass = QString::fromLatin1(dialog->metaObject()->className());
                        button->click();
                        return;
                    }
                }
            }
            if (--state->remainingPolls > 0)
                poll(state);
        });
    }

    std::shared_ptr<State> mState;
};
