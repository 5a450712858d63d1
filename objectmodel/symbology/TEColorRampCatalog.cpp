#include "symbology/TEColorRampCatalog.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace TZObjects {

TEColorRampCatalog* TEColorRampCatalog::Instance()
{
    static TEColorRampCatalog instance;
    return &instance;
}

TEColorRampCatalog::TEColorRampCatalog()
{
    QFile file(QStringLiteral(":/ramps/ramps.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        mError = QStringLiteral("The colour ramp catalog is missing from the library");
        return;
    }
    loadFromJson(file.readAll(), &mError);
}

bool TEColorRampCatalog::loadFromJson(const QByteArray& data, QString* error)
{
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(data, &parseError);
    if (!doc.isObject()) {
        if (error)
            *error = QStringLiteral("The colour ramp catalog is not valid JSON: %1").arg(parseError.errorString());
        return false;
    }
    std::vector<Group> groups;
    for (const QJsonValue& groupValue : doc.object().value("groups").toArray()) {
        const QJsonObject groupJson = groupValue.toObject();
        Group group;
        group.name = TEString(groupJson.value("name").toString());
        for (const QJsonValue& rampValue : groupJson.value("ramps").toArray()) {
            QString rampError;
            TERefPtr<TEColorRamp> ramp = TEColorRamp::FromJson(rampValue.toObject(), &rampError);
            if (!ramp || !ramp->isValid()) {
                if (error)
                    *error = QStringLiteral("%1 in group \"%2\"")
                                 .arg(rampError.isEmpty() ? QStringLiteral("A ramp without colours") : rampError,
                                      group.name.toQString());
                return false;
            }
            ramp->setGroup(group.name);
            group.ramps.push_back(ramp);
        }
        groups.push_back(std::move(group));
    }
    std::lock_guard<std::mutex> lock(mMutex);
    mGroups = std::move(groups);
    return true;
}

std::vector<TEString> TEColorRampCatalog::groups() const
{
    std::lock_guard<std::mutex> lock(mMutex);
    std::vector<TEString> names;
    for (const Group& group : mGroups)
        names.push_back(group.name);
    return names;
}

std::vector<TERefPtr<TEColorRamp>> TEColorRampCatalog::ramps(const TEString& group) const
{
    std::lock_guard<std::mutex> lock(mMutex);
    for (const Group& g : mGroups) {
        if (g.name == group)
            return g.ramps;
    }
    return {};
}

TERefPtr<TEColorRamp> TEColorRampCatalog::find(const TEString& group, const TEString& name) const
{
    std::lock_guard<std::mutex> lock(mMutex);
    for (const Group& g : mGroups) {
        if (g.name != group)
            continue;
        for (const TERefPtr<TEColorRamp>& ramp : g.ramps) {
            if (ramp->getName() == name)
                return ramp;
        }
    }
    return TERefPtr<TEColorRamp>();
}

} // namespace TZObjects
