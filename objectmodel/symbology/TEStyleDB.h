#pragma once

#include "symbology/TEStyle.h"

#include <QString>

#include <vector>

namespace TZObjects {

// A named collection of symbols, kept by kind (point, line, fill). A style
// database is a JSON file: {"name": ..., "styles": [style, ...]}, each
// style as TEStyle::save writes it. Style names are the keys that matching
// by value looks up.
class TZOBJECTS_EXPORT TEStyleDB : public TERefBase
{
public:
    explicit TEStyleDB(const TEString& name = TEString());

    const TEString& GetName() const { return mName; }
    void SetName(const TEString& name) { mName = name; }
    // The file the database was read from; empty for one made in memory.
    const QString& GetFilePath() const { return mFilePath; }

    // The styles of one kind, in file order; the database keeps owning them.
    std::vector<TEStyle*> GetStyles(TEStyle::StyleType type) const;
    int GetStyleCount() const;
    // The first style of the kind with that name (exact match), or null.
    TEStyle* FindStyle(TEStyle::StyleType type, const TEString& name) const;
    // Adds a style under its kind; a null style is refused.
    bool AddStyle(const TERefPtr<TEStyle>& style);
    bool RemoveStyle(const TEStyle* style);

    // Reads a database file. On failure returns false with error set and
    // leaves the database as it was.
    bool Load(const QString& filePath, QString* error = nullptr);
    bool Save(const QString& filePath, QString* error = nullptr) const;
    // Styles that do not read are skipped and counted in skipped.
    bool FromJson(const QJsonObject& json, QString* error = nullptr, int* skipped = nullptr);
    void ToJson(QJsonObject& json) const;

private:
    TEString mName;
    QString mFilePath;
    std::vector<TERefPtr<TEStyle>> mStyles[3];
};

} // namespace TZObjects
