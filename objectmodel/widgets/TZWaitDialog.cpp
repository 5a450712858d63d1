#include "widgets/TZWaitDialog.h"

#include "ui_TZWaitDialog.h"

#include <QPushButton>
#include <QThread>

#include <exception>

TZWaitDialog::TZWaitDialog(const QString& text, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , mUi(std::make_unique<Ui::TZWaitDialog>())
{
    mUi->setupUi(this);
    mUi->mLabelText->setText(text);
    mUi->mButtonBox->setVisible(false);
    connect(mUi->mButtonBox, &QDialogButtonBox::rejected, this, &TZWaitDialog::reject);
    setModal(true);
}

TZWaitDialog::~TZWaitDialog() = default;

bool TZWaitDialog::WaitFor(std::function<void()> job, std::atomic<bool>* cancel)
{
    mCancel = cancel;
    const bool finished = WaitFor(std::move(job));
    mCancel = nullptr;
    return finished;
}

bool TZWaitDialog::WaitFor(std::function<void()> job)
{
    mErrorText.clear();
    mUi->mButtonBox->setVisible(mCancel != nullptr);
    mUi->mButtonBox->setEnabled(true);
    if (!job)
        return true;

    bool failed = false;
    QString error;
    std::unique_ptr<QThread> worker(QThread::create([&job, &failed, &error] {
        try {
            job();
        } catch (const std::exception& e) {
            failed = true;
            error = QString::fromLocal8Bit(e.what());
        } catch (...) {
            failed = true;
            error = tr("The task stopped with an unknown error.");
        }
    }));
    worker->setObjectName(QStringLiteral("TZWaitDialog worker"));
    mWorker = worker.get();
    connect(mWorker, &QThread::finished, this, &TZWaitDialog::onWorkerFinished, Qt::QueuedConnection);
    mWorker->start();

    if (!mWorker->wait(ShowDelayMs))
        exec();
    mWorker->wait();
    mWorker = nullptr;

    if (failed)
        mErrorText = error.isEmpty() ? tr("The task failed.") : error;
    return !failed;
}

void TZWaitDialog::reject()
{
    if (!mWorker) {
        QDialog::reject();
    } else if (mCancel) {
        // The job stops at its next check; its end closes the dialog.
        mCancel->store(true);
        mUi->mButtonBox->setEnabled(false);
        mUi->mLabelText->setText(tr("Cancelling..."));
    }
}

void TZWaitDialog::onWorkerFinished()
{
    // A notice from a finished earlier job may still be queued; only the
    // running job's end closes the dialog.
    if (mWorker && mWorker->isFinished() && isVisible())
        done(Accepted);
}
