#include "TZPostgisDialog.h"

#include "ui_TZPostgisDialog.h"

#include "TZPostgisLogin.h"

#include "data/TEPostgresSource.h"

#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QThread>

using namespace TZObjects;

namespace {

enum Column { TableColumn, KindColumn, GeometryColumn, TypeColumn, SridColumn };

} // namespace

TZPostgisDialog::TZPostgisDialog(QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::TZPostgisDialog>())
{
    mUi->setupUi(this);
    mUi->buttonBox->button(QDialogButtonBox::Ok)->setText(tr("&Add"));
    mUi->comboService->addItem(QString());
    mUi->comboService->addItems(TZPostgisCatalog::serviceNames());
    mUi->treeTables->sortByColumn(TableColumn, Qt::AscendingOrder);

    // A server that keeps neither the connection time-out nor the
    // statement time-out (a dead network) is given up on here.
    mWatchdog.setSingleShot(true);
    mWatchdog.setInterval((TimeoutSeconds + 5) * 1000);
    connect(&mWatchdog, &QTimer::timeout, this, [this] {
        ++mAttempt;
        mConnecting = false;
        showStatus(tr("The server did not answer within %1 seconds.").arg(TimeoutSeconds + 5), true);
        updateButtons();
        Q_EMIT connectFinished(false);
    });

    connect(mUi->pushConnect, &QPushButton::clicked, this, &TZPostgisDialog::connectToServer);
    connect(mUi->buttonBox, &QDialogButtonBox::accepted, this, &TZPostgisDialog::accept);
    connect(mUi->treeTables, &QTreeWidget::itemSelectionChanged, this, &TZPostgisDialog::updateButtons);
    connect(mUi->treeTables, &QTreeWidget::itemDoubleClicked, this, &TZPostgisDialog::accept);
    updateButtons();
}

TZPostgisDialog::~TZPostgisDialog() = default;

std::vector<std::pair<QLineEdit*, QString>> TZPostgisDialog::fieldKeys() const
{
    return {{mUi->lineHost, QStringLiteral("host")},
            {mUi->linePort, QStringLiteral("port")},
            {mUi->lineDatabase, QStringLiteral("dbname")},
            {mUi->lineUser, QStringLiteral("user")},
            {mUi->linePassword, QStringLiteral("password")}};
}

QString TZPostgisDialog::source() const
{
    TEPostgresSource parsed(QStringLiteral("PG:"));
    parsed.SetValue(QStringLiteral("service"), mUi->comboService->currentText().trimmed());
    for (const auto& [edit, key] : fieldKeys()) {
        // A password may begin or end with a space; nothing else does.
        parsed.SetValue(key, edit == mUi->linePassword ? edit->text() : edit->text().trimmed());
    }
    return parsed.ToSource();
}

void TZPostgisDialog::setSource(const QString& source)
{
    const TEPostgresSource parsed(source);
    mUi->comboService->setEditText(parsed.Value(QStringLiteral("service")));
    for (const auto& [edit, key] : fieldKeys()) {
        if (edit != mUi->linePassword)
            edit->setText(parsed.Value(key));
    }
}

QStringList TZPostgisDialog::selectedLayers() const
{
    QStringList names;
    for (int i = 0; i < mUi->treeTables->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = mUi->treeTables->topLevelItem(i);
        if (item->isSelected())
            names << item->data(TableColumn, Qt::UserRole).toString();
    }
    return names;
}

void TZPostgisDialog::connectToServer()
{
    const quint64 attempt = ++mAttempt;
    mConnecting = true;
    mUi->treeTables->clear();
    showStatus(tr("Connecting..."), false);
    updateButtons();
    mWatchdog.start();

    const QString connInfo = TEPostgresSource(source()).ToConnInfo();
    QPointer<TZPostgisDialog> self(this);
    QThread* worker = QThread::create([connInfo, attempt, self] {
        const TZPostgisCatalog::Result result = TZPostgisCatalog::list(connInfo, TimeoutSeconds);
        // Back on the GUI thread; a dialog closed meanwhile gets nothing.
        QMetaObject::invokeMethod(
            qApp,
            [self, attempt, result] {
                if (self && attempt == self->mAttempt)
                    self->showResult(result);
            },
            Qt::QueuedConnection);
    });
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
}

void TZPostgisDialog::showResult(const TZPostgisCatalog::Result& result)
{
    mWatchdog.stop();
    mConnecting = false;
    mUi->treeTables->setSortingEnabled(false);
    for (const TZPostgisCatalog::Table& table : result.tables) {
        auto* item = new QTreeWidgetItem(mUi->treeTables);
        item->setText(TableColumn, table.schema + QLatin1Char('.') + table.table);
        item->setData(TableColumn, Qt::UserRole, table.layerName);
        item->setText(KindColumn, table.isView ? tr("view") : tr("table"));
        item->setText(GeometryColumn, table.geometryColumn);
        item->setText(TypeColumn, table.geometryType);
        item->setText(SridColumn, QString::number(table.srid));
    }
    mUi->treeTables->setSortingEnabled(true);
    for (int column = 0; column <= SridColumn; ++column)
        mUi->treeTables->resizeColumnToContents(column);

    if (!result.ok) {
        showStatus(result.error, true);
        if (result.needsPassword)
            mUi->linePassword->setFocus();
    } else if (result.tables.empty()) {
        showStatus(tr("Connected. The database has no spatial tables or views."), false);
    } else {
        const int count = int(result.tables.size());
        showStatus(count == 1 ? tr("Connected: 1 spatial table or view.")
                              : tr("Connected: %1 spatial tables and views.").arg(count),
                   false);
        mUi->treeTables->setFocus();
    }
    updateButtons();
    Q_EMIT connectFinished(result.ok);
}

void TZPostgisDialog::accept()
{
    if (selectedLayers().isEmpty())
        return;
    TZPostgisLogin::remember(source());
    QDialog::accept();
}

void TZPostgisDialog::showStatus(const QString& text, bool isError)
{
    mUi->labelStatus->setText(text);
    mUi->labelStatus->setStyleSheet(isError ? QStringLiteral("color: #b00020;") : QString());
}

void TZPostgisDialog::updateButtons()
{
    mUi->pushConnect->setEnabled(!mConnecting);
    mUi->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(!selectedLayers().isEmpty());
}
