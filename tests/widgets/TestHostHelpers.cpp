#include "TestRegistry.h"

#include "widgets/TZApplication.h"
#include "widgets/TZDockWidget.h"
#include "widgets/TZSymbolUtils.h"

#include <QMainWindow>
#include <QPainter>
#include <QSignalSpy>

class TestHostHelpers : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void doubleToQStringDropsTrailingZeros_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("text");
        QTest::newRow("scale, no decimals") << 25000.4 << 0 << QStringLiteral("25000");
        QTest::newRow("rounds half up") << 2.675 << 1 << QStringLiteral("2.7");
        QTest::newRow("trailing zeros") << 2.5 << 4 << QStringLiteral("2.5");
        QTest::newRow("whole value") << 3.0 << 2 << QStringLiteral("3");
        QTest::newRow("negative") << -0.125 << 3 << QStringLiteral("-0.125");
        QTest::newRow("negative zero") << -0.0001 << 2 << QStringLiteral("0");
        QTest::newRow("negative decimals") << 12.5 << -1 << QStringLiteral("13");
    }
    void doubleToQStringDropsTrailingZeros()
    {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QFETCH(QString, text);
        const QString formatted = TZApplication::doubleToQString(value, decimals);
        QCOMPARE(formatted, text);
        bool ok = false;
        formatted.toDouble(&ok);
        QVERIFY(ok);
    }

    void themeIconsComeFromTheCompiledInTheme()
    {
        QVERIFY(!TZApplication::getThemeIcon(QStringLiteral("/select.png")).isNull());
        QVERIFY(!TZApplication::getThemeIcon(QStringLiteral("Up.png")).isNull());
        QVERIFY(TZApplication::getThemeIcon(QStringLiteral("/no-such-icon.png")).isNull());
        QVERIFY(!QIcon(QStringLiteral(":/themes/default/Down.png")).pixmap(16, 16).isNull());
    }

    void stippledBackgroundAlternatesLightAndDark()
    {
        QImage image(24, 24, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        TZSymbolUtils::drawStippledBackground(&painter, QRect(0, 0, 24, 24));
        painter.end();
        QVERIFY(qAlpha(image.pixel(1, 1)) == 255);
        QVERIFY(image.pixel(1, 1) != image.pixel(7, 1));
        QCOMPARE(image.pixel(1, 1), image.pixel(7, 7));
    }

    void dockIsWideEnoughAtFirstAndKeepsTheUsersSize()
    {
        QMainWindow window;
        auto* dock = new TZDockWidget(&window);
        dock->setWidget(new QWidget);
        window.addDockWidget(Qt::RightDockWidgetArea, dock);
        QVERIFY(dock->sizeHint().width() >= 300);

        QSignalSpy closed(dock, &TZDockWidget::closed);
        QSignalSpy shown(dock, &TZDockWidget::shown);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(shown.count(), 1);
        dock->resize(411, 377);
        QVERIFY(dock->close());
        QCOMPARE(closed.count(), 1);
        QCOMPARE(dock->sizeHint(), QSize(411, 377));
    }

    void shownDockComesToTheFrontOfItsTabGroup()
    {
        QMainWindow window;
        window.setCentralWidget(new QWidget);
        auto* first = new TZDockWidget(&window);
        first->setObjectName(QStringLiteral("first"));
        first->setWindowTitle(QStringLiteral("First"));
        first->setWidget(new QWidget);
        auto* second = new TZDockWidget(&window);
        second->setObjectName(QStringLiteral("second"));
        second->setWindowTitle(QStringLiteral("Second"));
        second->setWidget(new QWidget);
        window.addDockWidget(Qt::RightDockWidgetArea, first);
        window.addDockWidget(Qt::RightDockWidgetArea, second);
        window.tabifyDockWidget(first, second);
        first->hide();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        first->show();
        QTRY_VERIFY(!first->visibleRegion().isEmpty());
    }
};

TZ_REGISTER_TEST(TestHostHelpers)
#include "TestHostHelpers.moc"
