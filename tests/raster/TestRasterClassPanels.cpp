#include "RasterClassFixtures.h"
#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZModelColorList.h"
#include "TzImageRenderClassDialog.h"
#include "TzImageRenderColormapDialog.h"
#include "TzImageRenderUniqueDialog.h"

#include "renders/TEImageClassRenderInfo.h"
#include "renders/TEImageColormapRenderInfo.h"
#include "renders/TEImageUniqueRenderInfo.h"
#include "symbology/TEColorRamp.h"
#include "widgets/TZColorBtn.h"
#include "widgets/TZColorSchemeComboBox.h"

#include <QComboBox>
#include <QMessageBox>
#include <QTemporaryDir>

using namespace TZObjects;
using namespace RasterClassFixtures;

namespace {

// Swatches of the colour menu's palette.
constexpr int RedSwatch = 16;    // #FF0000
constexpr int GreenSwatch = 27;  // #00FF00

QStringList rowTexts(const TZModelColorList* model)
{
    QStringList texts;
    for (int r = 0; r < model->rowCount(); ++r)
        texts << model->row(r).text;
    return texts;
}

QList<QRgb> rowColors(const TZModelColorList* model)
{
    QList<QRgb> colors;
    for (int r = 0; r < model->rowCount(); ++r)
        colors << model->rowColor(r).rgb();
    return colors;
}

// Colours of the combo's current ramp divided into n.
QList<QRgb> rampColors(TZColorSchemeComboBox* combo, int n)
{
    TERefPtr<TEColorRamp> ramp = combo->currentColorRamp()->clone();
    ramp->setLevel(n);
    QList<QRgb> colors;
    for (int i = 0; i < n; ++i)
        colors << ramp->getColor(i).toQColor().rgb();
    return colors;
}

// Picks a ramp of the combo (group headers have none) whose n colours differ
// from colors.
bool chooseAnotherRamp(TZColorSchemeComboBox* combo, int n, const QList<QRgb>& colors)
{
    for (int i = 0; i < combo->count(); ++i) {
        combo->setCurrentIndex(i);
        if (combo->currentColorRamp() && rampColors(combo, n) != colors)
            return true;
    }
    return false;
}

template <class T>
T* child(QWidget* page, const char* name)
{
    return page->findChild<T*>(QString::fromLatin1(name));
}

TESingleBandImageRender* singleRender(TERasterLayer* layer)
{
    return dynamic_cast<TESingleBandImageRender*>(layer->GetImageRender().get());
}

} // namespace

class TestRasterClassPanel : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;
    TERefPtr<TERasterLayer> mLayer;
    TzImageRenderClassDialog* mPage = nullptr;

    // 0 to 100 across the first row; the second row repeats it with no-data
    // (-1) in every other pixel.
    static RasterContent zeroToHundred()
    {
        RasterContent content;
        content.width = 101;
        content.height = 2;
        content.type = GDT_Float32;
        content.hasNoData = true;
        content.noData = -1.0;
        for (int row = 0; row < 2; ++row) {
            for (int x = 0; x <= 100; ++x)
                content.values.push_back(row == 1 && x % 2 ? -1.0 : double(x));
        }
        return content;
    }

    bool openOn(const RasterContent& content)
    {
        mLayer = openWithStretch(writeRaster(mDir.path(), QStringLiteral("class.tif"), content));
        if (!mLayer)
            return false;
        mPage = qobject_cast<TzImageRenderClassDialog*>(showPage(mLayer.get(), QStringLiteral("Image Class")));
        return mPage && mPage->model();
    }

    QComboBox* classes() const { return child<QComboBox>(mPage, "comboBox_classes"); }

    // Chooses a class count the way a person does, so that it takes even
    // when the count shown already is the one wanted.
    void chooseClassCount(int count)
    {
        classes()->setCurrentIndex(count == 1 ? 1 : 0);
        classes()->setCurrentIndex(count - 1);
    }

private Q_SLOTS:
    void init() { QVERIFY(mDir.isValid()); }
    void cleanup()
    {
        TZControlRender::instance(nullptr)->setLayer(nullptr);
        mLayer.reset();
    }

    void classCountMakesEqualIntervalsColouredFromTheRamp_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("one") << 1 << QStringList{"0.000000,100.000000"};
        QTest::newRow("four") << 4
                              << QStringList{"0.000000,25.000000", "25.000000,50.000000", "50.000000,75.000000",
                                             "75.000000,100.000000"};
        QTest::newRow("three") << 3
                               << QStringList{"0.000000,33.333333", "33.333333,66.666667", "66.666667,100.000000"};
    }
    void classCountMakesEqualIntervalsColouredFromTheRamp()
    {
        QFETCH(int, count);
        QFETCH(QStringList, texts);
        QVERIFY(openOn(zeroToHundred()));
        chooseClassCount(count);
        QCOMPARE(rowTexts(mPage->model()), texts);
        QCOMPARE(rowColors(mPage->model()), rampColors(child<TZColorSchemeComboBox>(mPage, "comboBox_color"), count));
    }

    void rangeEditKeepsClassesContiguous_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<QStringList>("texts");
        const QStringList untouched{"0.000000,25.000000", "25.000000,50.000000", "50.000000,75.000000",
                                    "75.000000,100.000000"};
        QTest::newRow("next class follows")
            << 0 << "0,30" << QString()
            << QStringList{"0,30", "30.000000,50.000000", "50.000000,75.000000", "75.000000,100.000000"};
        QTest::newRow("full-width comma")
            << 1 << QString::fromUtf8("25\xEF\xBC\x8C" "60") << QString()
            << QStringList{"0.000000,25.000000", QString::fromUtf8("25\xEF\xBC\x8C" "60"), "60.000000,75.000000",
                           "75.000000,100.000000"};
        QTest::newRow("two commas")
            << 2 << "50,1,70" << QStringLiteral("Data is not standard!") << untouched;
        QTest::newRow("past the next class") << 0 << "0,60" << QStringLiteral("Data is out of bound!") << untouched;
        QTest::newRow("onto the next upper bound")
            << 2 << "50,100" << QStringLiteral("Data is out of bound!") << untouched;
        QTest::newRow("no comma") << 1 << "25 50" << QStringLiteral("Data is not standard!") << untouched;
        QTest::newRow("empty") << 1 << "" << QStringLiteral("Data is not standard!") << untouched;
        QTest::newRow("last row as entered")
            << 3 << "75,120" << QString()
            << QStringList{"0.000000,25.000000", "25.000000,50.000000", "50.000000,75.000000", "75,120"};
    }
    void rangeEditKeepsClassesContiguous()
    {
        QFETCH(int, row);
        QFETCH(QString, text);
        QFETCH(QString, warning);
        QFETCH(QStringList, texts);
        QVERIFY(openOn(zeroToHundred()));
        chooseClassCount(4);
        const QList<QRgb> colors = rowColors(mPage->model());

        TZModelColorList* model = mPage->model();
        const QList<SeenBox> boxes =
            answerBoxesDuring(QMessageBox::Ok, [&] { model->setData(model->index(row, 1), text); });
        if (warning.isEmpty()) {
            QVERIFY(boxes.isEmpty());
        } else {
            QCOMPARE(boxes.size(), 1);
            QCOMPARE(boxes[0].title, QStringLiteral("Warning"));
            QCOMPARE(boxes[0].text, warning);
        }
        QCOMPARE(rowTexts(model), texts);
        QCOMPARE(rowColors(model), colors);
    }

    void equalMinimumAndMaximumIgnoresTheClassCount()
    {
        RasterContent flat;
        flat.width = 3;
        flat.height = 3;
        flat.type = GDT_Int16;
        flat.values.assign(9, 7.0);
        QVERIFY(openOn(flat));
        const QStringList before = rowTexts(mPage->model());
        QCOMPARE(before.size(), 4);
        classes()->setCurrentIndex(0);
        classes()->setCurrentIndex(9);
        QCOMPARE(rowTexts(mPage->model()), before);
    }

    void rampChangeRebuildsEveryRowAndDropsHandEdits()
    {
        QVERIFY(openOn(zeroToHundred()));
        chooseClassCount(3);
        mPage->model()->setData(mPage->model()->index(0, 1), QStringLiteral("0,10"));
        QCOMPARE(mPage->model()->row(0).text, QStringLiteral("0,10"));

        auto* ramps = child<TZColorSchemeComboBox>(mPage, "comboBox_color");
        const QList<QRgb> before = rowColors(mPage->model());
        QVERIFY(chooseAnotherRamp(ramps, 3, before));
        QCOMPARE(rowTexts(mPage->model()),
                 (QStringList{"0.000000,33.333333", "33.333333,66.666667", "66.666667,100.000000"}));
        QCOMPARE(rowColors(mPage->model()), rampColors(ramps, 3));
    }

    void applyDrawsTheClassesAndResetReadsThemBack()
    {
        QVERIFY(openOn(zeroToHundred()));
        chooseClassCount(4);
        mPage->model()->setData(mPage->model()->index(0, 1), QStringLiteral("0,30"));
        QVERIFY(pickColorFromMenu(mPage, 1, RedSwatch));
        QCOMPARE(mPage->model()->rowColor(1), QColor(Qt::red));
        child<TZColorBtn>(mPage, "toolButton_nodata")->setColor(qRgb(0, 0, 255));
        const QStringList texts = rowTexts(mPage->model());
        const QList<QRgb> colors = rowColors(mPage->model());

        TZControlRender::instance(nullptr)->onApply();
        TESingleBandImageRender* render = singleRender(mLayer.get());
        QCOMPARE(render->getImageRenderMODE(), 4);
        QCOMPARE(render->GetNodataColorType(), 1);

        const QImage image = draw(mLayer.get());
        QCOMPARE(image.pixel(10, 0), colors[0]);   // 10 in 0..30
        QCOMPARE(image.pixel(40, 0), qRgb(255, 0, 0));  // 40 in 30..50
        QCOMPARE(image.pixel(90, 0), colors[3]);
        QCOMPARE(image.pixel(1, 1), qRgb(0, 0, 255));   // no-data

        // The layer now draws in class mode: the dock selects the page by
        // itself, and the page reads the render back.
        mPage->model()->setRowColor(1, QColor(Qt::green));
        TZControlRender::instance(nullptr)->showLayerStyle();
        QVERIFY(mPage->isVisible());
        QCOMPARE(rowTexts(mPage->model()), (QStringList{"0.000000,30.000000", texts[1], texts[2], texts[3]}));
        QCOMPARE(rowColors(mPage->model()), colors);
        QCOMPARE(classes()->currentText(), QStringLiteral("4"));
        QCOMPARE(child<TZColorBtn>(mPage, "toolButton_nodata")->getColor(), qRgb(0, 0, 255));
    }
};

class TestRasterUniquePanel : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;
    TERefPtr<TERasterLayer> mLayer;

    TzImageRenderUniqueDialog* openOn(const RasterContent& content)
    {
        mLayer = openWithStretch(writeRaster(mDir.path(), QStringLiteral("unique.tif"), content));
        if (!mLayer)
            return nullptr;
        return qobject_cast<TzImageRenderUniqueDialog*>(showPage(mLayer.get(), QStringLiteral("Image Unique")));
    }

    static RasterContent smallCodes()
    {
        RasterContent content;
        content.width = 4;
        content.height = 2;
        content.type = GDT_Int16;
        content.hasNoData = true;
        content.noData = -1.0;
        content.values = {5, -3, 5, 12, 12, -1, 7, 5};
        return content;
    }

private Q_SLOTS:
    void init() { QVERIFY(mDir.isValid()); }
    void cleanup()
    {
        TZControlRender::instance(nullptr)->setLayer(nullptr);
        mLayer.reset();
    }

    void listsDistinctValuesAndDrawsAnEditedColour()
    {
        TzImageRenderUniqueDialog* page = openOn(smallCodes());
        QVERIFY(page);
        QCOMPARE(page->name(), QStringLiteral("ImageUnique"));
        QCOMPARE(rowTexts(page->model()), (QStringList{"-3.000000", "5.000000", "7.000000", "12.000000"}));

        QVERIFY(pickColorFromMenu(page, 2, RedSwatch));
        const QList<QRgb> colors = rowColors(page->model());
        TZControlRender::instance(nullptr)->onApply();
        QCOMPARE(singleRender(mLayer.get())->getImageRenderMODE(), 3);

        const QImage image = draw(mLayer.get());
        QCOMPARE(image.pixel(2, 1), qRgb(255, 0, 0));  // 7
        QCOMPARE(image.pixel(1, 0), colors[0]);        // -3
        QCOMPARE(image.pixel(3, 1), colors[1]);        // 5
        QCOMPARE(qAlpha(image.pixel(1, 1)), 0);        // no-data, no colour for it

        page->model()->setRowColor(2, QColor(Qt::blue));
        TZControlRender::instance(nullptr)->onReset();
        QCOMPARE(rowColors(page->model()), colors);
    }

    void rampChangeRecoloursRowsByIndex()
    {
        TzImageRenderUniqueDialog* page = openOn(smallCodes());
        QVERIFY(page);
        auto* ramps = child<TZColorSchemeComboBox>(page, "comboBox_color");
        QVERIFY(chooseAnotherRamp(ramps, 4, rowColors(page->model())));
        QCOMPARE(rowColors(page->model()), rampColors(ramps, 4));
        QCOMPARE(rowTexts(page->model()), (QStringList{"-3.000000", "5.000000", "7.000000", "12.000000"}));
    }

    void asksBeforeScanningMoreThanTheLimit_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<int>("rows");
        QTest::newRow("25,000,000 pixels") << 5000 << 5000 << int(QMessageBox::Yes) << false << 1;
        QTest::newRow("25,000,001 pixels, yes") << 25000001 << 1 << int(QMessageBox::Yes) << true << 1;
        QTest::newRow("25,000,001 pixels, cancel") << 25000001 << 1 << int(QMessageBox::Cancel) << true << 0;
    }
    void asksBeforeScanningMoreThanTheLimit()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, answer);
        QFETCH(bool, asked);
        QFETCH(int, rows);
        RasterContent sparse;
        sparse.width = width;
        sparse.height = height;
        sparse.type = GDT_Byte;
        TzImageRenderUniqueDialog* page = nullptr;
        const QList<SeenBox> boxes = answerBoxesDuring(answer, [&] { page = openOn(sparse); });
        QVERIFY(page);
        QCOMPARE(boxes.size(), asked ? 1 : 0);
        if (asked) {
            QCOMPARE(boxes[0].title, QStringLiteral("Warning"));
            QCOMPARE(boxes[0].text,
                     QStringLiteral("This data big, get unique data is slowly,would you like to continus?"));
        }
        QCOMPARE(page->model()->rowCount(), rows);
        QCOMPARE(bool(page->renderInfo()), rows > 0);

        // Without values, apply leaves the layer's render as it was.
        TZControlRender::instance(nullptr)->onApply();
        QCOMPARE(singleRender(mLayer.get())->getImageRenderMODE(), rows > 0 ? 3 : 1);
    }

    void warnsThatTheTableIsIncompletePastTheValueLimit()
    {
        RasterContent many;
        many.width = 300;
        many.height = 300;
        many.type = GDT_Float32;
        for (int i = 0; i < many.width * many.height; ++i)
            many.values.push_back(i * 0.5);
        TzImageRenderUniqueDialog* page = nullptr;
        const QList<SeenBox> boxes = answerBoxesDuring(QMessageBox::Ok, [&] { page = openOn(many); });
        QVERIFY(page);
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes[0].title, QStringLiteral("Information"));
        QVERIFY(boxes[0].text.contains(QStringLiteral("incomplete")));
        QCOMPARE(page->model()->rowCount(), TEImageUniqueRenderInfo::MaxValueCount);
    }
};

class TestRasterColormapPanel : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;
    TERefPtr<TERasterLayer> mLayer;

    TzImageRenderColormapDialog* openOn(const RasterContent& content)
    {
        mLayer = openWithStretch(writeRaster(mDir.path(), QStringLiteral("palette.tif"), content));
        if (!mLayer)
            return nullptr;
        return qobject_cast<TzImageRenderColormapDialog*>(showPage(mLayer.get(), QStringLiteral("Image Colormap")));
    }

private Q_SLOTS:
    void init() { QVERIFY(mDir.isValid()); }
    void cleanup()
    {
        TZControlRender::instance(nullptr)->setLayer(nullptr);
        mLayer.reset();
    }

    void showsTheColourTableAndDrawsAnEditedEntry()
    {
        RasterContent content;
        content.width = 4;
        content.height = 1;
        content.type = GDT_Byte;
        content.values = {0, 1, 2, 3};
        content.colorTable = {qRgba(0, 0, 0, 0), qRgb(10, 20, 30), qRgb(40, 50, 60), qRgb(70, 80, 90)};
        TzImageRenderColormapDialog* page = openOn(content);
        QVERIFY(page);
        QCOMPARE(page->name(), QStringLiteral("ImageColormap"));
        // A TIFF palette always has 256 entries; the rest are black.
        QCOMPARE(page->model()->rowCount(), 256);
        QCOMPARE(rowTexts(page->model()).mid(0, 4), (QStringList{"0", "1", "2", "3"}));
        QCOMPARE(page->model()->row(255).text, QStringLiteral("255"));
        QCOMPARE(rowColors(page->model()).mid(0, 4),
                 (QList<QRgb>{qRgb(0, 0, 0), qRgb(10, 20, 30), qRgb(40, 50, 60), qRgb(70, 80, 90)}));

        QVERIFY(pickColorFromMenu(page, 2, GreenSwatch));
        TZControlRender::instance(nullptr)->onApply();
        QCOMPARE(singleRender(mLayer.get())->getImageRenderMODE(), 2);

        const QImage image = draw(mLayer.get());
        QCOMPARE(image.pixel(2, 0), qRgb(0, 255, 0));
        QCOMPARE(image.pixel(1, 0), qRgb(10, 20, 30));

        TZControlRender::instance(nullptr)->onReset();
        QCOMPARE(page->model()->rowColor(2), QColor(0, 255, 0));
    }

    void anUneditedEntryKeepsItsTransparency()
    {
        RasterContent content;
        content.width = 2;
        content.height = 1;
        content.type = GDT_Byte;
        content.values = {0, 1};
        mLayer = TERasterLayer::Open(writeRaster(mDir.path(), QStringLiteral("alpha.tif"), content));
        QVERIFY(mLayer);
        auto table = MakeRef<TEImageColormapRenderInfo>();
        table->SetRenderColorTable(0, TEColor(0, 0, 0, 0));
        table->SetRenderColorTable(1, TEColor(10, 20, 30));
        mLayer->SetRender(MakeRef<TESingleBandImageRender>(table));

        // The dock picks the page by the render's mode.
        TZControlRender* dock = TZControlRender::instance(nullptr);
        dock->setLayer(mLayer.get());
        dock->showLayerStyle();
        auto* page = dock->findChild<TzImageRenderColormapDialog*>();
        QVERIFY(page->isVisible());
        QCOMPARE(page->renderInfo().get(), static_cast<TEImageRenderInfo*>(table.get()));
        QCOMPARE(page->model()->rowCount(), 2);

        QVERIFY(pickColorFromMenu(page, 1, GreenSwatch));
        dock->onApply();
        const QImage image = draw(mLayer.get());
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(image.pixel(1, 0), qRgb(0, 255, 0));
    }

    void aRasterWithoutColourTableIsRefusedWithAWarning()
    {
        RasterContent content;
        content.width = 2;
        content.height = 2;
        content.type = GDT_Byte;
        content.values = {1, 2, 3, 4};
        TzImageRenderColormapDialog* page = nullptr;
        const QList<SeenBox> boxes = answerBoxesDuring(QMessageBox::Ok, [&] { page = openOn(content); });
        QVERIFY(page);
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes[0].title, QStringLiteral("Warning"));
        QCOMPARE(page->model()->rowCount(), 0);
        TZControlRender::instance(nullptr)->onApply();
        QCOMPARE(singleRender(mLayer.get())->getImageRenderMODE(), 1);
    }
};

TZ_REGISTER_TEST(TestRasterClassPanel)
TZ_REGISTER_TEST(TestRasterUniquePanel)
TZ_REGISTER_TEST(TestRasterColormapPanel)
#include "TestRasterClassPanels.moc"
