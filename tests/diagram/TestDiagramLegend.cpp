#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerTree.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TESingleSymbolRender.h"

#include <QTreeWidgetItem>

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
        QTreeWidgetItem* item = tree.itemOf(layer->GetGuidStr().toQString());
        QVERIFY(item);
        QStringList shownTexts;
        QList<QColor> shownColours;
        for (int i = 0; i < item->childCount(); ++i) {
            shownTexts << item->child(i)->text(0);
            shownColours << swatchColour(item->child(i)->icon(0));
        }
        QCOMPARE(shownTexts, texts);
        QCOMPARE(shownColours, colours);
        QCOMPARE(swatchColour(item->icon(0)), background == QLatin1String("single") ? QColor(Qt::gray) : QColor());
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
        QTreeWidgetItem* item = tree.itemOf(layer->GetGuidStr().toQString());
        QVERIFY(item);
        QCOMPARE(item->childCount(), 2);
        QCOMPARE(item->child(0)->text(0), QStringLiteral("%1 - %2").arg(QLocale().toString(0.0), QLocale().toString(10.0)));
        QCOMPARE(item->child(1)->text(0), QStringLiteral("%1 - %2").arg(QLocale().toString(10.0), QLocale().toString(20.5)));
        QCOMPARE(swatchColour(item->child(1)->icon(0)), QColor(Qt::magenta));
    }
};

TZ_REGISTER_TEST(TestDiagramLegend)

#include "TestDiagramLegend.moc"
