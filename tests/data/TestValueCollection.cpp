#include "DataFixtures.h"
#include "PostgisServer.h"
#include "TestRegistry.h"

#include "data/TEArrowBatchReader.h"
#include "data/TEFeatureTable.h"
#include "data/TEMemoryFeatureLayer.h"

#include <QTemporaryDir>

#include <algorithm>
#include <map>

#include <ogr_api.h>

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

// What a plain cursor scan sees, taken in FID order: the reference every
// collection must match. (A server table's scan gives rows in storage order,
// which an update changes; files give them in FID order anyway.)
QStringList cursorCounts(const TEFeatureLayer& layer, const QString& field, const TEQueryFilter& filter)
{
    std::map<int, QString> byFid;
    TERefPtr<TEFeatureCursor> cursor = layer.Search(filter);
    // A search that fails gives no values, which no expected list matches.
    if (!cursor)
        return {};
    while (TERefPtr<TEFeature> feature = cursor->NextFeature())
        byFid[feature->GetId()] = feature->GetValue(TEString(field)).ToString().toQString();
    QStringList order;
    QHash<QString, int> counts;
    for (const auto& entry : byFid) {
        if (counts[entry.second]++ == 0)
            order << entry.second;
    }
    QStringList out;
    for (const QString& text : order)
        out << QStringLiteral("%1=%2").arg(text).arg(counts[text]);
    return out;
}

const TEFeatureTable::Method kMethods[] = {TEFeatureTable::Method::Automatic, TEFeatureTable::Method::PushDown,
                                           TEFeatureTable::Method::SqliteRead, TEFeatureTable::Method::ArrowStream,
                                           TEFeatureTable::Method::Cursor};

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

TERefPtr<TEMemoryFeatureLayer> memoryLayer()
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("m"), TELayer::LT_Point,
        {{QStringLiteral("kind"), TEField::FT_String}, {QStringLiteral("code"), TEField::FT_Integer}});
    for (const Row& row : sampleRows())
        layer->AppendFeature(row.wkt, {row.values[0], row.values[1]});
    return layer;
}

TERefPtr<TEFeature> newFeature(const TEFeatureLayer& layer, const char* kind, int code)
{
    TERefPtr<TEFeature> feature = layer.CreateFeature();
    feature->SetValue(TEString(L"kind"), TEVariant(kind));
    feature->SetValue(TEString(L"code"), TEVariant(code));
    return feature;
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
        PostgisServer& server = PostgisServer::Shared();
        QVERIFY2(server.IsRunning(), qPrintable(server.Error()));
        QCOMPARE(DataFixtures::writeVector(server.GdalSource(), "PostgreSQL", QStringLiteral("values"), wkbPoint,
                                           kFields, sampleRows()),
                 QString());
    }

    // The sample layer from the named source: "gpkg", "shp" or "postgis".
    TERefPtr<TEFeatureLayer> openSample(const QString& source) const
    {
        if (source == QLatin1String("postgis"))
            return TEFeatureLayer::Open(PostgisServer::Shared().GdalSource(), QStringLiteral("values"));
        return TEFeatureLayer::Open(source == QLatin1String("gpkg") ? mGpkg : mShp);
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
        for (const char* source : {"gpkg", "shp", "postgis"}) {
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
        TERefPtr<TEFeatureLayer> layer = openSample(source);
        QVERIFY(layer);
        TEQueryFilter filter{TEString(where)};
        layer->SetQueryFilter(filter);
        const QStringList expected = cursorCounts(*layer, field, filter);
        QVERIFY(!expected.isEmpty());

        QStringList expectedValues;
        for (const QString& entry : expected)
            expectedValues << entry.left(entry.lastIndexOf(QLatin1Char('=')));
        for (TEFeatureTable::Method method : kMethods) {
            TERefPtr<TEFeatureTable> table = layer->GetDatasource();
            table->SetMethod(method);
            std::vector<TEFeatureTable::ValueCount> counts;
            QString error;
            QVERIFY2(table->GetValueCounts(TEString(field), counts, &error), qPrintable(error));
            QCOMPARE(describe(counts), expected);
            // GeoPackage strings and integers are read by each method itself.
            if (source == QLatin1String("gpkg") && (field == QLatin1String("kind") || field == QLatin1String("code"))
                && method != TEFeatureTable::Method::Automatic)
                QCOMPARE(int(table->GetLastMethod()), int(method));
            // The server groups and counts strings and integers itself.
            if (source == QLatin1String("postgis") && (field == QLatin1String("kind") || field == QLatin1String("code"))
                && (method == TEFeatureTable::Method::Automatic || method == TEFeatureTable::Method::PushDown))
                QCOMPARE(int(table->GetLastMethod()), int(TEFeatureTable::Method::PushDown));

            std::vector<TEString> values;
            QVERIFY2(table->GetDistinctValues(TEString(field), values, &error), qPrintable(error));
            QCOMPARE(describe(values), expectedValues);
        }
    }

    // The batch reader hands out every batch of a stream once, in order,
    // whether it reads ahead on its own thread or not, and lets go of the
    // stream cleanly when its caller stops early.
    void arrowBatchReaderKeepsOrder_data()
    {
        QTest::addColumn<int>("batchSize");
        QTest::addColumn<int>("batchesWanted");
        QTest::newRow("one short batch") << 100 << 99;
        QTest::newRow("read ahead to the end") << 3 << 99;
        QTest::newRow("batches fill exactly") << 5 << 99;
        QTest::newRow("caller stops after one") << 3 << 1;
        QTest::newRow("caller stops after two") << 2 << 2;
    }
    void arrowBatchReaderKeepsOrder()
    {
        QFETCH(int, batchSize);
        QFETCH(int, batchesWanted);
        GDALDatasetH dataset = GDALOpenEx(mGpkg.toUtf8().constData(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr);
        QVERIFY(dataset);
        OGRLayerH layer = GDALDatasetGetLayer(dataset, 0);
        const QByteArray limit = "MAX_FEATURES_IN_BATCH=" + QByteArray::number(batchSize);
        char* options[] = {const_cast<char*>("INCLUDE_FID=YES"), const_cast<char*>(limit.constData()), nullptr};
        ArrowArrayStream stream{};
        QVERIFY(OGR_L_GetArrowStream(layer, &stream, options));
        QList<long long> fids;
        int batches = 0;
        {
            TEArrowBatchReader reader(stream, batchSize);
            ArrowArray batch{};
            while (batches < batchesWanted && reader.Next(batch)) {
                ++batches;
                QVERIFY(batch.length <= batchSize);
                // The FID is the first column of the stream.
                const ArrowArray* column = batch.children[0];
                for (int64_t row = 0; row < batch.length; ++row)
                    fids << static_cast<const int64_t*>(column->buffers[1])[column->offset + row];
                batch.release(&batch);
            }
            QVERIFY(!reader.Failed());
        }
        stream.release(&stream);
        GDALClose(dataset);

        const int rows = int(sampleRows().size());
        const int expectedBatches = std::min(batchesWanted, (rows + batchSize - 1) / batchSize);
        QCOMPARE(batches, expectedBatches);
        QList<long long> expected;
        for (int i = 1; i <= std::min(rows, batches * batchSize); ++i)
            expected << i;
        QCOMPARE(fids, expected);
    }

    // Unsaved adds, changes and deletes count as if saved: every reading
    // method gives, before the save, what a plain scan gives after it.
    void collectionsSeeTheEditBuffer_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("where");
        for (const char* source : {"gpkg", "shp", "memory", "postgis"}) {
            for (const char* field : {"kind", "code"}) {
                QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(source, field))) << source << field << QString();
                QTest::newRow(qPrintable(QStringLiteral("%1 %2 filtered").arg(source, field)))
                    << source << field << QStringLiteral("code > 0");
            }
        }
    }
    void collectionsSeeTheEditBuffer()
    {
        QFETCH(QString, source);
        QFETCH(QString, field);
        QFETCH(QString, where);
        QTemporaryDir dir;
        TERefPtr<TEFeatureLayer> layer;
        if (source == QLatin1String("memory")) {
            layer = memoryLayer();
        } else if (source == QLatin1String("postgis")) {
            // A table of its own per case: the edits are saved.
            const QString table = QStringLiteral("edited_%1%2").arg(field, where.isEmpty() ? "" : "_filtered");
            const QString server = PostgisServer::Shared().GdalSource();
            QCOMPARE(DataFixtures::writeVector(server, "PostgreSQL", table, wkbPoint, kFields, sampleRows()), QString());
            layer = TEFeatureLayer::Open(server, table);
        } else {
            const QString path = dir.filePath(QStringLiteral("edited.") + source);
            QCOMPARE(DataFixtures::writeVector(path, source == QLatin1String("gpkg") ? "GPKG" : "ESRI Shapefile",
                                               QStringLiteral("values"), wkbPoint, kFields, sampleRows()),
                     QString());
            layer = TEFeatureLayer::Open(path);
        }
        QVERIFY(layer);
        const TEQueryFilter filter{TEString(where)};
        const int firstFid = layer->Search(TEQueryFilter())->NextFeature()->GetId();

        // A new value and one more of an old value; the first feature
        // deleted; a feature early in the layer changed to a new value and
        // another changed so that it passes the filter only now.
        layer->AddFeature(newFeature(*layer, "marsh", 3));
        layer->AddFeature(newFeature(*layer, "lake", 2));
        QVERIFY(layer->DeleteFeature(firstFid));
        TERefPtr<TEFeature> changed = layer->Search(TEQueryFilter(TEString(L"kind = 'lake'")))->NextFeature();
        changed->SetValue(TEString(L"kind"), TEVariant("heath"));
        changed->SetValue(TEString(L"code"), TEVariant(7));
        QVERIFY(layer->UpdateFeature(changed));
        TERefPtr<TEFeature> zero = layer->Search(TEQueryFilter(TEString(L"code IS NULL AND kind = 'lake'")))->NextFeature();
        QVERIFY(zero && zero->GetId() != firstFid);
        zero->SetValue(TEString(L"code"), TEVariant(5));
        QVERIFY(layer->UpdateFeature(zero));
        QVERIFY(layer->HasBeEdited());

        std::map<TEFeatureTable::Method, QStringList> before;
        for (TEFeatureTable::Method method : kMethods) {
            TERefPtr<TEFeatureTable> table = layer->GetDatasource();
            table->SetMethod(method);
            std::vector<TEFeatureTable::ValueCount> counts;
            QString error;
            QVERIFY2(table->GetValueCounts(TEString(field), filter, counts, &error), qPrintable(error));
            before[method] = describe(counts);
            if (source == QLatin1String("gpkg") && method != TEFeatureTable::Method::Automatic)
                QCOMPARE(int(table->GetLastMethod()), int(method));
            std::vector<TEString> values;
            QVERIFY2(table->GetDistinctValues(TEString(field), filter, values, &error), qPrintable(error));
            QCOMPARE(values.size(), counts.size());
        }

        QString error;
        QVERIFY2(layer->SaveEdits(&error), qPrintable(error));
        const QStringList saved = cursorCounts(*layer, field, filter);
        QVERIFY(saved.join(QLatin1Char(' ')).contains(field == QLatin1String("kind") ? "heath" : "7"));
        for (TEFeatureTable::Method method : kMethods)
            QCOMPARE(before[method], saved);
    }

    // Thousands of distinct values: the counting table grows many times
    // over and must still give each value its count in first-met order.
    void manyDistinctValuesKeepCountsAndOrder()
    {
        std::vector<Row> rows;
        for (int i = 0; i < 6000; ++i) {
            Row row;
            row.wkt = QStringLiteral("POINT (%1 0)").arg(i);
            // Short keys and keys longer than the counting table keeps in place.
            const QString text = (i % 3 ? QStringLiteral("v%1") : QStringLiteral("a longer value, number %1"))
                                     .arg((i * 7919) % 4001);
            row.values = {TEVariant(text.toUtf8().constData()),
                          TEVariant(i % 2500), TEVariant(0.5)};
            rows.push_back(row);
        }
        const QString path = mDir.filePath(QStringLiteral("many.gpkg"));
        QCOMPARE(DataFixtures::writeVector(path, "GPKG", QStringLiteral("many"), wkbPoint, kFields, rows), QString());
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path);
        QVERIFY(layer);
        for (const QString& field : {QStringLiteral("kind"), QStringLiteral("code")}) {
            const QStringList expected = cursorCounts(*layer, field, TEQueryFilter());
            QVERIFY(expected.size() >= 2500);
            for (TEFeatureTable::Method method : kMethods) {
                TERefPtr<TEFeatureTable> table = layer->GetDatasource();
                table->SetMethod(method);
                std::vector<TEFeatureTable::ValueCount> counts;
                QVERIFY(table->GetValueCounts(TEString(field), TEQueryFilter(), counts));
                QCOMPARE(describe(counts), expected);
            }
        }
    }

    void pushDownOnlyWhereTextsAreExact()
    {
        TERefPtr<TEFeatureTable> gpkg = TEFeatureLayer::Open(mGpkg)->GetDatasource();
        QVERIFY(gpkg->CanPushDown(TEString(L"kind")));
        QVERIFY(gpkg->CanPushDown(TEString(L"code")));
        QVERIFY(!gpkg->CanPushDown(TEString(L"score")));
        QVERIFY(!TEFeatureLayer::Open(mShp)->GetDatasource()->CanPushDown(TEString(L"kind")));

        // A local file is read one column at a time, never grouped by its
        // own SQL: through the driver's fast Arrow stream where it has one,
        // else straight through SQLite. Reals are scanned by the cursor.
        using M = TEFeatureTable::Method;
        const M local = gpkg->MethodFor(TEString(L"kind"), TEQueryFilter());
        QVERIFY(local == M::ArrowStream || local == M::SqliteRead);
        QCOMPARE(int(gpkg->MethodFor(TEString(L"code"), TEQueryFilter(TEString(L"code > 1")))), int(local));
        QCOMPARE(int(gpkg->MethodFor(TEString(L"score"), TEQueryFilter())), int(M::Cursor));
        TEQueryFilter box;
        box.SetSpatialRect(QRectF(0, 0, 5, 5));
        QVERIFY(gpkg->MethodFor(TEString(L"kind"), box) != M::SqliteRead);
        QCOMPARE(int(TEFeatureLayer::Open(mShp)->GetDatasource()->MethodFor(TEString(L"kind"), TEQueryFilter())),
                 int(M::Cursor));
    }

    void sources_data()
    {
        QTest::addColumn<QString>("source");
        QTest::newRow("gpkg") << QStringLiteral("gpkg");
        QTest::newRow("postgis") << QStringLiteral("postgis");
    }

    void filterRestrictsValues_data() { sources_data(); }
    void filterRestrictsValues()
    {
        QFETCH(QString, source);
        TERefPtr<TEFeatureLayer> layer = openSample(source);
        QVERIFY(layer);
        std::vector<TEFeatureTable::ValueCount> counts;
        QVERIFY(layer->GetDatasource()->GetValueCounts(TEString(L"kind"), TEQueryFilter(TEString(L"code = 1")), counts));
        QCOMPARE(describe(counts), QStringList({"=1", "urban=1"}));

        TEQueryFilter box;
        box.SetSpatialRect(QRectF(QPointF(1.5, 0), QPointF(4.5, 100)));
        QVERIFY(layer->GetDatasource()->GetValueCounts(TEString(L"kind"), box, counts));
        QCOMPARE(describe(counts), QStringList({"lake=1", "=1", "forest=1"}));
    }

    void errorsForUnknownFieldsAndBadFilters_data() { sources_data(); }
    void errorsForUnknownFieldsAndBadFilters()
    {
        QFETCH(QString, source);
        TERefPtr<TEFeatureLayer> layer = openSample(source);
        QVERIFY(layer);
        TERefPtr<TEFeatureTable> table = layer->GetDatasource();
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

    // Server tables of every kind the panels meet: polygons with mixed-case,
    // reserved and quoted column names, a boolean, and values with quotes,
    // unicode and nulls; lines; a table without a primary key; a view. Every
    // reading method gives what a cursor scan gives.
    void serverTablesEqualCursorScan_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("where");
        const QString hostile = QStringLiteral("\"select\" = 'O''Brien' OR \"Owner Name\" IS NULL");
        for (const char* table : {"Parcels", "parcel_view", "nopk"}) {
            for (const char* field : {"select", "Owner Name", "odd\"name", "n", "open"}) {
                QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(table, field))) << table << field << QString();
                QTest::newRow(qPrintable(QStringLiteral("%1 %2 filtered").arg(table, field)))
                    << table << field << hostile;
            }
        }
        QTest::newRow("roads kind") << "roads" << "kind" << QString();
        QTest::newRow("roads kind filtered") << "roads" << "kind" << QStringLiteral("kind <> 'track'");
    }
    void serverTablesEqualCursorScan()
    {
        QFETCH(QString, table);
        QFETCH(QString, field);
        QFETCH(QString, where);
        QVERIFY(loadServerTables());
        QString error;
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(PostgisServer::Shared().GdalSource(), table, &error);
        QVERIFY2(layer, qPrintable(error));
        const TEQueryFilter filter{TEString(where)};
        const QStringList expected = cursorCounts(*layer, field, filter);
        QVERIFY(!expected.isEmpty());
        for (TEFeatureTable::Method method : kMethods) {
            TERefPtr<TEFeatureTable> table = layer->GetDatasource();
            table->SetMethod(method);
            std::vector<TEFeatureTable::ValueCount> counts;
            QVERIFY2(table->GetValueCounts(TEString(field), filter, counts, &error), qPrintable(error));
            QCOMPARE(describe(counts), expected);
        }
        if (table == QLatin1String("Parcels") && field == QLatin1String("select") && where.isEmpty())
            QCOMPARE(expected, QStringList({"O'Brien=2", "say \"hi\"=1", "=2", "Zürich=1", "東京=1", "a;b=1"}));
    }

    // A filter is the user's condition and nothing more: text that would
    // close the condition and run a statement of its own is refused by
    // every reading path before it reaches the server.
    void hostileFiltersNeverRunOnTheServer_data()
    {
        QTest::addColumn<QString>("where");
        QTest::newRow("statement") << QStringLiteral("n = 1); DROP TABLE \"Parcels\"; --");
        QTest::newRow("comment") << QStringLiteral("n = 1 /* */); DELETE FROM \"Parcels\" WHERE (1 = 1");
        QTest::newRow("stacked") << QStringLiteral("1 = 1; UPDATE \"Parcels\" SET n = 0");
        QTest::newRow("union") << QStringLiteral("n = 1) UNION SELECT usename, 1, 1 FROM pg_user --");
    }
    void hostileFiltersNeverRunOnTheServer()
    {
        QFETCH(QString, where);
        QVERIFY(loadServerTables());
        PostgisServer& server = PostgisServer::Shared();
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(server.GdalSource(), QStringLiteral("Parcels"));
        QVERIFY(layer);
        const TEQueryFilter filter{TEString(where)};
        QString error;
        QVERIFY(!layer->Search(filter, &error));
        QVERIFY(!error.isEmpty());
        for (TEFeatureTable::Method method : kMethods) {
            TERefPtr<TEFeatureTable> table = layer->GetDatasource();
            table->SetMethod(method);
            std::vector<TEFeatureTable::ValueCount> counts;
            error.clear();
            QVERIFY(!table->GetValueCounts(TEString(L"select"), filter, counts, &error));
            QVERIFY(!error.isEmpty());
        }
        QCOMPARE(server.Query(QStringLiteral("SELECT count(*) || ':' || sum(n) FROM \"Parcels\"")),
                 QStringLiteral("8:36"));
        // Refused on the client: the text never reached the server at all.
        QVERIFY2(!server.Log().contains(where), qPrintable(where));
    }

    // A server that goes away while the layer is open: every read fails
    // with a message saying so (never an empty result), and once the server
    // is back the same layer reads again, its stale connections dropped.
    void lostServerFailsReadsUntilItIsBack()
    {
        PostgisServer& server = PostgisServer::Shared();
        TERefPtr<TEFeatureLayer> layer = openSample(QStringLiteral("postgis"));
        QVERIFY(layer);
        const QStringList expected = cursorCounts(*layer, QStringLiteral("kind"), TEQueryFilter());
        std::vector<TEFeatureTable::ValueCount> counts;
        QVERIFY(layer->GetDatasource()->GetValueCounts(TEString(L"kind"), TEQueryFilter(), counts));
        QCOMPARE(describe(counts), expected);

        QVERIFY2(server.Pause(), qPrintable(server.Error()));
        // Twice: first on the pooled connections the server dropped, then
        // on new connections the absent server refuses.
        for (int attempt = 0; attempt < 2; ++attempt) {
            for (TEFeatureTable::Method method : {TEFeatureTable::Method::PushDown, TEFeatureTable::Method::Cursor}) {
                TERefPtr<TEFeatureTable> table = layer->GetDatasource();
                table->SetMethod(method);
                QString error;
                const bool read = table->GetValueCounts(TEString(L"kind"), TEQueryFilter(), counts, &error);
                if (read)
                    server.Resume();
                QVERIFY2(!read, qPrintable(describe(counts).join(QLatin1Char(' '))));
                QVERIFY2(error.contains(QLatin1String("PostgreSQL server")), qPrintable(error));
            }
        }
        QVERIFY2(server.Resume(), qPrintable(server.Error()));
        QCOMPARE(cursorCounts(*layer, QStringLiteral("kind"), TEQueryFilter()), expected);
        // Counts and extents, read through the layer's own connection, too.
        QCOMPARE(layer->GetFeatureCount(), 10);
        QRectF extent;
        QVERIFY(layer->GetExtent(extent));
        QCOMPARE(extent, QRectF(QPointF(0, 0), QPointF(9, 18)));
        TERefPtr<TEFeatureTable> table = layer->GetDatasource();
        QVERIFY(table->GetValueCounts(TEString(L"kind"), TEQueryFilter(), counts));
        QCOMPARE(describe(counts), expected);
        QCOMPARE(int(table->GetLastMethod()), int(TEFeatureTable::Method::PushDown));
    }

    void memoryLayerScansTheSame()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = memoryLayer();
        std::vector<TEFeatureTable::ValueCount> counts;
        QVERIFY(layer->GetDatasource()->GetValueCounts(TEString(L"kind"), counts));
        QCOMPARE(describe(counts), QStringList({"forest=3", "=3", "lake=2", "urban=1", "Forest=1"}));
        layer->SetQueryFilter(TEQueryFilter(TEString(L"kind ILIKE 'f%'")));
        std::vector<TEString> values;
        QVERIFY(layer->GetDatasource()->GetDistinctValues(TEString(L"kind"), values));
        QCOMPARE(describe(values), QStringList({"forest", "Forest"}));
    }

private:
    // Loads the server tables once.
    bool loadServerTables()
    {
        if (mServerTablesLoaded)
            return true;
        PostgisServer& server = PostgisServer::Shared();
        const std::vector<Field> fields = {{QStringLiteral("select"), OFTString},
                                           {QStringLiteral("Owner Name"), OFTString},
                                           {QStringLiteral("odd\"name"), OFTString},
                                           {QStringLiteral("n"), OFTInteger},
                                           {QStringLiteral("open"), OFTInteger, OFSTBoolean}};
        const char* selects[] = {"O'Brien", "say \"hi\"", nullptr, "Zürich", "O'Brien", "東京", "", "a;b"};
        const char* owners[] = {"Ann", nullptr, "Bé", "Ann", "Ann", nullptr, "Carl", "Bé"};
        std::vector<Row> parcels;
        for (int i = 0; i < 8; ++i) {
            const int x = i * 10;
            parcels.push_back({QStringLiteral("POLYGON ((%1 0,%2 0,%2 10,%1 10,%1 0))").arg(x).arg(x + 10),
                               {selects[i] ? TEVariant(selects[i]) : TEVariant(), owners[i] ? TEVariant(owners[i]) : TEVariant(),
                                TEVariant(i % 3 ? "x'y" : "--"), TEVariant(i + 1),
                                i == 5 ? TEVariant() : TEVariant(i % 3 ? 1 : 0)}});
        }
        std::vector<Row> roads;
        for (int i = 0; i < 6; ++i)
            roads.push_back({QStringLiteral("LINESTRING (%1 0,%1 50)").arg(i),
                             {TEVariant(i % 2 ? "track" : i % 3 ? "main" : "lane")}});
        const QString source = server.GdalSource();
        if (!DataFixtures::writeVector(source, "PostgreSQL", QStringLiteral("Parcels"), wkbPolygon, fields, parcels).isEmpty()
            || !DataFixtures::writeVector(source, "PostgreSQL", QStringLiteral("roads"), wkbLineString,
                                          {{QStringLiteral("kind"), OFTString}}, roads).isEmpty())
            return false;
        // A view over the table, and a copy of it without a primary key.
        if (!server.Exec(QStringLiteral("CREATE OR REPLACE VIEW parcel_view AS SELECT * FROM \"Parcels\" WHERE n <> 4"))
            || !server.Exec(QStringLiteral("DROP TABLE IF EXISTS nopk; CREATE TABLE nopk AS SELECT * FROM \"Parcels\"")))
            return false;
        mServerTablesLoaded = true;
        return true;
    }

    bool mServerTablesLoaded = false;
    QTemporaryDir mDir;
    QString mGpkg;
    QString mShp;
};

TZ_REGISTER_TEST(TestValueCollection)
#include "TestValueCollection.moc"
