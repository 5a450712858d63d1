#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include <QDialog>

#include <atomic>
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
    // The same for a job that watches cancel: the dialog then offers a
    // Cancel button (and Escape), which sets the flag and waits for the job
    // to notice it and return. The caller tells a cancelled job by the flag.
    bool WaitFor(std::function<void()> job, std::atomic<bool>* cancel);
    QString errorText() const { return mErrorText; }

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
    std::atomic<bool>* mCancel = nullptr;
    QString mErrorText;
};
