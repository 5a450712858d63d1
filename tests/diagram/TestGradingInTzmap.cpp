#include "TestRegistry.h"

#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"

#include "TZControlRender.h"
#include "TZModelGradingSymbol.h"
#include "TZRenderPanelGradingSymbol.h"
#include "data/TEFeatureLayer.h"
#include "data/TEGdalSupport.h"
#include "renders/TEGradingSymbolRender.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeWidgetItem>

#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

using namespace TZObjects;

namespace {

// grades.gpkg (EPSG:3857): "grades", three 100 x 100 squares side by side
// from (0,0) with v = 1, 5 and 9.
QString writeGrades(const QString& folder)
{
    TEGdalSupport::EnsureRegistered();
    const QString path = folder + QStringLiteral("/grades.gpkg");
    GDALDatasetH dataset =
        GDALCreate(GDALGetDriverByName("GPKG"), path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset)
        return {};
    OGRSpatialReferenceH srs = OSRNewSpatialReference(nullptr);
    OSRImportFromEPSG(srs, 3857);
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, "grades", srs, wkbPolygon, nullptr);
    OSRDestroySpatialReference(srs);
    OGRFieldDefnH name = OGR_Fld_Create("name", OFTString);
    OGR_L_CreateField(layer, name, TRUE);
    OGR_Fld_Destroy(name);
    OGRFieldDefnH value = OGR_Fld_Create("v", OFTReal);
    OGR_L_CreateField(layer, value, TRUE);
    OGR_Fld_Destroy(value);
    const double values[] = {1.0, 5.0, 9.0};
    for (int i = 0; i < 3; ++i) {
        OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
        OGR_F_SetFieldString(feature, 0, QByteArray::number(i).constData());
        OGR_F_SetFieldDouble(feature, 1, values[i]);
        QByteArray wkt = QStringLiteral("POLYGON((%1 0,%2 0,%2 100,%1 100,%1 0))")
                             .arg(100 * i)
                             .arg(100 * i + 100)
                             .toUtf8();
        char* cursor = wkt.data();
        OGRGeometryH geometry = nullptr;
        OGR_G_CreateFromWkt(&cursor, nullptr, &geometry);
        OGR_F_SetGeometryDirectly(feature, geometry);
        const OGRErr written = OGR_L_CreateFeature(layer, feature);
        OGR_F_Destroy(feature);
        if (written != OGRERR_NONE) {
            GDALClose(dataset);
            return {};
        }
    }
    GDALClose(dataset);
    return path;
}

} // namespace

// The grading page used as a person uses it, in a real tzmap window: the
// classes it applies are what the canvas draws and the legend lists.
class TestGradingInTzmap : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;

    static void waitForDrawing(TZMapCanvas* canvas)
    {
        QSignalSpy finished(canvas, &TZMapCanvas::drawingFinished);
        while (canvas->isDrawing())
            QVERIFY(finished.wait(10000));
    }

    template <class T>
    static T* child(QWidget* parent, const char* name)
    {
        return parent->findChild<T*>(QString::fromLatin1(name));
    }

    static QColor pixel(TZMapCanvas* canvas, const QPointF& map)
    {
        return canvas->mapImage().pixelColor(canvas->viewport().toDevice(map).toPoint());
    }

private Q_SLOTS:
    void classedPolygonsDrawInTheirClassColours()
    {
        const QString path = writeGrades(mDir.path());
        QVERIFY(!path.isEmpty());
        TZMapWindow window;
        window.resize(1200, 700);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.openPaths({path}), 1);
        TEFeatureLayer* grades = dynamic_cast<TEFeatureLayer*>(window.layerTree()->layers().front().get());
        QVERIFY(grades);
        const QString guid = grades->GetGuidStr().toQString();
        window.selectLayer(guid);
        QCoreApplication::processEvents();
        TZMapCanvas* canvas = window.canvas();
        canvas->zoomToExtent(QRectF(0.0, 0.0, 300.0, 100.0));
        waitForDrawing(canvas);

        TZControlRender* dock = TZControlRender::instance(nullptr);
        QComboBox* styles = child<QComboBox>(dock, "mComboBoxRenderStyle");
        styles->setCurrentIndex(styles->findText(QStringLiteral("Grading symbol")));
        // Several pages share these names: look inside the grading page.
        auto* page = dock->findChild<TZRenderPanelGradingSymbol*>();
        QVERIFY(page && page->isVisible());
        child<QComboBox>(page, "mComboBoxLevel")->setCurrentText(QStringLiteral("3"));
        child<QPushButton>(page, "mButtonUpdate")->click();
        QAbstractItemModel* rows = child<QTableView>(page, "tableView")->model();
        QCOMPARE(rows->rowCount(), 4);
        child<QDialogButtonBox>(dock, "mButtonBox")->button(QDialogButtonBox::Apply)->click();
        QVERIFY(canvas->isDrawing());
        waitForDrawing(canvas);
        // The page may have widened the dock: show the squares again.
        QCoreApplication::processEvents();
        canvas->zoomToExtent(QRectF(0.0, 0.0, 300.0, 100.0));
        waitForDrawing(canvas);

        const auto render = grades->GetSymbolRender().cast<TEGradingSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->GetItemCount(), 4);
        QList<QColor> classColours;
        for (int i = 1; i <= 3; ++i)
            classColours << QColor::fromRgba(render->GetCategoryRenderItem(i)->GetStyle()->GetColor().GetColor());
        QVERIFY(classColours[0] != classColours[1] && classColours[1] != classColours[2]);
        // Inside each square, away from its outline.
        QCOMPARE(pixel(canvas, {20.0, 80.0}), classColours[0]);
        QCOMPARE(pixel(canvas, {150.0, 50.0}), classColours[1]);
        QCOMPARE(pixel(canvas, {280.0, 20.0}), classColours[2]);

        // The legend lists the classes under their labels.
        QTreeWidgetItem* item = window.layerTree()->itemOf(guid);
        QVERIFY(item);
        QCOMPARE(item->childCount(), 3);
        QCOMPARE(item->child(0)->text(0), QStringLiteral("1.00000,3.66667"));
        QCOMPARE(item->child(2)->text(0), QStringLiteral("6.33333,9.00000"));

        // Reopening the page reads the same classes and counts back.
        child<QPushButton>(page, "mButtonDeleteAllValues")->click();
        QCOMPARE(rows->rowCount(), 1);
        child<QDialogButtonBox>(dock, "mButtonBox")->button(QDialogButtonBox::Reset)->click();
        QCOMPARE(rows->rowCount(), 4);
        QCOMPARE(rows->index(2, 1).data().toString(), QStringLiteral("3.66667,6.33333"));
        QCOMPARE(rows->index(2, 3).data().toString(), QStringLiteral("1"));
        window.setWindowModified(false);
    }
};

TZ_REGISTER_TEST(TestGradingInTzmap)
#include "TestGradingInTzmap.moc"
