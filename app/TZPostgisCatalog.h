#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

// What a PostGIS database offers to draw: the spatial tables and views its
// geometry_columns lists, read straight through libpq. Runs on any thread
// (the connection dialog calls it on a worker) and never waits on the
// server longer than the time-out it is given.
class TZPostgisCatalog
{
    Q_DECLARE_TR_FUNCTIONS(TZPostgisCatalog)

public:
    struct Table
    {
        QString schema;
        QString table;
        QString geometryColumn;
        QString geometryType;  // POINT, MULTIPOLYGON, GEOMETRY, ...
        int srid = 0;
        bool isView = false;
        // The name GDAL gives the layer: the table, "schema.table" outside
        // the public schema, "(column)" added when the table has several
        // geometry columns.
        QString layerName;
    };

    struct Result
    {
        bool ok = false;
        // The server asked for a password that was not given (or was wrong).
        bool needsPassword = false;
        QString error;
        std::vector<Table> tables;
    };

    // Connects with the libpq connection string and lists the tables.
    static Result list(const QString& connInfo, int timeoutSeconds);

    // The service names of the user's and the system's PostgreSQL service
    // files (PGSERVICEFILE or ~/.pg_service.conf, PGSYSCONFDIR's or the
    // system's pg_service.conf), as libpq finds them; sorted, each once.
    static QStringList serviceNames();
};
