#include "TestRegistry.h"

#include "renders/TEFileFunc.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"

#include <QJsonDocument>

using namespace TZObjects;

namespace {

QJsonObject parse(const QByteArray& text)
{
    return QJsonDocument::fromJson(text).object();
}

} // namespace

// Render files are outside input: a member of the wrong type or out of
// range refuses the render with a text naming it, never opens as something
// the user did not save.
class TestRenderInputChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void badMemberIsRefused_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("expected");
        // Every list a render or a raster render info reads.
        const char* const lists[][2] = {
            {"UniqueValues", "categories"},   {"UniqueValuesManyFields", "categories"},
            {"Rule-based", "rules"},          {"FourColorTheorem", "colorMap"},
            {"PieDiagram", "items"},          {"HistogramDiagram", "items"},
            {"GradingSymbolDiagram", "classes"},
        };
        for (const auto& list : lists) {
            QTest::newRow(qPrintable(QStringLiteral("%1 %2 as object").arg(list[0], list[1])))
                << QStringLiteral("{\"type\": \"%1\", \"%2\": {\"0\": 1}}").arg(list[0], list[1]).toUtf8()
                << QStringLiteral("\"%1\" must be a list").arg(list[1]);
        }
        const char* const infoLists[][2] = {
            {"Stretch", "colors"}, {"Stretch", "histogram"}, {"Class", "classes"},
            {"Unique", "values"},  {"Colormap", "colors"},
        };
        for (const auto& list : infoLists) {
            QTest::newRow(qPrintable(QStringLiteral("%1 info %2 as text").arg(list[0], list[1])))
                << QStringLiteral("{\"type\": \"SingleBandImage\", \"info\": {\"type\": \"%1\", \"%2\": \"red\"}}")
                       .arg(list[0], list[1]).toUtf8()
                << QStringLiteral("\"%1\" must be a list").arg(list[1]);
        }
        QTest::newRow("band 0") << QByteArray(R"({"type": "SingleBandImage", "band": 0})")
                                << QStringLiteral("\"band\" must be a whole number from 1 to 65535, not 0");
        QTest::newRow("band null") << QByteArray(R"({"type": "SingleBandImage", "band": null})")
                                   << QStringLiteral("not null");
        QTest::newRow("huge band") << QByteArray(R"({"type": "SingleBandImage", "band": 1e300})")
                                   << QStringLiteral("\"band\" must be a whole number");
        QTest::newRow("single mode 9") << QByteArray(R"({"type": "SingleBandImage", "mode": 9})")
                                       << QStringLiteral("\"mode\" must be a whole number from 1 to 4");
        QTest::newRow("alpha band -1") << QByteArray(R"({"type": "MultiBandImage", "alphaBand": -1})")
                                       << QStringLiteral("\"alphaBand\"");
        QTest::newRow("stretch type 7") << QByteArray(R"({"type": "MultiBandImage", "stretchType": 7})")
                                        << QStringLiteral("\"stretchType\"");
        QTest::newRow("no-data colour type as text")
            << QByteArray(R"({"type": "MultiBandImage", "nodataColorType": "yes"})")
            << QStringLiteral("\"nodataColorType\"");
    }
    void badMemberIsRefused()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, expected);
        const QJsonObject object = parse(json);
        QVERIFY(!object.isEmpty());
        TEString error;
        QVERIFY(!TEFileFunc::OpenRender(object, &error));
        QVERIFY2(error.toQString().contains(expected), qPrintable(error.toQString()));
    }

    // Bands are checked against the raster the render is given to.
    void bandsOutsideTheRaster_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<int>("bandCount");
        QTest::addColumn<QString>("expected"); // empty: the bands fit
        QTest::newRow("single band 1 of 1") << QByteArray(R"({"type": "SingleBandImage", "band": 1})") << 1 << QString();
        QTest::newRow("single band 4 of 3") << QByteArray(R"({"type": "SingleBandImage", "band": 4})") << 3
                                            << QStringLiteral("band 4 does not exist (the raster has 3)");
        QTest::newRow("rgb 1 2 3 of 3") << QByteArray(R"({"type": "MultiBandImage"})") << 3 << QString();
        QTest::newRow("rgb default on 1 band") << QByteArray(R"({"type": "MultiBandImage"})") << 1
                                               << QStringLiteral("green band 2 does not exist");
        // A channel switched off reads nothing, whatever its number.
        QTest::newRow("unused blue 9") << QByteArray(R"({"type": "MultiBandImage", "blueBand": 9, "useBlue": false})")
                                       << 3 << QString();
        QTest::newRow("used alpha 4 of 3") << QByteArray(R"({"type": "MultiBandImage", "useAlpha": true})") << 3
                                           << QStringLiteral("alpha band 4 does not exist");
        QTest::newRow("stretch band 5 of 4") << QByteArray(R"({"type": "MultiBandImage", "mode": 8, "stretchBand": 5})")
                                             << 4 << QStringLiteral("stretch band 5 does not exist");
        // The stretch mode reads one band only: the RGB bands do not matter.
        QTest::newRow("stretch of 1 band") << QByteArray(R"({"type": "MultiBandImage", "mode": 8, "stretchBand": 1})")
                                           << 1 << QString();
        QTest::newRow("raster without bands") << QByteArray(R"({"type": "SingleBandImage"})") << 0
                                              << QStringLiteral("band 1 does not exist");
    }
    void bandsOutsideTheRaster()
    {
        QFETCH(QByteArray, json);
        QFETCH(int, bandCount);
        QFETCH(QString, expected);
        TEString error;
        TERefPtr<TEImageRender> render = TEFileFunc::OpenImageRender(parse(json), &error);
        QVERIFY2(render, qPrintable(error.toQString()));
        TEString bandError;
        QCOMPARE(render->CheckBands(bandCount, &bandError), expected.isEmpty());
        QVERIFY2(bandError.toQString().contains(expected), qPrintable(bandError.toQString()));
    }
};

TZ_REGISTER_TEST(TestRenderInputChecks)
#include "TestRenderInputChecks.moc"
