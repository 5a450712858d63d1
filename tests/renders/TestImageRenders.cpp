#include "TestRegistry.h"

#include "RenderFixtures.h"

#include "data/TERasterProps.h"
#include "renders/TEImageClassRenderInfo.h"
#include "renders/TEImageColormapRenderInfo.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TEImageUniqueRenderInfo.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"

#include <QTemporaryDir>

using namespace TZObjects;
using namespace RenderFixtures;

class TestImageRenders : public QObject
{
    Q_OBJECT

    QTemporaryDir mFolder;
    TERefPtr<TERasterProps> mRaster;

private Q_SLOTS:
    // A 10 x 10 byte band: 0..99 row by row, except that 99 is no-data, with
    // a four-entry colour table; a second band of constant 7.
    void initTestCase()
    {
        std::vector<double> ramp(100);
        for (int i = 0; i < 100; ++i)
            ramp[size_t(i)] = i;
        const QString path = WriteGeoTiff(mFolder.path(), QStringLiteral("ramp.tif"), 10, 10,
                                          {ramp, std::vector<double>(100, 7.0)}, true, 99,
                                          {TEColor(255, 0, 0), TEColor(0, 255, 0), TEColor(0, 0, 255),
                                           TEColor(10, 20, 30)});
        QVERIFY(!path.isEmpty());
        QString error;
        mRaster = TERasterProps::Open(path, &error);
        QVERIFY2(mRaster, qPrintable(error));
    }

    void stretchInfoStretchesBetweenTheBandStatistics()
    {
        auto info = MakeRef<TEImageStretchRenderInfo>();
        TEString error;
        QVERIFY2(info->AddFromRaster(mRaster.get(), 1, &error), qPrintable(error.toQString()));
        double minimum = -1;
        double maximum = -1;
        info->GetMinMaxVal(minimum, maximum);
        QCOMPARE(minimum, 0.0);
        QCOMPARE(maximum, 98.0);
        QCOMPARE(info->GetMeanValue(), 49.0);
        QCOMPARE(info->GetItemCount(), 256);

        QCOMPARE(info->ColorOf(0), qRgb(0, 0, 0));
        QCOMPARE(info->ColorOf(98), qRgb(255, 255, 255));
        QCOMPARE(info->ColorOf(-50), qRgb(0, 0, 0));
        QCOMPARE(info->ColorOf(49), qRgb(128, 128, 128));

        info->SetAlgoType(TEImageStretchRenderInfo::StandardDeviation);
        info->SetMeanValue(50);
        info->SetStandardValue(10);
        QCOMPARE(info->ColorOf(40), qRgb(0, 0, 0));
        QCOMPARE(info->ColorOf(60), qRgb(255, 255, 255));

        info->SetAlgoType(TEImageStretchRenderInfo::MinMax);
        info->SetPercentClip(true);
        info->SetLeftClipValue(10);
        info->SetRightClipValue(10);
        double low = 0;
        double high = 0;
        info->GetStretchRange(low, high);
        QVERIFY2(low > 8 && low < 11 && high > 87 && high < 90,
                 qPrintable(QStringLiteral("%1 %2").arg(low).arg(high)));
    }

    void classInfoSplitsTheBandRangeIntoEqualClasses()
    {
        auto info = MakeRef<TEImageClassRenderInfo>();
        QVERIFY(info->AddFromRaster(mRaster.get(), 1));
        QCOMPARE(info->GetItemCount(), TEImageClassRenderInfo::DefaultClassCount);
        double low = -1;
        double high = -1;
        TEColor color;
        QVERIFY(info->GetClassItemInfo(1, low, high, color));
        QCOMPARE(low, 24.5);
        QCOMPARE(high, 49.0);
        QVERIFY(info->GetClassItemInfo(3, low, high, color));
        QCOMPARE(high, 98.0);
        QVERIFY(!info->GetClassItemInfo(4, low, high, color));

        info->SetClassCount(2);
        info->SetClassItemInfo(0, 0, 10, TEColor(1, 2, 3));
        info->SetClassItemInfo(1, 10, 20, TEColor(4, 5, 6));
        QCOMPARE(info->ColorOf(10), qRgb(1, 2, 3));
        QCOMPARE(info->ColorOf(15), qRgb(4, 5, 6));
        QCOMPARE(info->ColorOf(21), QRgb(0));
    }

    void uniqueInfoListsEachValueButNoData()
    {
        auto info = MakeRef<TEImageUniqueRenderInfo>();
        QVERIFY(info->AddFromRaster(mRaster.get(), 1));
        QCOMPARE(info->GetItemCount(), 99);
        double value = -1;
        QVERIFY(info->GetValue(0, value));
        QCOMPARE(value, 0.0);
        QVERIFY(info->GetValue(98, value));
        QCOMPARE(value, 98.0);

        info->SetColorInfo(5, 9, 8, 7);
        TEColor color;
        QVERIFY(info->GetItemColr(5, &color));
        QCOMPARE(color, TEColor(9, 8, 7));
        QCOMPARE(info->ColorOf(5), qRgb(9, 8, 7));
        QCOMPARE(info->ColorOf(99), QRgb(0));

        auto constant = MakeRef<TEImageUniqueRenderInfo>();
        QVERIFY(constant->AddFromRaster(mRaster.get(), 2));
        QCOMPARE(constant->GetItemCount(), 1);
        QVERIFY(!constant->AddFromRaster(mRaster.get(), 3));
    }

    void colormapInfoCopiesTheBandColourTable()
    {
        auto info = MakeRef<TEImageColormapRenderInfo>();
        TEString error;
        QVERIFY2(info->AddFromRaster(mRaster.get(), 1, &error), qPrintable(error.toQString()));
        QVERIFY(info->GetItemCount() >= 4);
        TEColor color;
        QVERIFY(info->GetItemColr(2, &color));
        QCOMPARE(color, TEColor(0, 0, 255));
        QCOMPARE(info->ColorOf(3), qRgb(10, 20, 30));
        info->SetRenderColorTable(1, TEColor(7, 7, 7));
        QCOMPARE(info->ColorOf(1), qRgb(7, 7, 7));
        QVERIFY(!info->AddFromRaster(mRaster.get(), 2, &error));
    }

    void singleBandRenderTakesTheModeOfItsInfo()
    {
        TESingleBandImageRender render;
        QCOMPARE(render.ColorOf(3), QRgb(0));
        render.setRenderInfo(MakeRef<TEImageClassRenderInfo>());
        QCOMPARE(render.getImageRenderMODE(), 4);
        render.setRenderInfo(MakeRef<TEImageUniqueRenderInfo>());
        QCOMPARE(render.getImageRenderMODE(), 3);
        render.setRenderInfo(MakeRef<TEImageColormapRenderInfo>());
        QCOMPARE(render.getImageRenderMODE(), 2);
        QCOMPARE(render.NodataRgb(), QRgb(0));
        render.SetNodataColorType(1);
        render.SetNodataColor(TEColor(1, 2, 3));
        QCOMPARE(render.NodataRgb(), qRgb(1, 2, 3));
    }

    void multiBandComposesUsedChannels()
    {
        TEMultiBandImageRender render;
        const double values[4] = {50, 100, 150, 0};
        const double low[4] = {0, 0, 100, 0};
        const double high[4] = {100, 100, 200, 255};
        QCOMPARE(render.ComposeRgb(values, low, high), qRgba(128, 255, 128, 255));
        render.setUseGreenBand(false);
        render.setStretchType(TEMultiBandImageRender::NoStretch);
        QCOMPARE(render.ComposeRgb(values, low, high), qRgba(50, 0, 150, 255));
        render.setAlphaBandUse(true);
        QCOMPARE(qAlpha(render.ComposeRgb(values, low, high)), 0);
    }
};

TZ_REGISTER_TEST(TestImageRenders)
#include "TestImageRenders.moc"
