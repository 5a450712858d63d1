#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"
#include "TZRenderPanel.h"
#include "TZSampleDataGenerator.h"
#include "TZWidgetFieldItem.h"

#include "data/TEFeatureLayer.h"
#include "renders/TEDiagramRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEColorRampDivision.h"
#include "widgets/TZColorSchemeComboBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>

#include <functional>

using namespace TZObjects;

// The pie and histogram pages on the sample regions in a real tzmap window:
// the diagrams are drawn by the canvas over the symbology the regions had,
// and switching from one diagram to another keeps that symbology. With
// TZ_SNAPSHOT_DIR set, the window is saved there after each apply.
class TestChartDiagramsInTzmap : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;
    QString mSample;

    static void waitForDrawing(TZMapCanvas* canvas)
    {
        QSignalSpy finished(canvas, &TZMapCanvas::drawingFinished);
        while (canvas->isDrawing())
            QVERIFY(finished.wait(20000));
    }

    template <class T>
    static T* child(QWidget* parent, const char* name)
    {
        return parent->findChild<T*>(QString::fromLatin1(name));
    }

    static int pixelsOf(const QImage& image, QRgb color)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            const QRgb* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
            for (int x = 0; x < image.width(); ++x)
                count += (line[x] | 0xFF000000u) == (color | 0xFF000000u) ? 1 : 0;
        }
        return count;
    }

    // Picks the page, ticks the fields in the drop-down, applies.
    static void applyDiagram(TZControlRender* dock, TZMapCanvas* canvas, const QString& title,
                             const QStringList& fields, const std::function<void(QWidget*)>& settings = {})
    {
        QComboBox* styles = child<QComboBox>(dock, "mComboBoxRenderStyle");
        styles->setCurrentIndex(styles->findText(title));
        QCOMPARE(styles->currentText(), title);
        QWidget* page = nullptr;
        for (TZRenderPanel* panel : dock->findChildren<TZRenderPanel*>()) {
            if (panel->isVisible() && panel->title() == title)
                page = panel;
        }
        QVERIFY(page);
        QListWidget* list = page->findChild<QListWidget*>();
        QVERIFY(list);
        for (const QString& field : fields) {
            bool found = false;
            for (int i = 0; i < list->count(); ++i) {
                auto* item = qobject_cast<TZWidgetFieldItem*>(list->itemWidget(list->item(i)));
                if (item && item->fieldName() == field && !item->isSelected()) {
                    QTest::mouseClick(item, Qt::LeftButton);
                    found = true;
                }
            }
            QVERIFY2(found, qPrintable(field));
        }
        if (settings)
            settings(page);
        child<QDialogButtonBox>(dock, "mButtonBox")->button(QDialogButtonBox::Apply)->click();
        waitForDrawing(canvas);
    }

    static void snapshot(QWidget* window, const QString& name)
    {
        const QString folder = qEnvironmentVariable("TZ_SNAPSHOT_DIR");
        if (!folder.isEmpty())
            window->grab().save(QDir(folder).filePath(name));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        std::string error;
        QVERIFY2(TZSampleDataGenerator(mDir.path().toStdString()).generate(&error), error.c_str());
        mSample = QDir(mDir.path()).filePath(QString::fromLatin1(TZSampleDataGenerator::GeoPackageName));
    }

    void pieThenHistogramDrawOverTheRegionsSymbology()
    {
        TZMapWindow window;
        window.resize(1200, 760);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(window.openPaths({mSample}) > 0);
        TEFeatureLayer* regions = nullptr;
        for (const auto& layer : window.layerTree()->layers()) {
            if (layer->GetLayerName().toQString() == QLatin1String("regions"))
                regions = dynamic_cast<TEFeatureLayer*>(layer.get());
        }
        QVERIFY(regions);
        window.selectLayer(regions->GetGuidStr().toQString());
        QCoreApplication::processEvents();
        TZMapCanvas* canvas = window.canvas();
        // A corner of the regions, so that the pies have room.
        const QRectF full = canvas->fullExtent();
        canvas->zoomToExtent(QRectF(full.topLeft(), full.size() / 3.0));
        waitForDrawing(canvas);
        const TERefPtr<TEFeatureRender> original = regions->GetSymbolRender();
        QVERIFY(original);
        const QRgb background = original.cast<TESingleSymbolRender>()->GetStyle()->GetColor().GetColor();
        const int backgroundBefore = pixelsOf(canvas->mapImage(), background);
        QVERIFY(backgroundBefore > 0);

        TZControlRender* dock = TZControlRender::instance(nullptr);
        applyDiagram(dock, canvas, QStringLiteral("Pie Diagram"), {"age_0_14", "age_15_64", "age_65_up"},
                     [](QWidget* page) {
                         child<QCheckBox>(page, "mCheckBoxShowShadow")->setChecked(true);
                         child<QSlider>(page, "mSliderShadowThickness")->setValue(25);
                     });
        snapshot(&window, QStringLiteral("pie.png"));
        auto pie = regions->GetSymbolRender().cast<TEDiagramRender>();
        QVERIFY(pie);
        QCOMPARE(pie->GetType().toQString(), QStringLiteral("PieDiagram"));
        QCOMPARE(pie->GetBackgroundRender().get(), original.get());
        // Slices of each colour are on the map, and the regions' fill shows
        // between them.
        const QImage pies = canvas->mapImage();
        for (const TERefPtr<TEDiagramRenderItem>& item : pie->GetItems())
            QVERIFY2(pixelsOf(pies, item->GetStyle()->GetColor().GetColor()) > 50, qPrintable(item->GetField().toQString()));
        const int backgroundWithPies = pixelsOf(pies, background);
        QVERIFY(backgroundWithPies > 0 && backgroundWithPies < backgroundBefore);

        applyDiagram(dock, canvas, QStringLiteral("Histogram Diagram"), {"age_15_64", "age_65_up"});
        snapshot(&window, QStringLiteral("histogram.png"));
        auto histogram = regions->GetSymbolRender().cast<TEDiagramRender>();
        QVERIFY(histogram);
        QCOMPARE(histogram->GetType().toQString(), QStringLiteral("HistogramDiagram"));
        QCOMPARE(histogram->GetBackgroundRender().get(), original.get());
        QVERIFY(pixelsOf(canvas->mapImage(), background) > 0);
        dock->setLayer(nullptr);
    }
};

TZ_REGISTER_TEST(TestChartDiagramsInTzmap)

#include "TestChartDiagramsInTzmap.moc"
