#include "TZPostgisLogin.h"

#include "data/TEPostgresSource.h"

#include <QApplication>
#include <QHash>
#include <QInputDialog>
#include <QMutex>
#include <QPointer>
#include <QThread>

#include <libpq-fe.h>

#include <memory>

using namespace TZObjects;

namespace {

// How long opening a layer waits for a server that does not answer.
constexpr int ConnectTimeoutSeconds = 10;
constexpr int MaxAttempts = 3;

struct State
{
    QMutex mutex;
    TZPostgisLogin::Prompt prompt;
    // Passwords by the source without its password.
    QHash<QString, QString> passwords;
};

State& state()
{
    static State instance;
    return instance;
}

enum class Outcome { Connected, NeedsPassword, Failed };

// One connection attempt with libpq, as GDAL will make it.
Outcome tryConnect(const QString& source, QString* message)
{
    TEPostgresSource parsed(source);
    if (parsed.Value(QStringLiteral("connect_timeout")).isEmpty())
        parsed.SetValue(QStringLiteral("connect_timeout"), QString::number(ConnectTimeoutSeconds));
    std::unique_ptr<PGconn, void (*)(PGconn*)> connection(PQconnectdb(parsed.ToConnInfo().toUtf8().constData()),
                                                          PQfinish);
    if (PQstatus(connection.get()) == CONNECTION_OK)
        return Outcome::Connected;
    *message = TEPostgresSource::ServerMessage(QString::fromUtf8(PQerrorMessage(connection.get())));
    // A password was asked for and none given, or the one given was refused.
    const bool refused = PQconnectionUsedPassword(connection.get()) && message->contains(QLatin1String("password"));
    return PQconnectionNeedsPassword(connection.get()) || refused ? Outcome::NeedsPassword : Outcome::Failed;
}

} // namespace

void TZPostgisLogin::setPrompt(Prompt prompt)
{
    QMutexLocker lock(&state().mutex);
    state().prompt = std::move(prompt);
}

TZPostgisLogin::Prompt TZPostgisLogin::dialogPrompt(QWidget* parent)
{
    QPointer<QWidget> guard(parent);
    return [guard](const QString& connection, const QString& reason, QString& password) {
        bool ok = false;
        const auto ask = [&] {
            password = QInputDialog::getText(guard, TZPostgisLogin::tr("PostGIS Password"),
                                             TZPostgisLogin::tr("%1\n%2\n\nPassword:").arg(reason, connection),
                                             QLineEdit::Password, QString(), &ok);
        };
        // Layers of a project open on a worker thread; the question is
        // asked on the GUI thread, which runs the wait dialog meanwhile.
        if (QThread::currentThread() == qApp->thread())
            ask();
        else
            QMetaObject::invokeMethod(qApp, ask, Qt::BlockingQueuedConnection);
        return ok;
    };
}

QString TZPostgisLogin::complete(const QString& source, QString* error)
{
    TEPostgresSource parsed(source);
    if (!parsed.IsValid() || !parsed.Value(QStringLiteral("password")).isEmpty())
        return source;
    const QString key = parsed.ToSource();
    Prompt prompt;
    {
        QMutexLocker lock(&state().mutex);
        const QString known = state().passwords.value(key);
        if (!known.isEmpty()) {
            parsed.SetValue(QStringLiteral("password"), known);
            return parsed.ToSource();
        }
        prompt = state().prompt;
    }

    QString message;
    Outcome outcome = tryConnect(source, &message);
    for (int attempt = 0; outcome == Outcome::NeedsPassword && attempt < MaxAttempts; ++attempt) {
        QString password;
        const QString reason = attempt == 0 ? TZPostgisLogin::tr("The database server asks for a password.")
                                            : TZPostgisLogin::tr("The server refused the password: %1").arg(message);
        if (!prompt || !prompt(key, reason, password)) {
            if (error)
                *error = TZPostgisLogin::tr("No password was given for \"%1\".").arg(key);
            return {};
        }
        parsed.SetValue(QStringLiteral("password"), password);
        outcome = tryConnect(parsed.ToSource(), &message);
    }
    if (outcome != Outcome::Connected) {
        if (error)
            *error = TZPostgisLogin::tr("Cannot connect to \"%1\": %2").arg(key, message);
        return {};
    }
    if (parsed.Value(QStringLiteral("password")).isEmpty())
        return source;
    remember(parsed.ToSource());
    return parsed.ToSource();
}

void TZPostgisLogin::remember(const QString& source)
{
    TEPostgresSource parsed(source);
    const QString password = parsed.Value(QStringLiteral("password"));
    if (password.isEmpty())
        return;
    parsed.SetValue(QStringLiteral("password"), QString());
    QMutexLocker lock(&state().mutex);
    state().passwords.insert(parsed.ToSource(), password);
}
