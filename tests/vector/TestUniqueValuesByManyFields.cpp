#include "ModalAnswer.h"
#include "TestRegistry.h"
#include "VectorFixtures.h"

#include "TZControlRender.h"
#include "TZModelUniqueValuesByManyFields.h"
#include "TZRenderPanelUniqueValuesByManyFields.h"
#include "TZWidgetValueItem.h"

#include "data/TEFeatureTable.h"
#include "data/TEGdalSupport.h"
#include "data/TEMemoryFeatureLayer.h"
#include "renders/TECategorizedByManyFieldsSymbolRender.h"
#include "symbology/TEEvenColorRamp.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <gdal.h>
#include <ogr_api.h>

using namespace TZObjects;

namespace {

// Kind, code and name of each fixture feature; "a,b" holds the separator.
struct Place
{
    const char* kind;
    int code;
    const char* name;
};
const Place Places[] = {{"town", 1, "x"}, {"city", 2, "y"}, {"town", 1, "z"}, {"a,b", 3, "w"},
                        {"city", 2, "v"}, {"town", 4, "u"}, {"", 1, "t"}};

std::vector<TEVariant> valuesOf(const Place& p)
{
    return {p.kind[0] ? TEVariant(TEString::fromUtf8(p.kind)) : TEVariant(), TEVariant(p.code),
            TEVariant(TEString::fromUtf8(p.name))};
}

TERefPtr<TEMemoryFeatureLayer> memoryPlaces(int copies = 1)
{
    auto layer = TEMemoryFeatureLayer::Create(QStringLiteral("places"), TELayer::LT_Point,
                                              {{QStringLiteral("kind"), TEField::FT_String},
                                               {QStringLiteral("code"), TEField::FT_Integer},
                                               {QStringLiteral("name"), TEField::FT_String}});
    for (int c = 0; c < copies; ++c)
        for (const Place& p : Places)
            layer->AppendFeature(QStringLiteral("POINT(1 1)"), valuesOf(p));
    return layer;
}

TERefPtr<TEFeatureLayer> geoPackagePlaces(const QString& folder)
{
    TEGdalSupport::EnsureRegistered();
    const QString path = folder + QStringLiteral("/places.gpkg");
    GDALDatasetH dataset =
        GDALCreate(GDALGetDriverByName("GPKG"), path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset)
        return nullptr;
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, "places", nullptr, wkbPoint, nullptr);
    OGRFieldDefnH kind = OGR_Fld_Create("kind", OFTString);
    OGRFieldDefnH code = OGR_Fld_Create("code", OFTInteger);
    OGRFieldDefnH name = OGR_Fld_Create("name", OFTString);
    OGR_L_CreateField(layer, kind, TRUE);
    OGR_L_CreateField(layer, code, TRUE);
    OGR_L_CreateField(layer, name, TRUE);
    OGR_Fld_Destroy(kind);
    OGR_Fld_Destroy(code);
    OGR_Fld_Destroy(name);
    for (const Place& p : Places) {
        OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
        if (p.kind[0])
            OGR_F_SetFieldString(feature, 0, p.kind);
        OGR_F_SetFieldInteger(feature, 1, p.code);
        OGR_F_SetFieldString(feature, 2, p.name);
        OGRGeometryH point = OGR_G_CreateGeometry(wkbPoint);
        OGR_G_SetPoint_2D(point, 0, 1, 1);
        OGR_F_SetGeometryDirectly(feature, point);
        if (OGR_L_CreateFeature(layer, feature) != OGRERR_NONE)
            qWarning("feature not written");
        OGR_F_Destroy(feature);
    }
    GDALClose(dataset);
    return TEFeatureLayer::Open(path);
}

// Keys and counts as "key=count" in the order given.
QStringList keyCounts(const QStringList& keys, const std::vector<int>& counts)
{
    QStringList result;
    for (int i = 0; i < keys.size(); ++i)
        result << QStringLiteral("%1=%2").arg(keys[i]).arg(counts[size_t(i)]);
    return result;
}

QStringList modelKeyCounts(const TZModelUniqueValues& model)
{
    QStringList result;
    for (int r = 1; r < model.rowCount(); ++r)
        result << QStringLiteral("%1=%2").arg(model.row(r).value).arg(model.row(r).count);
    return result;
}

// Turns the first feature into city,2, deletes the second city,2 and adds
// village,9,
// all left unsaved in the edit buffer.
void editPlaces(TEFeatureLayer& layer, int firstFid)
{
    TERefPtr<TEFeature> changed = layer.GetFeature(firstFid);
    changed->SetValue(TEString(L"kind"), TEVariant(TEString(L"city")));
    changed->SetValue(TEString(L"code"), TEVariant(2));
    QVERIFY(layer.UpdateFeature(changed));
    QVERIFY(layer.DeleteFeature(firstFid + 4));
    TERefPtr<TEFeature> added = layer.CreateFeature();
    added->SetValue(TEString(L"kind"), TEVariant(TEString(L"village")));
    added->SetValue(TEString(L"code"), TEVariant(9));
    added->SetGeometry(TEGeometry::FromWkt(QStringLiteral("POINT (2 2)")));
    layer.AddFeature(added);
}

// Counts the message boxes shown while it lives, and rejects each at once.
class MessageBoxCounter : public QObject
{
public:
    MessageBoxCounter() { qApp->installEventFilter(this); }
    ~MessageBoxCounter() override { qApp->removeEventFilter(this); }
    int shown = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show) {
            if (auto* box = qobject_cast<QMessageBox*>(watched)) {
                ++shown;
                QTimer::singleShot(0, box, &QDialog::reject);
            }
        }
        return false;
    }
};

} // namespace

class TestUniqueValuesByManyFields : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    TZRenderPanelUniqueValuesByManyFields* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelUniqueValuesByManyFields*>();
        if (panel)
            mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->setCurrentText(panel->title());
        return panel;
    }

    static void clickField(TZRenderPanelUniqueValuesByManyFields* panel, const QString& field)
    {
        TZWidgetValueItem* item = panel->fieldItem(field);
        QVERIFY(item);
        item->checkBox()->click();
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    // Every way of reading gives the keys and counts of a plain scan of the
    // layer as edited, in first-met order; a value holding "," makes an
    // ambiguous key that is kept as built, a null reads as "".
    void combinedKeysAndCountsFollowAScan_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<bool>("edited");
        QTest::addColumn<QStringList>("expected");
        const QStringList saved = {"town,1=2", "city,2=2", "a,b,3=1", "town,4=1", ",1=1"};
        // The first feature becomes city,2, the second city,2 is deleted and
        // village,9 comes last.
        const QStringList edited = {"city,2=2", "town,1=1", "a,b,3=1", "town,4=1", ",1=1", "village,9=1"};
        for (const char* source : {"memory", "gpkg-pushdown", "gpkg-cursor"}) {
            QTest::addRow("%s saved", source) << QString::fromLatin1(source) << false << saved;
            QTest::addRow("%s edited", source) << QString::fromLatin1(source) << true << edited;
        }
    }
    void combinedKeysAndCountsFollowAScan()
    {
        QFETCH(QString, source);
        QFETCH(bool, edited);
        QFETCH(QStringList, expected);
        QTemporaryDir folder;
        const TERefPtr<TEFeatureLayer> layer =
            source == QLatin1String("memory") ? TERefPtr<TEFeatureLayer>(memoryPlaces()) : geoPackagePlaces(folder.path());
        QVERIFY(layer);
        const int firstFid = layer->Search(TEQueryFilter())->NextFeature()->GetId();
        if (edited)
            editPlaces(*layer, firstFid);

        const TERefPtr<TEFeatureTable> table = layer->GetDatasource();
        if (source == QLatin1String("gpkg-cursor"))
            table->SetMethod(TEFeatureTable::Method::Cursor);
        QStringList keys;
        std::vector<int> counts;
        QVERIFY(table->GetKeyTexts({TEString(L"kind"), TEString(L"code")}, QStringLiteral(","), layer->query_filter(),
                                   keys, counts));
        QCOMPARE(keyCounts(keys, counts), expected);
        if (source == QLatin1String("gpkg-pushdown"))
            QCOMPARE(int(table->GetLastMethod()), int(TEFeatureTable::Method::PushDown));

        // The model shows the same, each key once, whatever the check order.
        TZModelUniqueValuesByManyFields model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setLayerAndFields(layer.get(), {QStringLiteral("kind"), QStringLiteral("code")});
        auto ramp = VectorFixtures::redToBlue();
        model.addAllCombinations(ramp.get(), nullptr);
        QCOMPARE(modelKeyCounts(model), expected);

        model.setFields({QStringLiteral("code"), QStringLiteral("kind")});
        model.addAllCombinations(ramp.get(), nullptr);
        QVERIFY(model.findRow(QStringLiteral("3,a,b")) > 0);
        QCOMPARE(model.findRow(QStringLiteral("a,b,3")), -1);
    }

    // The question comes at 10,000 features, not at 9,999; the table is
    // cleared before it, and Cancel leaves it so.
    void largeLayerAsksBeforeCollecting_data()
    {
        QTest::addColumn<int>("extra");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<int>("rows");
        // 7 * 1428 = 9996 fixture features, plus extra.
        QTest::newRow("9999 not asked") << 3 << int(QMessageBox::Cancel) << false << 6;
        QTest::newRow("10000 yes") << 4 << int(QMessageBox::Yes) << true << 6;
        QTest::newRow("10000 cancel") << 4 << int(QMessageBox::Cancel) << true << 1;
    }
    void largeLayerAsksBeforeCollecting()
    {
        QFETCH(int, extra);
        QFETCH(int, answer);
        QFETCH(bool, asked);
        QFETCH(int, rows);
        auto layer = memoryPlaces(1428);
        for (int i = 0; i < extra; ++i)
            layer->AppendFeature(QStringLiteral("POINT(0 0)"), {TEVariant(TEString(L"hamlet")), TEVariant(i), TEVariant()});
        QCOMPARE(layer->GetFeatureCount(), 9996 + extra);

        TZModelUniqueValuesByManyFields model;
        model.setLayerAndFields(layer.get(), {QStringLiteral("kind")});
        model.appendRow(model.makeSymbol(TEColor(1, 2, 3)), QStringLiteral("old"), QStringLiteral("old"), 1);
        auto ramp = VectorFixtures::redToBlue();
        if (!asked) {
            // Any message box would be counted and closed at once, so that a
            // wrong question fails the test instead of hanging it.
            MessageBoxCounter counter;
            model.addAllCombinations(ramp.get(), nullptr);
            QCOMPARE(counter.shown, 0);
        } else {
            int rowsWhenAsked = -1;
            ModalAnswer question("QMessageBox",
                                 ModalAnswer::click(QMessageBox::StandardButton(answer),
                                                    [&](QWidget*) { rowsWhenAsked = model.rowCount(); }));
            model.addAllCombinations(ramp.get(), nullptr);
            QVERIFY(question.answered());
            QCOMPARE(question.dialogTitle(), QStringLiteral("warning"));
            QCOMPARE(question.dialogText(),
                     QStringLiteral("This data big, get unique data is slowly,would you like to continus?"));
            QCOMPARE(rowsWhenAsked, 1);
        }
        QCOMPARE(model.rowCount(), rows);
        QCOMPARE(model.findRow(QStringLiteral("old")), -1);
    }

    // The combo text lists fields in check order; Apply writes that order
    // and a reset reads the render back.
    void checkOrderDrivesKeysApplyAndReset()
    {
        auto layer = memoryPlaces();
        TZRenderPanelUniqueValuesByManyFields* panel = openPanel(layer.get());
        QVERIFY(panel && panel->model());
        QCOMPARE(panel->name(), QStringLiteral("UniqueValuesManyFields"));
        auto* combo = panel->findChild<QComboBox*>("mComboBoxValueFields");
        QVERIFY(combo);
        QCOMPARE(combo->currentText(), QString());

        // Nothing chosen: nothing collected, nothing applied.
        panel->findChild<QPushButton*>("mButtonAddAllMF")->click();
        QCOMPARE(panel->model()->rowCount(), 1);
        const TERefPtr<TEFeatureRender> opening = layer->GetSymbolRender();
        QVERIFY(!panel->onApply());
        QCOMPARE(layer->GetSymbolRender(), opening);

        clickField(panel, QStringLiteral("code"));
        clickField(panel, QStringLiteral("name"));
        clickField(panel, QStringLiteral("kind"));
        QCOMPARE(combo->currentText(), QStringLiteral("code,name,kind"));
        clickField(panel, QStringLiteral("name"));
        QCOMPARE(combo->currentText(), QStringLiteral("code,kind"));
        QCOMPARE(panel->model()->fields(), (QStringList{"code", "kind"}));

        panel->findChild<QPushButton*>("mButtonAddAllMF")->click();
        QCOMPARE(modelKeyCounts(*panel->model()), (QStringList{"1,town=2", "2,city=2", "3,a,b=1", "4,town=1", "1,=1"}));
        panel->model()->setShowOtherValuesState(Qt::Checked);
        QVERIFY(panel->onApply());
        const auto render = layer->GetSymbolRender().cast<TECategorizedByManyFieldsSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->GetExpression().toQString(), QStringLiteral("code,kind"));
        QCOMPARE(render->GetItemCount(), 6);
        QCOMPARE(render->GetCategoryRenderItem(3)->GetValue().toQString(), QStringLiteral("3,a,b"));
        QVERIFY(render->IsShowOtherValue());
        QCOMPARE(render->GetOutLineInfo().unit, 1);

        // Reset: the same fields checked, the same rows with their counts.
        panel->onReset();
        QCOMPARE(combo->currentText(), QStringLiteral("code,kind"));
        QVERIFY(panel->fieldItem(QStringLiteral("kind"))->isChecked());
        QVERIFY(!panel->fieldItem(QStringLiteral("name"))->isChecked());
        QCOMPARE(modelKeyCounts(*panel->model()), (QStringList{"1,town=2", "2,city=2", "3,a,b=1", "4,town=1", "1,=1"}));
        QCOMPARE(panel->model()->showOtherValuesState(), Qt::Checked);

        // Unchecking the only fields empties the text; Apply is refused.
        clickField(panel, QStringLiteral("code"));
        clickField(panel, QStringLiteral("kind"));
        QCOMPARE(combo->currentText(), QString());
        QVERIFY(!panel->onApply());
    }
};

TZ_REGISTER_TEST(TestUniqueValuesByManyFields)
#include "TestUniqueValuesByManyFields.moc"
