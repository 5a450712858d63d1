#include "FourColorFixtures.h"
#include "FourColorReference.h"
#include "TestRegistry.h"

#include "TZFourColorJob.h"

#include "data/TEGeometryRelationalOperator.h"

#include <random>

using namespace TZObjects;

namespace {

using Polygons = std::vector<TERefPtr<TEGeometry>>;

std::vector<TEColor> paletteOf(int k)
{
    std::vector<TEColor> palette;
    for (int i = 0; i < k; ++i)
        palette.emplace_back(i * 20, 255 - i * 20, 7 * i);
    return palette;
}

struct FastRun
{
    TZFourColorJob::Result result;
    std::vector<int> colors;
    std::vector<std::vector<int>> neighbours;
};

FastRun runFast(const Polygons& polygons, int k)
{
    TZFourColorJob job(paletteOf(k));
    int id = 0;
    for (const TERefPtr<TEGeometry>& polygon : polygons)
        job.addPolygon(id++, polygon.get());
    FastRun run;
    run.result = job.buildGraph();
    if (run.result == TZFourColorJob::Result::Coloured)
        run.result = job.colour();
    run.colors = job.colors();
    for (int p = 0; p < job.featureCount(); ++p)
        run.neighbours.push_back(job.neighbours(p));
    return run;
}

// Positions of coloured neighbours that share a colour, as "a-b" texts.
QStringList clashes(const std::vector<int>& colors, const std::vector<std::vector<int>>& neighbours)
{
    QStringList found;
    for (std::size_t a = 0; a < neighbours.size(); ++a) {
        for (int b : neighbours[a]) {
            if (colors[a] >= 0 && colors[a] == colors[std::size_t(b)])
                found << QStringLiteral("%1-%2").arg(a).arg(b);
        }
    }
    return found;
}

QString listText(const std::vector<int>& values)
{
    QStringList texts;
    for (int v : values)
        texts << QString::number(v);
    return texts.join(QLatin1Char(' '));
}

} // namespace

// The fast colouring job against the literal reference, and the colours of
// small layouts whose answer is known by hand.
class TestFourColorJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fastJobMatchesTheReferenceOnMixedScenes_data()
    {
        QTest::addColumn<int>("k");
        QTest::addColumn<unsigned>("seed");
        QTest::addColumn<int>("cells");
        for (int k : {4, 5, 7}) {
            for (unsigned seed : {11u, 23u, 37u})
                QTest::addRow("k=%d seed=%u", k, seed) << k << seed << 170;
        }
    }

    void fastJobMatchesTheReferenceOnMixedScenes()
    {
        QFETCH(int, k);
        QFETCH(unsigned, seed);
        QFETCH(int, cells);
        const Polygons polygons = FourColorFixtures::mixedScene(seed, cells);
        QVERIFY(polygons.size() > std::size_t(cells));
        for (const TERefPtr<TEGeometry>& polygon : polygons)
            QVERIFY(polygon);

        const FourColorReference::Result reference = FourColorReference::colour(polygons, k);
        const FastRun fast = runFast(polygons, k);

        QCOMPARE(fast.neighbours, reference.neighbours);
        QCOMPARE(fast.result == TZFourColorJob::Result::Failed, reference.failed);
        if (!reference.failed)
            QCOMPARE(fast.result, TZFourColorJob::Result::Coloured);
        QCOMPARE(listText(fast.colors), listText(reference.colors));
        QCOMPARE(clashes(fast.colors, fast.neighbours), QStringList());
    }

    // Layouts that need the repair step with four colours: squares meeting
    // at corners (the repairs go round until the limit), and copies of the
    // repair gadget, alone or joined to the squares, in shuffled order (each
    // copy repaired once, then coloured, then the rescan finds the next).
    void repairsGiveTheSameColoursAsTheReference_data()
    {
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("gadgets");
        QTest::addColumn<unsigned>("seed");
        QTest::addColumn<bool>("failed");
        QTest::newRow("6x6 squares shuffled") << 6 << 6 << 0 << 5u << true;
        QTest::newRow("12x4 squares in order") << 12 << 4 << 0 << 0u << true;
        QTest::newRow("8 gadgets in order") << 0 << 0 << 8 << 0u << false;
        QTest::newRow("8 gadgets shuffled") << 0 << 0 << 8 << 3u << false;
        QTest::newRow("20 gadgets shuffled") << 0 << 0 << 20 << 9u << false;
        QTest::newRow("gadgets and squares shuffled") << 3 << 3 << 12 << 4u << false;
    }

    void repairsGiveTheSameColoursAsTheReference()
    {
        QFETCH(int, columns);
        QFETCH(int, rows);
        QFETCH(int, gadgets);
        QFETCH(unsigned, seed);
        QFETCH(bool, failed);
        QStringList wkts;
        for (int i = 0; i < columns; ++i) {
            for (int j = 0; j < rows; ++j)
                wkts << FourColorFixtures::box(10 * i, 10 * j, 10 * i + 10, 10 * j + 10);
        }
        // Gadgets in a row, each touching the next through its L.
        for (int g = 0; g < gadgets; ++g)
            wkts << FourColorFixtures::repairGadget(5 * g, -20 - 12 * (g % 2));
        if (seed) {
            std::mt19937 random(seed);
            std::shuffle(wkts.begin(), wkts.end(), random);
        }
        const Polygons polygons = FourColorFixtures::fromWkt(wkts);
        const FourColorReference::Result reference = FourColorReference::colour(polygons, 4);
        QVERIFY2(reference.repairs > 0, "the layout no longer needs a repair");
        QCOMPARE(reference.failed, failed);
        const FastRun fast = runFast(polygons, 4);
        QCOMPARE(fast.result == TZFourColorJob::Result::Failed, reference.failed);
        QCOMPARE(listText(fast.colors), listText(reference.colors));
        QCOMPARE(clashes(fast.colors, fast.neighbours), QStringList());
    }

    void smallLayoutsGetKnownColours_data()
    {
        using FourColorFixtures::box;
        QTest::addColumn<QStringList>("wkts");
        QTest::addColumn<int>("k");
        QTest::addColumn<QString>("expected");
        QTest::newRow("one polygon") << QStringList{box(0, 0, 1, 1)} << 4 << "0";
        QTest::newRow("two neighbours, four colours") << QStringList{box(0, 0, 1, 1), box(1, 0, 2, 1)} << 4 << "0 3";
        QTest::newRow("two neighbours, five colours") << QStringList{box(0, 0, 1, 1), box(1, 0, 2, 1)} << 5 << "0 4";
        QTest::newRow("three in a row") << QStringList{box(0, 0, 1, 1), box(1, 0, 2, 1), box(2, 0, 3, 1)} << 4
                                        << "0 3 2";
        QTest::newRow("touching at a corner") << QStringList{box(0, 0, 1, 1), box(1, 1, 2, 2)} << 4 << "0 3";
        QTest::newRow("overlapping") << QStringList{box(0, 0, 2, 2), box(1, 1, 3, 3)} << 4 << "0 3";
        QTest::newRow("0.0005 apart") << QStringList{box(0, 0, 1, 1), box(1.0005, 0, 2, 1)} << 4 << "0 3";
        QTest::newRow("0.002 apart") << QStringList{box(0, 0, 1, 1), box(1.002, 0, 2, 1)} << 4 << "0 0";
        // Groups are seeded at their lowest uncoloured position.
        QTest::newRow("two groups interleaved")
            << QStringList{box(0, 0, 1, 1), box(10, 0, 11, 1), box(1, 0, 2, 1), box(11, 0, 12, 1)} << 4
            << "0 0 3 3";
        QTest::newRow("hole filled by a polygon")
            << QStringList{QStringLiteral("POLYGON((0 0,4 0,4 4,0 4,0 0),(1 1,3 1,3 3,1 3,1 1))"), box(1, 1, 3, 3)}
            << 4 << "0 3";
        QTest::newRow("island clear of its hole")
            << QStringList{QStringLiteral("POLYGON((0 0,4 0,4 4,0 4,0 0),(1 1,3 1,3 3,1 3,1 1))"),
                           box(1.5, 1.5, 2.5, 2.5)}
            << 4 << "0 0";
        QTest::newRow("repair frees the seed's colour") << FourColorFixtures::repairGadget(0, 0) << 4 << "2 3 2 1 0";
        QTest::newRow("zero-area ring on an edge")
            << QStringList{box(0, 0, 1, 1), QStringLiteral("POLYGON((0 1,0.5 1,1 1,0 1))")} << 4 << "0 3";
    }

    void smallLayoutsGetKnownColours()
    {
        QFETCH(QStringList, wkts);
        QFETCH(int, k);
        QFETCH(QString, expected);
        const Polygons polygons = FourColorFixtures::fromWkt(wkts);
        const FastRun fast = runFast(polygons, k);
        QCOMPARE(fast.result, TZFourColorJob::Result::Coloured);
        QCOMPARE(listText(fast.colors), expected);
        QCOMPARE(listText(FourColorReference::colour(polygons, k).colors), expected);
    }

    // Five polygons that all overlap need five colours: with four the job
    // fails after the 51st repair of one node and keeps what it coloured.
    void tooFewColoursFailWithAPartialColouring()
    {
        using FourColorFixtures::box;
        const Polygons polygons = FourColorFixtures::fromWkt(
            {box(0, 0, 10, 10), box(1, 1, 11, 11), box(2, 2, 12, 12), box(3, 3, 13, 13), box(4, 4, 14, 14)});
        const FourColorReference::Result reference = FourColorReference::colour(polygons, 4);
        QVERIFY(reference.failed);
        QCOMPARE(reference.mostRepairs, 51);
        const FastRun fast = runFast(polygons, 4);
        QCOMPARE(fast.result, TZFourColorJob::Result::Failed);
        QCOMPARE(listText(fast.colors), listText(reference.colors));
        QVERIFY(std::count(fast.colors.begin(), fast.colors.end(), -1) >= 1);
        QVERIFY(std::count(fast.colors.begin(), fast.colors.end(), -1) < 5);

        QCOMPARE(runFast(polygons, 5).result, TZFourColorJob::Result::Coloured);
    }

    // Any colour count the page allows costs no more than four.
    void manyColoursGiveAProperColouring()
    {
        const Polygons polygons = FourColorFixtures::mixedScene(3, 400);
        const FastRun fast = runFast(polygons, 99);
        QCOMPARE(fast.result, TZFourColorJob::Result::Coloured);
        QVERIFY(std::count(fast.colors.begin(), fast.colors.end(), -1) == 0);
        QCOMPARE(clashes(fast.colors, fast.neighbours), QStringList());
        // Seeds take 0, every other node the highest free colour.
        for (int c : fast.colors)
            QVERIFY2(c == 0 || c >= 99 - 9, qPrintable(QString::number(c)));
    }

    void cancelledJobStopsWithoutColours()
    {
        TZFourColorJob job(paletteOf(4));
        for (const TERefPtr<TEGeometry>& polygon : FourColorFixtures::mixedScene(1, 50))
            job.addPolygon(0, polygon.get());
        job.cancel();
        QCOMPARE(job.buildGraph(), TZFourColorJob::Result::Cancelled);
        QVERIFY(job.colorMap().empty());
    }

    // Reading a layer numbers its features in query order and maps colours
    // by feature id.
    void layerFeaturesAreColouredByTheirIds()
    {
        using FourColorFixtures::box;
        const Polygons polygons =
            FourColorFixtures::fromWkt({box(0, 0, 1, 1), box(5, 5, 6, 6), box(1, 0, 2, 1), QString()});
        TERefPtr<TEMemoryFeatureLayer> layer = FourColorFixtures::polygonLayer(polygons);
        QVERIFY(layer);
        TZFourColorJob job(paletteOf(4));
        QCOMPARE(job.run(layer.get()), TZFourColorJob::Result::Coloured);
        QCOMPARE(job.featureCount(), 4);
        QCOMPARE(listText(job.colors()), QStringLiteral("0 0 3 0"));

        std::vector<int> ids;
        TERefPtr<TEFeatureCursor> cursor = layer->Search(TEQueryFilter());
        while (TERefPtr<TEFeature> feature = cursor->NextFeature())
            ids.push_back(feature->GetId());
        QCOMPARE(ids.size(), std::size_t(4));
        const std::map<int, TEColor> colors = job.colorMap();
        QCOMPARE(colors.size(), std::size_t(4));
        QVERIFY(colors.at(ids[0]) == paletteOf(4)[0]);
        QVERIFY(colors.at(ids[2]) == paletteOf(4)[3]);
        QVERIFY(job.defaultStyle());
    }
};

TZ_REGISTER_TEST(TestFourColorJob)
#include "TestFourColorJob.moc"
