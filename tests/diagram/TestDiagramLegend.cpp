#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerTree.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TESingleSymbolRender.h"


using namespace TZObjects;

namespace {

// The colour in the middle of an item's icon (invalid without one).
QColor swatchColour(const QIcon& icon)
{
    if (icon.isNull())
        return QColor();
    const QImage image = icon.pixmap(16, 16).toImage();
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

} // namespace

// The layer list's legend of a diagram layer: its background's entries,
// then one entry per diagram item with the item's colour.
class TestDiagramLegend : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void diagramLegendListsBackgroundThenItems_data()
    {
        QTest::addColumn<QString>("background");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QList<QColor>>("colours");
        // Swatches: Forest green, Water blue; items red and yellow.
        QTest::newRow("categories under the diagram")
            << "categories" << QStringList{"Woodland", "Water", "Residents", "jobs"}
            << QList<QColor>{Qt::green, Qt::blue, Qt::red, Qt::yellow};
        QTest::newRow("one symbol: the layer's icon, items below")
            << "single" << QStringList{"Residents", "jobs"} << QList<QColor>{Qt::red, Qt::yellow};
        QTest::newRow("no background") << "none" << QStringList{"Residents", "jobs"}
                                       << QList<QColor>{Qt::red, Qt::yellow};
    }

    void diagramLegendListsBackgroundThenItems()
    {
        QFETCH(QString, background);
        QFETCH(QStringList, texts);
        QFETCH(QList<QColor>, colours);
        TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
            QStringLiteral("districts"), TELayer::LT_Polygon,
            {{QStringLiteral("landuse"), TEField::FT_String}, {QStringLiteral("pop"), TEField::FT_Integer},
             {QStringLiteral("jobs"), TEField::FT_Integer}});
        QVERIFY(layer);
        auto pie = MakeRef<TEPieDiagramRender>();
        pie->AddItem(L"pop", L"Residents", AppFixture::fillStyle(Qt::red));
        // Without a caption the field names the item.
        pie->AddItem(L"jobs", TEString(), AppFixture::fillStyle(Qt::yellow));
        if (background == QLatin1String("categories")) {
            auto categories = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
            categories->AddCategory(L"Forest", L"Woodland", AppFixture::fillStyle(Qt::green));
            categories->AddCategory(L"Water", TEString(), AppFixture::fillStyle(Qt::blue));
            pie->SetBackgroundRender(categories.get());
        } else if (background == QLatin1String("single")) {
            pie->SetBackgroundRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::gray)).get());
        }
        layer->SetSymbolRender(pie);

        TZLayerTree tree;
        tree.addLayer(layer);
        const QString guid = layer->GetGuidStr().toQString();
        QList<QColor> shownColours;
        for (const QModelIndex& entry : AppFixture::legendEntries(tree, guid))
            shownColours << swatchColour(entry.data(Qt::DecorationRole).value<QIcon>());
        QCOMPARE(AppFixture::legendTexts(tree, guid), texts);
        QCOMPARE(shownColours, colours);
        QCOMPARE(swatchColour(tree.indexOf(guid).data(Qt::DecorationRole).value<QIcon>()),
                 background == QLatin1String("single") ? QColor(Qt::gray) : QColor());
    }

    void graduatedSymbolsLegendListsItsClasses()
    {
        TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
            QStringLiteral("towns"), TELayer::LT_Polygon, {{QStringLiteral("pop"), TEField::FT_Integer}});
        auto graduated = MakeRef<TEGraduatedSymbolsDiagramRender>(L"pop");
        graduated->setItems({TEGraduatedSymbolsDiagramItem(AppFixture::fillStyle(Qt::cyan), 0, 10),
                             TEGraduatedSymbolsDiagramItem(AppFixture::fillStyle(Qt::magenta), 10, 20.5)});
        layer->SetSymbolRender(graduated);

        TZLayerTree tree;
        tree.addLayer(layer);
        const QModelIndexList entries = AppFixture::legendEntries(tree, layer->GetGuidStr().toQString());
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries[0].data().toString(), QStringLiteral("%1 - %2").arg(QLocale().toString(0.0), QLocale().toString(10.0)));
        QCOMPARE(entries[1].data().toString(), QStringLiteral("%1 - %2").arg(QLocale().toString(10.0), QLocale().toString(20.5)));
        QCOMPARE(swatchColour(entries[1].data(Qt::DecorationRole).value<QIcon>()), QColor(Qt::magenta));
    }
};

TZ_REGISTER_TEST(TestDiagramLegend)

#include "TestDiagramLegend.moc"
