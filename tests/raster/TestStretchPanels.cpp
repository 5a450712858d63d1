#include "ModalAnswer.h"
#include "TestRegistry.h"

#include "StretchTestRasters.h"
#include "TZControlRender.h"
#include "TZDialogBandPixHistogram.h"
#include "TZLayerDrawer.h"
#include "TzImageRenderStretchDialog.h"
#include "TzImgRenderMultiStretchDialog.h"
#include "TzImgRenderRGBCompositeDialog.h"
#include "UserDelegate.h"

#include "data/TERasterDirLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"
#include "symbology/TEColorRamp.h"
#include "widgets/TZColorBtn.h"
#include "widgets/TZColorSchemeComboBox.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QtCharts/QChartView>
#include <QtCharts/QXYSeries>

#include <cmath>

using namespace TZObjects;

namespace {

// 10 x 10 map units a raster, 10 device pixels a raster pixel.
const TZMapViewport View(QSize(100, 100), QPointF(5.0, 5.0), 0.1);
const QColor Below(255, 0, 255);

QColor drawnAt(TELayer* layer, int x, int y)
{
    std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer);
    if (!drawer)
        return QColor();
    QImage image(View.deviceSize(), QImage::Format_ARGB32);
    image.fill(Below);
    QPainter painter(&image);
    if (!drawer->draw(&painter, View, nullptr))
        return QColor();
    painter.end();
    return image.pixelColor(View.toDevice(QPointF(x + 0.5, 10 - y - 0.5)).toPoint());
}

QColor rampColor(TEColorRamp* ramp, int count, int index)
{
    TERefPtr<TEColorRamp> copy = ramp->clone();
    copy->setLevel(count);
    const rgb_color<float> c = copy->getColor(index);
    return QColor(int(std::lround(c.r)), int(std::lround(c.g)), int(std::lround(c.b)));
}

TEImageStretchRenderInfo* stretchInfo(TERasterLayer* layer)
{
    const auto single = layer->GetImageRender().cast<TESingleBandImageRender>();
    return single ? single->getRenderInfo().cast<TEImageStretchRenderInfo>().get() : nullptr;
}

TEMultiBandImageRender* multiRender(TERasterLayer* layer)
{
    return layer->GetImageRender().cast<TEMultiBandImageRender>().get();
}

template <class T>
T* child(QWidget* panel, const char* name)
{
    return panel->findChild<T*>(QString::fromLatin1(name));
}

} // namespace

// The single-band stretch, RGB composite and multi-band stretch panels,
// driven through the dock on generated rasters, and what tzmap then draws.
class TestStretchPanels : public QObject
{
    Q_OBJECT

    QTemporaryDir mDir;
    TZControlRender* mDock = nullptr;
    // grey.tif: Float32, value (10 * y + x) / 8, pixel (0,0) no-data -1.
    QString mGrey;
    // bands<n>.tif: Byte, n bands; band b at (x, y) is 20 * b + 10 * y + x.
    QString bands(int n) const { return mDir.filePath(QStringLiteral("bands%1.tif").arg(n)); }
    QString file(const char* name) const { return mDir.filePath(QString::fromLatin1(name)); }

    TERefPtr<TERasterLayer> open(const QString& path)
    {
        QString error;
        TERefPtr<TERasterLayer> layer = TERasterLayer::Open(path, &error);
        if (!layer)
            qWarning("%s", qPrintable(error));
        return layer;
    }

    template <class P>
    P* showPanel(TELayer* layer, const QString& title)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* styles = mDock->findChild<QComboBox*>("mComboBoxRenderStyle");
        if (styles->currentText() != title)
            styles->setCurrentText(title);
        P* panel = mDock->findChild<P*>();
        return panel && panel->isVisible() ? panel : nullptr;
    }

    TzImageRenderStretchDialog* stretchPanel(TELayer* layer)
    {
        return showPanel<TzImageRenderStretchDialog>(layer, QStringLiteral("Image Stretch"));
    }

    void apply() { mDock->onApply(); }
    void reset() { mDock->onReset(); }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        const double greyNoData = -1.0;
        mGrey = StretchTestRasters::write(file("grey.tif"), 10, 10, 1, GDT_Float32, [](int, int x, int y) {
            return x == 0 && y == 0 ? -1.0 : (10 * y + x) / 8.0;
        }, &greyNoData);
        QVERIFY(!mGrey.isEmpty());
        for (int n : {2, 3, 4, 5})
            QVERIFY(!StretchTestRasters::write(bands(n), 10, 10, n, GDT_Byte,
                                               [](int b, int x, int y) { return 20 * b + 10 * y + x; }).isEmpty());
    }

    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    void stretchShowsTheBandRangeByDataType_data()
    {
        QTest::addColumn<GDALDataType>("type");
        QTest::addColumn<double>("low");
        QTest::addColumn<double>("high");
        QTest::addColumn<QString>("minText");
        QTest::addColumn<QString>("maxText");
        QTest::newRow("byte") << GDT_Byte << 3.0 << 255.0 << "3" << "255";
        QTest::newRow("int16") << GDT_Int16 << -50.0 << 49.0 << "-50" << "49";
        QTest::newRow("int32, 6 significant digits") << GDT_Int32 << 0.0 << 1234567.0 << "0" << "1.23457e+06";
        QTest::newRow("float32") << GDT_Float32 << 0.125 << 12.5 << "0.125000" << "12.500000";
        QTest::newRow("float64") << GDT_Float64 << -1.5 << 1e6 << "-1.500000" << "1000000.000000";
    }
    void stretchShowsTheBandRangeByDataType()
    {
        QFETCH(GDALDataType, type);
        QFETCH(double, low);
        QFETCH(double, high);
        QFETCH(QString, minText);
        QFETCH(QString, maxText);
        // Every pixel is low except the last, which is high.
        const QString path = StretchTestRasters::write(
            file(QTest::currentDataTag()) + QStringLiteral(".tif"), 4, 4, 1, type,
            [&](int, int x, int y) { return x == 3 && y == 3 ? high : low; });
        const auto layer = open(path);
        QVERIFY(layer);
        auto* panel = stretchPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_min")->text(), minText);
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_max")->text(), maxText);
        QVERIFY(!child<QLineEdit>(panel, "lineEdit_min")->isEnabled());
    }

    void stretchApplyAndResetRoundTrip_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<QString>("standard");
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<int>("algo");
        QTest::addColumn<bool>("clip");
        QTest::addColumn<double>("standardFactor"); // times the deviation; < 0: stored as -standardFactor
        QTest::newRow("min-max") << 0 << "2.5" << "0.5" << "0.5" << 1 << false << 2.5;
        QTest::newRow("standard deviation x2") << 1 << "2" << "0.5" << "0.5" << 2 << false << 2.0;
        QTest::newRow("standard deviation, empty: 2.5 as it is") << 1 << "" << "0.5" << "0.5" << 2 << false << -2.5;
        QTest::newRow("percent clip") << 2 << "2.5" << "2" << "3" << 1 << true << 2.5;
    }
    void stretchApplyAndResetRoundTrip()
    {
        QFETCH(int, method);
        QFETCH(QString, standard);
        QFETCH(QString, left);
        QFETCH(QString, right);
        QFETCH(int, algo);
        QFETCH(bool, clip);
        QFETCH(double, standardFactor);
        const auto layer = open(mGrey);
        QVERIFY(layer);
        auto* panel = stretchPanel(layer.get());
        QVERIFY(panel);
        // As opened: a min-max stretch, read back as such.
        QCOMPARE(child<QComboBox>(panel, "comboBox_method")->currentIndex(), 0);
        QCOMPARE(child<QComboBox>(panel, "comboBox_method")->count(), 3);

        child<QComboBox>(panel, "comboBox_method")->setCurrentIndex(method);
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_standard")->isVisible(), method == 1);
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_LeftStretchValue")->isVisible(), method == 2);
        child<QLineEdit>(panel, "lineEdit_standard")->setText(standard);
        child<QLineEdit>(panel, "lineEdit_LeftStretchValue")->setText(left);
        child<QLineEdit>(panel, "lineEdit_RightStretchValue")->setText(right);
        apply();

        TERasterProps::BandStatistics s;
        QVERIFY(layer->GetRaster()->GetStatistics(1, s));
        TEImageStretchRenderInfo* info = stretchInfo(layer.get());
        QVERIFY(info);
        QCOMPARE(info->GetAlgoType(), algo);
        QCOMPARE(info->IsPercentClip(), clip);
        QCOMPARE(info->GetStandardValue(), standardFactor < 0 ? -standardFactor : standardFactor * s.stdDev);
        double minimum = 0.0;
        double maximum = 0.0;
        info->GetMinMaxVal(minimum, maximum);
        QCOMPARE(minimum, 0.125);
        QCOMPARE(maximum, 99 / 8.0);
        QCOMPARE(info->GetMeanValue(), s.mean);
        if (clip) {
            QCOMPARE(info->GetLeftClipValue(), left.toDouble());
            QCOMPARE(info->GetRightClipValue(), right.toDouble());
        }

        reset();
        QCOMPARE(child<QComboBox>(panel, "comboBox_method")->currentIndex(), method);
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_standard")->isVisible(), method == 1);
        if (clip) {
            QCOMPARE(child<QLineEdit>(panel, "lineEdit_LeftStretchValue")->text(), QStringLiteral("2.000000"));
            QCOMPARE(child<QLineEdit>(panel, "lineEdit_RightStretchValue")->text(), QStringLiteral("3.000000"));
            // With percent clip loaded, an empty "Standard Value" makes
            // apply change nothing, whatever method is chosen now.
            child<QLineEdit>(panel, "lineEdit_standard")->clear();
            child<QComboBox>(panel, "comboBox_method")->setCurrentIndex(0);
            apply();
            QVERIFY(stretchInfo(layer.get())->IsPercentClip());
        }
    }

    // Apply colours the items from the chosen ramp, sets the no-data
    // colour, and tzmap draws both.
    void stretchDrawsTheRampAndTheNoDataColour()
    {
        const auto layer = open(mGrey);
        QVERIFY(layer);
        auto* panel = stretchPanel(layer.get());
        QVERIFY(panel);
        auto* nodata = child<TZColorBtn>(panel, "toolButton_nodata");
        QCOMPARE(nodata->getColor(), QRgb(0));
        nodata->setColor(qRgb(0, 200, 0));
        child<QComboBox>(panel, "comboBox_method")->setCurrentIndex(1);
        child<QLineEdit>(panel, "lineEdit_standard")->setText("1");
        apply();

        TEImageStretchRenderInfo* info = stretchInfo(layer.get());
        TEColorRamp* ramp = child<TZColorSchemeComboBox>(panel, "comboBox_color")->currentColorRamp();
        QVERIFY(info && ramp);
        const int n = info->GetItemCount();
        const QColor first = rampColor(ramp, n, 0);
        const QColor last = rampColor(ramp, n, n - 1);
        QVERIFY(first != last);
        QCOMPARE(QColor(info->GetItemColr(0).GetColor()), first);
        QCOMPARE(layer->GetImageRender()->GetNodataColorType(), 1);

        // Mean 6.19, deviation 3.6: 0.125 lies below the stretch, 12.375
        // above it, pixel (0,0) is no-data.
        QCOMPARE(drawnAt(layer.get(), 1, 0), first);
        QCOMPARE(drawnAt(layer.get(), 9, 9), last);
        QCOMPARE(drawnAt(layer.get(), 0, 0), QColor(0, 200, 0));
        const QColor middle = drawnAt(layer.get(), 5, 4); // value 5.625, inside the stretch
        QVERIFY(middle != first && middle != last);

        // Reset shows the colour; "no colour" turns it off again.
        nodata->setColor(0);
        reset();
        QCOMPARE(nodata->getColor(), qRgb(0, 200, 0));
        nodata->setColor(0);
        apply();
        QCOMPARE(layer->GetImageRender()->GetNodataColorType(), 0);
        QCOMPARE(drawnAt(layer.get(), 0, 0), Below);
    }

    // A raster directory layer gets the min-max stretch only; from then on
    // the panel applies nothing, also to an ordinary raster. (A panel of
    // its own, so the dock's panel keeps working for the other tests.)
    void directoryLayerOffersOnlyMinMaxForGood()
    {
        QDir(mDir.path()).mkdir("tiles");
        for (int i = 0; i < 2; ++i) {
            QVERIFY(!StretchTestRasters::write(file("tiles/t%1.tif").arg(i), 5, 5, 1, GDT_Byte,
                                               [i](int, int x, int y) { return 10 * i + x + y; }).isEmpty());
        }
        const auto directory = TERasterDirLayer::Open(file("tiles"));
        QVERIFY(directory);
        const auto layer = open(mGrey);
        QVERIFY(layer);

        mDock = TZControlRender::instance(nullptr);
        QWidget host;
        auto* panel = new TzImageRenderStretchDialog(&host);
        host.show();
        mDock->setLayer(directory.get());
        panel->onReset();
        auto* methods = child<QComboBox>(panel, "comboBox_method");
        QCOMPARE(methods->count(), 1);
        QCOMPARE(methods->itemText(0), QStringLiteral("Min And Max Value Stretch"));
        QVERIFY(!child<QLineEdit>(panel, "lineEdit_LeftStretchValue")->isVisible());
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_max")->text(), QStringLiteral("18.000000"));
        child<TZColorBtn>(panel, "toolButton_nodata")->setColor(qRgb(1, 2, 3));
        QVERIFY(panel->onApply());
        QCOMPARE(directory->GetImageRender()->GetNodataColorType(), 0);

        mDock->setLayer(layer.get());
        panel->onReset();
        QCOMPARE(methods->count(), 1);
        child<TZColorBtn>(panel, "toolButton_nodata")->setColor(qRgb(1, 2, 3));
        QVERIFY(panel->onApply());
        QCOMPARE(layer->GetImageRender()->GetNodataColorType(), 0);
        mDock->setLayer(nullptr);
    }

    // "Histogram" computes the histogram on its first press only: later
    // presses show the same histogram, whatever the layer.
    void stretchHistogramIsComputedOnce()
    {
        const auto grey = open(mGrey);
        auto* panel = stretchPanel(grey.get());
        QVERIFY(panel);
        int points = -1;
        QString tab;
        auto look = [&](QWidget* dialog) {
            auto* tabs = dialog->findChild<QTabWidget*>("tabWidget");
            tab = tabs->tabText(0);
            auto* view = qobject_cast<QtCharts::QChartView*>(tabs->widget(0));
            auto* series = view ? qobject_cast<QtCharts::QXYSeries*>(view->chart()->series().value(0)) : nullptr;
            points = series ? series->count() : -1;
            dialog->close();
        };
        {
            ModalAnswer answer("TZDialogBandPixHistogram", look);
            child<QPushButton>(panel, "pushButton_histogram")->click();
            QVERIFY(answer.answered());
        }
        // 99 distinct values, each in a bin of its own: three points each.
        QCOMPARE(points, 3 * 99);
        QCOMPARE(tab, QStringLiteral("gray"));

        const QString other = StretchTestRasters::write(file("twelves.tif"), 4, 4, 1, GDT_Byte,
                                                        [](int, int x, int) { return 12 + x % 2; });
        const auto layer = open(other);
        panel = stretchPanel(layer.get());
        QVERIFY(panel);
        points = -1;
        {
            ModalAnswer answer("TZDialogBandPixHistogram", look);
            child<QPushButton>(panel, "pushButton_histogram")->click();
            QVERIFY(answer.answered());
        }
        QCOMPARE(points, 3 * 99); // still grey's, not the two values of the new raster
    }

    void compositeChannelsApply_data()
    {
        QTest::addColumn<int>("bandCount");
        QTest::addColumn<QStringList>("names"); // red, green, blue[, alpha]
        QTest::addColumn<bool>("alphaUsed");
        QTest::addColumn<QList<int>>("expected"); // red, green, blue, alpha band
        QTest::newRow("three bands, red from band 3") << 3 << QStringList{"Band_3", "Band_2", "Band_1"} << false
                                                      << QList<int>{3, 2, 1, 7};
        QTest::newRow("four bands, empty alpha is band 4") << 4 << QStringList{"Band_1", "Band_2", "Band_3", ""}
                                                           << true << QList<int>{1, 2, 3, 4};
        QTest::newRow("names are case-sensitive") << 4 << QStringList{"band_2", "Band_9", "Band_4", "Band_2"}
                                                  << true << QList<int>{1, 2, 4, 2};
        QTest::newRow("five bands") << 5 << QStringList{"Band_5", "Band_4", "Band_3", "Band_1"} << false
                                    << QList<int>{5, 4, 3, 1};
    }
    void compositeChannelsApply()
    {
        QFETCH(int, bandCount);
        QFETCH(QStringList, names);
        QFETCH(bool, alphaUsed);
        QFETCH(QList<int>, expected);
        const auto layer = open(bands(bandCount));
        QVERIFY(layer);
        multiRender(layer.get())->setAlphaBandNum(7);
        auto* panel = showPanel<TzImgRenderRGBCompositeDialog>(layer.get(), QStringLiteral("Image RGBComposite"));
        QVERIFY(panel);
        QAbstractItemModel* model = child<QTableView>(panel, "tableView")->model();
        QVERIFY(model);
        QCOMPARE(model->rowCount(), bandCount > 3 ? 4 : 3);
        QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Channel"));
        for (int row = 0; row < 3; ++row)
            QCOMPARE(model->index(row, 1).data().toString(), QStringLiteral("Band_%1").arg(row + 1));
        if (bandCount > 3) {
            QCOMPARE(model->index(3, 0).data().toString(), QStringLiteral("Alpha"));
            QCOMPARE(model->index(3, 1).data().toString(), QString());
            QCOMPARE(model->index(3, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
            model->setData(model->index(3, 0), alphaUsed ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
        }
        for (int row = 0; row < model->rowCount(); ++row)
            model->setData(model->index(row, 1), names.value(row));
        apply();

        TEMultiBandImageRender* render = multiRender(layer.get());
        QCOMPARE(render->getImageRenderMODE(), 5);
        QCOMPARE(render->getRedBand(), expected[0]);
        QCOMPARE(render->getGreenBand(), expected[1]);
        QCOMPARE(render->getBlueBand(), expected[2]);
        QCOMPARE(render->getAlphaBandNum(), expected[3]);
        QCOMPARE(render->getAlphaBandUse(), alphaUsed);

        // Reset: red, green and blue go back to bands 1, 2, 3; the alpha row
        // reads the render.
        reset();
        QCOMPARE(model->index(0, 1).data().toString(), QStringLiteral("Band_1"));
        if (bandCount > 3) {
            QCOMPARE(model->index(3, 0).data(Qt::CheckStateRole).toInt(), int(alphaUsed ? Qt::Checked : Qt::Unchecked));
            QCOMPARE(model->index(3, 1).data().toString(),
                     alphaUsed ? QStringLiteral("Band_%1").arg(expected[3]) : QString());
        }
        // The band editor offers every band.
        auto* delegate = qobject_cast<UserDelegate*>(child<QTableView>(panel, "tableView")->itemDelegateForColumn(1));
        QVERIFY(delegate);
        std::unique_ptr<QWidget> editor(delegate->createEditor(nullptr, QStyleOptionViewItem(), model->index(0, 1)));
        auto* combo = qobject_cast<QComboBox*>(editor.get());
        QVERIFY(combo);
        QCOMPARE(combo->count(), bandCount);
        QCOMPARE(combo->itemText(bandCount - 1), QStringLiteral("Band_%1").arg(bandCount));
    }

    void compositeColoursStretchAndDrawing()
    {
        const auto layer = open(bands(3));
        QVERIFY(layer);
        TEMultiBandImageRender* render = multiRender(layer.get());
        render->SetBackgroundColor(TEColor(0xFFFFFFFFu, 255));
        auto* panel = showPanel<TzImgRenderRGBCompositeDialog>(layer.get(), QStringLiteral("Image RGBComposite"));
        QVERIFY(panel);
        auto* background = child<TZColorBtn>(panel, "toolButton_background");
        QCOMPARE(background->getColor(), QRgb(0)); // white shows as no colour
        // Band statistics with 6 significant digits: band 1 is 20..119.
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_redMin")->text(), QStringLiteral("20"));
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_blueMax")->text(), QStringLiteral("159"));
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_greenMean")->text(), QStringLiteral("89.5"));
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_redStdDev")->text(), QStringLiteral("28.8661"));

        QAbstractItemModel* model = child<QTableView>(panel, "tableView")->model();
        model->setData(model->index(0, 1), QStringLiteral("Band_3"));
        model->setData(model->index(2, 1), QStringLiteral("Band_1"));
        model->setData(model->index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
        child<QComboBox>(panel, "comboBox_stretchType")->setCurrentIndex(0);
        child<QLineEdit>(panel, "lineEdit_stretchMin")->setText("1.5");
        child<QLineEdit>(panel, "lineEdit_stretchMax")->setText("abc");
        child<TZColorBtn>(panel, "toolButton_nodata")->setColor(qRgb(9, 8, 7));
        apply();
        QCOMPARE(render->getStretchType(), 0);
        QCOMPARE(render->getStretchMin(), 1.5);
        QCOMPARE(render->getStretchMax(), 0.0);
        QVERIFY(!render->getUseGreenBand());
        QCOMPARE(render->GetBackgroundColor().getA(), 0); // no colour: transparent
        QCOMPARE(render->GetNodataColorType(), 1);
        // No stretch: bytes as they are; red from band 3, green unused, blue
        // from band 1. Pixel (4, 2): band b is 20 * b + 24.
        QCOMPARE(drawnAt(layer.get(), 4, 2), QColor(84, 0, 44));

        reset();
        QCOMPARE(child<QComboBox>(panel, "comboBox_stretchType")->currentIndex(), 0);
        QCOMPARE(background->getColor(), QRgb(0));
        QCOMPARE(child<TZColorBtn>(panel, "toolButton_nodata")->getColor(), qRgb(9, 8, 7));
        QCOMPARE(model->index(1, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
        background->setColor(qRgb(200, 0, 0));
        apply();
        reset();
        QCOMPARE(background->getColor(), qRgb(200, 0, 0));
    }

    void multiStretchOffersAtMostThreeBands_data()
    {
        QTest::addColumn<int>("bandCount");
        QTest::addColumn<QStringList>("offered");
        QTest::newRow("two bands") << 2 << QStringList{"Band_1", "Band_2"};
        QTest::newRow("five bands") << 5 << QStringList{"Band_1", "Band_2", "Band_3"};
    }
    void multiStretchOffersAtMostThreeBands()
    {
        QFETCH(int, bandCount);
        QFETCH(QStringList, offered);
        const auto layer = open(bands(bandCount));
        QVERIFY(layer);
        multiRender(layer.get())->setImageRenderMODE(8);
        auto* panel = showPanel<TzImgRenderMultiStretchDialog>(layer.get(), QStringLiteral("Image Stretch"));
        QVERIFY(panel);
        QCOMPARE(panel->description(), QStringLiteral("MultiBand"));
        auto* combo = child<QComboBox>(panel, "comboBox_band");
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i)
            texts << combo->itemText(i);
        QCOMPARE(texts, offered);
    }

    // Band 2 of a four-band raster, stretched by its own range: its minimum
    // draws black and its maximum white.
    void multiStretchAppliesAndDrawsTheChosenBand()
    {
        const auto layer = open(bands(4));
        QVERIFY(layer);
        // The dock opens this panel for a layer drawn in mode 8 (choosing
        // it as a raster's first entry shows the no-render page).
        multiRender(layer.get())->setImageRenderMODE(8);
        auto* panel = showPanel<TzImgRenderMultiStretchDialog>(layer.get(), QStringLiteral("Image Stretch"));
        QVERIFY(panel);
        // Reset again: the repeated connection must not change the outcome.
        reset();
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_min")->text(), QStringLiteral("20"));
        child<QComboBox>(panel, "comboBox_band")->setCurrentIndex(1);
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_min")->text(), QStringLiteral("40"));
        QCOMPARE(child<QLineEdit>(panel, "lineEdit_max")->text(), QStringLiteral("139"));
        apply();
        TEMultiBandImageRender* render = multiRender(layer.get());
        QCOMPARE(render->getImageRenderMODE(), 8);
        QCOMPARE(render->GetStretchBandIndex(), 2);
        QCOMPARE(drawnAt(layer.get(), 0, 0), QColor(0, 0, 0));
        QCOMPARE(drawnAt(layer.get(), 9, 9), QColor(255, 255, 255));

        // The dock now opens the layer on this panel.
        mDock->showLayerStyle();
        QVERIFY(panel->isVisible());
        QCOMPARE(mDock->findChild<QComboBox*>("mComboBoxRenderStyle")->count(), 2);
    }
};

TZ_REGISTER_TEST(TestStretchPanels)
#include "TestStretchPanels.moc"
