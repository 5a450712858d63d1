#include "widgets/TZWaitDialog.h"

#include "ui_TZWaitDialog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

#include <exception>

TZWaitDialog::TZWaitDialog(const QString& text, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , mUi(std::make_unique<Ui::TZWaitDialog>())
{
    mUi->setupUi(this);
    mUi->mLabelText->setText(text);
    setModal(true);
}

TZWaitDialog::~TZWaitDialog() = default;

bool TZWaitDialog::WaitFor(std::function<void()> job)
{
    mErrorText.clear();
    mCancelled = false;
    if (auto* buttons = findChild<QDialogButtonBox*>(QStringLiteral("mButtonBoxCancel")))
        buttons->setEnabled(true);
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

void TZWaitDialog::setCancelHandler(std::function<void()> cancel)
{
    mCancel = std::move(cancel);
    auto* buttons = findChild<QDialogButtonBox*>(QStringLiteral("mButtonBoxCancel"));
    if (!buttons && mCancel) {
        buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
        buttons->setObjectName(QStringLiteral("mButtonBoxCancel"));
        buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
        connect(buttons, &QDialogButtonBox::rejected, this, &TZWaitDialog::reject);
        if (auto* box = qobject_cast<QVBoxLayout*>(layout()))
            box->addWidget(buttons);
    }
    if (buttons)
        buttons->setVisible(bool(mCancel));
}

void TZWaitDialog::reject()
{
    if (!mWorker) {
        QDialog::reject();
        return;
    }
    // While the job runs, a cancel handler asks it to stop; the dialog
    // closes when the job returns.
    if (mCancel && !mCancelled) {
        mCancelled = true;
        if (auto* buttons = findChild<QDialogButtonBox*>(QStringLiteral("mButtonBoxCancel")))
            buttons->setEnabled(false);
        mCancel();
    }
}

void TZWaitDialog::onWorkerFinished()
{
    // A notice from a finished earlier job may still be queued; only the
    // running job's end closes the dialog.
    if (mWorker && mWorker->isFinished() && isVisible())
        done(Accepted);
}
