#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZMapProject.h"

#include "data/TEFeatureLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEFileFunc.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QFile>
#include <QTemporaryDir>

using namespace TZObjects;

namespace {

QJsonObject renderJson(const TELayer* layer)
{
    const TERefPtr<TERender> render = layer->GetRender();
    return render ? TEFileFunc::SaveRender(render.get()) : QJsonObject();
}

} // namespace

// A project keeps its layers, their order, visibility, names and renders
// through a save and an open.
class TestMapProject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mVectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!mVectors.isEmpty());
        mGrey = AppFixture::writeGreyRaster(mDir.path());
        QVERIFY(!mGrey.isEmpty());
    }

    void roundTripKeepsEveryLayersRender()
    {
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(mVectors, QStringLiteral("spots"));
        TERefPtr<TEFeatureLayer> squares = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        TERefPtr<TEFeatureLayer> plain = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        TERefPtr<TERasterLayer> grey = TERasterLayer::Open(mGrey);
        QVERIFY(spots && squares && plain && grey);

        auto point = MakeRef<TEStyleSimplePoint>();
        point->SetColor(TEColor(10, 20, 30));
        point->SetSize(4.5);
        spots->SetSymbolRender(MakeRef<TESingleSymbolRender>(point));
        auto categories = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        auto forest = MakeRef<TEStyleSimpleFill>();
        forest->SetColor(TEColor(0, 128, 0));
        categories->AddCategory(L"Forest", L"Woodland", forest, true, 1000.0, 50000.0);
        categories->SetIsShowOtherValue(false);
        squares->SetSymbolRender(categories);
        squares->SetLayerName(TEString(L"Land use"));
        auto composite = MakeRef<TEMultiBandImageRender>();
        composite->setImageRenderMODE(8);
        composite->SetStretchBandIndex(1);
        grey->SetRender(composite);
        // "Not to render" leaves a layer without a render; so it stays.
        plain->SetSymbolRender({});

        const std::vector<TZMapProject::LayerState> saved = {
            {spots, true}, {squares, false}, {plain, true}, {grey, true}};
        const TZMapViewport view(QSize(800, 600), QPointF(100.0, 50.0), 0.25);
        const QString path = mDir.filePath(QStringLiteral("round.tzmap"));
        QString error;
        QVERIFY2(TZMapProject::save(path, saved, view, &error), qPrintable(error));

        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport openedView;
        QStringList warnings;
        QVERIFY2(TZMapProject::open(path, opened, openedView, &warnings, &error), qPrintable(error));
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
        QCOMPARE(opened.size(), saved.size());
        for (std::size_t i = 0; i < saved.size(); ++i) {
            QCOMPARE(opened[i].visible, saved[i].visible);
            QCOMPARE(opened[i].layer->GetLayerName().toQString(), saved[i].layer->GetLayerName().toQString());
            QCOMPARE(opened[i].layer->GetLayerType(), saved[i].layer->GetLayerType());
            QCOMPARE(renderJson(opened[i].layer.get()), renderJson(saved[i].layer.get()));
        }
        QVERIFY(!opened[2].layer->GetRender());
        auto reopened = opened[1].layer->GetRender().cast<TECategorizedSymbolRender>();
        QVERIFY(reopened);
        QCOMPARE(reopened->GetExpression().toQString(), QStringLiteral("landuse"));
        QCOMPARE(openedView.centre(), view.centre());
        QCOMPARE(openedView.unitsPerPixel(), view.unitsPerPixel());
    }

    void sourcesInTheProjectFolderAreStoredRelative()
    {
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(mVectors, QStringLiteral("spots"));
        const QString path = mDir.filePath(QStringLiteral("relative.tzmap"));
        QString error;
        QVERIFY(TZMapProject::save(path, {{spots, true}}, TZMapViewport(), &error));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY(text.contains("\"fixture.gpkg\""));
        QVERIFY(!text.contains(mDir.path().toUtf8()));
    }

    void missingLayerIsLeftOutWithAWarning()
    {
        QTemporaryDir other;
        const QString moved = AppFixture::writeVectors(other.path());
        TERefPtr<TEFeatureLayer> gone = TEFeatureLayer::Open(moved, QStringLiteral("spots"));
        TERefPtr<TEFeatureLayer> kept = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        const QString path = mDir.filePath(QStringLiteral("missing.tzmap"));
        QString error;
        QVERIFY(TZMapProject::save(path, {{gone, true}, {kept, true}}, TZMapViewport(), &error));
        gone = nullptr;
        QVERIFY(other.remove());

        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QStringList warnings;
        QVERIFY(TZMapProject::open(path, opened, view, &warnings, &error));
        QCOMPARE(opened.size(), std::size_t(1));
        QCOMPARE(opened[0].layer->GetLayerName().toQString(), QStringLiteral("squares"));
        QCOMPARE(warnings.size(), 1);
        QVERIFY(warnings[0].contains(QStringLiteral("spots")));
    }

    void renderMissingFromAnEntryOpensTheDefault_data()
    {
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("renderMember");
        QTest::addColumn<bool>("rendered");
        QTest::newRow("no member, version 1") << 1 << QString() << true;
        QTest::newRow("no member, version 2") << 2 << QString() << true;
        // Version 1 wrote null for a layer not given a render yet, which it
        // drew in a default style; version 2 writes it for "Not to render".
        QTest::newRow("null, version 1") << 1 << QStringLiteral(", \"render\": null") << true;
        QTest::newRow("null, version 2") << 2 << QStringLiteral(", \"render\": null") << false;
    }
    void renderMissingFromAnEntryOpensTheDefault()
    {
        QFETCH(int, version);
        QFETCH(QString, renderMember);
        QFETCH(bool, rendered);
        const QString path = mDir.filePath(QStringLiteral("older.tzmap"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QStringLiteral("{\"application\": \"tzmap\", \"version\": %1, \"layers\": ["
                                  "{\"kind\": \"feature\", \"source\": \"fixture.gpkg\", \"layer\": \"squares\"%2},"
                                  "{\"kind\": \"raster\", \"source\": \"grey.tif\"%2}]}")
                       .arg(version).arg(renderMember).toUtf8());
        file.close();
        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QStringList warnings;
        QString error;
        QVERIFY2(TZMapProject::open(path, opened, view, &warnings, &error), qPrintable(error));
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
        QCOMPARE(opened.size(), std::size_t(2));
        QCOMPARE(bool(opened[0].layer->GetRender().cast<TESingleSymbolRender>()), rendered);
        QCOMPARE(bool(opened[1].layer->GetRender()), rendered);
    }

    void fileThatIsNoProjectIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("not json") << QByteArray("<xml/>");
        QTest::newRow("other json") << QByteArray("{\"layers\": []}");
        QTest::newRow("newer version") << QByteArray("{\"application\": \"tzmap\", \"version\": 99, \"layers\": []}");
    }
    void fileThatIsNoProjectIsRefused()
    {
        QFETCH(QByteArray, content);
        const QString path = mDir.filePath(QStringLiteral("bad.tzmap"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        file.close();
        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QString error;
        QVERIFY(!TZMapProject::open(path, opened, view, nullptr, &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(opened.empty());
    }

private:
    QTemporaryDir mDir;
    QString mVectors;
    QString mGrey;
};

TZ_REGISTER_TEST(TestMapProject)
#include "TestMapProject.moc"
