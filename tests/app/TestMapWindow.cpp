#include "TestRegistry.h"
#include "ModalAnswer.h"

#include "AppFixture.h"
#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"

#include "TZControlRender.h"
#include "data/TEFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "view/TEMapViewManager.h"

#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace TZObjects;

// The main window, its canvas and the dock working together as a user sees them.
class TestMapWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mVectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!mVectors.isEmpty());
    }

    void viewportZoomKeepsTheAnchorAndReportsTheScale()
    {
        const TZMapViewport view(QSize(400, 200), QPointF(100, 50), 0.5);
        QCOMPARE(view.toMap(QPointF(0, 0)), QPointF(0, 100));
        const TZMapViewport zoomed = view.zoomedAt(QPointF(100, 50), 2.0);
        QCOMPARE(zoomed.toMap(QPointF(100, 50)), view.toMap(QPointF(100, 50)));
        QCOMPARE(zoomed.unitsPerPixel(), 0.25);
        // One metre per pixel at 96 dpi is 1 : 3779.5.
        const TZMapViewport metre(QSize(10, 10), QPointF(), 1.0);
        QVERIFY(qAbs(metre.scale() - 3779.527559) < 1e-3);
    }

    void canvasIsTheActiveMapViewAndDrawsOffTheGuiThread()
    {
        TZMapCanvas canvas;
        QCOMPARE(TEMapViewManager::GetInstance()->GetActivedMapView(), static_cast<TEMapView*>(&canvas));
        canvas.resize(400, 200);
        TERefPtr<TEFeatureLayer> squares = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        squares->SetSymbolRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::red)));
        QSignalSpy finished(&canvas, &TZMapCanvas::drawingFinished);
        canvas.setLayers({squares});
        canvas.setViewport(AppFixture::squaresViewport());
        QVERIFY(canvas.ContainsLayer(squares.get()));
        QVERIFY(canvas.isDrawing());
        QVERIFY(finished.wait(10000));
        while (canvas.isDrawing())
            QVERIFY(finished.wait(10000));
        QVERIFY(finished.last().at(0).toBool());
        QCOMPARE(AppFixture::colorAt(canvas.mapImage(), canvas.viewport(), {50, 50}), QColor(Qt::red));
    }

    void draggingPansAndTheWheelZoomsAroundTheCursor()
    {
        TZMapCanvas canvas;
        canvas.resize(400, 200);
        canvas.show();
        QVERIFY(QTest::qWaitForWindowExposed(&canvas));
        canvas.setViewport(AppFixture::squaresViewport());
        const QPointF before = canvas.viewport().centre();
        QTest::mousePress(&canvas, Qt::LeftButton, Qt::NoModifier, QPoint(200, 100));
        QMouseEvent move(QEvent::MouseMove, QPointF(240, 80), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&canvas, &move);
        QTest::mouseRelease(&canvas, Qt::LeftButton, Qt::NoModifier, QPoint(240, 80));
        // 40 pixels right and 20 up at half a unit per pixel.
        QCOMPARE(canvas.viewport().centre(), before + QPointF(-20.0, -10.0));

        const QPointF anchor(300, 50);
        const QPointF mapUnderCursor = canvas.viewport().toMap(anchor);
        QWheelEvent wheel(anchor, canvas.mapToGlobal(anchor.toPoint()), QPoint(), QPoint(0, 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&canvas, &wheel);
        QVERIFY(canvas.viewport().unitsPerPixel() < 0.5);
        const QPointF after = canvas.viewport().toMap(anchor);
        QVERIFY(qAbs(after.x() - mapUnderCursor.x()) < 1e-9 && qAbs(after.y() - mapUnderCursor.y()) < 1e-9);
    }

    void openingASourceThatDoesNotAnswerKeepsTheWindowPainting()
    {
        // A port that takes connections and never answers, as a database
        // server behind a stalled network: libpq waits out its time-out.
        const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        QVERIFY(listener >= 0 && ::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0
                && ::listen(listener, 4) == 0
                && ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length) == 0);
        TZMapWindow window;
        window.setInteractive(false);
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
        timer.start(20);
        QElapsedTimer clock;
        clock.start();
        const QString source =
            QStringLiteral("PG:host=127.0.0.1 port=%1 dbname=none connect_timeout=2").arg(ntohs(address.sin_port));
        QCOMPARE(window.openPaths({source}), 0);
        const qint64 waited = clock.elapsed();
        ::close(listener);
        // The GUI thread kept running its timer while the server was waited for.
        QVERIFY2(waited >= 1500, qPrintable(QString::number(waited)));
        QVERIFY2(ticks >= waited / 20 / 2, qPrintable(QStringLiteral("%1 ticks in %2 ms").arg(ticks).arg(waited)));
        QVERIFY(window.layerTree()->layers().empty());
    }

    void canvasDrawsAgainWhenTheDockAsks()
    {
        TZMapWindow window;
        QCOMPARE(window.openPaths({mVectors}), 2);
        TZMapCanvas* canvas = window.canvas();
        canvas->resize(400, 200);
        canvas->setViewport(AppFixture::squaresViewport());
        waitForDrawing(canvas);
        TELayer* squares = layerNamed(window, QStringLiteral("squares"));
        static_cast<TEFeatureLayer*>(squares)->SetSymbolRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::blue)));
        Q_EMIT TZControlRender::instance(nullptr)->refreshMap();
        waitForDrawing(canvas);
        // Away from the spot drawn over the square.
        QCOMPARE(AppFixture::colorAt(canvas->mapImage(), canvas->viewport(), {170, 80}), QColor(Qt::blue));
        window.setWindowModified(false);
    }

    void selectingALayerHandsItToTheDockAndRemovingItClearsTheDock()
    {
        TZMapWindow window;
        window.show();
        window.openPaths({mVectors});
        TZControlRender* dock = TZControlRender::instance(nullptr);
        TELayer* squares = layerNamed(window, QStringLiteral("squares"));
        window.selectLayer(squares->GetGuidStr().toQString());
        QCOMPARE(dock->layer(), squares);
        QVERIFY(dock->isVisible());

        window.layerTree()->setCurrentIndex(window.layerTree()->indexOf(squares->GetGuidStr().toQString()));
        const QString guid = squares->GetGuidStr().toQString();
        QAction* remove = findAction(window, QStringLiteral("&Remove Layer"));
        QVERIFY(remove);
        QVERIFY(remove->isEnabled());
        remove->trigger();
        QVERIFY(!window.layerTree()->indexOf(guid).isValid());
        QCOMPARE(window.canvas()->layers().size(), std::size_t(1));
        // The next layer in the list becomes current and goes to the dock.
        TELayer* spots = layerNamed(window, QStringLiteral("spots"));
        QCOMPARE(dock->layer(), spots);

        remove->trigger();
        QVERIFY(!dock->layer());
        QVERIFY(dock->isHidden());
        QVERIFY(window.canvas()->layers().empty());
        window.setWindowModified(false);
    }

    void symbolChangeShowsTheLegendUnderTheLayer()
    {
        TZMapWindow window;
        window.openPaths({mVectors});
        auto* squares = static_cast<TEFeatureLayer*>(layerNamed(window, QStringLiteral("squares")));
        auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        render->AddCategory(L"Forest", L"Woodland", AppFixture::fillStyle(Qt::green));
        render->AddCategory(L"Water", TEString(), AppFixture::fillStyle(Qt::blue));
        squares->SetSymbolRender(render);
        Q_EMIT TZControlRender::instance(nullptr)->symbolChanged(squares->GetGuidStr().toQString());

        const QModelIndexList entries = AppFixture::legendEntries(*window.layerTree(), squares->GetGuidStr().toQString());
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries[0].data().toString(), QStringLiteral("Woodland"));
        // Without a label the value names the class.
        QCOMPARE(entries[1].data().toString(), QStringLiteral("Water"));
        QVERIFY(!entries[0].data(Qt::DecorationRole).value<QIcon>().isNull());
        QVERIFY(window.isWindowModified());
        window.setWindowModified(false);
    }

    void closingWithUnsavedChangesAsksFirst()
    {
        TZMapWindow window;
        window.show();
        window.openPaths({mVectors});
        QVERIFY(window.isWindowModified());

        {
            ModalAnswer cancel("QMessageBox", ModalAnswer::click(QMessageBox::Cancel));
            QVERIFY(!window.close());
            QVERIFY(cancel.answered());
            QVERIFY(window.isVisible());
        }
        ModalAnswer discard("QMessageBox", ModalAnswer::click(QMessageBox::Discard));
        QVERIFY(window.close());
        QVERIFY(discard.answered());
    }

    void projectSavedFromTheWindowReopensWithItsOrder()
    {
        const QString path = mDir.filePath(QStringLiteral("window.tzmap"));
        QStringList names;
        {
            TZMapWindow window;
            window.openPaths({mVectors});
            window.layerTree()->setLayerVisible(layerNamed(window, QStringLiteral("spots"))->GetGuidStr().toQString(), false);
            for (const auto& layer : window.layerTree()->layers())
                names << layer->GetLayerName().toQString();
            QVERIFY(window.saveProject(path));
            QVERIFY(!window.isWindowModified());
        }
        TZMapWindow reopened;
        QVERIFY(reopened.openProject(path));
        QStringList reopenedNames;
        for (const auto& layer : reopened.layerTree()->layers())
            reopenedNames << layer->GetLayerName().toQString();
        QCOMPARE(reopenedNames, names);
        QVERIFY(!reopened.layerTree()->isLayerVisible(layerNamed(reopened, QStringLiteral("spots"))->GetGuidStr().toQString()));
        QVERIFY(!reopened.isWindowModified());
    }

private:
    static void waitForDrawing(TZMapCanvas* canvas)
    {
        QSignalSpy finished(canvas, &TZMapCanvas::drawingFinished);
        while (canvas->isDrawing())
            QVERIFY(finished.wait(10000));
    }

    static TELayer* layerNamed(const TZMapWindow& window, const QString& name)
    {
        for (const auto& layer : window.layerTree()->layers()) {
            if (layer->GetLayerName().toQString() == name)
                return layer.get();
        }
        return nullptr;
    }

    static QAction* findAction(const TZMapWindow& window, const QString& text)
    {
        for (QAction* action : window.findChildren<QAction*>()) {
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }

    QTemporaryDir mDir;
    QString mVectors;
};

TZ_REGISTER_TEST(TestMapWindow)
#include "TestMapWindow.moc"
