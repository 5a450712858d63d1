#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZLayerDrawer.h"
#include "TZLayerOpener.h"
#include "TZSampleDataGenerator.h"

#include "renders/TEImageRender.h"

#include <QDir>
#include <QPainter>
#include <QSet>
#include <QTemporaryDir>

using namespace TZObjects;

// Each raster of tzmap's sample data opens in the mode that fits it and draws
// with that render straight away.
class TestSampleRasters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        std::string error;
        QVERIFY2(TZSampleDataGenerator(mDir.path().toStdString()).generate(&error), error.c_str());
    }

    void sampleRasterDrawsWithItsOpeningRender_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("minimumColours");
        QTest::addColumn<bool>("hasNoData");
        // The elevation's north-east corner lies outside the survey.
        QTest::newRow("elevation") << TZSampleDataGenerator::ElevationName << 1 << 50 << true;
        QTest::newRow("landcover") << TZSampleDataGenerator::LandcoverName << 2 << 4 << false;
        QTest::newRow("rgb") << TZSampleDataGenerator::RgbImageName << 5 << 50 << false;
        QTest::newRow("rgbn") << TZSampleDataGenerator::RgbnImageName << 5 << 50 << false;
        QTest::newRow("tiles") << TZSampleDataGenerator::TilesFolderName << 1 << 50 << true;
    }
    void sampleRasterDrawsWithItsOpeningRender()
    {
        QFETCH(QString, file);
        QFETCH(int, mode);
        QFETCH(int, minimumColours);
        QFETCH(bool, hasNoData);
        QString error;
        const auto layers = TZLayerOpener::open(QDir(mDir.path()).filePath(file), &error);
        QVERIFY2(layers.size() == 1, qPrintable(error));
        TELayer* layer = layers.front().get();
        const auto render = layer->GetRender().cast<TEImageRender>();
        QVERIFY(render);
        QCOMPARE(render->getImageRenderMODE(), mode);

        QRectF extent;
        QVERIFY(layer->GetExtent(extent));
        const QSize size(300, int(300 * extent.height() / extent.width()));
        const TZMapViewport view(size, extent.center(), extent.width() / size.width());
        std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer);
        QVERIFY(drawer);
        const QColor below(255, 0, 255);
        QImage image = AppFixture::blankImage(view, below);
        {
            QPainter painter(&image);
            QVERIFY2(drawer->draw(&painter, view, nullptr), qPrintable(drawer->errorText()));
        }
        QSet<QRgb> colours;
        int clear = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                if (pixel == below.rgb())
                    ++clear;
                else
                    colours.insert(pixel);
            }
        }
        const int total = image.width() * image.height();
        QVERIFY2(colours.size() >= minimumColours, qPrintable(QString::number(colours.size())));
        // No-data is left clear, and only no-data.
        QCOMPARE(clear > 0, hasNoData);
        QVERIFY2(clear < total / 4, qPrintable(QString::number(clear)));
    }

private:
    QTemporaryDir mDir;
};

TZ_REGISTER_TEST(TestSampleRasters)
#include "TestSampleRasters.moc"
