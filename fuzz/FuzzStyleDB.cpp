// The style database reader: any JSON either loads (bad styles skipped and
// counted) or is refused with an error text.
#include "FuzzSupport.h"

#include "symbology/TEStyleDB.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>

using namespace TZObjects;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    tzFuzzInit();
    const QJsonDocument document = QJsonDocument::fromJson(tzFuzzBytes(data, size));
    if (!document.isObject())
        return 0;
    TEStyleDB db;
    QString error;
    int skipped = 0;
    if (!db.FromJson(document.object(), &error, &skipped)) {
        if (error.isEmpty())
            abort();
        return 0;
    }
    // A loaded database writes out and reads back with nothing more skipped.
    QJsonObject saved;
    db.ToJson(saved);
    TEStyleDB reread;
    int skippedAgain = 0;
    if (!reread.FromJson(saved, &error, &skippedAgain) || skippedAgain != 0)
        abort();
    return 0;
}
