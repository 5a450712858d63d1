#include "TestRegistry.h"
#include "ModalAnswer.h"

#include "AppFixture.h"
#include "PostgisServer.h"
#include "TZLayerOpener.h"
#include "TZLayerTree.h"
#include "TZMapCanvas.h"
#include "TZMapWindow.h"
#include "TZPostgisCatalog.h"
#include "TZPostgisDialog.h"

#include "data/TEFeatureLayer.h"
#include "data/TEPostgresSource.h"
#include "renders/TESingleSymbolRender.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTreeWidget>

using namespace TZObjects;

namespace {

const char* const Tables =
    "CREATE SCHEMA atlas;"
    "CREATE TABLE squares (fid serial PRIMARY KEY, landuse text, geom geometry(Polygon, 3857));"
    "INSERT INTO squares (landuse, geom) VALUES"
    " ('Forest', 'SRID=3857;POLYGON((0 0,100 0,100 100,0 100,0 0))'),"
    " ('Water', 'SRID=3857;POLYGON((100 0,200 0,200 100,100 100,100 0))');"
    "CREATE TABLE atlas.places (id serial PRIMARY KEY, name text, spot geometry(Point, 3857),"
    " area geometry(Polygon, 3857));"
    "INSERT INTO atlas.places (name, spot, area) VALUES ('Mill', 'SRID=3857;POINT(50 50)',"
    " 'SRID=3857;POLYGON((40 40,60 40,60 60,40 60,40 40))');"
    "CREATE VIEW atlas.forest AS SELECT * FROM squares WHERE landuse = 'Forest';";

void waitForDrawing(TZMapCanvas* canvas)
{
    QSignalSpy finished(canvas, &TZMapCanvas::drawingFinished);
    while (canvas->isDrawing())
        QVERIFY(finished.wait(20000));
}

// The test server's connection for another user, with a password or none.
QString sourceFor(const QString& user, const QString& password)
{
    TEPostgresSource source(PostgisServer::Shared().GdalSource());
    source.SetValue(QStringLiteral("user"), user);
    source.SetValue(QStringLiteral("password"), password);
    return source.ToSource();
}

QStringList layerNames(const TZMapWindow& window)
{
    QStringList names;
    for (const auto& layer : window.layerTree()->layers())
        names << layer->GetLayerName().toQString();
    names.sort();
    return names;
}

} // namespace

// PostGIS in tzmap: the connection dialog, projects that keep no password,
// and a server that goes away while the map is open.
class TestPostgisInTzmap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        PostgisServer& server = PostgisServer::Shared();
        QVERIFY2(server.IsRunning(), qPrintable(server.Error()));
        QVERIFY2(server.Exec(QString::fromLatin1(Tables)), qPrintable(server.Error()));
        QVERIFY(mDir.isValid());
        // A service file naming the test database, as a user's would.
        QFile services(mDir.filePath(QStringLiteral("pg_service.conf")));
        QVERIFY(services.open(QIODevice::WriteOnly));
        services.write(QStringLiteral("# test services\n[tz_atlas]\nhost=%1\ndbname=tz\nuser=tz_test\n\n[other]\nhost=nowhere\n")
                           .arg(server.SocketFolder())
                           .toUtf8());
        services.close();
        qputenv("PGSERVICEFILE", services.fileName().toLocal8Bit());
    }

    void cleanupTestCase()
    {
        qunsetenv("PGSERVICEFILE");
    }

    void catalogListsSpatialTablesOrSaysWhyNot_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<bool>("needsPassword");
        QTest::addColumn<QString>("errorPart");  // empty: the listing succeeds
        PostgisServer& server = PostgisServer::Shared();
        QVERIFY(server.AddPasswordUser(QStringLiteral("tz_lister"), QStringLiteral("right")));
        QTest::newRow("trusted") << server.GdalSource() << false << QString();
        QTest::newRow("service") << QStringLiteral("PG:service=tz_atlas") << false << QString();
        QTest::newRow("with password") << sourceFor(QStringLiteral("tz_lister"), QStringLiteral("right")) << false
                                       << QString();
        QTest::newRow("no password") << sourceFor(QStringLiteral("tz_lister"), QString()) << true << "password";
        QTest::newRow("wrong password") << sourceFor(QStringLiteral("tz_lister"), QStringLiteral("wrong")) << true
                                        << "password";
        TEPostgresSource missing(server.GdalSource());
        missing.SetValue(QStringLiteral("dbname"), QStringLiteral("tz_missing"));
        QTest::newRow("no such database") << missing.ToSource() << false << "tz_missing";
        TEPostgresSource noPostgis(server.GdalSource());
        noPostgis.SetValue(QStringLiteral("dbname"), QStringLiteral("postgres"));
        QTest::newRow("no PostGIS") << noPostgis.ToSource() << false << "PostGIS";
        TEPostgresSource noServer(server.GdalSource());
        noServer.SetValue(QStringLiteral("host"), mDir.path());
        QTest::newRow("no server") << noServer.ToSource() << false << "Cannot connect";
    }
    void catalogListsSpatialTablesOrSaysWhyNot()
    {
        QFETCH(QString, source);
        QFETCH(bool, needsPassword);
        QFETCH(QString, errorPart);
        const TZPostgisCatalog::Result result = TZPostgisCatalog::list(TEPostgresSource(source).ToConnInfo(), 5);
        QCOMPARE(result.ok, errorPart.isEmpty());
        QCOMPARE(result.needsPassword, needsPassword);
        QVERIFY2(result.error.contains(errorPart), qPrintable(result.error));
        if (!result.ok)
            return;
        QStringList names;
        QStringList views;
        for (const TZPostgisCatalog::Table& table : result.tables) {
            names << table.layerName;
            if (table.isView)
                views << table.layerName;
        }
        QCOMPARE(names, QStringList({"atlas.forest", "atlas.places(area)", "atlas.places(spot)", "squares"}));
        QCOMPARE(views, QStringList({"atlas.forest"}));
        // GDAL opens each by that name, one geometry column each.
        for (const QString& name : names) {
            QString error;
            TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(source, name, &error);
            QVERIFY2(layer && layer->GetFeatureCount() == (name == QLatin1String("squares") ? 2 : 1), qPrintable(name + error));
        }
    }

    // The dialog of File > Add PostGIS Layer, used as a person would: a
    // wrong database first, then the right one, two tables chosen.
    void dialogConnectsOffTheGuiThreadAndAddsTheChosenTables()
    {
        PostgisServer& server = PostgisServer::Shared();
        TZMapWindow window;
        QAction* action = window.findChild<QAction*>(QStringLiteral("actionAddPostgisLayer"));
        QVERIFY(action);
        QStringList statusTexts;
        QStringList services;
        bool okEverEnabled = false;
        bool connectingRightAway = false;
        ModalAnswer answer("TZPostgisDialog", [&](QWidget* dialog) {
            auto* connectDialog = qobject_cast<TZPostgisDialog*>(dialog);
            auto* tables = dialog->findChild<QTreeWidget*>(QStringLiteral("treeTables"));
            QPushButton* ok = dialog->findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"))->button(QDialogButtonBox::Ok);
            auto* host = dialog->findChild<QLineEdit*>(QStringLiteral("lineHost"));
            auto* user = dialog->findChild<QLineEdit*>(QStringLiteral("lineUser"));
            auto* database = dialog->findChild<QLineEdit*>(QStringLiteral("lineDatabase"));
            auto* service = dialog->findChild<QComboBox*>(QStringLiteral("comboService"));
            for (int i = 0; i < service->count(); ++i)
                services << service->itemText(i);
            QSignalSpy finished(connectDialog, &TZPostgisDialog::connectFinished);
            // First the fields, naming a database that does not exist; then
            // the service alone.
            for (const bool byService : {false, true}) {
                host->setText(byService ? QString() : server.SocketFolder());
                user->setText(byService ? QString() : QStringLiteral("tz_test"));
                database->setText(byService ? QString() : QStringLiteral("tz_missing"));
                service->setCurrentIndex(byService ? service->findText(QStringLiteral("tz_atlas")) : 0);
                dialog->findChild<QPushButton*>(QStringLiteral("pushConnect"))->click();
                // The click returns at once; the worker answers later.
                connectingRightAway = connectDialog->isConnecting();
                if (!finished.wait(20000))
                    break;
                statusTexts << dialog->findChild<QLabel*>(QStringLiteral("labelStatus"))->text();
                okEverEnabled = okEverEnabled || ok->isEnabled();
            }
            for (int i = 0; i < tables->topLevelItemCount(); ++i) {
                const QString name = tables->topLevelItem(i)->text(0);
                tables->topLevelItem(i)->setSelected(name == QLatin1String("public.squares")
                                                     || name == QLatin1String("atlas.forest"));
            }
            ok->click();
        });
        action->trigger();
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogTitle(), QStringLiteral("Add PostGIS Layer"));
        QVERIFY(connectingRightAway);
        QVERIFY(!okEverEnabled);
        QCOMPARE(statusTexts.size(), 2);
        QVERIFY2(statusTexts[0].contains(QLatin1String("tz_missing")), qPrintable(statusTexts[0]));
        QCOMPARE(statusTexts[1], QStringLiteral("Connected: 4 spatial tables and views."));
        QVERIFY2(services.contains(QStringLiteral("tz_atlas")) && services.contains(QStringLiteral("other")),
                 qPrintable(services.join(QLatin1Char(' '))));
        QCOMPARE(layerNames(window), QStringList({"atlas.forest", "squares"}));
        for (const auto& layer : window.layerTree()->layers())
            QCOMPARE(layer->GetSource(), QStringLiteral("PG:service=tz_atlas"));
    }

    // A project keeps the connection without its password; reopened, the
    // password comes from the user (a prompt) or from the password file.
    void projectsKeepNoPassword_data()
    {
        QTest::addColumn<bool>("fromPasswordFile");
        QTest::newRow("prompt") << false;
        QTest::newRow("password file") << true;
    }
    void projectsKeepNoPassword()
    {
        QFETCH(bool, fromPasswordFile);
        PostgisServer& server = PostgisServer::Shared();
        const QString user = fromPasswordFile ? QStringLiteral("tz_pgpass") : QStringLiteral("tz_prompt");
        const QString password = QStringLiteral("se cret'\\x");
        QVERIFY2(server.AddPasswordUser(user, password), qPrintable(server.Error()));
        const QString path = mDir.filePath(user + QStringLiteral(".tzmap"));
        {
            TZMapWindow window;
            QCOMPARE(window.openPaths({sourceFor(user, password)}), 3);
            QVERIFY(window.saveProject(path));
        }
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString saved = QString::fromUtf8(file.readAll());
        QVERIFY2(!saved.contains(QLatin1String("se cret")) && !saved.contains(QLatin1String("password")),
                 qPrintable(saved));
        QVERIFY(saved.contains(user));

        QTemporaryDir home;
        if (fromPasswordFile) {
            QFile passwords(home.filePath(QStringLiteral("pgpass")));
            QVERIFY(passwords.open(QIODevice::WriteOnly));
            // The password file escapes backslashes and colons.
            passwords.write(QStringLiteral("*:*:tz:%1:se cret'\\\\x\n").arg(user).toUtf8());
            passwords.close();
            passwords.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
            qputenv("PGPASSFILE", passwords.fileName().toLocal8Bit());
        }
        TZMapWindow reopened;
        ModalAnswer prompt("QInputDialog", ModalAnswer::click(QDialogButtonBox::Ok, [&password](QWidget* dialog) {
                               qobject_cast<QInputDialog*>(dialog)->setTextValue(password);
                           }));
        const bool opened = reopened.openProject(path);
        qunsetenv("PGPASSFILE");
        QVERIFY(opened);
        QCOMPARE(prompt.answered(), !fromPasswordFile);
        QCOMPARE(layerNames(reopened), QStringList({"atlas.forest", "atlas.places", "squares"}));
        for (const auto& layer : reopened.layerTree()->layers())
            QVERIFY2(layer->IsValid() && dynamic_cast<TEFeatureLayer*>(layer.get())->GetFeatureCount() > 0,
                     qPrintable(layer->GetLayerName().toQString()));
    }

    // The server stops while the map is open: the map says so in the status
    // bar and draws the layer no more, without a crash or a blocked window;
    // a refresh after the server is back draws it again.
    void lostConnectionIsReportedAndRefreshResumes()
    {
        PostgisServer& server = PostgisServer::Shared();
        TZMapWindow window;
        QString error;
        TERefPtr<TELayer> squares = TZLayerOpener::openLayer(QLatin1String(TZLayerOpener::FeatureKind),
                                                             server.GdalSource(), QStringLiteral("squares"), &error);
        QVERIFY2(squares, qPrintable(error));
        dynamic_cast<TEFeatureLayer*>(squares.get())->SetSymbolRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::red)));
        window.layerTree()->addLayer(squares);
        // A second layer of the server, over the first square.
        TERefPtr<TELayer> forest = TZLayerOpener::openLayer(QLatin1String(TZLayerOpener::FeatureKind),
                                                            server.GdalSource(), QStringLiteral("atlas.forest"), &error);
        QVERIFY2(forest, qPrintable(error));
        window.layerTree()->addLayer(forest);
        TZMapCanvas* canvas = window.canvas();
        canvas->resize(400, 200);
        canvas->setViewport(AppFixture::squaresViewport());
        waitForDrawing(canvas);
        // Inside the second square, which only the first layer covers.
        const auto colour = [canvas] { return AppFixture::colorAt(canvas->mapImage(), canvas->viewport(), {150, 50}); };
        QCOMPARE(colour(), QColor(Qt::red));
        QAction* refresh = window.findChild<QAction*>(QStringLiteral("actionRefresh"));
        QVERIFY(refresh);

        QVERIFY2(server.Pause(), qPrintable(server.Error()));
        struct ResumeAtEnd
        {
            PostgisServer& server;
            bool resumed = false;
            ~ResumeAtEnd()
            {
                if (!resumed)
                    server.Resume();
            }
        } resume{server};
        // On the connection the server dropped, then on one it refuses.
        for (const char* expected : {"The connection to the PostgreSQL server is lost",
                                     "Cannot connect to the PostgreSQL server"}) {
            refresh->trigger();
            waitForDrawing(canvas);
            const QString message = window.statusBar()->currentMessage();
            // Both layers named once, with the one reason.
            QVERIFY2(message.startsWith(QLatin1String("Not every layer could be drawn: squares, atlas.forest: ")
                                        + QLatin1String(expected))
                         && message.count(QLatin1String(expected)) == 1,
                     qPrintable(message));
            QVERIFY(!message.contains(QLatin1String("password")));
            QVERIFY(colour() != QColor(Qt::red));
        }

        QVERIFY2(server.Resume(), qPrintable(server.Error()));
        resume.resumed = true;
        refresh->trigger();
        waitForDrawing(canvas);
        QCOMPARE(colour(), QColor(Qt::red));
        QCOMPARE(window.statusBar()->currentMessage(), QString());
    }

private:
    QTemporaryDir mDir;
};

TZ_REGISTER_TEST(TestPostgisInTzmap)
#include "TestPostgisInTzmap.moc"
