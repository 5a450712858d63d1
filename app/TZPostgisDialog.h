#pragma once

#include "TZPostgisCatalog.h"

#include <QDialog>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <utility>
#include <vector>

class QLineEdit;

namespace Ui {
class TZPostgisDialog;
}

// File > Add PostGIS layer: the connection (a service of the user's service
// file, or host or socket folder, port, database, user and password), a
// Connect button that lists the database's spatial tables and views, and
// the list, from which the user picks the layers to add. Connecting and
// listing run on a worker thread within a time-out, so a slow or absent
// server never blocks the window; what went wrong is shown under the
// connection.
class TZPostgisDialog : public QDialog
{
    Q_OBJECT

public:
    explicit TZPostgisDialog(QWidget* parent = nullptr);
    ~TZPostgisDialog() override;

    // The connection as a GDAL data source ("PG:..."), with the password
    // when one was typed.
    QString source() const;
    // Fills the connection fields from a source (the password left out).
    void setSource(const QString& source);
    // GDAL's names of the chosen tables, in list order.
    QStringList selectedLayers() const;
    // Whether a connection attempt is under way.
    bool isConnecting() const { return mConnecting; }

    // Seconds the server has to answer a connection and the listing.
    static constexpr int TimeoutSeconds = 10;

public Q_SLOTS:
    void connectToServer();
    void accept() override;

Q_SIGNALS:
    // After each connection attempt, when its result is shown.
    void connectFinished(bool ok);

private:
    // The connection fields and the libpq keys they give.
    std::vector<std::pair<QLineEdit*, QString>> fieldKeys() const;
    void showResult(const TZPostgisCatalog::Result& result);
    void showStatus(const QString& text, bool isError);
    void updateButtons();

    std::unique_ptr<Ui::TZPostgisDialog> mUi;
    QTimer mWatchdog;
    // Numbers the attempts, so a late answer to an abandoned one is dropped.
    quint64 mAttempt = 0;
    bool mConnecting = false;
};
