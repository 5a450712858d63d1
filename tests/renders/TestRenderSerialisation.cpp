#include "TestRegistry.h"

#include "RenderFixtures.h"

#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEDiagramRender.h"
#include "renders/TEFileFunc.h"
#include "renders/TEHeatMapperRender.h"
#include "renders/TEImageRender.h"
#include "renders/TESingleBandImageRender.h"

#include <QJsonDocument>
#include <QTemporaryDir>

#include <set>

using namespace TZObjects;
using namespace RenderFixtures;

Q_DECLARE_METATYPE(TZObjects::TERefPtr<TZObjects::TERender>)

namespace {

QByteArray JsonText(const TERender* render)
{
    return QJsonDocument(TEFileFunc::SaveRender(render)).toJson(QJsonDocument::Compact);
}

void AddRenderRows()
{
    QTest::addColumn<TERefPtr<TERender>>("render");
    for (const TERefPtr<TERender>& render : FullyPopulatedRenders())
        QTest::newRow(render->GetType().toUTF8().c_str()) << render;
}

} // namespace

class TestRenderSerialisation : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyRenderClassIsCovered()
    {
        std::set<TEString> covered;
        for (const TERefPtr<TERender>& render : FullyPopulatedRenders())
            covered.insert(render->GetType());
        for (const TEString& type : TEFileFunc::RenderTypes()) {
            QVERIFY2(covered.count(type), qPrintable(type.toQString()));
            QCOMPARE(TEFileFunc::CreateRender(type)->GetType(), type);
        }
    }

    void saveAndOpenRoundTripExactly_data() { AddRenderRows(); }
    void saveAndOpenRoundTripExactly()
    {
        QFETCH(TERefPtr<TERender>, render);
        const QByteArray saved = JsonText(render.get());
        TEString error;
        TERefPtr<TERender> reopened = TEFileFunc::OpenRender(TEFileFunc::SaveRender(render.get()), &error);
        QVERIFY2(reopened, qPrintable(error.toQString()));
        QCOMPARE(reopened->GetType(), render->GetType());
        QCOMPARE(JsonText(reopened.get()), saved);
        // Nothing was left at its default by the fixture.
        QVERIFY(saved != JsonText(TEFileFunc::CreateRender(render->GetType()).get()));
    }

    void renderSurvivesAFile_data() { AddRenderRows(); }
    void renderSurvivesAFile()
    {
        QFETCH(TERefPtr<TERender>, render);
        QTemporaryDir folder;
        const TEString path(folder.filePath(QStringLiteral("render.json")));
        TEString error;
        QVERIFY2(TEFileFunc::SaveRenderToFile(render.get(), path, &error), qPrintable(error.toQString()));
        TERefPtr<TERender> reopened = TEFileFunc::OpenRenderFromFile(path, &error);
        QVERIFY2(reopened, qPrintable(error.toQString()));
        QCOMPARE(JsonText(reopened.get()), JsonText(render.get()));
    }

    void cloneIsAnEqualAndIndependentCopy_data() { AddRenderRows(); }
    void cloneIsAnEqualAndIndependentCopy()
    {
        QFETCH(TERefPtr<TERender>, render);
        const QByteArray before = JsonText(render.get());
        TERefPtr<TERender> clone = render->CloneRender();
        QVERIFY(clone.get() != render.get());
        QCOMPARE(JsonText(clone.get()), before);

        if (auto feature = clone.cast<TEFeatureRender>()) {
            for (const TERefPtr<TEStyle>& style : feature->GetStyles())
                style->SetColor(TEColor(1, 255, 1));
            feature->SetRotateField(L"changed");
            if (auto diagram = clone.cast<TEDiagramRender>()) {
                QVERIFY(diagram->GetBackgroundRender());
                for (const TERefPtr<TEStyle>& style : diagram->GetBackgroundRender()->GetStyles())
                    style->SetColor(TEColor(1, 255, 1));
            }
            if (auto heat = clone.cast<TEHeatMapperRender>())
                heat->GetColorRamp()->setName(L"changed");
        } else if (auto single = clone.cast<TESingleBandImageRender>()) {
            single->getRenderInfo()->open(QJsonObject());
            single->SetNodataColor(TEColor(1, 255, 1));
        } else {
            clone.cast<TEImageRender>()->SetNodataColor(TEColor(1, 255, 1));
        }
        QVERIFY(JsonText(clone.get()) != before);
        QCOMPARE(JsonText(render.get()), before);
    }

    void openingReportsWhatItCannotRead()
    {
        TEString error;
        QJsonObject unknown;
        unknown[QStringLiteral("type")] = QStringLiteral("NoSuchRender");
        QVERIFY(!TEFileFunc::OpenRender(unknown, &error));
        QVERIFY(error.Contains(L"NoSuchRender"));

        auto render = MakeRef<TECategorizedSymbolRender>(L"kind");
        render->AddCategory(L"city", L"City", PointStyle(1, 2, 3));
        QJsonObject json = TEFileFunc::SaveRender(render.get());
        QVERIFY(TEFileFunc::OpenImageRender(json, &error) == nullptr);
        QVERIFY(!error.IsEmpty());

        QJsonObject table = json[QStringLiteral("categoryTable")].toObject();
        QJsonArray styles = table[QStringLiteral("styles")].toArray();
        QJsonObject style = styles[0].toObject();
        style[QStringLiteral("type")] = QStringLiteral("NoSuchStyle");
        styles[0] = style;
        table[QStringLiteral("styles")] = styles;
        json[QStringLiteral("categoryTable")] = table;
        error.clear();
        QVERIFY(!TEFileFunc::OpenRender(json, &error));
        QVERIFY(!error.IsEmpty());

        QTemporaryDir folder;
        QVERIFY(!TEFileFunc::OpenRenderFromFile(TEString(folder.filePath(QStringLiteral("missing.json"))), &error));
    }
};

TZ_REGISTER_TEST(TestRenderSerialisation)
#include "TestRenderSerialisation.moc"
