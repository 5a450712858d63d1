#include "ModalAnswer.h"
#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZModelMatchToSymbols.h"
#include "TZRenderPanelMatchToSymbolsInAStyle.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEMatchToSymbolsRender.h"
#include "symbology/TEStyleDB.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"
#include "symbology/TEStyleSystem.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QTableView>
#include <QRegularExpression>
#include <QToolButton>
#include <QtTest>

using namespace TZObjects;

namespace {

const QString TestDB = QStringLiteral("Match test styles");

template <class Style>
TERefPtr<TEStyle> named(const char* name, const TEColor& color)
{
    TERefPtr<TEStyle> style = MakeRef<Style>();
    style->SetName(TEString::fromUtf8(name));
    style->SetColor(color);
    return style;
}

// Fill styles "Forest" and "Water", a line style "Forest" and a point style
// "Water": each layer kind finds only its own.
void addTestDatabase()
{
    if (TEStyleSystem::GetInstance()->FindStyleDB(TEString(TestDB)))
        return;
    auto db = MakeRef<TEStyleDB>(TEString(TestDB));
    db->AddStyle(named<TEStyleSimpleFill>("Forest", TEColor(0, 128, 0)));
    db->AddStyle(named<TEStyleSimpleFill>("Water", TEColor(0, 0, 255)));
    db->AddStyle(named<TEStyleSimpleFill>("Water", TEColor(9, 9, 9)));
    db->AddStyle(named<TEStyleSimpleLine>("Forest", TEColor(1, 1, 1)));
    db->AddStyle(named<TEStyleSimplePoint>("Water", TEColor(2, 2, 2)));
    TEStyleSystem::GetInstance()->AddStyleDB(db);
}

TERefPtr<TEMemoryFeatureLayer> landUse(TELayer::LayerType type, const QStringList& values, bool withBlob = false)
{
    std::vector<TEMemoryFeatureLayer::FieldDef> fields;
    if (withBlob)
        fields.push_back({QStringLiteral("blob"), TEField::FT_Binary});
    fields.push_back({QStringLiteral("use"), TEField::FT_String});
    fields.push_back({QStringLiteral("VELDDB_id"), TEField::FT_Integer});
    auto layer = TEMemoryFeatureLayer::Create(QStringLiteral("landuse"), type, fields);
    const QString wkt = type == TELayer::LT_Polygon ? QStringLiteral("POLYGON((0 0,1 0,1 1,0 0))")
        : type == TELayer::LT_Line                  ? QStringLiteral("LINESTRING(0 0,1 1)")
                                                    : QStringLiteral("POINT(0 0)");
    for (int i = 0; i < values.size(); ++i) {
        std::vector<TEVariant> row;
        if (withBlob)
            row.push_back(TEVariant());
        row.push_back(TEVariant(TEString(values[i])));
        row.push_back(TEVariant(i));
        layer->AppendFeature(wkt, row);
    }
    return layer;
}

QStringList rowValues(const TZModelUniqueValues* model)
{
    QStringList values;
    for (int r = 0; r < model->rowCount(); ++r)
        values << model->row(r).value;
    return values;
}

} // namespace

class TestMatchToSymbols : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    TZRenderPanelMatchToSymbolsInAStyle* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelMatchToSymbolsInAStyle*>();
        if (panel)
            mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->setCurrentText(panel->title());
        return panel;
    }

    static void chooseDatabase(TZRenderPanelMatchToSymbolsInAStyle* panel)
    {
        auto* combo = panel->findChild<QComboBox*>("mComboBoxSymbolDB");
        combo->setCurrentIndex(combo->findText(TestDB));
    }

private Q_SLOTS:
    void initTestCase() { addTestDatabase(); }
    void cleanupTestCase() { TEStyleSystem::GetInstance()->Reload(); }
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    // Values become rows only when a style of the layer's kind has exactly
    // that name; the first of two same-named styles wins.
    void valuesMatchStyleNamesExactly_data()
    {
        QTest::addColumn<int>("layerType");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<unsigned>("firstColor");
        const QString all = QStringLiteral("<all other values>");
        QTest::newRow("polygon, fill styles") << int(TELayer::LT_Polygon) << QStringList{all, "Water", "Forest"}
                                              << TEColor(0, 0, 255).GetColor();
        QTest::newRow("line, line styles") << int(TELayer::LT_Line) << QStringList{all, "Forest"}
                                           << TEColor(1, 1, 1).GetColor();
        QTest::newRow("multi-point, point styles") << int(TELayer::LT_MultiPoint) << QStringList{all, "Water"}
                                                   << TEColor(2, 2, 2).GetColor();
    }
    void valuesMatchStyleNamesExactly()
    {
        QFETCH(int, layerType);
        QFETCH(QStringList, rows);
        QFETCH(unsigned, firstColor);
        auto layer = landUse(TELayer::LayerType(layerType), {"water", "Water", "Forest", "Nope", "Water", "FOREST"});
        TZRenderPanelMatchToSymbolsInAStyle* panel = openPanel(layer.get());
        QVERIFY(panel && panel->model());
        QAbstractItemModelTester tester(panel->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        chooseDatabase(panel);
        panel->findChild<QComboBox*>("mComboBoxMatchField")->setCurrentText(QStringLiteral("use"));
        panel->onAddAllValues();
        QCOMPARE(rowValues(panel->model()), rows);
        QCOMPARE(panel->model()->row(1).style->GetColor().GetColor(), firstColor);
        // Headers and symbol column are not clipped.
        auto* table = panel->findChild<QTableView*>("mTableViewMatch");
        for (int column : {0, 3})
            QVERIFY(table->columnWidth(column) >= table->horizontalHeader()->sectionSizeHint(column));
        QCOMPARE(panel->model()->headerData(3, Qt::Horizontal).toString(), QStringLiteral("Scale filter"));

        // Everything matched is listed: adding offers nothing more.
        ModalAnswer none("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        panel->onAddValue();
        QVERIFY(none.answered());
        QCOMPARE(none.dialogText(), QStringLiteral("No other values"));
        QCOMPARE(none.dialogTitle(), QStringLiteral("Information"));
    }

    void noMatchIsReportedAndLeavesTheCatchAllRow()
    {
        auto layer = landUse(TELayer::LT_Polygon, {"forest", "Lake"});
        TZRenderPanelMatchToSymbolsInAStyle* panel = openPanel(layer.get());
        QVERIFY(panel);
        chooseDatabase(panel);
        panel->findChild<QComboBox*>("mComboBoxMatchField")->setCurrentText(QStringLiteral("use"));
        ModalAnswer box("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        panel->onAddAllValues();
        QVERIFY(box.answered());
        QCOMPARE(box.dialogText(), QStringLiteral("No matching values"));
        QCOMPARE(box.dialogTitle(), QStringLiteral("Information"));
        QCOMPARE(rowValues(panel->model()), QStringList{"<all other values>"});
    }

    // The combo leaves out binary fields and "VELDDB_" names but lists the
    // FID; the walk back to the layer's field index skips binary and
    // geometry fields only among the first two (and, on a memory layer,
    // the "FID" and "GEOMETRY" aliases), so a binary field further on
    // shifts the mapping by one.
    void fieldIndexWalk_data()
    {
        QTest::addColumn<bool>("withBlob");
        QTest::addColumn<QStringList>("offered");
        QTest::addColumn<QList<int>>("mapped");
        // FID, GEOMETRY, use, VELDDB_id: "FID" maps to use, and "use" walks
        // past the last field, which leaves the choice as it was.
        QTest::newRow("plain") << false << QStringList{"FID", "use"} << QList<int>{2, 2};
        // FID, GEOMETRY, blob, use, VELDDB_id: the binary third field is not
        // skipped, so "FID" maps to it and "use" to use.
        QTest::newRow("binary third") << true << QStringList{"FID", "use"} << QList<int>{2, 3};
    }
    void fieldIndexWalk()
    {
        QFETCH(bool, withBlob);
        QFETCH(QStringList, offered);
        QFETCH(QList<int>, mapped);
        auto layer = landUse(TELayer::LT_Polygon, {"Forest"}, withBlob);
        TZRenderPanelMatchToSymbolsInAStyle* panel = openPanel(layer.get());
        QVERIFY(panel);
        auto* combo = panel->findChild<QComboBox*>("mComboBoxMatchField");
        QStringList items;
        for (int i = 0; i < combo->count(); ++i)
            items << combo->itemText(i);
        QCOMPARE(items, offered);
        for (int i = 0; i < mapped.size(); ++i) {
            panel->onFieldChanged(i);
            QCOMPARE(panel->chosenFieldIndex(), mapped[i]);
        }
    }

    // Apply writes the database, field, categories with their scale
    // filters, and priority; a reset reads them back; an empty database or
    // field choice is refused without a word.
    void applyAndResetRoundTrip()
    {
        auto layer = landUse(TELayer::LT_Polygon, {"Forest", "Water"});
        TZRenderPanelMatchToSymbolsInAStyle* panel = openPanel(layer.get());
        QVERIFY(panel);
        chooseDatabase(panel);
        auto* fields = panel->findChild<QComboBox*>("mComboBoxMatchField");
        fields->setCurrentText(QStringLiteral("use"));
        panel->onAddAllValues();
        TZModelMatchToSymbols* model = panel->model();
        QVERIFY(model->setData(model->index(2, TZModelMatchToSymbols::ScaleFilterColumn), Qt::Checked,
                               Qt::CheckStateRole));
        QVERIFY(model->setData(model->index(2, TZModelMatchToSymbols::MaxScaleColumn), QStringLiteral("5000")));
        QCOMPARE(model->index(2, TZModelMatchToSymbols::MaxScaleColumn).data().toString().remove(QRegularExpression("[^0-9]")),
                 QStringLiteral("5000"));
        QVERIFY(model->setData(model->index(1, 2), QStringLiteral("Woods")));
        panel->findChild<QCheckBox*>("checkBox")->click();
        QVERIFY(panel->onApply());

        const auto render = layer->GetSymbolRender().cast<TEMatchToSymbolsRender>();
        QVERIFY(render);
        QCOMPARE(render->getSymbolDB().toQString(), TestDB);
        QCOMPARE(render->GetExpression().toQString(), QStringLiteral("use"));
        QVERIFY(render->PriorityRender());
        QCOMPARE(render->GetItemCount(), 3);
        QCOMPARE(render->GetCategoryRenderItem(0)->GetValue().toQString(), QStringLiteral("<all other values>"));
        QCOMPARE(render->GetCategoryRenderItem(1)->GetLabel().toQString(), QStringLiteral("Woods"));
        QVERIFY(render->GetCategoryRenderItem(2)->IsScaleFilter());
        QCOMPARE(render->GetCategoryRenderItem(2)->GetMaxScale(), 5000.0);

        panel->onReset();
        QCOMPARE(rowValues(model), (QStringList{"<all other values>", "Forest", "Water"}));
        QCOMPARE(model->row(1).label, QStringLiteral("Woods"));
        QVERIFY(model->row(2).scaleFilter);
        QCOMPARE(model->row(2).maxScale, 5000.0);
        QVERIFY(panel->findChild<QCheckBox*>("checkBox")->isChecked());
        QCOMPARE(panel->findChild<QComboBox*>("mComboBoxSymbolDB")->currentText(), TestDB);

        // Refusals: no field, then no database.
        const TERefPtr<TEFeatureRender> applied = layer->GetSymbolRender();
        fields->setCurrentIndex(-1);
        QVERIFY(!panel->onApply());
        panel->findChild<QComboBox*>("mComboBoxSymbolDB")->setCurrentIndex(-1);
        fields->setCurrentText(QStringLiteral("use"));
        QVERIFY(!panel->onApply());
        QCOMPARE(layer->GetSymbolRender(), applied);
    }
};

TZ_REGISTER_TEST(TestMatchToSymbols)
#include "TestMatchToSymbols.moc"
