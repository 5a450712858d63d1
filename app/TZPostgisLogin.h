#pragma once

#include <QCoreApplication>
#include <QString>

#include <functional>

class QWidget;

// Passwords of PostGIS connections, which projects never store. A source
// as a project keeps it (without its password) is completed here before it
// is opened: libpq itself reads the password file (~/.pgpass, PGPASSFILE)
// and the service file, as PostgreSQL's own tools do; when the server still
// asks for a password, the user is prompted. A password given once (typed
// in the connection dialog or at the prompt) serves the same connection for
// the rest of the session.
class TZPostgisLogin
{
    Q_DECLARE_TR_FUNCTIONS(TZPostgisLogin)

public:
    // Asks for the password of a connection (shown without its password);
    // reason says why (none given yet, or the last one was refused). False
    // when the user cancels.
    using Prompt = std::function<bool(const QString& connection, const QString& reason, QString& password)>;

    // Without a prompt (the default, and for a window that must not
    // interact) a connection that needs a password fails with a message.
    static void setPrompt(Prompt prompt);
    // The prompt tzmap shows: a modal password box over parent.
    static Prompt dialogPrompt(QWidget* parent);

    // The source ready to open: unchanged when it is not a PostGIS source,
    // holds a password or connects without one; else with the password
    // remembered or prompted for. Empty, with a message, when the server
    // cannot be reached or no password was given.
    static QString complete(const QString& source, QString* error);

    // Keeps the password a source holds for its connection.
    static void remember(const QString& source);
};
