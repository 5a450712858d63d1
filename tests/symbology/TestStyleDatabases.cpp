#include "TestRegistry.h"

#include "symbology/QuickStyle.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSystem.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace TZObjects;

namespace {

QStringList styleNames(const TEStyleDB* db, TEStyle::StyleType type)
{
    QStringList names;
    for (const TEStyle* style : db->GetStyles(type))
        names << style->GetName().toQString();
    return names;
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

// Shipped and user style databases, looked up as matching by value does.
class TestStyleDatabases : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup()
    {
        qunsetenv("TZ_STYLE_PATH");
        TEStyleSystem::GetInstance()->Reload();
    }

    void shippedDatabasesHoldTheSampleDataValues()
    {
        const std::vector<TEStyleDB*> dbs = TEStyleSystem::GetInstance()->GetStyleDBs();
        QVERIFY(dbs.size() >= 2);
        const QStringList landUse = {"Residential", "Forest", "Water", "Farmland",
                                     "Industrial", "Commercial", "Park", "Wetland"};
        const QStringList roads = {"Motorway", "Primary", "Secondary", "Tertiary", "Residential road", "Track"};
        const QStringList places = {"City", "Town", "Village", "Hamlet"};
        for (const char* name : {"Topographic", "Thematic"}) {
            const TEStyleDB* db = TEStyleSystem::GetInstance()->FindStyleDB(TEString(name));
            QVERIFY2(db, name);
            QCOMPARE(styleNames(db, TEStyle::FillStyle), landUse);
            QCOMPARE(styleNames(db, TEStyle::LineStyle), roads);
            QCOMPARE(styleNames(db, TEStyle::PointStyle), places);
        }
        QVERIFY(TEStyleSystem::GetInstance()->LoadErrors().isEmpty());
    }

    void stylesAreListedByTheirKind()
    {
        const TEStyleDB* db = TEStyleSystem::GetInstance()->FindStyleDB(TEString("Topographic"));
        QVERIFY(db);
        for (TEStyle::StyleType type : {TEStyle::PointStyle, TEStyle::LineStyle, TEStyle::FillStyle}) {
            for (const TEStyle* style : db->GetStyles(type))
                QCOMPARE(style->GetStyleType(), type);
        }
        const TEStyle* motorway = db->FindStyle(TEStyle::LineStyle, TEString("Motorway"));
        QVERIFY(motorway);
        QCOMPARE(motorway->GetStyleClass(), TEStyle::MulLayerLine);
        QCOMPARE(static_cast<const TEStyleMultiLayer*>(motorway)->GetLayerCount(), 2);
        QVERIFY(!db->FindStyle(TEStyle::PointStyle, TEString("Motorway")));
        QVERIFY(db->GetStyles(TEStyle::StyleType(7)).empty());
    }

    void userFolderAddsItsDatabasesAndReportsBrokenOnes()
    {
        QTemporaryDir folder;
        QVERIFY(folder.isValid());
        TEStyleDB mine(TEString("My symbols"));
        mine.AddStyle(QuickStyle::MakeFillStyle(TEColor(1, 2, 3), TEColor(4, 5, 6), 0.3));
        mine.GetStyles(TEStyle::FillStyle).front()->SetName(TEString("Allotment"));
        QString error;
        QVERIFY2(mine.Save(folder.filePath("mine.json"), &error), qPrintable(error));
        QVERIFY(writeFile(folder.filePath("broken.json"), "{ \"name\": "));
        QVERIFY(writeFile(folder.filePath("notes.txt"), "not a database"));

        qputenv("TZ_STYLE_PATH", QFile::encodeName(folder.path()));
        TEStyleSystem* system = TEStyleSystem::GetInstance();
        system->Reload();
        QVERIFY(TEStyleSystem::UserFolders().contains(folder.path()));
        const TEStyleDB* loaded = system->FindStyleDB(TEString("My symbols"));
        QVERIFY(loaded);
        QCOMPARE(loaded->GetFilePath(), folder.filePath("mine.json"));
        const TEStyle* allotment = loaded->FindStyle(TEStyle::FillStyle, TEString("Allotment"));
        QVERIFY(allotment);
        QCOMPARE(allotment->GetColor(), TEColor(1, 2, 3));
        QCOMPARE(system->LoadErrors().size(), 1);
        QVERIFY(system->LoadErrors().front().contains("broken.json"));
        // The shipped databases come first.
        QCOMPARE(system->GetStyleDBs().back(), loaded);
    }

    void failedLoadLeavesTheDatabaseAsItWas()
    {
        QTemporaryDir folder;
        TEStyleDB db(TEString("Kept"));
        db.AddStyle(QuickStyle::MakeLineStyle(TEColor(), 1));
        QVERIFY(writeFile(folder.filePath("nameless.json"), "{\"styles\": []}"));
        QString error;
        QVERIFY(!db.Load(folder.filePath("nameless.json"), &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!db.Load(folder.filePath("missing.json"), &error));
        QCOMPARE(db.GetName().toQString(), QString("Kept"));
        QCOMPARE(db.GetStyleCount(), 1);

        // Unknown style classes are skipped, the rest is read.
        int skipped = 0;
        QJsonObject json{{"name", "Mixed"},
                         {"styles", QJsonArray{QJsonObject{{"type", "BitmapPoint"}},
                                               QJsonObject{{"type", "SimplePoint"}, {"name", "Dot"}}}}};
        QVERIFY(db.FromJson(json, &error, &skipped));
        QCOMPARE(skipped, 1);
        QCOMPARE(styleNames(&db, TEStyle::PointStyle), QStringList{"Dot"});
        QVERIFY(styleNames(&db, TEStyle::LineStyle).isEmpty());
    }
};

TZ_REGISTER_TEST(TestStyleDatabases)
#include "TestStyleDatabases.moc"
