#include "ModalAnswer.h"
#include "TestRegistry.h"
#include "VectorFixtures.h"

#include "TZModelUniqueValues.h"

#include "data/TEFeatureTable.h"
#include "renders/TECategorizedSymbolRender.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTemporaryDir>

#include <memory>

using namespace TZObjects;

namespace {

const QStringList Cities = {QStringLiteral("Oslo"), QStringLiteral("Bergen"), QStringLiteral("Oslo"),
                            QStringLiteral("Tromso"), QStringLiteral("Bergen"), QStringLiteral("Oslo")};

QStringList column(const QAbstractItemModel& model, int column)
{
    QStringList texts;
    for (int r = 0; r < model.rowCount(); ++r)
        texts << model.index(r, column).data().toString();
    return texts;
}

QList<int> counts(const TZModelUniqueValues& model)
{
    QList<int> result;
    for (int r = 0; r < model.rowCount(); ++r)
        result << model.row(r).count;
    return result;
}

unsigned int rowColor(const TZModelUniqueValues& model, int row)
{
    return model.row(row).style ? model.row(row).style->GetColor().GetColor() : 0u;
}

TERefPtr<TEStyle> twoLayerSymbol(int firstPriority, int secondPriority)
{
    auto symbol = MakeRef<TEStyleMultiLayer>(TEStyle::PointStyle);
    auto first = MakeRef<TEStyleSimplePoint>();
    first->SetPriority(firstPriority);
    auto second = MakeRef<TEStyleSimplePoint>();
    second->SetPriority(secondPriority);
    symbol->AddLayer(first);
    symbol->AddLayer(second);
    return symbol;
}

} // namespace

class TestModelUniqueValues : public QObject
{
    Q_OBJECT

    std::unique_ptr<TZModelUniqueValues> mModel;
    std::unique_ptr<QAbstractItemModelTester> mTester;

    TZModelUniqueValues& watchedModel()
    {
        mModel = std::make_unique<TZModelUniqueValues>();
        mTester = std::make_unique<QAbstractItemModelTester>(
            mModel.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        return *mModel;
    }

private Q_SLOTS:
    void cleanup()
    {
        mTester.reset();
        mModel.reset();
    }

    void catchAllCheckTogglesWhateverValueIsPassed()
    {
        TZModelUniqueValues& model = watchedModel();
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.index(0, 1).data().toString(), QStringLiteral("<all other values>"));
        QCOMPARE(model.index(0, 2).data().toString(), QStringLiteral("<all other values>"));
        QCOMPARE(model.showOtherValuesState(), Qt::Unchecked);

        QVERIFY(model.setData(model.index(0, 1), Qt::Unchecked, Qt::CheckStateRole));
        QCOMPARE(model.showOtherValuesState(), Qt::Checked);
        QCOMPARE(model.index(0, 1).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
        // A second call toggles back even though it asks for "checked".
        QVERIFY(model.setData(model.index(0, 3), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(model.showOtherValuesState(), Qt::Unchecked);
    }

    void addAllValuesCountsInFirstMetOrder_data()
    {
        QTest::addColumn<int>("layerType");
        QTest::addColumn<int>("styleClass");
        QTest::newRow("point") << int(TELayer::LT_Point) << int(TEStyle::SimplePoint);
        QTest::newRow("line") << int(TELayer::LT_Line) << int(TEStyle::SimpleLine);
        QTest::newRow("polygon") << int(TELayer::LT_Polygon) << int(TEStyle::SimpleFill);
    }
    void addAllValuesCountsInFirstMetOrder()
    {
        QFETCH(int, layerType);
        QFETCH(int, styleClass);
        auto layer = VectorFixtures::makeLayer(TELayer::LayerType(layerType), Cities);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.setCountWhileCollecting(true);
        model.setOutlineWidth(0.6);
        model.setOutlineUnit(2);
        model.setOutlineColor(TEColor(10, 20, 30));

        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);

        QCOMPARE(column(model, 1), (QStringList{QStringLiteral("<all other values>"), QStringLiteral("Oslo"),
                                                QStringLiteral("Bergen"), QStringLiteral("Tromso")}));
        QCOMPARE(column(model, 2), column(model, 1));
        QCOMPARE(counts(model).mid(1), (QList<int>{3, 2, 1}));
        QCOMPARE(model.index(1, 3).data().toString(), QStringLiteral("3"));
        QVERIFY(!model.isBusy());

        const TERefPtr<TEStyle> symbol = model.row(1).style;
        QVERIFY(symbol);
        QCOMPARE(int(symbol->GetStyleClass()), styleClass);
        if (auto* point = dynamic_cast<TEStyleSimplePoint*>(symbol.get())) {
            QCOMPARE(point->GetShapeType(), 1);
            QCOMPARE(point->GetUnits(), 1);
            QCOMPARE(point->GetWidth(), 2.0);
            QCOMPARE(point->GetOutlineWidth(), 0.1);
            QCOMPARE(point->GetOutlineColor(), TEColor(10, 20, 30));
        } else if (auto* line = dynamic_cast<TEStyleSimpleLine*>(symbol.get())) {
            QCOMPARE(line->GetUnits(), 2);
            QCOMPARE(line->GetWidth(), 0.6);
        } else {
            auto* fill = dynamic_cast<TEStyleSimpleFill*>(symbol.get());
            QVERIFY(fill && fill->GetOutline());
            QCOMPARE(fill->GetOutline()->GetWidth(), 0.6);
            QCOMPARE(fill->GetOutline()->GetUnits(), 2);
            QCOMPARE(fill->GetOutline()->GetColor(), TEColor(10, 20, 30));
        }
    }

    void addAllValuesWithoutCountingLeavesCountsUnknown()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);

        QStringList values = column(model, 1).mid(1);
        values.sort();
        QCOMPARE(values, (QStringList{QStringLiteral("Bergen"), QStringLiteral("Oslo"), QStringLiteral("Tromso")}));
        QCOMPARE(counts(model).mid(1), (QList<int>{-1, -1, -1}));
        QCOMPARE(model.index(1, 3).data().toString(), QString());
    }

    void addAllValuesReplacesEarlierValueRows()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.setCountWhileCollecting(true);
        model.appendRow(nullptr, QStringLiteral("Paris"), QStringLiteral("Paris"), 9);
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);
        QCOMPARE(model.rowCount(), 4);
        QVERIFY(!column(model, 1).contains(QStringLiteral("Paris")));
    }

    void rampSplits()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Polygon, Cities);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.setCountWhileCollecting(true);
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);

        // Three values take the first three of four colours: blue stays unused.
        QCOMPARE(rowColor(model, 1), 0xFFFF0000u);
        QCOMPARE(rowColor(model, 2), 0xFFAA0055u);
        QCOMPARE(rowColor(model, 3), 0xFF5500AAu);

        // Recolouring splits into exactly as many colours as value rows.
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        model.recolorValueRows(VectorFixtures::redToBlue()->split(model.rowCount() - 1));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 1);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), 3);
        QCOMPARE(rowColor(model, 1), 0xFFFF0000u);
        QCOMPARE(rowColor(model, 2), 0xFF800080u);
        QCOMPARE(rowColor(model, 3), 0xFF0000FFu);
        QCOMPARE(column(model, 1).mid(1),
                 (QStringList{QStringLiteral("Oslo"), QStringLiteral("Bergen"), QStringLiteral("Tromso")}));
        QCOMPARE(counts(model).mid(1), (QList<int>{3, 2, 1}));
    }

    void singleValueTakesFirstOfTwoColours()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {QStringLiteral("x"), QStringLiteral("x")});
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.setCountWhileCollecting(true);
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.row(1).count, 2);
        QCOMPARE(rowColor(model, 1), 0xFFFF0000u);
    }

    void rampWithoutColoursAddsNoRows()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.addAllValues(MakeRef<TEEvenColorRamp>().get(), nullptr);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.values().size(), 3);
    }

    void collectionFollowsQueryFilter()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        layer->SetQueryFilter(TEQueryFilter(TEString(L"angle >= 20")));
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        QVERIFY(model.collectWithCounts(QStringLiteral("name")));
        QCOMPARE(model.values(), (QStringList{QStringLiteral("Oslo"), QStringLiteral("Tromso"),
                                              QStringLiteral("Bergen")}));
        QCOMPARE(model.valueCount(QStringLiteral("Oslo")), 2);
        QCOMPARE(model.valueCount(QStringLiteral("Bergen")), 1);
    }

    void collectionWithoutLayerFails()
    {
        TZModelUniqueValues& model = watchedModel();
        QVERIFY(!model.collectWithCounts(QStringLiteral("name")));
        QVERIFY(!model.collectDistinct(QStringLiteral("name")));
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);
        QCOMPARE(model.rowCount(), 1);
    }

    void geoPackageGivesTheSameRowsAsAScan()
    {
        QTemporaryDir folder;
        QVERIFY(folder.isValid());
        QStringList names;
        for (int i = 0; i < 300; ++i)
            names << QStringLiteral("v%1").arg((i * 7919) % 37);
        auto stored = VectorFixtures::makeGeoPackage(folder.path(), TELayer::LT_Point, names);
        QVERIFY(stored);
        QVERIFY(stored->GetDatasource()->CanPushDown(TEString(L"name")));
        auto memory = VectorFixtures::makeLayer(TELayer::LT_Point, names);

        TZModelUniqueValues fromFile;
        fromFile.setLayer(stored.get(), QStringLiteral("name"));
        fromFile.setCountWhileCollecting(true);
        fromFile.addAllValues(VectorFixtures::redToBlue().get(), nullptr);
        TZModelUniqueValues fromScan;
        fromScan.setLayer(memory.get(), QStringLiteral("name"));
        fromScan.setCountWhileCollecting(true);
        fromScan.addAllValues(VectorFixtures::redToBlue().get(), nullptr);

        QCOMPARE(fromFile.rowCount(), 38);
        QCOMPARE(column(fromFile, 1), column(fromScan, 1));
        QCOMPARE(counts(fromFile), counts(fromScan));
    }

    void addValuesAppendsTheChosenAndTypedValues()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        QStringList offered;
        ModalAnswer answer("TZDialogAddValueToUniqueValue", [&offered](QWidget* dialog) {
            auto* list = dialog->findChild<QListView*>("mListViewValues");
            for (int r = 0; r < list->model()->rowCount(); ++r)
                offered << list->model()->index(r, 0).data().toString();
            dialog->findChild<QLineEdit*>("mLineEditNewValue")->setText(QStringLiteral("Narvik"));
            dialog->findChild<QPushButton*>("mButtonAddNewValue")->click();
            const int last = list->model()->rowCount() - 1;
            list->selectionModel()->select(list->model()->index(last, 0), QItemSelectionModel::Select);
            list->selectionModel()->select(list->model()->index(offered.indexOf("Bergen"), 0),
                                           QItemSelectionModel::Select);
            dialog->findChild<QPushButton*>("mButtonOk")->click();
        });
        model.addValues(VectorFixtures::redToBlue().get(), QStringLiteral("UniqueValues"), nullptr);
        QVERIFY(answer.answered());

        offered.sort();
        QCOMPARE(offered, (QStringList{QStringLiteral("Bergen"), QStringLiteral("Oslo"), QStringLiteral("Tromso")}));
        QCOMPARE(column(model, 1).mid(1), (QStringList{QStringLiteral("Narvik"), QStringLiteral("Bergen")}));
        // One row before, two chosen: colours 1 and 2 of a three-colour split.
        QCOMPARE(rowColor(model, 1), 0xFF800080u);
        QCOMPARE(rowColor(model, 2), 0xFF0000FFu);
        QCOMPARE(model.row(1).count, 0);
        QCOMPARE(model.row(2).count, -1);
    }

    void mergeAddsCountAndKeepsLabel()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {});
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        const TERefPtr<TEStyle> first = model.makeSymbol(TEColor(1, 2, 3));
        const TERefPtr<TEStyle> second = model.makeSymbol(TEColor(4, 5, 6));

        model.mergeRow(first, QStringLiteral("a"), QStringLiteral("Label A"), 2);
        model.mergeRow(nullptr, QStringLiteral("a"), QStringLiteral("ignored"), 3);
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.row(1).count, 5);
        QCOMPARE(model.row(1).label, QStringLiteral("Label A"));
        QVERIFY(model.row(1).style == first);

        model.mergeRow(second, QStringLiteral("a"), QString(), 0);
        QVERIFY(model.row(1).style == second);
        model.mergeRow(nullptr, QStringLiteral("b"), QStringLiteral("Label B"), 1);
        QCOMPARE(column(model, 2).mid(1), (QStringList{QStringLiteral("Label A"), QStringLiteral("Label B")}));
        // After rows moved, merging still finds the row that holds the value.
        model.moveRowDown(1);
        model.mergeRow(nullptr, QStringLiteral("a"), QString(), 10);
        QCOMPARE(model.row(2).count, 15);
    }

    void priorityColumnsFollowTheWidestSymbol()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {});
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.appendRow(twoLayerSymbol(3, 7), QStringLiteral("a"), QStringLiteral("a"), 1);
        model.appendRow(model.makeSymbol(TEColor(1, 1, 1)), QStringLiteral("b"), QStringLiteral("b"), 1);
        QCOMPARE(model.columnCount(), 4);

        model.setPriorityShown(true);
        QCOMPARE(model.columnCount(), 6);
        QCOMPARE(model.headerData(4, Qt::Horizontal).toString(), QStringLiteral("-1-"));
        QCOMPARE(model.headerData(5, Qt::Horizontal).toString(), QStringLiteral("-2-"));
        QCOMPARE(model.index(1, 4).data().toInt(), 3);
        QCOMPARE(model.index(1, 5).data().toInt(), 7);
        QCOMPARE(model.index(2, 4).data().toInt(), 0);
        QVERIFY(model.flags(model.index(1, 5)) & Qt::ItemIsEditable);
        QVERIFY(!(model.flags(model.index(2, 5)) & Qt::ItemIsEditable));

        model.setRowStyle(1, model.makeSymbol(TEColor(1, 1, 1)));
        QCOMPARE(model.columnCount(), 5);
        model.setPriorityShown(false);
        QCOMPARE(model.columnCount(), 4);
    }

    void priorityEditsReachTheSymbolLayer()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {});
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        const TERefPtr<TEStyle> symbol = twoLayerSymbol(0, 0);
        auto* multi = dynamic_cast<TEStyleMultiLayer*>(symbol.get());
        model.appendRow(symbol, QStringLiteral("a"), QStringLiteral("a"), 1);
        // A three-layer symbol in another row makes column 6 exist.
        const TERefPtr<TEStyle> wide = twoLayerSymbol(0, 0);
        dynamic_cast<TEStyleMultiLayer*>(wide.get())->AddLayer(MakeRef<TEStyleSimplePoint>());
        model.appendRow(wide, QStringLiteral("b"), QStringLiteral("b"), 1);
        model.setPriorityShown(true);
        QCOMPARE(model.columnCount(), 7);

        QVERIFY(model.setData(model.index(1, 4), QStringLiteral("12")));
        QCOMPARE(multi->GetLayer(0)->GetPriority(), 12);
        QCOMPARE(multi->GetLayer(1)->GetPriority(), 0);
        QVERIFY(model.setData(model.index(1, 5), QStringLiteral("4")));
        QCOMPARE(multi->GetLayer(1)->GetPriority(), 4);

        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QVERIFY(!model.setData(model.index(1, 6), QStringLiteral("9")));
        QCOMPARE(changed.count(), 0);
        QCOMPARE(multi->GetLayer(0)->GetPriority(), 12);
        QCOMPARE(multi->GetLayer(1)->GetPriority(), 4);
        QCOMPARE(model.index(1, 6).data().toString(), QStringLiteral("-"));

        QVERIFY(model.setData(model.index(1, 2), QStringLiteral("Renamed")));
        QCOMPARE(model.row(1).label, QStringLiteral("Renamed"));
        QCOMPARE(model.row(1).value, QStringLiteral("a"));
    }

    void rowsMoveAndAreRemoved()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, {});
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        for (const char* v : {"a", "b", "c", "d"})
            model.appendRow(nullptr, QString::fromLatin1(v), QString::fromLatin1(v), 1);

        model.moveRowUp(3);
        QCOMPARE(column(model, 1).mid(1), (QStringList{"a", "c", "b", "d"}));
        model.moveRowDown(3);
        QCOMPARE(column(model, 1).mid(1), (QStringList{"a", "c", "d", "b"}));
        model.moveRowDown(4);
        QCOMPARE(column(model, 1).mid(1), (QStringList{"a", "c", "d", "b"}));

        model.removeRowList({3, 1});
        QCOMPARE(column(model, 1), (QStringList{QStringLiteral("<all other values>"), "c", "b"}));
        QCOMPARE(model.findRow(QStringLiteral("b")), 2);
        QCOMPARE(model.findRow(QStringLiteral("a")), -1);

        model.removeValueRows();
        QCOMPARE(model.rowCount(), 1);
    }

    void featureCountEventsUpdateCounts()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.setCountWhileCollecting(true);
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);

        TERefPtr<TEFeature> feature = layer->CreateFeature();
        feature->SetValue(TEString(L"name"), TEVariant(TEString(L"Bergen")));
        layer->AddFeature(feature);
        QCOMPARE(model.row(model.findRow(QStringLiteral("Bergen"))).count, 3);
        QCOMPARE(model.valueCount(QStringLiteral("Bergen")), 3);

        const TERefPtr<TEFeature> oslo =
            layer->Search(TEQueryFilter(TEString(L"name = 'Oslo'")))->NextFeature();
        QVERIFY(oslo);
        QVERIFY(layer->DeleteFeature(oslo->GetId()));
        QCOMPARE(model.row(model.findRow(QStringLiteral("Oslo"))).count, 2);

        feature->SetValue(TEString(L"name"), TEVariant(TEString(L"Alta")));
        layer->AddFeature(feature);
        QCOMPARE(model.valueCount(QStringLiteral("Alta")), 1);
        QCOMPARE(model.values().last(), QStringLiteral("Alta"));
    }

    // Edits made while the layer is edited reach the counts twice: through
    // the feature-count events and through a new collection, which reads
    // the edit buffer. Both must agree, on a file as in memory.
    void addAllAfterEditsAgreesWithTheEvents_data()
    {
        QTest::addColumn<bool>("geoPackage");
        QTest::newRow("memory") << false;
        QTest::newRow("geopackage") << true;
    }
    void addAllAfterEditsAgreesWithTheEvents()
    {
        QFETCH(bool, geoPackage);
        QTemporaryDir folder;
        const TERefPtr<TEFeatureLayer> layer = geoPackage
            ? VectorFixtures::makeGeoPackage(folder.path(), TELayer::LT_Point, Cities)
            : TERefPtr<TEFeatureLayer>(VectorFixtures::makeLayer(TELayer::LT_Point, Cities));
        QVERIFY(layer);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.setCountWhileCollecting(true);
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);

        TERefPtr<TEFeature> feature = layer->CreateFeature();
        for (const char* name : {"Bergen", "Alta", "Alta"}) {
            feature->SetValue(TEString(L"name"), TEVariant(TEString(QString::fromLatin1(name))));
            layer->AddFeature(feature);
        }
        for (const wchar_t* where : {L"name = 'Tromso'", L"name = 'Oslo'"})
            QVERIFY(layer->DeleteFeature(layer->Search(TEQueryFilter(TEString(where)))->NextFeature()->GetId()));
        QCoreApplication::processEvents();
        QHash<QString, int> byEvents;
        for (const QString& value : model.values()) {
            if (model.valueCount(value) > 0)
                byEvents.insert(value, model.valueCount(value));
        }
        const QHash<QString, int> expected{{"Oslo", 2}, {"Bergen", 3}, {"Alta", 2}};
        QCOMPARE(byEvents, expected);

        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);
        QHash<QString, int> byCollection;
        for (int r = 1; r < model.rowCount(); ++r)
            byCollection.insert(model.row(r).value, model.row(r).count);
        QCOMPARE(byCollection, expected);
        // The first Oslo is gone, so Bergen is met first now.
        QCOMPARE(column(model, 1).mid(1), (QStringList{"Bergen", "Oslo", "Alta"}));

        // Without counting the same values come, in the same order.
        model.setCountWhileCollecting(false);
        model.addAllValues(VectorFixtures::redToBlue().get(), nullptr);
        QCOMPARE(column(model, 1).mid(1), (QStringList{"Bergen", "Oslo", "Alta"}));
    }

    // A derived table changes what is collected, how new rows get their
    // symbols, the key of a feature and where the priority columns start,
    // and keeps everything else.
    void derivedTableReusesRowsThroughItsHooks()
    {
        class InitialsModel : public TZModelUniqueValues
        {
        public:
            InitialsModel() { resetModel(); }

        protected:
            void collectValues(bool) override
            {
                QStringList initials;
                QHash<QString, int> counts;
                TERefPtr<TEFeatureCursor> cursor = layer()->Search(layer()->query_filter());
                while (TERefPtr<TEFeature> feature = cursor->NextFeature()) {
                    const QString key = featureValue(*feature);
                    if (counts[key]++ == 0)
                        initials << key;
                }
                setCollectedValues(initials, counts);
            }
            QString featureValue(const TEFeature& feature) const override
            {
                return feature.GetValue(TEString(fieldName())).ToString().toQString().left(1);
            }
            TERefPtr<TEStyle> symbolForNewRow(const QString& value, const TEColorRampContainer&, int) const override
            {
                return makeSymbol(value == QLatin1String("O") ? TEColor(1, 2, 3) : TEColor(4, 5, 6));
            }
            bool coloursFromRamp() const override { return false; }
            int firstPriorityColumn() const override { return 5; }
        };

        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        InitialsModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setLayer(layer.get(), QStringLiteral("name"));
        model.setPriorityShown(true);
        QCOMPARE(model.columnCount(), 6);
        model.addAllValues(nullptr, nullptr);
        QCOMPARE(column(model, 1), (QStringList{QStringLiteral("<all other values>"), "O", "B", "T"}));
        QCOMPARE(counts(model), (QList<int>{0, 3, 2, 1}));
        QCOMPARE(rowColor(model, 1), TEColor(1, 2, 3).GetColor());
        QCOMPARE(rowColor(model, 2), TEColor(4, 5, 6).GetColor());
        QVERIFY(!model.index(1, 4).data().isValid());
        QCOMPARE(model.headerData(5, Qt::Horizontal).toString(), QStringLiteral("-1-"));
        QVERIFY(model.setData(model.index(1, 5), QStringLiteral("7")));
        QCOMPARE(model.row(1).style->GetPriority(), 7);

        TERefPtr<TEFeature> feature = layer->CreateFeature();
        feature->SetValue(TEString(L"name"), TEVariant(TEString(L"Bodo")));
        layer->AddFeature(feature);
        QCoreApplication::processEvents();
        QCOMPARE(model.row(2).count, 3);

        TECategorizedSymbolRender render(TEString(L"name"));
        model.writeCategories(render);
        QCOMPARE(render.GetItemCount(), 4);
        QCOMPARE(render.GetCategoryRenderItem(3)->GetValue().toQString(), QStringLiteral("T"));
    }

    void handlersAreUnboundOnDestructionAndLayerChange()
    {
        auto first = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        auto second = VectorFixtures::makeLayer(TELayer::LT_Line, Cities);
        {
            TZModelUniqueValues one;
            TZModelUniqueValues two;
            one.setLayer(first.get(), QStringLiteral("name"));
            two.setLayer(first.get(), QStringLiteral("name"));
            QCOMPARE(first->features_added().handlerCount(), 2);
            QCOMPARE(first->features_deleted().handlerCount(), 2);

            one.setLayer(second.get(), QStringLiteral("name"));
            QCOMPARE(first->features_added().handlerCount(), 1);
            QCOMPARE(second->features_added().handlerCount(), 1);
            QCOMPARE(second->features_deleted().handlerCount(), 1);
        }
        QCOMPARE(first->features_added().handlerCount(), 0);
        QCOMPARE(first->features_deleted().handlerCount(), 0);
        QCOMPARE(second->features_added().handlerCount(), 0);
    }

    void loadFromRenderMergesCategories()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Point, Cities);
        TZModelUniqueValues& model = watchedModel();
        model.setLayer(layer.get(), QStringLiteral("name"));
        const TERefPtr<TEStyle> otherSymbol = model.makeSymbol(TEColor(9, 9, 9));
        const TERefPtr<TEStyle> osloSymbol = model.makeSymbol(TEColor(1, 1, 1));

        TECategorizedSymbolRender render(TEString(L"name"));
        render.AddCategory(TEString(L"<all other values>"), TEString(L"Others"), otherSymbol);
        render.AddCategory(TEString(L"Oslo"), TEString(L"Capital"), osloSymbol);
        render.AddCategory(TEString(L"Paris"), TEString(L"Paris"), nullptr);
        // Priority shown: a per-row announcement would recount the columns
        // over every row for each category.
        model.setPriorityShown(true);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.loadFromRender(&render, nullptr);
        QCOMPARE(inserted.count(), 0);
        QCOMPARE(reset.count(), 1);

        QCOMPARE(column(model, 1), (QStringList{QStringLiteral("<all other values>"), QStringLiteral("Oslo"),
                                                QStringLiteral("Paris")}));
        QCOMPARE(column(model, 2).mid(1), (QStringList{QStringLiteral("Capital"), QStringLiteral("Paris")}));
        QCOMPARE(counts(model), (QList<int>{6, 3, 0}));
        QVERIFY(model.row(0).style == otherSymbol);
        QVERIFY(model.row(1).style == osloSymbol);
    }
};

TZ_REGISTER_TEST(TestModelUniqueValues)
#include "TestModelUniqueValues.moc"
