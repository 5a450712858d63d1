#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class TZWaitDialog;
}
class QThread;

// Runs a long job (a scan of a layer) on a worker thread while a modal dialog
// with a message and a busy indicator keeps the user interface blocked.
// The job must not touch widgets; the caller updates them after WaitFor.
class TZHOSTWIDGETS_EXPORT TZWaitDialog : public QDialog
{
    Q_OBJECT
public:
    explicit TZWaitDialog(const QString& text, QWidget* parent = nullptr);
    ~TZWaitDialog() override;

    // Returns when the job has ended: true when it ran to its end, false when
    // it threw (the exception is caught here; errorText() tells what it was).
    bool WaitFor(std::function<void()> job);
    QString errorText() const { return mErrorText; }

    // Offers a "Cancel" button (and the Escape key) while the job runs:
    // cancel is called on the GUI thread to ask the job to stop, and the
    // dialog stays up until the job has returned. Set it before WaitFor.
    void setCancelHandler(std::function<void()> cancel);
    // Whether the user asked the last job to stop.
    bool wasCancelled() const { return mCancelled; }

public Q_SLOTS:
    // The user cannot dismiss the dialog while the job runs.
    void reject() override;

private Q_SLOTS:
    void onWorkerFinished();

private:
    // Jobs that end within this time never show the dialog, so quick scans
    // do not make it flash.
    static constexpr int ShowDelayMs = 150;

    std::unique_ptr<Ui::TZWaitDialog> mUi;
    QThread* mWorker = nullptr;
    QString mErrorText;
    std::function<void()> mCancel;
    bool mCancelled = false;
};
