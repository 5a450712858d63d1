#include "TestRegistry.h"
#include "ModalAnswer.h"

#include "widgets/TZColorBtn.h"
#include "widgets/TZColorMenu.h"

#include <QAction>
#include <QColorDialog>
#include <QSignalSpy>
#include <QToolButton>

class TestColorWidgets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void colorButtonRoundTripsPackedColours_data()
    {
        QTest::addColumn<QRgb>("color");
        QTest::newRow("opaque red") << QRgb(0xFFFF0000);
        QTest::newRow("translucent blue") << QRgb(0x800000FF);
        QTest::newRow("grey outline") << QRgb(0xFFB9B9B9);
    }
    void colorButtonRoundTripsPackedColours()
    {
        QFETCH(QRgb, color);
        TZColorBtn button;
        QCOMPARE(button.getColor(), QRgb(0));
        QSignalSpy changed(&button, &TZColorBtn::colorChanged);
        button.setColor(color);
        QCOMPARE(button.getColor(), color);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).value<QRgb>(), color);

        button.setColor(color);
        QCOMPARE(changed.count(), 1);
    }

    void colorButtonShowsNoColourDifferentlyFromBlack()
    {
        TZColorBtn noColor;
        noColor.resize(59, 23);
        TZColorBtn black;
        black.resize(59, 23);
        black.setColor(0xFF000000);
        const QImage a = noColor.grab().toImage();
        const QImage b = black.grab().toImage();
        const QPoint centre(a.width() / 2 - 8, a.height() / 2);
        QVERIFY(qGray(a.pixel(centre)) > 200);
        QVERIFY(qGray(b.pixel(centre)) < 30);
    }

    void colorButtonClickTakesTheDialogsColour()
    {
        TZColorBtn button;
        button.setColor(0xFF00FF00);
        QSignalSpy changed(&button, &TZColorBtn::colorChanged);
        ModalAnswer answer("QDialog", ModalAnswer::click(QDialogButtonBox::Ok, [](QWidget* dialog) {
            qobject_cast<QColorDialog*>(dialog)->setCurrentColor(QColor(10, 20, 30));
        }));
        button.click();
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogClass(), QStringLiteral("QColorDialog"));
        QCOMPARE(button.getColor(), qRgb(10, 20, 30));
        QCOMPARE(changed.count(), 1);
    }

    void colorButtonKeepsItsColourWhenTheDialogIsCancelled()
    {
        TZColorBtn button;
        button.setColor(0xFF00FF00);
        QSignalSpy changed(&button, &TZColorBtn::colorChanged);
        ModalAnswer answer("QDialog", ModalAnswer::click(QDialogButtonBox::Cancel, [](QWidget* dialog) {
            qobject_cast<QColorDialog*>(dialog)->setCurrentColor(Qt::red);
        }));
        button.click();
        QVERIFY(answer.answered());
        QCOMPARE(button.getColor(), QRgb(0xFF00FF00));
        QCOMPARE(changed.count(), 0);
    }

    void colorButtonNoColourActionClearsTheColour()
    {
        TZColorBtn button;
        button.setColor(0xFF123456);
        auto* noColor = button.findChild<QAction*>(QStringLiteral("mActionNoColor"));
        QVERIFY(noColor);
        noColor->trigger();
        QCOMPARE(button.getColor(), QRgb(0));
    }

    void colorMenuSwatchPicksItsColourAndCloses()
    {
        TZColorMenu menu;
        menu.setColor(Qt::black);
        QSignalSpy selected(&menu, &TZColorMenu::colorSelected);
        menu.popup(QPoint(100, 100));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        // Swatch 16 is the first of the third row: pure red.
        auto* red = menu.findChild<QToolButton*>(QStringLiteral("mSwatch16"));
        QVERIFY(red);
        red->click();
        QCOMPARE(menu.getColor(), QColor(Qt::red));
        QCOMPARE(selected.count(), 1);
        QTRY_VERIFY(!menu.isVisible());
        QVERIFY(red->isChecked());
    }

    void colorMenuKeepsTheGivenColourWhenDismissed()
    {
        TZColorMenu menu;
        menu.setColor(QColor(1, 2, 3));
        QTimer::singleShot(100, &menu, &QMenu::close);
        menu.exec(QPoint(50, 50));
        QCOMPARE(menu.getColor(), QColor(1, 2, 3));
    }

    void colorMenuMoreColoursOpensTheColourDialog()
    {
        TZColorMenu menu;
        menu.setColor(Qt::white);
        auto* more = menu.findChild<QAction*>(QStringLiteral("mActionMoreColors"));
        QVERIFY(more);
        ModalAnswer answer("QDialog", ModalAnswer::click(QDialogButtonBox::Ok, [](QWidget* dialog) {
            qobject_cast<QColorDialog*>(dialog)->setCurrentColor(QColor(0x12, 0x34, 0x56, 0x78));
        }));
        more->trigger();
        QVERIFY(answer.answered());
        QCOMPARE(menu.getColor(), QColor(0x12, 0x34, 0x56, 0x78));
    }
};

TZ_REGISTER_TEST(TestColorWidgets)
#include "TestColorWidgets.moc"
