#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerDrawer.h"

#include "TZControlRender.h"
#include "TZModelMatchToSymbols.h"
#include "TZModelUniqueValuesByManyFields.h"
#include "TZRenderPanelMatchToSymbolsInAStyle.h"
#include "TZRenderPanelUniqueValuesByManyFields.h"
#include "TZWidgetValueItem.h"

#include "data/TEFeatureLayer.h"
#include "symbology/TEStyleDB.h"
#include "symbology/TEStyleSystem.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace TZObjects;

namespace {

QImage drawLayer(TELayer* layer, const TZMapViewport& viewport)
{
    QImage image = AppFixture::blankImage(viewport);
    std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer);
    if (!drawer)
        return QImage();
    QPainter painter(&image);
    drawer->draw(&painter, viewport, nullptr);
    return image;
}

template <class Panel>
Panel* openPanel(TELayer* layer)
{
    TZControlRender* dock = TZControlRender::instance(nullptr);
    dock->show();
    dock->setLayer(layer);
    dock->showLayerStyle();
    auto* panel = dock->findChild<Panel*>();
    if (panel)
        dock->findChild<QComboBox*>("mComboBoxRenderStyle")->setCurrentText(panel->title());
    return panel;
}

} // namespace

// The categories the many-fields and match-to-symbols pages apply draw in
// tzmap: each square in its category's symbol.
class TestCategoryPanelsInTzmap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mVectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!mVectors.isEmpty());
    }

    void cleanup()
    {
        TZControlRender* dock = TZControlRender::instance(nullptr);
        dock->setLayer(nullptr);
        dock->hide();
    }

    void manyFieldsCategoriesDraw()
    {
        TERefPtr<TEFeatureLayer> squares = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        QVERIFY(squares);
        auto* panel = openPanel<TZRenderPanelUniqueValuesByManyFields>(squares.get());
        QVERIFY(panel && panel->model());
        panel->fieldItem(QStringLiteral("landuse"))->checkBox()->click();
        panel->onAddAllValues();
        TZModelUniqueValuesByManyFields* model = panel->model();
        QCOMPARE(model->rowCount(), 3);
        model->setRowStyle(model->findRow(QStringLiteral("Forest")), AppFixture::fillStyle(Qt::red));
        model->setRowStyle(model->findRow(QStringLiteral("Water")), AppFixture::fillStyle(Qt::blue));
        TZControlRender::instance(nullptr)->onApply();

        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(squares.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::red));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::blue));
    }

    void matchedStylesDraw()
    {
        auto db = MakeRef<TEStyleDB>(TEString(L"Tzmap match styles"));
        TERefPtr<TEStyle> forest = AppFixture::fillStyle(Qt::green);
        forest->SetName(TEString(L"Forest"));
        TERefPtr<TEStyle> water = AppFixture::fillStyle(Qt::cyan);
        water->SetName(TEString(L"Water"));
        db->AddStyle(forest);
        db->AddStyle(water);
        TEStyleSystem::GetInstance()->AddStyleDB(db);

        TERefPtr<TEFeatureLayer> squares = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        QVERIFY(squares);
        auto* panel = openPanel<TZRenderPanelMatchToSymbolsInAStyle>(squares.get());
        QVERIFY(panel && panel->model());
        auto* dbs = panel->findChild<QComboBox*>("mComboBoxSymbolDB");
        dbs->setCurrentIndex(dbs->findText(QStringLiteral("Tzmap match styles")));
        panel->findChild<QComboBox*>("mComboBoxMatchField")->setCurrentText(QStringLiteral("landuse"));
        panel->onAddAllValues();
        QCOMPARE(panel->model()->rowCount(), 3);
        TZControlRender::instance(nullptr)->onApply();

        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(squares.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::green));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::cyan));
        TEStyleSystem::GetInstance()->Reload();
    }

private:
    QTemporaryDir mDir;
    QString mVectors;
};

TZ_REGISTER_TEST(TestCategoryPanelsInTzmap)
#include "TestCategoryPanelsInTzmap.moc"
