#pragma once

#include "core/TZObjectsExport.h"

#include <QPair>
#include <QString>
#include <QVector>

namespace TZObjects {

// A PostGIS data source as GDAL names it: "PG:" and libpq's keyword/value
// connection string ("host=/tmp/x dbname=gis user=ann password='a b'"),
// possibly with GDAL's own keys among them (tables=, schemas=, ...). A URI
// ("PG:postgresql://ann@db/gis") is read as the same keywords. Keys keep
// their order; values are quoted as libpq wants when written back.
class TZOBJECTS_EXPORT TEPostgresSource
{
public:
    TEPostgresSource() = default;
    // Reads a "PG:" source; IsValid() is false for anything else or for
    // text libpq could not read either.
    explicit TEPostgresSource(const QString& source);

    static bool IsPostgres(const QString& source);
    // The source without its password (what a project file or a message
    // may show); other sources come back unchanged.
    static QString WithoutPassword(const QString& source);

    // A message of libpq (or of GDAL about the server) in one line: GDAL's
    // "PQconnectdb failed." and libpq's indented hints left out.
    static QString ServerMessage(const QString& text);

    bool IsValid() const { return mValid; }

    QString Value(const QString& key) const;
    // Sets a key (an empty value removes it).
    void SetValue(const QString& key, const QString& value);

    // "PG:key=value ...", every key kept.
    QString ToSource() const;
    // The connection string libpq takes: GDAL's own keys left out.
    QString ToConnInfo() const;

private:
    QVector<QPair<QString, QString>> mPairs;
    bool mValid = false;
};

} // namespace TZObjects
