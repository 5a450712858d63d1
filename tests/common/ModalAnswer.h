#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

// Answers the next modal dialog that inherits a class, from the test, the way
// a person would. Arm it before the call that opens the dialog: it polls
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
    QString dialogClass() const { return mState->dialogClass; }
    QString dialogText() const { return mState->text; }
    QString dialogTitle() const { return mState->title; }

    // Lets prepare fill the dialog in, then clicks a standard button of a
    // message box or of the dialog's button box.
    static Action click(QDialogButtonBox::StandardButton which, Action prepare = {})
    {
        return [which, prepare](QWidget* dialog) {
            QPointer<QWidget> guard(dialog);
            if (prepare)
                prepare(dialog);
            if (!guard)
                return;
            if (QAbstractButton* button = findButton(dialog, which))
                button->click();
        };
    }
    static Action click(QMessageBox::StandardButton which, Action prepare = {})
    {
        return click(QDialogButtonBox::StandardButton(int(which)), std::move(prepare));
    }

private:
    static constexpr int PollMs = 20;

    struct State
    {
        const char* className = nullptr;
        Action action;
        int remainingPolls = 0;
        bool answered = false;
        QString dialogClass;
        QString text;
        QString title;
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
            if (dialog && dialog->isVisible() && dialog->inherits(state->className)) {
                state->answered = true;
                state->dialogClass = QString::fromLatin1(dialog->metaObject()->className());
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
