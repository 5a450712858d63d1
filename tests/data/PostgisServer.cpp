#include "PostgisServer.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const char kUser[] = "tz_test";
const char kDatabase[] = "tz";
const char kPasswordGroup[] = "tz_password_users";

// What a crash handler needs to stop the server and remove the folder,
// kept in plain buffers because only async-signal-safe calls may use them.
char gFolder[256];
volatile sig_atomic_t gPostmaster = 0;

void crashCleanup(int signal)
{
    if (gPostmaster > 0)
        kill(pid_t(gPostmaster), SIGQUIT);  // immediate shutdown
    if (gFolder[0]) {
        const pid_t child = fork();
        if (child == 0) {
            // Give the postmaster a moment to leave before its folder goes.
            sleep(1);
            char* const argv[] = {const_cast<char*>("rm"), const_cast<char*>("-rf"), gFolder, nullptr};
            execv("/bin/rm", argv);
            _exit(1);
        }
        if (child > 0)
            waitpid(child, nullptr, 0);
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

QString findBinFolder()
{
    // Debian keeps the server's programs out of PATH, one folder per major
    // version; take the newest.
    QDir root(QStringLiteral("/usr/lib/postgresql"));
    QStringList versions = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    std::sort(versions.begin(), versions.end(), [](const QString& a, const QString& b) { return a.toInt() > b.toInt(); });
    for (const QString& version : versions) {
        const QString bin = root.filePath(version + QStringLiteral("/bin"));
        if (QFile::exists(bin + QStringLiteral("/initdb")) && QFile::exists(bin + QStringLiteral("/pg_ctl")))
            return bin;
    }
    return {};
}

} // namespace

PostgisServer& PostgisServer::Shared()
{
    static PostgisServer server;
    static const bool started = server.Start();
    Q_UNUSED(started);
    return server;
}

PostgisServer::PostgisServer() = default;

PostgisServer::~PostgisServer()
{
    Stop();
}

bool PostgisServer::Run(const QString& program, const QStringList& arguments, QString* output)
{
    QProcess process;
    QStringList command = arguments;
    QString executable = program;
    if (!mRunAs.isEmpty() && program != QLatin1String("psql")) {
        // The server refuses to run as root: its programs run as the
        // unprivileged account that owns the cluster.
        command = QStringList{QStringLiteral("-u"), mRunAs, QStringLiteral("--"), mBin + QLatin1Char('/') + program}
                  + arguments;
        executable = QStringLiteral("runuser");
    } else {
        executable = mBin + QLatin1Char('/') + program;
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Nothing from the caller's PostgreSQL settings may point the tools at
    // another server.
    for (const QString& key : environment.keys()) {
        if (key.startsWith(QLatin1String("PG")))
            environment.remove(key);
    }
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(mFolder.isEmpty() ? QDir::tempPath() : mFolder);
    process.start(executable, command);
    if (!process.waitForStarted(10000) || !process.waitForFinished(120000)) {
        mError = QStringLiteral("%1 did not run: %2").arg(program, process.errorString());
        process.kill();
        process.waitForFinished(1000);
        return false;
    }
    const QString out = QString::fromUtf8(process.readAllStandardOutput());
    if (output)
        *output = out.trimmed();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        mError = QStringLiteral("%1 failed: %2 %3").arg(program, out, QString::fromUtf8(process.readAllStandardError()));
        return false;
    }
    return true;
}

bool PostgisServer::Start()
{
    if (mRunning)
        return true;
    mBin = findBinFolder();
    if (mBin.isEmpty()) {
        mError = QStringLiteral("No PostgreSQL server installed (scripts/install-deps.sh adds it).");
        return false;
    }
    // The socket path must stay short (about 100 bytes), hence /tmp.
    QByteArray folder("/tmp/tzpg-XXXXXX");
    if (!mkdtemp(folder.data())) {
        mError = QStringLiteral("Cannot create a folder for the cluster.");
        return false;
    }
    mFolder = QString::fromUtf8(folder);
    std::strncpy(gFolder, folder.constData(), sizeof(gFolder) - 1);
    for (int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTERM, SIGINT})
        std::signal(signal, crashCleanup);

    if (geteuid() == 0) {
        const passwd* account = getpwnam("postgres");
        if (!account)
            account = getpwnam("nobody");
        if (!account || chown(folder.constData(), account->pw_uid, account->pw_gid) != 0) {
            mError = QStringLiteral("No unprivileged account to run the server as.");
            Stop();
            return false;
        }
        mRunAs = QString::fromUtf8(account->pw_name);
    }
    const QString data = mFolder + QStringLiteral("/data");
    if (!Run(QStringLiteral("initdb"), {QStringLiteral("-D"), data, QStringLiteral("-U"), QString::fromLatin1(kUser),
                                        QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-E"),
                                        QStringLiteral("UTF8"), QStringLiteral("--locale=C"), QStringLiteral("--no-sync")})) {
        Stop();
        return false;
    }
    // Only our own superuser, only on the socket in our folder.
    QFile hba(data + QStringLiteral("/pg_hba.conf"));
    QFile conf(data + QStringLiteral("/postgresql.conf"));
    if (!hba.open(QIODevice::WriteOnly | QIODevice::Truncate) || !conf.open(QIODevice::Append)) {
        mError = QStringLiteral("Cannot write the cluster's settings.");
        Stop();
        return false;
    }
    hba.write(QByteArray("local all ") + kUser + " trust\n");
    // Roles made by AddPasswordUser log in with their password only.
    hba.write(QByteArray("local all +") + kPasswordGroup + " scram-sha-256\n");
    hba.close();
    conf.write(QStringLiteral("\nlisten_addresses = ''\nunix_socket_directories = '%1'\nfsync = off\n"
                              "synchronous_commit = off\nfull_page_writes = off\nlog_statement = 'all'\n")
                   .arg(mFolder)
                   .toUtf8());
    conf.close();
    if (!StartServer()) {
        Stop();
        return false;
    }
    mRunning = true;
    if (!Run(QStringLiteral("psql"), {QStringLiteral("-X"), QStringLiteral("-q"), QStringLiteral("-h"), mFolder,
                                      QStringLiteral("-U"), QString::fromLatin1(kUser), QStringLiteral("-d"),
                                      QStringLiteral("postgres"), QStringLiteral("-c"),
                                      QStringLiteral("CREATE DATABASE ") + QString::fromLatin1(kDatabase)})) {
        Stop();
        return false;
    }
    if (!Exec(QStringLiteral("CREATE EXTENSION IF NOT EXISTS postgis"))) {
        mError = QStringLiteral("PostGIS is not available: ") + mError;
        Stop();
        return false;
    }
    return true;
}

bool PostgisServer::StartServer()
{
    const QString data = mFolder + QStringLiteral("/data");
    if (!Run(QStringLiteral("pg_ctl"), {QStringLiteral("-D"), data, QStringLiteral("-l"), mFolder + QStringLiteral("/log"),
                                        QStringLiteral("-w"), QStringLiteral("-t"), QStringLiteral("60"),
                                        QStringLiteral("start")}))
        return false;
    QFile pidFile(data + QStringLiteral("/postmaster.pid"));
    if (pidFile.open(QIODevice::ReadOnly))
        gPostmaster = sig_atomic_t(pidFile.readLine().trimmed().toInt());
    return true;
}

QString PostgisServer::Log() const
{
    QFile log(mFolder + QStringLiteral("/log"));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
}

void PostgisServer::Stop()
{
    if (mFolder.isEmpty())
        return;
    if (qEnvironmentVariableIsSet("TZ_KEEP_POSTGIS_LOG"))
        QFile::copy(mFolder + QStringLiteral("/log"), QString::fromLocal8Bit(qgetenv("TZ_KEEP_POSTGIS_LOG")));
    if (QFile::exists(mFolder + QStringLiteral("/data/postmaster.pid")))
        Run(QStringLiteral("pg_ctl"), {QStringLiteral("-D"), mFolder + QStringLiteral("/data"), QStringLiteral("-m"),
                                       QStringLiteral("fast"), QStringLiteral("-w"), QStringLiteral("stop")});
    gPostmaster = 0;
    gFolder[0] = '\0';
    QDir(mFolder).removeRecursively();
    mFolder.clear();
    mRunning = false;
}

bool PostgisServer::Pause()
{
    if (!mRunning)
        return false;
    // The cluster runs with synchronous_commit off, so an immediate stop
    // (a crash, to its clients) could lose what was committed a moment ago;
    // a checkpoint first writes it out.
    if (!Exec(QStringLiteral("CHECKPOINT")))
        return false;
    const bool stopped = Run(QStringLiteral("pg_ctl"), {QStringLiteral("-D"), mFolder + QStringLiteral("/data"),
                                                        QStringLiteral("-m"), QStringLiteral("immediate"),
                                                        QStringLiteral("-w"), QStringLiteral("stop")});
    gPostmaster = 0;
    return stopped;
}

bool PostgisServer::Resume()
{
    return mRunning && StartServer();
}

bool PostgisServer::AddPasswordUser(const QString& user, const QString& password)
{
    QString quotedPassword = password;
    quotedPassword.replace(QLatin1Char('\''), QLatin1String("''"));
    const QString group = QString::fromLatin1(kPasswordGroup);
    return Exec(QStringLiteral("DO $$ BEGIN IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = '%1') THEN "
                               "CREATE ROLE %1 NOLOGIN; END IF; END $$;"
                               "GRANT pg_read_all_data TO %1;"
                               "CREATE ROLE \"%2\" LOGIN PASSWORD '%3' IN ROLE %1;")
                    .arg(group, user, quotedPassword));
}

QString PostgisServer::ConnInfo() const
{
    return QStringLiteral("host=%1 user=%2 dbname=%3").arg(mFolder, QString::fromLatin1(kUser), QString::fromLatin1(kDatabase));
}

QString PostgisServer::GdalSource() const
{
    return QStringLiteral("PG:") + ConnInfo();
}

bool PostgisServer::Exec(const QString& sql)
{
    return Run(QStringLiteral("psql"), {QStringLiteral("-X"), QStringLiteral("-q"), QStringLiteral("-v"),
                                        QStringLiteral("ON_ERROR_STOP=1"), QStringLiteral("-h"), mFolder,
                                        QStringLiteral("-U"), QString::fromLatin1(kUser), QStringLiteral("-d"),
                                        QString::fromLatin1(kDatabase), QStringLiteral("-c"), sql});
}

QString PostgisServer::Query(const QString& sql)
{
    QString out;
    if (!Run(QStringLiteral("psql"), {QStringLiteral("-X"), QStringLiteral("-q"), QStringLiteral("-At"),
                                      QStringLiteral("-h"), mFolder, QStringLiteral("-U"), QString::fromLatin1(kUser),
                                      QStringLiteral("-d"), QString::fromLatin1(kDatabase), QStringLiteral("-c"), sql},
             &out))
        return {};
    return out;
}
