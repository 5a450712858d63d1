#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

// Answers the next modal dialog that inherits a class, from the test. Arm it
// before the call that opens the dialog: it polls
// QApplication::activeModalWidget() and runs the action on the dialog once.
class ModalAnswer
{
public:
    using Action = std::function<void(QWidget* dialog)>;

    ModalAnswer(const char* className, Action action, int timeoutMs = 10000)
        : mState(std::make_shared<State>())
    {
        mState->className = className;
        mState->action = std::move(action);
        mState->remainingPolls = timeoutMs / PollMs;
        poll(mState);
    }

    bool answered() const { return mState->answered; }
    QString dialogText() const { return mState->text; }
    QString dialogTitle() const { return mState->title; }

    // Clicks a standard button of a message box.
    static Action click(QMessageBox::StandardButton button)
    {
        return [button](QWidget* dialog) {
            if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
                if (QAbstractButton* b = box->button(button))
                    b->click();
            }
        };
    }

private:
    static constexpr int PollMs = 20;

    struct State
    {
        const char* className = nullptr;
        Action action;
        int remainingPolls = 0;
        bool answered = false;
        QString text;
        QString title;
    };

    static void poll(std::shared_ptr<State> state)
    {
        QTimer::singleShot(PollMs, [state] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog && dialog->isVisible() && dialog->inherits(state->className)) {
                state->answered = true;
                state->title = dialog->windowTitle();
                if (auto* box = qobject_cast<QMessageBox*>(dialog))
                    state->text = box->text();
                state->action(dialog);
                return;
            }
            if (--state->remainingPolls > 0)
                poll(state);
        });
    }

    std::shared_ptr<State> mState;
};
