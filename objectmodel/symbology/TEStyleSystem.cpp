#include "symbology/TEStyleSystem.h"

#include <QDir>
#include <QStandardPaths>

namespace TZObjects {

TEStyleSystem* TEStyleSystem::GetInstance()
{
    static TEStyleSystem instance;
    return &instance;
}

QStringList TEStyleSystem::UserFolders()
{
    QStringList folders;
    const QString appData = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (!appData.isEmpty())
        folders << appData + QStringLiteral("/styles");
    const QString fromEnvironment = qEnvironmentVariable("TZ_STYLE_PATH");
    if (!fromEnvironment.isEmpty())
        folders << fromEnvironment;
    return folders;
}

void TEStyleSystem::ensureLoaded()
{
    if (mLoaded)
        return;
    mLoaded = true;
    mErrors.clear();
    loadFolder(QStringLiteral(":/styles"));
    for (const QString& folder : UserFolders())
        loadFolder(folder);
}

void TEStyleSystem::loadFolder(const QString& folder)
{
    const QDir dir(folder);
    if (!dir.exists())
        return;
    for (const QString& file : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        auto db = MakeRef<TEStyleDB>();
        QString error;
        if (db->Load(dir.filePath(file), &error))
            mDBs.push_back(db);
        else
            mErrors << error;
    }
}

std::vector<TEStyleDB*> TEStyleSystem::GetStyleDBs()
{
    std::lock_guard<std::recursive_mutex> lock(mMutex);
    ensureLoaded();
    std::vector<TEStyleDB*> dbs;
    for (const TERefPtr<TEStyleDB>& db : mDBs)
        dbs.push_back(db.get());
    return dbs;
}

TEStyleDB* TEStyleSystem::FindStyleDB(const TEString& name)
{
    std::lock_guard<std::recursive_mutex> lock(mMutex);
    ensureLoaded();
    for (const TERefPtr<TEStyleDB>& db : mDBs) {
        if (db->GetName() == name)
            return db.get();
    }
    return nullptr;
}

bool TEStyleSystem::AddStyleDB(const TERefPtr<TEStyleDB>& db)
{
    if (!db)
        return false;
    std::lock_guard<std::recursive_mutex> lock(mMutex);
    ensureLoaded();
    mDBs.push_back(db);
    return true;
}

void TEStyleSystem::Reload()
{
    std::lock_guard<std::recursive_mutex> lock(mMutex);
    mDBs.clear();
    mLoaded = false;
    ensureLoaded();
}

QStringList TEStyleSystem::LoadErrors()
{
    std::lock_guard<std::recursive_mutex> lock(mMutex);
    ensureLoaded();
    return mErrors;
}

} // namespace TZObjects
