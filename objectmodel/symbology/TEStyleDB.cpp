#include "symbology/TEStyleDB.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>

namespace TZObjects {

TEStyleDB::TEStyleDB(const TEString& name)
    : mName(name)
{
}

std::vector<TEStyle*> TEStyleDB::GetStyles(TEStyle::StyleType type) const
{
    std::vector<TEStyle*> styles;
    if (type < TEStyle::PointStyle || type > TEStyle::FillStyle)
        return styles;
    for (const TERefPtr<TEStyle>& style : mStyles[type])
        styles.push_back(style.get());
    return styles;
}

int TEStyleDB::GetStyleCount() const
{
    return int(mStyles[0].size() + mStyles[1].size() + mStyles[2].size());
}

TEStyle* TEStyleDB::FindStyle(TEStyle::StyleType type, const TEString& name) const
{
    if (type < TEStyle::PointStyle || type > TEStyle::FillStyle)
        return nullptr;
    for (const TERefPtr<TEStyle>& style : mStyles[type]) {
        if (style->GetName() == name)
            return style.get();
    }
    return nullptr;
}

bool TEStyleDB::AddStyle(const TERefPtr<TEStyle>& style)
{
    if (!style)
        return false;
    mStyles[style->GetStyleType()].push_back(style);
    return true;
}

bool TEStyleDB::RemoveStyle(const TEStyle* style)
{
    for (auto& list : mStyles) {
        auto it = std::find_if(list.begin(), list.end(),
                               [style](const TERefPtr<TEStyle>& s) { return s.get() == style; });
        if (it != list.end()) {
            list.erase(it);
            return true;
        }
    }
    return false;
}

bool TEStyleDB::Load(const QString& filePath, QString* error)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("Cannot open the style database %1: %2").arg(filePath, file.errorString());
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!doc.isObject()) {
        if (error)
            *error = QStringLiteral("The style database %1 is not valid JSON: %2")
                         .arg(filePath, parseError.errorString());
        return false;
    }
    TEStyleDB loaded;
    QString readError;
    if (!loaded.FromJson(doc.object(), &readError)) {
        if (error)
            *error = QStringLiteral("%1: %2").arg(filePath, readError);
        return false;
    }
    mName = loaded.mName;
    for (int i = 0; i < 3; ++i)
        mStyles[i] = std::move(loaded.mStyles[i]);
    mFilePath = filePath;
    return true;
}

bool TEStyleDB::Save(const QString& filePath, QString* error) const
{
    QJsonObject json;
    ToJson(json);
    QSaveFile file(filePath);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(json).toJson()) < 0 || !file.commit()) {
        if (error)
            *error = QStringLiteral("Cannot write the style database %1: %2").arg(filePath, file.errorString());
        return false;
    }
    return true;
}

bool TEStyleDB::FromJson(const QJsonObject& json, QString* error, int* skipped)
{
    const QString name = json.value("name").toString();
    if (name.isEmpty() || !json.value("styles").isArray()) {
        if (error)
            *error = QStringLiteral("A style database needs a \"name\" and a \"styles\" list");
        return false;
    }
    std::vector<TERefPtr<TEStyle>> styles[3];
    int bad = 0;
    for (const QJsonValue& value : json.value("styles").toArray()) {
        TERefPtr<TEStyle> style = TEStyle::FromJson(value.toObject());
        if (style)
            styles[style->GetStyleType()].push_back(style);
        else
            ++bad;
    }
    if (skipped)
        *skipped = bad;
    mName = TEString(name);
    for (int i = 0; i < 3; ++i)
        mStyles[i] = std::move(styles[i]);
    return true;
}

void TEStyleDB::ToJson(QJsonObject& json) const
{
    json.insert("name", mName.toQString());
    QJsonArray styles;
    for (const auto& list : mStyles) {
        for (const TERefPtr<TEStyle>& style : list) {
            QJsonObject styleJson;
            style->save(styleJson);
            styles.append(styleJson);
        }
    }
    json.insert("styles", styles);
}

} // namespace TZObjects
