#include "TestRegistry.h"

#include "widgets/TZWaitDialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QPushButton>
#include <QLabel>
#include <QThread>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

class TestWaitDialog : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void runsTheJobOffTheGuiThreadAndReturnsWhenItEnds()
    {
        TZWaitDialog dialog(QStringLiteral("Wait"));
        QThread* jobThread = nullptr;
        std::atomic<bool> done{false};
        const bool ok = dialog.WaitFor([&] {
            jobThread = QThread::currentThread();
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            done = true;
        });
        QVERIFY(ok);
        QVERIFY(done);
        QVERIFY(jobThread);
        QVERIFY(jobThread != qApp->thread());
        QVERIFY(dialog.errorText().isEmpty());
    }

    void showsAModalBusyDialogWhileALongJobRuns()
    {
        TZWaitDialog dialog(QStringLiteral("Collecting values..."));
        std::atomic<bool> release{false};
        bool sawDialog = false;
        QString shownText;
        QTimer::singleShot(400, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            sawDialog = modal == &dialog;
            if (auto* label = dialog.findChild<QLabel*>(QStringLiteral("mLabelText")))
                shownText = label->text();
            // Escape must not take the dialog away while the job runs.
            QTest::keyClick(&dialog, Qt::Key_Escape);
            sawDialog = sawDialog && dialog.isVisible();
            release = true;
        });
        QVERIFY(dialog.WaitFor([&] {
            while (!release)
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }));
        QVERIFY(sawDialog);
        QCOMPARE(shownText, QStringLiteral("Collecting values..."));
        QVERIFY(!dialog.isVisible());
    }

    // With a cancel handler the dialog offers "Cancel"; clicking it asks
    // the job to stop, and WaitFor returns once the job has returned.
    void cancelButtonAsksTheJobToStop()
    {
        TZWaitDialog dialog(QStringLiteral("Wait"));
        std::atomic<bool> keepRunning{true};
        dialog.setCancelHandler([&keepRunning] { keepRunning = false; });
        bool clicked = false;
        QTimer::singleShot(400, [&] {
            auto* buttons = dialog.findChild<QDialogButtonBox*>(QStringLiteral("mButtonBoxCancel"));
            if (!qEnvironmentVariableIsEmpty("TZ_SNAPSHOT_DIR"))
                dialog.grab().save(QDir(qEnvironmentVariable("TZ_SNAPSHOT_DIR")).filePath("wait-dialog-cancel.png"));
            if (buttons && buttons->isVisible() && buttons->button(QDialogButtonBox::Cancel)->text() == "Cancel") {
                buttons->button(QDialogButtonBox::Cancel)->click();
                clicked = true;
            }
        });
        int rounds = 0;
        QVERIFY(dialog.WaitFor([&] {
            while (keepRunning && rounds < 2000) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                ++rounds;
            }
        }));
        QVERIFY(clicked);
        QVERIFY(dialog.wasCancelled());
        QVERIFY(rounds < 2000);
        QVERIFY(!dialog.isVisible());
        // The next job starts with the flag cleared.
        QVERIFY(dialog.WaitFor([] {}));
        QVERIFY(!dialog.wasCancelled());
    }

    void catchesAnExceptionFromTheJob_data()
    {
        QTest::addColumn<int>("delayMs");
        QTest::newRow("at once") << 0;
        QTest::newRow("after the dialog showed") << 300;
    }
    void catchesAnExceptionFromTheJob()
    {
        QFETCH(int, delayMs);
        TZWaitDialog dialog(QStringLiteral("Wait"));
        const bool ok = dialog.WaitFor([delayMs] {
            std::this_thread::sleep_for(std::chrono::milliseconds(delayMs));
            throw std::runtime_error("field not found");
        });
        QVERIFY(!ok);
        QCOMPARE(dialog.errorText(), QStringLiteral("field not found"));
        QVERIFY(!dialog.isVisible());
    }

    void canBeUsedForSeveralJobsInARow()
    {
        TZWaitDialog dialog(QStringLiteral("Wait"));
        int runs = 0;
        for (int i = 0; i < 3; ++i) {
            QVERIFY(dialog.WaitFor([&runs, i] {
                std::this_thread::sleep_for(std::chrono::milliseconds(i == 1 ? 250 : 0));
                ++runs;
            }));
        }
        QCOMPARE(runs, 3);
        QVERIFY(!dialog.WaitFor([] { throw 42; }));
        QVERIFY(!dialog.errorText().isEmpty());
        QVERIFY(dialog.WaitFor([] {}));
        QVERIFY(dialog.errorText().isEmpty());
    }
};

TZ_REGISTER_TEST(TestWaitDialog)
#include "TestWaitDialog.moc"
