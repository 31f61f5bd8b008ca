#pragma once

#include "store/SqlTranslator.h"
#include "store/Statement.h"

#include <QDateTime>
#include <QHash>
#include <QString>

#include <functional>
#include <memory>

namespace marlet {

class StoreEngine;

// Where a connection string points: "sqlite:PATH", a bare PATH, and "Provider=...;Data Source=PATH;..."
// all mean an SQLite file at PATH; "postgresql://..." (or "postgres://...") and PostgreSQL's own
// "host=... dbname=..." form mean a PostgreSQL database.
struct ConnectionTarget
{
    SqlDialect dialect = SqlDialect::Sqlite;
    QString location; // the SQLite file, or the PostgreSQL connection as given
    QString error; // a string that names no store at all

    bool ok() const { return error.isEmpty(); }
};
ConnectionTarget parseConnectionString(const QString& connectionString);
// A connection string as it may be shown: a password in it is left out.
QString shownConnection(const QString& connectionString);

// The one connection a session runs its statements on, in the manner of the desktop store's
// connection object: Open, Execute, Close, State. Nothing throws: a failing call returns false and
// keeps its reason in lastError(). Statements come in the screens' dialect and are translated; no
// transaction is ever left open between calls. Another program's lock is waited for up to the busy
// timeout (5 s unless set) before a statement fails.
class Connection
{
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // A second Open on an open connection fails quietly and leaves the connection as it stands.
    bool Open(const QString& connectionString);
    void Close();
    int State() const; // 0 closed, 1 open
    bool Execute(const Statement& statement, long* rowsAffected = nullptr);

    QString lastError() const { return m_lastError; }
    QString connectionString() const { return m_connectionString; }
    SqlDialect dialect() const { return m_dialect; }

    // The clock behind `now` in statements and behind everything the store stamps.
    void setClock(std::function<QDateTime()> clock);
    QDateTime now() const;
    // How long a statement waits for another program's lock; takes effect at the next Open.
    void setBusyTimeout(int milliseconds) { m_busyTimeout = milliseconds; }

    // Work that several servers sharing one database must not do at the same moment (drawing a
    // free ticket name and storing it): on PostgreSQL a lock of that name on the server, waited
    // for up to the busy timeout; on an SQLite file, which one server uses, nothing to wait for.
    // Held until released or the connection closes.
    bool holdSharedLock(const QString& name);
    void releaseSharedLock(const QString& name);

    // A statement in the screens' dialect, translated for this connection's engine.
    TranslationResult translate(const Statement& statement) const;
    // Engine SQL as it stands, for setting up a store (DatabaseInit) and for test fixtures only.
    bool executeNative(const QString& sql, const QVariantList& values = {});

    // The engine while open, else null. For Recordset and the store's own classes.
    StoreEngine* engine() const { return m_engine.get(); }

private:
    bool fail(const QString& message);
    bool openSqlite(const QString& path);
    bool runMultiTableDelete(const TranslationResult& translation, long* rowsAffected);

    QString m_name;
    QString m_connectionString;
    SqlDialect m_dialect = SqlDialect::Sqlite;
    std::unique_ptr<StoreEngine> m_engine;
    std::function<QDateTime()> m_clock;
    int m_busyTimeout = 5000;
    QString m_lastError;
    SqlTranslator m_translator;
    // Plans of the patterns run so far: screens run the same few dozen texts again and again.
    mutable QHash<QString, std::shared_ptr<const TranslationPlan>> m_plans;
};

} // namespace marlet
