#include "TestRegistry.h"

#include "widgets/TZColorSchemeComboBox.h"

#include "symbology/TEColorRamp.h"
#include "symbology/TEColorRampCatalog.h"

#include <QSignalSpy>

using namespace TZObjects;

class TestColorSchemeComboBox : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsEveryRampOfTheCatalogUnderItsGroup()
    {
        TZColorSchemeComboBox combo;
        TEColorRampCatalog* catalog = TEColorRampCatalog::Instance();
        int ramps = 0;
        for (const TEString& group : catalog->groups())
            ramps += int(catalog->ramps(group).size());
        QCOMPARE(combo.count(), ramps + int(catalog->groups().size()));
        QVERIFY(combo.currentColorRamp());
        // Group headers cannot be picked by the user.
        QCOMPARE(combo.itemText(0), catalog->groups().front().toQString());
        QVERIFY(!(combo.model()->flags(combo.model()->index(0, 0)) & Qt::ItemIsEnabled));
    }

    void defaultGroupSelectsTheNamedRamp_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("expectedName");
        QTest::newRow("graph default") << "Graph" << "Default" << 0 << "Default";
        QTest::newRow("dem default") << "DEM" << "Default" << 0 << "Default";
        QTest::newRow("dem by name") << "DEM" << "Grey" << 0 << "Grey";
        QTest::newRow("unknown name falls back to index") << "DEM" << "Nope" << 2 << "Bathymetry";
    }
    void defaultGroupSelectsTheNamedRamp()
    {
        QFETCH(QString, group);
        QFETCH(QString, name);
        QFETCH(int, index);
        QFETCH(QString, expectedName);
        TZColorSchemeComboBox combo;
        combo.setDefaultGroup(QStringLiteral("Perceptual"), QStringLiteral("magma"));
        QSignalSpy changed(&combo, &TZColorSchemeComboBox::currentRampChanged);
        combo.setDefaultGroup(group, name, index);
        TEColorRamp* ramp = combo.currentColorRamp();
        QVERIFY(ramp);
        QCOMPARE(ramp->getGroup().toQString(), group);
        QCOMPARE(ramp->getName().toQString(), expectedName);
        QCOMPARE(changed.count(), 1);
    }

    void unknownDefaultGroupKeepsTheChoice()
    {
        TZColorSchemeComboBox combo;
        combo.setDefaultGroup(QStringLiteral("Graph"), QStringLiteral("Pastel"));
        TEColorRamp* before = combo.currentColorRamp();
        combo.setDefaultGroup(QStringLiteral("No such group"), QStringLiteral("Default"));
        combo.setDefaultGroup(QStringLiteral("Graph"), QStringLiteral("Nope"), 99);
        QCOMPARE(combo.currentColorRamp(), before);
    }

    void setColorRampFindsACatalogRampOrListsACopy()
    {
        TZColorSchemeComboBox combo;
        TERefPtr<TEColorRamp> viridis = TEColorRampCatalog::Instance()->find(TEString(L"Perceptual"), TEString(L"viridis"));
        QVERIFY(viridis);
        const int rows = combo.count();
        TERefPtr<TEColorRamp> saved = viridis->clone();
        combo.setColorRamp(saved.get());
        QCOMPARE(combo.count(), rows);
        QCOMPARE(combo.currentColorRamp(), viridis.get());

        TERefPtr<TEColorRamp> custom = viridis->clone();
        custom->setGroup(TEString(L"Project"));
        custom->setName(TEString(L"Mine"));
        combo.setColorRamp(custom.get());
        QCOMPARE(combo.count(), rows + 2);
        QCOMPARE(combo.currentIndex(), 1);
        QVERIFY(combo.currentColorRamp() != custom.get());
        QCOMPARE(combo.currentColorRamp()->getName().toQString(), QStringLiteral("Mine"));

        // A second foreign ramp replaces the first one instead of piling up.
        custom->setName(TEString(L"Mine 2"));
        combo.setColorRamp(custom.get());
        QCOMPARE(combo.count(), rows + 2);
        QCOMPARE(combo.currentColorRamp()->getName().toQString(), QStringLiteral("Mine 2"));
    }
};

TZ_REGISTER_TEST(TestColorSchemeComboBox)
#include "TestColorSchemeComboBox.moc"
