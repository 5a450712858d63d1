#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZRenderPanelSingleSymbol.h"
#include "TZRenderPanelUniqueValues.h"
#include "TZRenderTranslation.h"

#include "data/TEMemoryFeatureLayer.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QMainWindow>
#include <QPushButton>

using namespace TZObjects;

namespace {

QString dockApplyText(QWidget* dock)
{
    auto* buttons = dock->findChild<QDialogButtonBox*>(QStringLiteral("mButtonBox"));
    return buttons ? buttons->button(QDialogButtonBox::Apply)->text() : QString();
}

} // namespace

// The translations compiled into TZRender: the one matching a locale is
// loaded (falling back from a country to its language) and replaces the one
// loaded before; the dock built by instance() comes up in the default
// locale's language.
class TestRenderTranslation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { TZRenderTranslation::remove(); }

    void installLoadsTheLocalesTranslationOrLeavesEnglish_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("applyText");
        QTest::addColumn<QString>("singleSymbolTitle");
        QTest::addColumn<QString>("uniqueValuesTitle");

        QTest::newRow("German") << "de_DE" << "tzrender_de.qm" << "Anwenden" << "Einzelsymbol" << "Eindeutige Werte";
        QTest::newRow("German of another country") << "de_CH" << "tzrender_de.qm" << "Anwenden" << "Einzelsymbol"
                                                   << "Eindeutige Werte";
        QTest::newRow("language without a translation") << "fr_FR" << "" << "Apply" << "Single symbol" << "Unique Values";
        QTest::newRow("English") << "en_GB" << "" << "Apply" << "Single symbol" << "Unique Values";
        QTest::newRow("C") << "C" << "" << "Apply" << "Single symbol" << "Unique Values";
    }
    void installLoadsTheLocalesTranslationOrLeavesEnglish()
    {
        QFETCH(QString, locale);
        QFETCH(QString, file);
        QFETCH(QString, applyText);
        QFETCH(QString, singleSymbolTitle);
        QFETCH(QString, uniqueValuesTitle);

        // Whatever was loaded before is replaced.
        QVERIFY(TZRenderTranslation::install(QLocale(QStringLiteral("de"))));
        QCOMPARE(TZRenderTranslation::install(QLocale(locale)), !file.isEmpty());
        QCOMPARE(TZRenderTranslation::installedFile(), file);

        QCOMPARE(QCoreApplication::translate("TZControlRender", "Apply"), applyText);
        QCOMPARE(TZRenderPanelSingleSymbol().title(), singleSymbolTitle);
        QCOMPARE(TZRenderPanelUniqueValues().title(), uniqueValuesTitle);
    }

    // The dock made by instance() loads the default locale's translation
    // before it builds itself. The unique values panel tells the outline
    // unit by its translated text: "Punkt" must still switch the width box
    // to whole points.
    void dockFromInstanceSpeaksTheDefaultLocalesLanguage()
    {
        const QLocale previous;
        QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
        {
            QMainWindow window;
            TZControlRender* dock = TZControlRender::instance(&window);
            QLocale::setDefault(previous);
            // Loading told the existing window of a language change.
            QTest::qWait(20);
            QCOMPARE(TZRenderTranslation::installedFile(), QStringLiteral("tzrender_de.qm"));
            QCOMPARE(dock->windowTitle(), QStringLiteral("Symbolisierung"));
            QCOMPARE(dockApplyText(dock), QStringLiteral("Anwenden"));

            const TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
                QStringLiteral("roads"), TELayer::LT_Line, {{QStringLiteral("name"), TEField::FT_String}});
            QVERIFY(layer);
            window.addDockWidget(Qt::RightDockWidgetArea, dock);
            window.show();
            dock->show();
            dock->setLayer(layer.get());
            dock->showLayerStyle();
            auto* styles = dock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
            QCOMPARE(styles->itemText(0), QStringLiteral("Nicht darstellen"));
            QVERIFY(styles->findText(QStringLiteral("Einzelsymbol")) > 0);
            const int uniqueValues = styles->findText(QStringLiteral("Eindeutige Werte"));
            QVERIFY(uniqueValues > 0);
            styles->setCurrentIndex(uniqueValues);

            auto* unit = dock->findChild<QComboBox*>(QStringLiteral("mComboBoxLineWidthUnit"));
            auto* width = dock->findChild<QDoubleSpinBox*>(QStringLiteral("mLineWidthBox"));
            QVERIFY(unit && width);
            QCOMPARE(unit->itemText(0), QStringLiteral("Punkt"));
            unit->setCurrentIndex(1);
            width->setValue(0.25);
            unit->setCurrentIndex(0);
            QCOMPARE(width->decimals(), 0);
            QCOMPARE(width->value(), 1.0);
        }
        // The dock went with its window; the next one is made anew.
        delete TZControlRender::instance(nullptr);
    }

    void dockFollowsATranslationLoadedOrRemovedLater()
    {
        QMainWindow window;
        TZControlRender* dock = TZControlRender::instance(&window);
        window.addDockWidget(Qt::RightDockWidgetArea, dock);
        window.show();
        QCOMPARE(dockApplyText(dock), QStringLiteral("Apply"));

        QVERIFY(TZRenderTranslation::install(QLocale(QStringLiteral("de_DE"))));
        QTest::qWait(20);
        QCOMPARE(dock->windowTitle(), QStringLiteral("Symbolisierung"));
        QCOMPARE(dockApplyText(dock), QStringLiteral("Anwenden"));

        TZRenderTranslation::remove();
        QTest::qWait(20);
        QCOMPARE(dock->windowTitle(), QStringLiteral("Symbol rendering"));
        QCOMPARE(dockApplyText(dock), QStringLiteral("Apply"));
    }
};

TZ_REGISTER_TEST(TestRenderTranslation)
#include "TestRenderTranslation.moc"
