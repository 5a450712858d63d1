// The tzmap project file. Layer sources are confined to a folder of small
// data sets (see tzFuzzDataFolder): a project naming a device, a huge file
// elsewhere or a database server tests the machine, not the reader.
#include "FuzzSupport.h"

#include "TZMapProject.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>

using namespace TZObjects;

namespace {

bool sourcesStayInside(const QByteArray& bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    for (const QJsonValue& layer : document.object().value(QStringLiteral("layers")).toArray()) {
        const QString source = layer.toObject().value(QStringLiteral("source")).toString();
        // A ':' names a driver's connection ("PG:..."): a server, not a file.
        if (source.contains(QLatin1Char('/')) || source.contains(QLatin1Char('\\')) || source.startsWith(QLatin1Char('.'))
            || source.contains(QLatin1Char(':')))
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    tzFuzzInit();
    const QByteArray bytes = tzFuzzBytes(data, size);
    if (!sourcesStayInside(bytes))
        return 0;
    const QString path = QDir(tzFuzzDataFolder()).filePath(QStringLiteral("project.tzmap"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(bytes);
    file.close();

    std::vector<TZMapProject::LayerState> layers;
    TZMapViewport view;
    QStringList warnings;
    QString error;
    if (!TZMapProject::open(path, layers, view, &warnings, &error)) {
        if (error.isEmpty())
            abort();
        return 0;
    }
    // An opened project saves again, and what it saved opens with every layer.
    const QString again = QDir(tzFuzzDataFolder()).filePath(QStringLiteral("again.tzmap"));
    if (!TZMapProject::save(again, layers, view, &error))
        return 0;
    std::vector<TZMapProject::LayerState> reopened;
    TZMapViewport view2;
    if (!TZMapProject::open(again, reopened, view2, nullptr, &error) || reopened.size() != layers.size())
        abort();
    return 0;
}
