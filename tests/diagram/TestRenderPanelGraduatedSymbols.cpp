#include "MessageBoxWatch.h"
#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZModelGraduatedSymbolsDiagram.h"
#include "TZRenderPanelGraduatedSymbolsDiagram.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>

using namespace TZObjects;

namespace {

// Points with a real field "v" after a text field, feature i at (i, 0).
TERefPtr<TEMemoryFeatureLayer> makePoints(const QList<double>& values)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("places"), TELayer::LT_Point,
        {{QStringLiteral("name"), TEField::FT_String}, {QStringLiteral("v"), TEField::FT_Double}});
    for (int i = 0; i < values.size(); ++i)
        layer->AppendFeature(QStringLiteral("POINT(%1 0)").arg(i),
                             {TEVariant(TEString(QStringLiteral("p%1").arg(i))), TEVariant(values[i])});
    return layer;
}

QStringList ranges(const TZModelGradingSymbol& model)
{
    QStringList texts;
    for (int r = 1; r < model.rowCount(); ++r)
        texts << model.item(r).range;
    return texts;
}

} // namespace

class TestRenderPanelGraduatedSymbols : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    TZRenderPanelGraduatedSymbolsDiagram* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelGraduatedSymbolsDiagram*>();
        if (panel)
            mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->setCurrentText(panel->title());
        return panel;
    }

    template <class T>
    static T* child(QWidget* panel, const char* name)
    {
        return panel->findChild<T*>(QString::fromLatin1(name));
    }

    static void setRanges(TZRenderPanelGraduatedSymbolsDiagram* panel, const QStringList& texts)
    {
        TZModelGradingSymbol* model = panel->model();
        model->clear();
        for (const QString& range : texts)
            model->addItem({model->createStyle(TEColor(1, 2, 3)), range, range, 0});
    }

    static QList<double> sizes(const TEGraduatedSymbolsDiagramRender& render)
    {
        QList<double> result;
        for (const TEGraduatedSymbolsDiagramItem& item : render.items()) {
            auto* point = dynamic_cast<TEStylePoint*>(item.style().get());
            result << (point ? point->GetWidth() : -1.0);
        }
        return result;
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    // Sizes step evenly from the minimum by (max - min) / rows, the catch-all
    // row counted, so the first class is never drawn at the minimum itself.
    void classSizesGrowFromMinimumToMaximum_data()
    {
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("maximum");
        QTest::addColumn<QList<double>>("expected");
        QTest::newRow("2 to 10") << 2.0 << 10.0 << QList<double>{6, 8, 10};
        QTest::newRow("shrinking") << 10.0 << 2.0 << QList<double>{6, 4, 2};
    }
    void classSizesGrowFromMinimumToMaximum()
    {
        QFETCH(double, minimum);
        QFETCH(double, maximum);
        QFETCH(QList<double>, expected);
        auto layer = makePoints({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
        const auto background = MakeRef<TESingleSymbolRender>();
        layer->SetSymbolRender(background);
        TZRenderPanelGraduatedSymbolsDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        panel->diagramModel()->setTemplateStyle(TZModelGraduatedSymbolsDiagram::defaultTemplate());
        child<QComboBox>(panel, "mComboBoxLevel")->setCurrentText(QStringLiteral("3"));
        child<QDoubleSpinBox>(panel, "mDoubleSpinBoxMin")->setValue(minimum);
        child<QDoubleSpinBox>(panel, "mDoubleSpinBoxMax")->setValue(maximum);
        child<QPushButton>(panel, "mButtonUpdate")->click();
        QCOMPARE(panel->model()->rowCount(), 4);

        mDock->onApply();
        const TERefPtr<TEGraduatedSymbolsDiagramRender> render =
            layer->GetSymbolRender().cast<TEGraduatedSymbolsDiagramRender>();
        QVERIFY(render);
        QCOMPARE(render->expression().toQString(), QStringLiteral("v"));
        QCOMPARE(render->level(), 3);
        QCOMPARE(sizes(*render), expected);
        QCOMPARE(render->items().front().lower(), 0.0);
        QCOMPARE(render->items().back().upper(), 9.0);
        // Drawn over what the layer showed before.
        QCOMPARE(render->GetBackgroundRender().get(), static_cast<TEFeatureRender*>(background.get()));
        // Class colours run along the ramp.
        QVERIFY(render->items()[0].style()->GetColor() != render->items()[2].style()->GetColor());
    }

    void nonPointTemplateKeepsItsSize()
    {
        auto layer = makePoints({0, 1, 2});
        TZRenderPanelGraduatedSymbolsDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        auto fill = MakeRef<TEStyleSimpleFill>();
        panel->diagramModel()->setTemplateStyle(fill);
        child<QComboBox>(panel, "mComboBoxLevel")->setCurrentText(QStringLiteral("2"));
        child<QPushButton>(panel, "mButtonUpdate")->click();
        QVERIFY(panel->onApply());
        const auto render = layer->GetSymbolRender().cast<TEGraduatedSymbolsDiagramRender>();
        QVERIFY(render);
        QCOMPARE(sizes(*render), (QList<double>{-1, -1}));
        QVERIFY(dynamic_cast<TEStyleSimpleFill*>(render->items()[1].style().get()));
    }

    // Row 1 is taken as it is; later rows must run low to high and are asked
    // about when they overlap the row before.
    void applyChecksRowsAfterTheFirst_data()
    {
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("message");    // empty when no box is expected
        QTest::addColumn<bool>("cancel");
        QTest::addColumn<int>("items");          // -1 when refused
        const QString incorrect = QStringLiteral("There is an incorrect grading item!");
        const QString overlap = QStringLiteral("The ranges of the different grades intersect. Do you want to continue?");
        QTest::newRow("reversed first row passes") << QStringList{"5,1", "5,10"} << QString() << false << 2;
        QTest::newRow("reversed second row stops") << QStringList{"0,5", "10,6"} << incorrect << false << -1;
        QTest::newRow("overlap, OK") << QStringList{"0,5", "4,10"} << overlap << false << 2;
        QTest::newRow("overlap, Cancel") << QStringList{"0,5", "4,10"} << overlap << true << -1;
        QTest::newRow("shared bound") << QStringList{"0,5", "5,10"} << QString() << false << 2;
        QTest::newRow("not a range is left out") << QStringList{"0,5", "junk"} << QString() << false << 1;
    }
    void applyChecksRowsAfterTheFirst()
    {
        QFETCH(QStringList, rows);
        QFETCH(QString, message);
        QFETCH(bool, cancel);
        QFETCH(int, items);
        auto layer = makePoints({0, 5, 10});
        const auto previous = MakeRef<TESingleSymbolRender>();
        layer->SetSymbolRender(previous);
        TZRenderPanelGraduatedSymbolsDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        panel->diagramModel()->setTemplateStyle(TZModelGraduatedSymbolsDiagram::defaultTemplate());
        setRanges(panel, rows);

        const MessageBoxWatch boxes(cancel ? QMessageBox::Cancel : QMessageBox::Ok);
        QCOMPARE(panel->onApply(), items >= 0);
        QCOMPARE(boxes.texts(), message.isEmpty() ? QStringList() : QStringList{message});
        if (items < 0) {
            QCOMPARE(layer->GetSymbolRender().get(), static_cast<TEFeatureRender*>(previous.get()));
            return;
        }
        const auto render = layer->GetSymbolRender().cast<TEGraduatedSymbolsDiagramRender>();
        QVERIFY(render);
        QCOMPARE(int(render->items().size()), items);
    }

    // A reset reads the classes back, counted; a file written by the grading
    // page loads here too.
    void resetReadsTheRenderBackAndImportTakesGradingFiles()
    {
        auto layer = makePoints({0, 2, 5, 7, 10});
        const auto background = MakeRef<TESingleSymbolRender>();
        layer->SetSymbolRender(background);
        TZRenderPanelGraduatedSymbolsDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        panel->diagramModel()->setTemplateStyle(TZModelGraduatedSymbolsDiagram::defaultTemplate());
        child<QComboBox>(panel, "mComboBoxLevel")->setCurrentText(QStringLiteral("2"));
        child<QPushButton>(panel, "mButtonUpdate")->click();
        const QStringList made = ranges(*panel->model());
        QVERIFY(panel->onApply());
        const auto applied = layer->GetSymbolRender().cast<TEGraduatedSymbolsDiagramRender>();

        panel->model()->clear();
        panel->onReset();
        QCOMPARE(ranges(*panel->model()), made);
        QCOMPARE(panel->model()->item(1).count, 3);
        QCOMPARE(panel->model()->item(2).count, 3);
        // Applying again keeps the original background, not the diagram itself.
        QVERIFY(panel->onApply());
        const auto again = layer->GetSymbolRender().cast<TEGraduatedSymbolsDiagramRender>();
        QCOMPARE(applied->GetBackgroundRender().get(), static_cast<TEFeatureRender*>(background.get()));
        QCOMPARE(again->GetBackgroundRender().get(), static_cast<TEFeatureRender*>(background.get()));

        QTemporaryDir folder;
        const QString path = folder.filePath("grades.txt");
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("0.00000,4.00000\n4.00000,10.00000\n");
        }
        QVERIFY(panel->model()->importFrom(path, nullptr));
        QCOMPARE(ranges(*panel->model()), (QStringList{"0.00000,4.00000", "4.00000,10.00000"}));
        QCOMPARE(panel->model()->item(2).count, 3);
        // Class symbols are copies of the template.
        QVERIFY(dynamic_cast<TEStyleSimplePoint*>(panel->model()->item(1).style.get()));
        QVERIFY(panel->model()->item(1).style != panel->diagramModel()->templateStyle());
    }
};

TZ_REGISTER_TEST(TestRenderPanelGraduatedSymbols)
#include "TestRenderPanelGraduatedSymbols.moc"
