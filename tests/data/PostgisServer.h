#pragma once

#include <QString>

// A throwaway PostgreSQL cluster with PostGIS for the data tests: created
// with initdb in a fresh folder under /tmp, listening only on a Unix socket
// in that folder (no TCP port), trusting only its own superuser on that
// socket. It never connects to any other server. The cluster is stopped and
// its folder removed when the object goes, at process exit, or when the
// process is killed by a crash signal, so a failing test leaves nothing
// behind.
class PostgisServer
{
public:
    // The one cluster of the test run, started on first use. Check
    // IsRunning(): the machine may lack the server or PostGIS.
    static PostgisServer& Shared();

    PostgisServer();
    ~PostgisServer();
    PostgisServer(const PostgisServer&) = delete;
    PostgisServer& operator=(const PostgisServer&) = delete;

    bool Start();
    void Stop();
    bool IsRunning() const { return mRunning; }
    // Why the server could not start.
    QString Error() const { return mError; }

    // The GDAL data source of the test database ("PG:host=... dbname=...").
    QString GdalSource() const;
    // libpq's keyword/value connection string of the test database.
    QString ConnInfo() const;
    QString SocketFolder() const { return mFolder; }

    // Runs SQL in the test database through psql; false with the message in
    // Error() when it fails.
    bool Exec(const QString& sql);
    // The first column of the first row psql gives for the query.
    QString Query(const QString& sql);

    // Adds a role that may read every table and must give its password to
    // log in (the test superuser needs none).
    bool AddPasswordUser(const QString& user, const QString& password);

    // The server's log: every statement it ran (log_statement is "all").
    // Set TZ_KEEP_POSTGIS_LOG to a path to keep a copy when the cluster goes.
    QString Log() const;

    // Stops the server without removing the cluster (as if it had gone away
    // under a running program), and starts it again.
    bool Pause();
    bool Resume();

private:
    bool Run(const QString& program, const QStringList& arguments, QString* output = nullptr);
    bool StartServer();

    QString mBin;
    QString mFolder;
    QString mRunAs;  // the unprivileged account the server runs as when we are root
    QString mError;
    bool mRunning = false;
};
