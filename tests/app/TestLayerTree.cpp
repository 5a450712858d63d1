#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerTree.h"
#include "TZLayerTreeModel.h"
#include "TZMapIcons.h"

#include "data/TEFeatureLayer.h"
#include "data/TEMemoryFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "symbology/QuickStyle.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace TZObjects;

namespace {

QColor classColour(int i)
{
    return QColor::fromHsv(i * 7 % 360, 255, 200 + i % 50);
}

// A point layer drawn by classes "value 0" ... each with a point of its own colour.
TERefPtr<TEMemoryFeatureLayer> layerWithClasses(const QString& name, int count)
{
    TERefPtr<TEMemoryFeatureLayer> layer =
        TEMemoryFeatureLayer::Create(name, TELayer::LT_Point, {{QStringLiteral("kind"), TEField::FT_String}});
    auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"kind"));
    for (int i = 0; i < count; ++i) {
        const QColor c = classColour(i);
        render->AddCategory(TEString(QStringLiteral("value %1").arg(i)), TEString(),
                            QuickStyle::MakePointStyle(1, TEColor(c.red(), c.green(), c.blue()), 3.0, TEColor(0, 0, 0), 0.1));
    }
    render->SetIsShowOtherValue(false);
    layer->SetSymbolRender(render);
    return layer;
}

} // namespace

// The layer list: legends made when shown, long ones collapsed, layers that
// share a name told apart, and the model's contract.
class TestLayerTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void legendIsExpandedOnlyWhenShortAndShown_data()
    {
        QTest::addColumn<int>("classes");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<bool>("expanded");
        QTest::addColumn<QString>("text");
        QTest::newRow("a hundred classes") << 100 << true << true << QStringLiteral("places");
        QTest::newRow("a hundred and one") << 101 << true << false << QStringLiteral("places \u2014 101 classes");
        QTest::newRow("hidden") << 3 << false << false << QStringLiteral("places");
    }
    void legendIsExpandedOnlyWhenShortAndShown()
    {
        QFETCH(int, classes);
        QFETCH(bool, visible);
        QFETCH(bool, expanded);
        QFETCH(QString, text);
        TZLayerTree tree;
        tree.show();
        TERefPtr<TEMemoryFeatureLayer> layer = layerWithClasses(QStringLiteral("places"), classes);
        const QString guid = layer->GetGuidStr().toQString();
        tree.addLayer(layer, visible);
        const QModelIndex row = tree.indexOf(guid);
        QCOMPARE(tree.isExpanded(row), expanded);
        QCOMPARE(row.data().toString(), text);
        QVERIFY(tree.layerModel()->hasChildren(row));
        // A hidden layer's legend is not built until the layer is shown.
        QCOMPARE(tree.layerModel()->legendCount(row), visible ? classes : -1);
        QCOMPARE(tree.layerModel()->rowCount(row), expanded ? classes : 0);
        if (!visible) {
            tree.setLayerVisible(guid, true);
            QCOMPARE(tree.layerModel()->legendCount(row), classes);
            QVERIFY(tree.isExpanded(row));
            QCOMPARE(tree.layerModel()->rowCount(row), classes);
        }
    }

    // Far down a list of 100,000 classes, the entry the view shows has its
    // class's label and a swatch of its colour, drawn when it was shown.
    void classFarDownTheLegendShowsItsSymbolAndLabel()
    {
        constexpr int count = 100000;
        constexpr int wanted = 99990;
        TZLayerTree tree;
        tree.resize(300, 400);
        tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tree));
        TERefPtr<TEMemoryFeatureLayer> layer = layerWithClasses(QStringLiteral("places"), count);
        tree.addLayer(layer);
        const QModelIndex row = tree.indexOf(layer->GetGuidStr().toQString());
        QVERIFY(!tree.isExpanded(row));
        QCOMPARE(row.data().toString(), QStringLiteral("places \u2014 %L1 classes").arg(count));

        tree.expand(row);
        QCOMPARE(tree.layerModel()->rowCount(row), count);
        const QModelIndex entry = tree.layerModel()->index(wanted, 0, row);
        tree.scrollTo(entry);
        QCoreApplication::processEvents();
        QVERIFY(tree.viewport()->rect().contains(tree.visualRect(entry)));
        QCOMPARE(entry.data().toString(), QStringLiteral("value %1").arg(wanted));
        const QImage swatch = entry.data(Qt::DecorationRole).value<QIcon>().pixmap(TZMapIcons::LegendSize).toImage();
        QCOMPARE(swatch.pixel(swatch.width() / 2, swatch.height() / 2), classColour(wanted).rgb());
        // Its neighbour is another colour, so the swatch is not a fixed one.
        QVERIFY(classColour(wanted) != classColour(wanted + 1));
        const QImage next =
            tree.layerModel()->index(wanted + 1, 0, row).data(Qt::DecorationRole).value<QIcon>().pixmap(TZMapIcons::LegendSize).toImage();
        QCOMPARE(next.pixel(next.width() / 2, next.height() / 2), classColour(wanted + 1).rgb());
        if (!qEnvironmentVariableIsEmpty("TZ_SNAPSHOT_DIR"))
            tree.grab().save(QDir(qEnvironmentVariable("TZ_SNAPSHOT_DIR")).filePath("legend-far-down.png"));
    }

    void layersSharingANameShowTheirFileNames()
    {
        QTemporaryDir dir;
        const QString first = AppFixture::writeVectors(dir.path());
        const QString second = dir.filePath(QStringLiteral("copy.gpkg"));
        QVERIFY(QFile::copy(first, second));
        TZLayerTree tree;
        TERefPtr<TEFeatureLayer> a = TEFeatureLayer::Open(first, QStringLiteral("squares"));
        TERefPtr<TEFeatureLayer> b = TEFeatureLayer::Open(second, QStringLiteral("squares"));
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(first, QStringLiteral("spots"));
        QVERIFY(a && b && spots);
        tree.addLayer(a);
        tree.addLayer(spots);
        QCOMPARE(tree.indexOf(a->GetGuidStr().toQString()).data().toString(), QStringLiteral("squares"));
        tree.addLayer(b);
        QCOMPARE(tree.indexOf(a->GetGuidStr().toQString()).data().toString(), QStringLiteral("squares (fixture.gpkg)"));
        QCOMPARE(tree.indexOf(b->GetGuidStr().toQString()).data().toString(), QStringLiteral("squares (copy.gpkg)"));
        QCOMPARE(tree.indexOf(spots->GetGuidStr().toQString()).data().toString(), QStringLiteral("spots"));
        // The same file opened twice: only the whole path could tell them apart.
        TERefPtr<TEFeatureLayer> again = TEFeatureLayer::Open(second, QStringLiteral("squares"));
        tree.addLayer(again);
        QCOMPARE(tree.indexOf(again->GetGuidStr().toQString()).data().toString(), QStringLiteral("squares (%1)").arg(second));
        QCOMPARE(tree.indexOf(a->GetGuidStr().toQString()).data().toString(), QStringLiteral("squares (fixture.gpkg)"));
        tree.removeLayer(b->GetGuidStr().toQString());
        tree.removeLayer(again->GetGuidStr().toQString());
        QCOMPARE(tree.indexOf(a->GetGuidStr().toQString()).data().toString(), QStringLiteral("squares"));
    }

    // Adding, hiding, refreshing, moving and removing keep the model's
    // contract, and the order of the layers follows the moves.
    void modelKeepsItsContractThroughEdits()
    {
        TZLayerTree tree;
        QAbstractItemModelTester tester(tree.layerModel(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        TERefPtr<TEMemoryFeatureLayer> a = layerWithClasses(QStringLiteral("a"), 3);
        TERefPtr<TEMemoryFeatureLayer> b = layerWithClasses(QStringLiteral("b"), 2);
        TERefPtr<TEMemoryFeatureLayer> c = layerWithClasses(QStringLiteral("c"), 0);
        tree.addLayer(a);
        tree.addLayer(b, false);
        tree.addLayer(c, true, 3);
        const auto names = [&tree] {
            QStringList list;
            for (const auto& layer : tree.layers())
                list << layer->GetLayerName().toQString();
            return list;
        };
        QCOMPARE(names(), (QStringList{"b", "a", "c"}));
        QCOMPARE(AppFixture::legendTexts(tree, a->GetGuidStr().toQString()),
                 (QStringList{"value 0", "value 1", "value 2"}));
        a->GetSymbolRender().cast<TECategorizedSymbolRender>()->RemoveCategory(1);
        tree.refreshLegend(a->GetGuidStr().toQString());
        QCOMPARE(AppFixture::legendTexts(tree, a->GetGuidStr().toQString()), (QStringList{"value 0", "value 2"}));
        QVERIFY(tree.layerModel()->moveLayer(0, 3));
        QCOMPARE(names(), (QStringList{"a", "c", "b"}));
        QVERIFY(tree.layerModel()->moveLayer(2, 0));
        QCOMPARE(names(), (QStringList{"b", "a", "c"}));
        QVERIFY(!tree.layerModel()->moveLayer(1, 2));
        tree.setLayerVisible(b->GetGuidStr().toQString(), true);
        QCOMPARE(tree.visibleLayersBottomUp().size(), std::size_t(3));
        QVERIFY(tree.removeLayer(a->GetGuidStr().toQString()));
        QCOMPARE(names(), (QStringList{"b", "c"}));
        tree.clearLayers();
        QCOMPARE(tree.layerModel()->rowCount(), 0);
    }
};

TZ_REGISTER_TEST(TestLayerTree)
#include "TestLayerTree.moc"
