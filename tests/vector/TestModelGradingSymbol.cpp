#include "GradingFixtures.h"
#include "MessageBoxWatch.h"
#include "ModalAnswer.h"
#include "TestRegistry.h"
#include "VectorFixtures.h"

#include "TZModelGradingSymbol.h"

#include "data/TEGdalSupport.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gdal.h>
#include <ogr_api.h>

#include <memory>

using namespace TZObjects;
using GradingFixtures::column;
using GradingFixtures::counts;

namespace {

unsigned int rowColor(const TZModelGradingSymbol& model, int row)
{
    return model.item(row).style ? model.item(row).style->GetColor().GetColor() : 0u;
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

} // namespace

class TestModelGradingSymbol : public QObject
{
    Q_OBJECT

    TERefPtr<TEEvenColorRamp> mRamp = VectorFixtures::redToBlue();

    // A model on the layer's "v" field, checked by the model tester.
    std::unique_ptr<TZModelGradingSymbol> makeModel(TEFeatureLayer* layer, int level)
    {
        auto model = std::make_unique<TZModelGradingSymbol>();
        new QAbstractItemModelTester(model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest, model.get());
        model->setup(layer, QStringLiteral("v"), mRamp.get(), level);
        return model;
    }

private Q_SLOTS:
    void classifyAllMakesEqualIntervalsEndingAtTheMaximum_data()
    {
        QTest::addColumn<QList<double>>("values");
        QTest::addColumn<int>("level");
        QTest::addColumn<QStringList>("ranges");
        QTest::addColumn<QList<int>>("classCounts");
        QTest::newRow("0..10 in 3") << QList<double>{0, 5, 10} << 3
                                    << QStringList{"0.00000,3.33333", "3.33333,6.66667", "6.66667,10.00000"}
                                    << QList<int>{1, 1, 1};
        // A value on a shared bound counts in both classes.
        QTest::newRow("shared bound") << QList<double>{0, 5, 10, 20} << 2
                                      << QStringList{"0.00000,10.00000", "10.00000,20.00000"} << QList<int>{3, 2};
        QTest::newRow("level 1") << QList<double>{4, -2, 9} << 1 << QStringList{"-2.00000,9.00000"}
                                 << QList<int>{3};
        QTest::newRow("all equal") << QList<double>{7, 7, 7} << 3
                                   << QStringList{"7.00000,7.00000", "7.00000,7.00000", "7.00000,7.00000"}
                                   << QList<int>{3, 3, 3};
        QTest::newRow("empty layer") << QList<double>{} << 2 << QStringList{"0.00000,0.00000", "0.00000,0.00000"}
                                     << QList<int>{0, 0};
        // Bounds are compared as written, with five decimals.
        QTest::newRow("bound shared at 0.2") << QList<double>{0.1, 0.2, 0.4} << 3
                                                   << QStringList{"0.10000,0.20000", "0.20000,0.30000", "0.30000,0.40000"}
                                                   << QList<int>{2, 1, 1};
    }
    void classifyAllMakesEqualIntervalsEndingAtTheMaximum()
    {
        QFETCH(QList<double>, values);
        QFETCH(int, level);
        QFETCH(QStringList, ranges);
        QFETCH(QList<int>, classCounts);
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Polygon, values);
        auto model = makeModel(layer.get(), level);
        QCOMPARE(model->rowCount(), 1);

        QVERIFY(model->classifyAll(nullptr));
        QCOMPARE(column(*model, 1), QStringList{TZModelGradingSymbol::AllOtherValues} + ranges);
        QCOMPARE(column(*model, 2), column(*model, 1));
        QCOMPARE(counts(*model).mid(1), classCounts);
        QCOMPARE(model->ranges(), ranges);
        // Classes run from the first ramp colour to the last.
        QCOMPARE(rowColor(*model, 1), 0xFFFF0000u);
        if (level > 1)
            QCOMPARE(rowColor(*model, level), 0xFF0000FFu);

        // A second update replaces the classes rather than adding to them.
        QVERIFY(model->classifyAll(nullptr));
        QCOMPARE(model->rowCount(), level + 1);
        QCOMPARE(int(model->values().size()), values.size());
    }

    // Update ends the last class at the maximum read; adding values ends it
    // at level intervals from the minimum, which rounding may put elsewhere.
    void lastClassEndsAtTheMaximumOnlyOnUpdate()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, {0, 7000000000000007.0});
        auto model = makeModel(layer.get(), 3);
        QVERIFY(model->classifyAll(nullptr));
        QCOMPARE(model->ranges().last(), QStringLiteral("4666666666666671.00000,7000000000000007.00000"));
        model->setup(layer.get(), QStringLiteral("v"), mRamp.get(), 3);
        QCOMPARE(model->computeRanges(nullptr).last(), QStringLiteral("4666666666666671.00000,7000000000000006.00000"));
    }

    // Unsaved features are counted but do not move the class bounds; deleted
    // ones are skipped. Every offered class that is already a row raises
    // that row's count.
    void computeRangesCountsTheEditBufferWithoutWidening()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, {0, 10});
        auto model = makeModel(layer.get(), 2);
        for (double v : {7.0, 100.0, 3.0}) {
            TERefPtr<TEFeature> feature = layer->CreateFeature();
            feature->SetValue(TEString(L"v"), TEVariant(v));
            layer->AddFeature(feature);
        }
        QVERIFY(layer->DeleteFeature(-3));  // the unsaved 3.0
        QCoreApplication::processEvents();

        QStringList ranges = model->computeRanges(nullptr);
        QCOMPARE(ranges, (QStringList{"0.00000,5.00000", "5.00000,10.00000"}));
        QCOMPARE(int(model->values().size()), 4);
        QCOMPARE(model->countInRange(ranges[1]), 2);

        model->addItem({nullptr, ranges[1], ranges[1], 5});
        QCOMPARE(model->computeRanges(nullptr), QStringList{"0.00000,5.00000"});
        QCOMPARE(model->item(1).count, 6);
    }

    void countsFollowFeaturesAddedAndDeleted()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, {0, 5, 10});
        auto model = makeModel(layer.get(), 2);
        QVERIFY(model->classifyAll(nullptr));
        QCOMPARE(counts(*model).mid(1), (QList<int>{2, 2}));

        TERefPtr<TEFeature> feature = layer->CreateFeature();
        feature->SetValue(TEString(L"v"), TEVariant(8.0));
        const int id = layer->AddFeature(feature);
        QTRY_COMPARE(counts(*model).mid(1), (QList<int>{2, 3}));
        QVERIFY(layer->DeleteFeature(id));
        QVERIFY(layer->DeleteFeature(0));
        QTRY_COMPARE(counts(*model).mid(1), (QList<int>{1, 2}));
    }

    // The reset's scan reads the layer once; a second reset reuses what it
    // read until the layer's data changes.
    void prepareRangesReusesValuesUntilTheLayerChanges()
    {
        QTemporaryDir folder;
        const TERefPtr<TEFeatureLayer> layer =
            VectorFixtures::makeGeoPackage(folder.path(), TELayer::LT_Point, {"a", "b", "c"});  // angle 0, 10, 20
        QVERIFY(layer);
        auto model = std::make_unique<TZModelGradingSymbol>();
        model->setup(layer.get(), QStringLiteral("angle"), mRamp.get(), 2);
        QVERIFY(model->prepareRanges(nullptr));
        QCOMPARE(model->ranges(), (QStringList{"0.00000,10.00000", "10.00000,20.00000"}));
        QCOMPARE(model->rowCount(), 1);

        // Written behind the layer's back: not seen while the layer is unchanged.
        GDALDatasetH dataset = GDALOpenEx((folder.path() + "/fixture.gpkg").toUtf8().constData(),
                                          GDAL_OF_VECTOR | GDAL_OF_UPDATE, nullptr, nullptr, nullptr);
        QVERIFY(dataset);
        GDALDatasetReleaseResultSet(dataset, GDALDatasetExecuteSQL(dataset, "UPDATE fixture SET angle = 40 WHERE angle = 20",
                                                                  nullptr, nullptr));
        GDALClose(dataset);
        QVERIFY(model->prepareRanges(nullptr));
        QCOMPARE(model->ranges().last(), QStringLiteral("10.00000,20.00000"));

        // An edit, even one discarded, makes the next reset read again.
        layer->DiscardEdits();
        QVERIFY(model->prepareRanges(nullptr));
        QCOMPARE(model->ranges().last(), QStringLiteral("20.00000,40.00000"));

        // Another field is read afresh.
        model->setup(layer.get(), QStringLiteral("FID"), mRamp.get(), 1);
        QVERIFY(model->prepareRanges(nullptr));
        QCOMPARE(model->ranges(), QStringList{"1.00000,3.00000"});
    }

    void exportWritesOneRangeALineAndImportReadsItBack()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("classes.txt");
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Polygon, {0, 5, 10});
        auto model = makeModel(layer.get(), 3);

        // With only the catch-all row there is nothing to write.
        ModalAnswer nothing("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        model->exportValues(nullptr);
        QVERIFY(nothing.answered());
        QCOMPARE(nothing.dialogText(), QStringLiteral("Please add the grading symbol item first!"));

        QVERIFY(model->classifyAll(nullptr));
        model->setData(model->index(2, 2), QStringLiteral("middle"));
        ModalAnswer done("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        QVERIFY(model->exportTo(path, nullptr));
        QCOMPARE(done.dialogTitle(), QStringLiteral("Information"));
        QCOMPARE(done.dialogText(), QStringLiteral("Export file successful!"));
        QCOMPARE(readFile(path), QByteArray("0.00000,3.33333\n3.33333,6.66667\n6.66667,10.00000\n"));

        auto other = makeModel(layer.get(), 3);
        QSignalSpy reset(other.get(), &QAbstractItemModel::modelReset);
        QVERIFY(other->importFrom(path, nullptr));
        QVERIFY(!reset.isEmpty());
        QCOMPARE(column(*other, 1), column(*model, 1));
        QCOMPARE(counts(*other), counts(*model));
        QCOMPARE(rowColor(*other, 3), 0xFF0000FFu);

        ModalAnswer failed("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        QVERIFY(!model->exportTo(folder.filePath("missing/classes.txt"), nullptr));
        QCOMPARE(failed.dialogText(), QStringLiteral("Export file failed!"));
    }

    void importRefusesMoreLinesThanLevels_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("as many as levels") << 3 << true;
        QTest::newRow("one more than levels") << 2 << false;
    }
    void importRefusesMoreLinesThanLevels()
    {
        QFETCH(int, level);
        QFETCH(bool, accepted);
        QTemporaryDir folder;
        const QString path = folder.filePath("classes.txt");
        writeFile(path, "0,1\n1,2\n2,3\n");
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, {0.5, 1, 2.5});
        auto model = makeModel(layer.get(), level);
        model->addItem({nullptr, "9,10", "kept", 0});

        const MessageBoxWatch boxes(QMessageBox::Ok);
        QCOMPARE(model->importFrom(path, nullptr), accepted);
        if (accepted) {
            QVERIFY(boxes.texts().isEmpty());
            QCOMPARE(column(*model, 1).mid(1), (QStringList{"0,1", "1,2", "2,3"}));
            QCOMPARE(counts(*model).mid(1), (QList<int>{2, 1, 1}));
        } else {
            QCOMPARE(boxes.texts(),
                     QStringList{"The number of currently obtained grading symbol items is greater than the level set!"});
            QCOMPARE(column(*model, 2).mid(1), QStringList{"kept"});
        }
    }

    // Whatever the file holds, import ends: lines become classes as they
    // are, and lines that are not two numbers count nothing.
    void importTakesOddLinesAsUncountedClasses_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("ranges");
        QTest::addColumn<QList<int>>("classCounts");
        QTest::newRow("nan") << QByteArray("nan,1\n0,1\n") << QStringList{"nan,1", "0,1"} << QList<int>{0, 2};
        QTest::newRow("single comma") << QByteArray(",\n") << QStringList{","} << QList<int>{0};
        QTest::newRow("three parts") << QByteArray("0,1,2\n") << QStringList{"0,1,2"} << QList<int>{0};
        QTest::newRow("empty line at the end") << QByteArray("0,1\n\n") << QStringList{"0,1", ""}
                                               << QList<int>{2, 0};
        QTest::newRow("overflow") << QByteArray("1e308,1e309\n") << QStringList{"1e308,1e309"} << QList<int>{0};
        QTest::newRow("no final line feed") << QByteArray("0,0.5") << QStringList{"0,0.5"} << QList<int>{1};
    }
    void importTakesOddLinesAsUncountedClasses()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, ranges);
        QFETCH(QList<int>, classCounts);
        QTemporaryDir folder;
        const QString path = folder.filePath("odd.txt");
        writeFile(path, content);
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, {0, 1, 7});
        auto model = makeModel(layer.get(), 12);
        QVERIFY(model->importFrom(path, nullptr));
        QCOMPARE(column(*model, 1).mid(1), ranges);
        QCOMPARE(counts(*model).mid(1), classCounts);
    }

    void importSurvivesGarbageAndHugeFiles()
    {
        QTemporaryDir folder;
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, {0, 1});
        auto model = makeModel(layer.get(), 31);

        // Random bytes, nulls included, in a handful of lines.
        QByteArray garbage;
        quint32 state = 12345;
        for (int i = 0; i < 4096; ++i) {
            state = state * 1103515245u + 12345u;
            const char byte = char(state >> 24);
            garbage.append(byte == '\n' ? '\0' : byte);
            if (i % 1024 == 1023)
                garbage.append('\n');
        }
        writeFile(folder.filePath("garbage.txt"), garbage);
        QVERIFY(model->importFrom(folder.filePath("garbage.txt"), nullptr));
        QCOMPARE(model->rowCount(), 5);
        QCOMPARE(counts(*model).mid(1), (QList<int>{0, 0, 0, 0}));

        // One 8 MB line is a class; the table shows it cut short.
        writeFile(folder.filePath("long.txt"), QByteArray(8 << 20, '7'));
        QVERIFY(model->importFrom(folder.filePath("long.txt"), nullptr));
        QCOMPARE(model->rowCount(), 2);
        QCOMPARE(model->item(1).range.size(), 8 << 20);
        QVERIFY(model->index(1, 1).data().toString().size() <= 1001);

        // 100 MB of lines is refused after reading one line more than the levels.
        {
            QFile file(folder.filePath("huge.txt"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            const QByteArray block = QByteArray("1.00000,2.00000\n").repeated(65536);
            for (qint64 written = 0; written < 100LL << 20; written += block.size())
                file.write(block);
        }
        ModalAnswer refusal("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        QVERIFY(!model->importFrom(folder.filePath("huge.txt"), nullptr));
        QVERIFY(refusal.answered());
        QCOMPARE(model->rowCount(), 2);
    }

    void checkStateTogglesAndRowZeroStays()
    {
        auto layer = GradingFixtures::makeLayer(TELayer::LT_Point, {0, 1, 2});
        auto model = makeModel(layer.get(), 2);
        QVERIFY(model->classifyAll(nullptr));
        const QModelIndex catchAll = model->index(0, 1);
        QVERIFY(model->flags(catchAll) & Qt::ItemIsUserCheckable);
        QVERIFY(!(model->flags(catchAll) & Qt::ItemIsEditable));
        QSignalSpy changed(model.get(), &QAbstractItemModel::dataChanged);
        QVERIFY(model->setData(catchAll, Qt::Unchecked, Qt::CheckStateRole));
        QCOMPARE(model->checkState(), int(Qt::Checked));
        QVERIFY(model->setData(catchAll, Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(model->checkState(), int(Qt::Unchecked));
        QCOMPARE(changed.count(), 2);

        QVERIFY(model->setData(model->index(1, 1), QStringLiteral("0,0.5")));
        QCOMPARE(model->item(1).range, QStringLiteral("0,0.5"));
        QCOMPARE(model->item(1).label, QStringLiteral("0.00000,1.00000"));
        model->removeItems({0, 2});
        QCOMPARE(column(*model, 1), (QStringList{TZModelGradingSymbol::AllOtherValues, "0,0.5"}));
    }
};

TZ_REGISTER_TEST(TestModelGradingSymbol)
#include "TestModelGradingSymbol.moc"
