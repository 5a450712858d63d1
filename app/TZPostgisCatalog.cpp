#include "TZPostgisCatalog.h"

#include "data/TEPostgresSource.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <libpq-fe.h>

#include <memory>

using namespace TZObjects;

namespace {

// libpq's message in one line.
QString oneLine(const char* message)
{
    return TEPostgresSource::ServerMessage(QString::fromUtf8(message));
}

// Every table and view of geometry_columns, with whether it is a view and
// how many geometry columns its table has.
const char* const ListSql =
    "SELECT g.f_table_schema, g.f_table_name, g.f_geometry_column, g.type, g.srid, "
    "       c.relkind IN ('v', 'm'), "
    "       count(*) OVER (PARTITION BY g.f_table_schema, g.f_table_name) "
    "FROM geometry_columns g "
    "LEFT JOIN pg_namespace n ON n.nspname = g.f_table_schema "
    "LEFT JOIN pg_class c ON c.relnamespace = n.oid AND c.relname = g.f_table_name "
    "ORDER BY 1, 2, 3";

} // namespace

TZPostgisCatalog::Result TZPostgisCatalog::list(const QString& connInfo, int timeoutSeconds)
{
    Result result;
    const QByteArray info = (connInfo + QStringLiteral(" connect_timeout=%1").arg(timeoutSeconds)).toUtf8();
    std::unique_ptr<PGconn, void (*)(PGconn*)> connection(PQconnectdb(info.constData()), PQfinish);
    if (PQstatus(connection.get()) != CONNECTION_OK) {
        result.needsPassword = PQconnectionNeedsPassword(connection.get())
            || (PQconnectionUsedPassword(connection.get()) && QByteArray(PQerrorMessage(connection.get())).contains("password"));
        result.error = result.needsPassword ? TZPostgisCatalog::tr("The server asks for a password: %1").arg(oneLine(PQerrorMessage(connection.get())))
                                            : TZPostgisCatalog::tr("Cannot connect: %1").arg(oneLine(PQerrorMessage(connection.get())));
        return result;
    }
    // The listing is bounded by the same time-out as the connection.
    PQclear(PQexec(connection.get(), QByteArray("SET statement_timeout = " + QByteArray::number(timeoutSeconds * 1000)).constData()));
    std::unique_ptr<PGresult, void (*)(PGresult*)> rows(PQexec(connection.get(), ListSql), PQclear);
    if (PQresultStatus(rows.get()) != PGRES_TUPLES_OK) {
        const char* state = PQresultErrorField(rows.get(), PG_DIAG_SQLSTATE);
        // 42P01: no such relation, here geometry_columns.
        result.error = state && QByteArray(state) == "42P01"
            ? TZPostgisCatalog::tr("The database has no PostGIS extension (it has no geometry_columns).")
            : TZPostgisCatalog::tr("Cannot list the tables: %1").arg(oneLine(PQresultErrorMessage(rows.get())));
        return result;
    }
    for (int row = 0; row < PQntuples(rows.get()); ++row) {
        const auto text = [&rows, row](int column) { return QString::fromUtf8(PQgetvalue(rows.get(), row, column)); };
        Table table;
        table.schema = text(0);
        table.table = text(1);
        table.geometryColumn = text(2);
        table.geometryType = text(3);
        table.srid = text(4).toInt();
        table.isView = text(5) == QLatin1String("t");
        table.layerName = table.schema == QLatin1String("public") ? table.table : table.schema + QLatin1Char('.') + table.table;
        if (text(6).toInt() > 1)
            table.layerName += QLatin1Char('(') + table.geometryColumn + QLatin1Char(')');
        result.tables.push_back(table);
    }
    result.ok = true;
    return result;
}

QStringList TZPostgisCatalog::serviceNames()
{
    QStringList files;
    const QString userFile = qEnvironmentVariable("PGSERVICEFILE");
    files << (userFile.isEmpty() ? QDir::home().filePath(QStringLiteral(".pg_service.conf")) : userFile);
    const QString systemFolder = qEnvironmentVariable("PGSYSCONFDIR", QStringLiteral("/etc/postgresql-common"));
    files << QDir(systemFolder).filePath(QStringLiteral("pg_service.conf"));

    static const QRegularExpression section(QStringLiteral("^\\s*\\[([^\\]]+)\\]"));
    QSet<QString> names;
    for (const QString& path : files) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            continue;
        while (!file.atEnd()) {
            const QRegularExpressionMatch match = section.match(QString::fromUtf8(file.readLine()));
            if (match.hasMatch())
                names.insert(match.captured(1).trimmed());
        }
    }
    QStringList sorted = names.values();
    sorted.sort();
    return sorted;
}
