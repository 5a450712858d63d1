#include "DataFixtures.h"
#include "TestRegistry.h"

#include "data/TEFeatureTable.h"
#include "data/TEMemoryFeatureLayer.h"

#include <QTemporaryDir>

using namespace TZObjects;
using DataFixtures::Field;
using DataFixtures::Row;

namespace {

// "value=count" pairs in order.
QStringList describe(const std::vector<TEFeatureTable::ValueCount>& counts)
{
    QStringList out;
    for (const auto& entry : counts)
        out << QStringLiteral("%1=%2").arg(entry.value.toQString()).arg(entry.count);
    return out;
}

QStringList describe(const std::vector<TEString>& values)
{
    QStringList out;
    for (const TEString& value : values)
        out << value.toQString();
    return out;
}

// What a plain cursor scan sees: the reference every collection must match.
QStringList cursorCounts(const TEFeatureLayer& layer, const QString& field, const TEQueryFilter& filter)
{
    QStringList order;
    QHash<QString, int> counts;
    TERefPtr<TEFeatureCursor> cursor = layer.Search(filter);
    while (TERefPtr<TEFeature> feature = cursor->NextFeature()) {
        const QString text = feature->GetValue(TEString(field)).ToString().toQString();
        if (counts[text]++ == 0)
            order << text;
    }
    QStringList out;
    for (const QString& text : order)
        out << QStringLiteral("%1=%2").arg(text).arg(counts[text]);
    return out;
}

const std::vector<Field> kFields = {{QStringLiteral("kind"), OFTString},
                                    {QStringLiteral("code"), OFTInteger64},
                                    {QStringLiteral("score"), OFTReal}};

// Values met in the order forest, null, lake, "", forest, ... so that
// first-met order differs from sorted order, nulls and empty strings mix,
// and a real field holds values whose texts need the shortest form.
std::vector<Row> sampleRows()
{
    const char* kinds[] = {"forest", nullptr, "lake", "", "forest", "urban", "lake", "forest", "", "Forest"};
    std::vector<Row> rows;
    for (int i = 0; i < 10; ++i) {
        Row row;
        row.wkt = QStringLiteral("POINT (%1 %2)").arg(i).arg(i * 2);
        row.values.push_back(kinds[i] ? TEVariant(kinds[i]) : TEVariant());
        row.values.push_back(i % 3 == 0 ? TEVariant() : TEVariant(i % 4));
        row.values.push_back(TEVariant(i % 2 ? 0.1 * i : 2.5));
        rows.push_back(row);
    }
    return rows;
}

} // namespace

class TestValueCollection : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mGpkg = mDir.filePath(QStringLiteral("values.gpkg"));
        QCOMPARE(DataFixtures::writeVector(mGpkg, "GPKG", QStringLiteral("values"), wkbPoint, kFields, sampleRows()),
                 QString());
        mShp = mDir.filePath(QStringLiteral("values.shp"));
        QCOMPARE(DataFixtures::writeVector(mShp, "ESRI Shapefile", QStringLiteral("values"), wkbPoint, kFields,
                                           sampleRows()),
                 QString());
    }

    void countsFollowFirstMetOrderAndMergeNullWithEmpty()
    {
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(mGpkg);
        QVERIFY(layer);
        std::vector<TEFeatureTable::ValueCount> counts;
        QString error;
        QVERIFY2(layer->GetDatasource()->GetValueCounts(TEString(L"kind"), counts, &error), qPrintable(error));
        QCOMPARE(describe(counts), QStringList({"forest=3", "=3", "lake=2", "urban=1", "Forest=1"}));
    }

    void collectionsEqualCursorScan_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("where");
        for (const char* source : {"gpkg", "shp"}) {
            for (const char* field : {"kind", "code", "score", "FID"}) {
                QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(source, field)))
                    << source << field << QString();
                QTest::newRow(qPrintable(QStringLiteral("%1 %2 filtered").arg(source, field)))
                    << source << field << QStringLiteral("code > 0 OR kind = 'lake'");
            }
        }
    }
    void collectionsEqualCursorScan()
    {
        QFETCH(QString, source);
        QFETCH(QString, field);
        QFETCH(QString, where);
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(source == QLatin1String("gpkg") ? mGpkg : mShp);
        QVERIFY(layer);
        TEQueryFilter filter{TEString(where)};
        layer->SetQueryFilter(filter);
        const QStringList expected = cursorCounts(*layer, field, filter);
        QVERIFY(!expected.isEmpty());

        for (bool pushDown : {true, false}) {
            TERefPtr<TEFeatureTable> table = layer->GetDatasource();
            table->SetPushDownEnabled(pushDown);
            std::vector<TEFeatureTable::ValueCount> counts;
            QString error;
            QVERIFY2(table->GetValueCounts(TEString(field), counts, &error), qPrintable(error));
            QCOMPARE(describe(counts), expected);

            std::vector<TEString> values;
            QVERIFY2(table->GetDistinctValues(TEString(field), values, &error), qPrintable(error));
            QStringList expectedValues;
            for (const QString& entry : expected)
                expectedValues << entry.left(entry.lastIndexOf(QLatin1Char('=')));
            QStringList got = describe(values);
            got.sort();
            expectedValues.sort();
            QCOMPARE(got, expectedValues);
        }
    }

    void pushDownOnlyWhereTextsAreExact()
    {
        TERefPtr<TEFeatureTable> gpkg = TEFeatureLayer::Open(mGpkg)->GetDatasource();
        QVERIFY(gpkg->CanPushDown(TEString(L"kind")));
        QVERIFY(gpkg->CanPushDown(TEString(L"code")));
        QVERIFY(!gpkg->CanPushDown(TEString(L"score")));
        QVERIFY(!TEFeatureLayer::Open(mShp)->GetDatasource()->CanPushDown(TEString(L"kind")));
    }

    void filterRestrictsValues()
    {
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(mGpkg);
        std::vector<TEFeatureTable::ValueCount> counts;
        QVERIFY(layer->GetDatasource()->GetValueCounts(TEString(L"kind"), TEQueryFilter(TEString(L"code = 1")), counts));
        QCOMPARE(describe(counts), QStringList({"=1", "urban=1"}));

        TEQueryFilter box;
        box.SetSpatialRect(QRectF(QPointF(1.5, 0), QPointF(4.5, 100)));
        QVERIFY(layer->GetDatasource()->GetValueCounts(TEString(L"kind"), box, counts));
        QCOMPARE(describe(counts), QStringList({"lake=1", "=1", "forest=1"}));
    }

    void errorsForUnknownFieldsAndBadFilters()
    {
        TERefPtr<TEFeatureTable> table = TEFeatureLayer::Open(mGpkg)->GetDatasource();
        std::vector<TEString> values;
        QString error;
        QVERIFY(!table->GetDistinctValues(TEString(L"nope"), TEQueryFilter(), values, &error));
        QVERIFY(error.contains(QLatin1String("nope")));
        error.clear();
        QVERIFY(!table->GetDistinctValues(TEString(L"GEOMETRY"), TEQueryFilter(), values, &error));
        QVERIFY(!error.isEmpty());
        error.clear();
        QVERIFY(!table->GetDistinctValues(TEString(L"kind"), TEQueryFilter(TEString(L"kind = = 1")), values, &error));
        QVERIFY(!error.isEmpty());
    }

    void memoryLayerScansTheSame()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
            QStringLiteral("m"), TELayer::LT_Point,
            {{QStringLiteral("kind"), TEField::FT_String}, {QStringLiteral("code"), TEField::FT_Integer}});
        for (const Row& row : sampleRows())
            QVERIFY(layer->AppendFeature(row.wkt, {row.values[0], row.values[1]}) >= 0);
        std::vector<TEFeatureTable::ValueCount> counts;
        QVERIFY(layer->GetDatasource()->GetValueCounts(TEString(L"kind"), counts));
        QCOMPARE(describe(counts), QStringList({"forest=3", "=3", "lake=2", "urban=1", "Forest=1"}));
        layer->SetQueryFilter(TEQueryFilter(TEString(L"kind ILIKE 'f%'")));
        std::vector<TEString> values;
        QVERIFY(layer->GetDatasource()->GetDistinctValues(TEString(L"kind"), values));
        QCOMPARE(describe(values), QStringList({"forest", "Forest"}));
    }

private:
    QTemporaryDir mDir;
    QString mGpkg;
    QString mShp;
};

TZ_REGISTER_TEST(TestValueCollection)
#include "TestValueCollection.moc"
