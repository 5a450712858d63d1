#pragma once

#include "symbology/TEStyleDB.h"

#include <QStringList>

#include <mutex>
#include <vector>

namespace TZObjects {

// The style databases known to the application: those shipped inside the
// library, then those of the user's style folder (AppDataLocation/styles)
// and of the folder named by TZ_STYLE_PATH. Loaded on first use.
class TZOBJECTS_EXPORT TEStyleSystem
{
public:
    static TEStyleSystem* GetInstance();
    static TEStyleSystem* Instance() { return GetInstance(); }

    // The databases, shipped ones first; the system keeps owning them.
    std::vector<TEStyleDB*> GetStyleDBs();
    // The first database of that name, or null.
    TEStyleDB* FindStyleDB(const TEString& name);
    // Adds a database (refuses null); it is kept until Reload.
    bool AddStyleDB(const TERefPtr<TEStyleDB>& db);
    // Forgets every database and reads them again; pointers handed out
    // before become invalid.
    void Reload();

    // The folders read besides the shipped databases, in reading order.
    static QStringList UserFolders();
    // Texts of the files that failed to load at the last load.
    QStringList LoadErrors();

private:
    TEStyleSystem() = default;
    void ensureLoaded();
    void loadFolder(const QString& folder);

    std::recursive_mutex mMutex;
    bool mLoaded = false;
    std::vector<TERefPtr<TEStyleDB>> mDBs;
    QStringList mErrors;
};

} // namespace TZObjects
