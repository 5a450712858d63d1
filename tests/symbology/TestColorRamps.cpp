#include "TestRegistry.h"

#include "symbology/TEColorRampCatalog.h"
#include "symbology/TEEvenColorRamp.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace TZObjects;

namespace {

using RGB = rgb_color<float>;

const RGB kBlack(0, 0, 0);
const RGB kWhite(255, 255, 255);

TEEvenColorRamp threeColours()
{
    return TEEvenColorRamp({RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255)});
}

} // namespace

// Ramp splits, working copies, serialisation and the shipped catalog.
class TestColorRamps : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void splitGivesNColoursFromEndToEnd_data()
    {
        QTest::addColumn<int>("n");
        for (int n : {2, 3, 5, 7, 256})
            QTest::addRow("%d colours", n) << n;
    }

    void splitGivesNColoursFromEndToEnd()
    {
        QFETCH(int, n);
        const TEEvenColorRamp ramp = threeColours();
        const TEColorRampContainer colours = ramp.split(n);
        QCOMPARE(colours.getLevel(), n);
        QCOMPARE(colours.getColor(0), RGB(255, 0, 0));
        QCOMPARE(colours.getColor(n - 1), RGB(0, 0, 255));
    }

    void splitEdgeCases()
    {
        const TEEvenColorRamp ramp(kBlack, kWhite);
        const TEColorRampContainer one = ramp.split(1);
        QCOMPARE(one.getLevel(), 1);
        QCOMPARE(one.getColor(0), kBlack);
        QVERIFY(ramp.split(0).isEmpty());
        QVERIFY(ramp.split(-3).isEmpty());
        // The middle of three colours of a two-colour ramp lies half way.
        QCOMPARE(ramp.split(3).getColor(1), RGB(127.5f, 127.5f, 127.5f));
        QCOMPARE(threeColours().split(5).getColor(2), RGB(0, 255, 0));
        // A ramp without colours gives none, whatever is asked.
        QVERIFY(TEEvenColorRamp().split(4).isEmpty());
        QCOMPARE(TEEvenColorRamp({RGB(9, 9, 9)}).split(3).getColor(2), RGB(9, 9, 9));
    }

    void discreteRampsHandOutTheirOwnColours()
    {
        TEEvenColorRamp set({RGB(1, 0, 0), RGB(0, 2, 0), RGB(0, 0, 3), RGB(4, 4, 4)}, true);
        const TEColorRampContainer two = set.split(2);
        QCOMPARE(two.getColor(0), RGB(1, 0, 0));
        QCOMPARE(two.getColor(1), RGB(0, 2, 0));
        // More colours than it has: spread over the whole set.
        const TEColorRampContainer many = set.split(7);
        QCOMPARE(many.getLevel(), 7);
        QCOMPARE(many.getColor(6), RGB(4, 4, 4));
    }

    void workingCopyDividesIntoItsLevel()
    {
        TERefPtr<TEColorRamp> original(new TEEvenColorRamp(kBlack, kWhite));
        TERefPtr<TEColorRamp> copy = original->clone();
        QCOMPARE(copy->getLevel(), 2);
        copy->setLevel(5);
        QCOMPARE(copy->getLevel(), 5);
        QCOMPARE(copy->getColor(0), kBlack);
        QCOMPARE(copy->getColor(4), kWhite);
        QCOMPARE(copy->getColor(2), RGB(127.5f, 127.5f, 127.5f));
        QCOMPARE(copy->getColor(99), kWhite);
        QCOMPARE(original->getLevel(), 2);
        QCOMPARE(copy->getColor(2).toTEColor(), TEColor(128, 128, 128));
    }

    void copiesAndClonesAreIndependent()
    {
        TEEvenColorRamp ramp = threeColours();
        ramp.setName(TEString("RGB"));
        TEEvenColorRamp copy(ramp);
        TEEvenColorRamp assigned;
        assigned = ramp;
        TERefPtr<TEColorRamp> clone = ramp.clone();
        ramp.setSourceColor(0, kWhite);
        QCOMPARE(copy.getSourceColor(0), RGB(255, 0, 0));
        QCOMPARE(assigned.getSourceColor(0), RGB(255, 0, 0));
        QCOMPARE(clone.cast<TEEvenColorRamp>()->getSourceColor(0), RGB(255, 0, 0));
        QCOMPARE(clone->getName().toQString(), QString("RGB"));
        QCOMPARE(clone->RefCount(), 1);
    }

    void settingASourceColourPastTheEndExtendsTheRamp()
    {
        // The colour list rows of the raster panels are single-colour ramps.
        TEEvenColorRamp row;
        row.setSourceColor(1, RGB(10, 20, 30));
        QCOMPARE(row.getSourceColorCount(), 2);
        QCOMPARE(row.getSourceColor(1), RGB(10, 20, 30));
        QCOMPARE(row.split(4).getColor(2), RGB(10, 20, 30));
        QCOMPARE(row.getSourceColor(5), kBlack);
        QVERIFY(!row.removeSourceColor(2));
    }

    void containerEditsItsList()
    {
        TEColorRampContainer list;
        list.addColor(kBlack);
        list.addColor(kWhite);
        list.addColor(RGB(1, 2, 3));
        QVERIFY(list.setColor(1, RGB(4, 5, 6)));
        QVERIFY(!list.setColor(3, kBlack));
        QVERIFY(list.deleteColor(0));
        QVERIFY(!list.deleteColor(2));
        QCOMPARE(list.getLevel(), 2);
        QCOMPARE(list.getColor(0), RGB(4, 5, 6));
        QCOMPARE(list.getColor(1), RGB(1, 2, 3));
        list.deleteAll();
        QCOMPARE(list.getLevel(), 0);
    }

    void rampsSurviveJson()
    {
        TEEvenColorRamp ramp({RGB(0.5f, 1.25f, 2), RGB(250, 251, 252)}, true);
        ramp.setName(TEString("Mine"));
        ramp.setGroup(TEString("User"));
        ramp.setCategory(TEColorRamp::Diverging);
        ramp.setLevel(6);
        QJsonObject json;
        ramp.save(json);
        // Through text, as a saved render goes to disk.
        const QJsonObject reread = QJsonDocument::fromJson(QJsonDocument(json).toJson()).object();
        QString error;
        TERefPtr<TEColorRamp> reopened = TEColorRamp::FromJson(reread, &error);
        QVERIFY2(reopened, qPrintable(error));
        auto even = reopened.cast<TEEvenColorRamp>();
        QVERIFY(even);
        QCOMPARE(even->sourceColors(), ramp.sourceColors());
        QVERIFY(even->isDiscrete());
        QCOMPARE(even->getName().toQString(), QString("Mine"));
        QCOMPARE(even->getGroup().toQString(), QString("User"));
        QCOMPARE(even->category(), TEColorRamp::Diverging);
        QCOMPARE(even->getLevel(), 6);

        QVERIFY(!TEColorRamp::FromJson(QJsonObject{{"kind", "gradient"}}, &error));
        QVERIFY(!TEColorRamp::FromJson(QJsonObject{{"colors", QJsonArray{"#12"}}}, &error));
    }

    void catalogHoldsTheGroupsThePanelsAskFor()
    {
        TEColorRampCatalog* catalog = TEColorRampCatalog::Instance();
        QVERIFY2(catalog->loadError().isEmpty(), qPrintable(catalog->loadError()));
        const std::pair<const char*, const char*> wanted[] = {
            {"Graph", "Default"}, {"DEM", "Default"}, {"Default", "Range"}, {"Default", "Unique"},
            {"Unique", "Default"}, {"Sequential", "Blues"}, {"Diverging", "RdYlBu"},
            {"Qualitative", "Set1"}, {"Perceptual", "viridis"}, {"Perceptual", "magma"},
            {"Perceptual", "inferno"}, {"Perceptual", "plasma"}, {"Perceptual", "cividis"}};
        for (const auto& [group, name] : wanted) {
            TERefPtr<TEColorRamp> ramp = catalog->find(TEString(group), TEString(name));
            QVERIFY2(ramp && ramp->isValid(), group);
            QCOMPARE(ramp->getGroup().toQString(), QString(group));
        }
        QCOMPARE(catalog->groups().front().toQString(), QString("Graph"));
        QVERIFY(catalog->ramps(TEString("Sequential")).size() >= 18);
        QVERIFY(!catalog->find(TEString("Graph"), TEString("Nope")));
        QVERIFY(catalog->ramps(TEString("Nope")).empty());

        TERefPtr<TEColorRamp> viridis = catalog->find(TEString("Perceptual"), TEString("viridis"));
        QCOMPARE(viridis->split(2).getColor(0).toQColor().name(), QString("#440154"));
        QCOMPARE(viridis->split(2).getColor(1).toQColor().name(), QString("#fde725"));
        QCOMPARE(catalog->find(TEString("Qualitative"), TEString("Set1"))->category(), TEColorRamp::Qualitative);
        QVERIFY(catalog->find(TEString("Qualitative"), TEString("Set1"))->isDiscrete());
    }

    void catalogRefusesABrokenFile()
    {
        // A second catalog object is not reachable; the shared one must keep
        // its content when a bad file is offered.
        TEColorRampCatalog* catalog = TEColorRampCatalog::Instance();
        const size_t groups = catalog->groups().size();
        QString error;
        QVERIFY(!catalog->loadFromJson("{\"groups\":[{\"name\":\"X\",\"ramps\":[{\"colors\":[]}]}]}", &error));
        QVERIFY(error.contains("\"X\""));
        QVERIFY(!catalog->loadFromJson("not json", &error));
        QCOMPARE(catalog->groups().size(), groups);
    }
};

TZ_REGISTER_TEST(TestColorRamps)
#include "TestColorRamps.moc"
