#include "TestRegistry.h"

#include "AppFixture.h"

#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"

#include "TZControlRender.h"
#include "TZModelGradingSymbol.h"
#include "TZRenderPanelGradingSymbol.h"
#include "TZRenderPanelGraduatedSymbolsDiagram.h"
#include "data/TEFeatureLayer.h"
#include "data/TEGdalSupport.h"
#include "renders/TEGradingSymbolRender.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>

#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

using namespace TZObjects;

namespace {

bool addFeature(OGRLayerH layer, int i, double value, const QString& wkt)
{
    OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
    OGR_F_SetFieldString(feature, 0, QByteArray::number(i).constData());
    OGR_F_SetFieldDouble(feature, 1, value);
    QByteArray text = wkt.toUtf8();
    char* cursor = text.data();
    OGRGeometryH geometry = nullptr;
    OGR_G_CreateFromWkt(&cursor, nullptr, &geometry);
    OGR_F_SetGeometryDirectly(feature, geometry);
    const OGRErr written = OGR_L_CreateFeature(layer, feature);
    OGR_F_Destroy(feature);
    return written == OGRERR_NONE;
}

OGRLayerH createLayer(GDALDatasetH dataset, const char* name, OGRwkbGeometryType type)
{
    OGRSpatialReferenceH srs = OSRNewSpatialReference(nullptr);
    OSRImportFromEPSG(srs, 3857);
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, name, srs, type, nullptr);
    OSRDestroySpatialReference(srs);
    OGRFieldDefnH label = OGR_Fld_Create("name", OFTString);
    OGR_L_CreateField(layer, label, TRUE);
    OGR_Fld_Destroy(label);
    OGRFieldDefnH value = OGR_Fld_Create("v", OFTReal);
    OGR_L_CreateField(layer, value, TRUE);
    OGR_Fld_Destroy(value);
    return layer;
}

// grades.gpkg (EPSG:3857): "grades", three 100 x 100 squares side by side
// from (0,0) with v = 1, 5 and 9; "sites", a point at the centre of each
// square with the same values.
QString writeGrades(const QString& folder)
{
    TEGdalSupport::EnsureRegistered();
    const QString path = folder + QStringLiteral("/grades.gpkg");
    GDALDatasetH dataset =
        GDALCreate(GDALGetDriverByName("GPKG"), path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset)
        return {};
    OGRLayerH squares = createLayer(dataset, "grades", wkbPolygon);
    OGRLayerH sites = createLayer(dataset, "sites", wkbPoint);
    const double values[] = {1.0, 5.0, 9.0};
    bool written = squares && sites;
    for (int i = 0; i < 3 && written; ++i) {
        const int x = 100 * i;
        written = addFeature(squares, i, values[i],
                             QStringLiteral("POLYGON((%1 0,%2 0,%2 100,%1 100,%1 0))").arg(x).arg(x + 100))
            && addFeature(sites, i, values[i], QStringLiteral("POINT(%1 50)").arg(x + 50));
    }
    GDALClose(dataset);
    return written ? path : QString();
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

    // Shows the window on grades.gpkg, selects the layer (which hands it to
    // the dock) and chooses the page titled title. Null on failure.
    TEFeatureLayer* openWithPage(TZMapWindow& window, const char* layerName, const QString& title)
    {
        const QString path = writeGrades(mDir.path());
        window.resize(1200, 700);
        window.show();
        if (path.isEmpty() || !QTest::qWaitForWindowExposed(&window) || window.openPaths({path}) != 2)
            return nullptr;
        TEFeatureLayer* found = nullptr;
        for (const auto& layer : window.layerTree()->layers()) {
            if (layer->GetLayerName().toQString() == QLatin1String(layerName))
                found = dynamic_cast<TEFeatureLayer*>(layer.get());
        }
        if (!found)
            return nullptr;
        window.selectLayer(found->GetGuidStr().toQString());
        QCoreApplication::processEvents();
        QComboBox* styles = child<QComboBox>(TZControlRender::instance(nullptr), "mComboBoxRenderStyle");
        styles->setCurrentIndex(styles->findText(title));
        return styles->currentText() == title ? found : nullptr;
    }

    // Applies the dock's page and shows the three squares once drawn.
    static void applyAndShowAll(TZMapCanvas* canvas)
    {
        child<QDialogButtonBox>(TZControlRender::instance(nullptr), "mButtonBox")
            ->button(QDialogButtonBox::Apply)
            ->click();
        QVERIFY(canvas->isDrawing());
        waitForDrawing(canvas);
        QCoreApplication::processEvents();
        canvas->zoomToExtent(QRectF(0.0, 0.0, 300.0, 100.0));
        waitForDrawing(canvas);
    }

    // Pixels of the colour in a 40-pixel square around the map point.
    static int pixelsAround(TZMapCanvas* canvas, const QPointF& map, const QColor& color)
    {
        const QImage image = canvas->mapImage();
        const QPoint centre = canvas->viewport().toDevice(map).toPoint();
        int count = 0;
        for (int y = centre.y() - 20; y <= centre.y() + 20; ++y) {
            for (int x = centre.x() - 20; x <= centre.x() + 20; ++x) {
                if (image.valid(x, y) && image.pixelColor(x, y) == color)
                    ++count;
            }
        }
        return count;
    }

private Q_SLOTS:
    void classedPolygonsDrawInTheirClassColours()
    {
        TZMapWindow window;
        TEFeatureLayer* grades = openWithPage(window, "grades", QStringLiteral("Grading symbol"));
        QVERIFY(grades);
        const QString guid = grades->GetGuidStr().toQString();
        TZMapCanvas* canvas = window.canvas();
        TZControlRender* dock = TZControlRender::instance(nullptr);
        // Several pages share these names: look inside the grading page.
        auto* page = dock->findChild<TZRenderPanelGradingSymbol*>();
        QVERIFY(page && page->isVisible());
        child<QComboBox>(page, "mComboBoxLevel")->setCurrentText(QStringLiteral("3"));
        child<QPushButton>(page, "mButtonUpdate")->click();
        QAbstractItemModel* rows = child<QTableView>(page, "tableView")->model();
        QCOMPARE(rows->rowCount(), 4);
        applyAndShowAll(canvas);

        const auto render = grades->GetSymbolRender().cast<TEGradingSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->GetItemCount(), 4);
        QList<QColor> classColours;
        for (int i = 1; i <= 3; ++i)
            classColours << QColor::fromRgba(render->GetCategoryRenderItem(i)->GetStyle()->GetColor().GetColor());
        QVERIFY(classColours[0] != classColours[1] && classColours[1] != classColours[2]);
        // Inside each square, away from its outline and the site at its centre.
        QCOMPARE(pixel(canvas, {20.0, 80.0}), classColours[0]);
        QCOMPARE(pixel(canvas, {150.0, 20.0}), classColours[1]);
        QCOMPARE(pixel(canvas, {280.0, 20.0}), classColours[2]);

        // The legend lists the classes under their labels.
        const QStringList legend = AppFixture::legendTexts(*window.layerTree(), guid);
        QCOMPARE(legend.size(), 3);
        QCOMPARE(legend[0], QStringLiteral("1.00000,3.66667"));
        QCOMPARE(legend[2], QStringLiteral("6.33333,9.00000"));

        // Reopening the page reads the same classes and counts back.
        child<QPushButton>(page, "mButtonDeleteAllValues")->click();
        QCOMPARE(rows->rowCount(), 1);
        child<QDialogButtonBox>(dock, "mButtonBox")->button(QDialogButtonBox::Reset)->click();
        QCOMPARE(rows->rowCount(), 4);
        QCOMPARE(rows->index(2, 1).data().toString(), QStringLiteral("3.66667,6.33333"));
        QCOMPARE(rows->index(2, 3).data().toString(), QStringLiteral("1"));
        window.setWindowModified(false);
    }

    // Over the sites' own symbols, each site gets its class symbol at its
    // anchor, larger for a higher class.
    void graduatedSymbolsGrowWithTheirClass()
    {
        TZMapWindow window;
        TEFeatureLayer* sites = openWithPage(window, "sites", QStringLiteral("Graduated symbols"));
        QVERIFY(sites);
        const TERefPtr<TEFeatureRender> before = sites->GetSymbolRender();
        QVERIFY(before);
        auto* page = TZControlRender::instance(nullptr)->findChild<TZRenderPanelGraduatedSymbolsDiagram*>();
        QVERIFY(page && page->isVisible());
        child<QComboBox>(page, "mComboBoxLevel")->setCurrentText(QStringLiteral("3"));
        child<QDoubleSpinBox>(page, "mDoubleSpinBoxMin")->setValue(2.0);
        child<QDoubleSpinBox>(page, "mDoubleSpinBoxMax")->setValue(20.0);
        child<QPushButton>(page, "mButtonUpdate")->click();
        QCOMPARE(page->model()->rowCount(), 4);
        applyAndShowAll(window.canvas());

        const auto render = sites->GetSymbolRender().cast<TEGraduatedSymbolsDiagramRender>();
        QVERIFY(render);
        QCOMPARE(render->GetBackgroundRender().get(), before.get());
        QCOMPARE(int(render->items().size()), 3);
        QList<int> areas;
        for (int i = 0; i < 3; ++i) {
            const QColor colour = QColor::fromRgba(render->items()[size_t(i)].style()->GetColor().GetColor());
            const QPointF site(50.0 + 100.0 * i, 50.0);
            QCOMPARE(pixel(window.canvas(), site), colour);
            areas << pixelsAround(window.canvas(), site, colour);
        }
        QVERIFY2(areas[0] > 0 && areas[0] < areas[1] && areas[1] < areas[2],
                 qPrintable(QStringLiteral("class symbol areas %1, %2, %3").arg(areas[0]).arg(areas[1]).arg(areas[2])));
        window.setWindowModified(false);
    }
};

TZ_REGISTER_TEST(TestGradingInTzmap)
#include "TestGradingInTzmap.moc"
