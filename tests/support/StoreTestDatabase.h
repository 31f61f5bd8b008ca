#pragma once

#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/Recordset.h"
#include "store/ScratchDatabase.h"

#include <QCryptographicHash>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sqlite3.h>

namespace marlet::test {

// Makes a store with every table and required row: the file "marlet.db" in the folder, or under
// MARLET_TEST_ENGINE "postgres" a database of its own on the test server. Sets the connection
// string; the reason when the store cannot be made.
inline QString createTestStore(
    const QTemporaryDir& dir, const QString& password, ScratchDatabase& scratch, QString& connectionString)
{
    if (ScratchDatabase::wanted()) {
        const QString error = scratch.create(password);
        connectionString = scratch.connectionString();
        return error;
    }
    connectionString = QStringLiteral("sqlite:") + dir.filePath(QStringLiteral("marlet.db"));
    return DatabaseInit {connectionString, password, false}.run().error;
}

// A new database with every table and required row in a folder of its own, removed with the object.
// The connection is open; the ADMINISTRATOR password is "ADMIN".
class StoreTestDatabase
{
public:
    StoreTestDatabase()
    {
        m_error = createTestStore(m_dir, QStringLiteral("ADMIN"), m_scratch, m_connectionString);
        if (m_error.isEmpty() && !m_connection.Open(connectionString()))
            m_error = m_connection.lastError();
    }

    bool isValid() const { return m_connection.State() == 1; }
    QString error() const { return m_error; }
    QString path() const { return m_dir.filePath(QStringLiteral("marlet.db")); }
    QString connectionString() const { return m_connectionString; }
    Connection& connection() { return m_connection; }

private:
    QTemporaryDir m_dir;
    ScratchDatabase m_scratch; // dropped after the connection closes
    QString m_connectionString;
    Connection m_connection;
    QString m_error;
};

// The rows of a query, cells joined by " | " as Statement::valueText writes them, or one row
// "failed: " and the reason.
inline QStringList queryRows(Connection& connection, const QString& statement)
{
    QStringList found;
    Recordset rs;
    if (!rs.Open(Statement(statement), connection))
        return {QStringLiteral("failed: ") + rs.lastError()};
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < rs.fieldCount(); ++i)
            cells << Statement::valueText(rs.value(i));
        found << cells.join(QStringLiteral(" | "));
    }
    return found;
}

// The digest of a file's bytes, to show that nothing wrote to it.
inline QByteArray fileDigest(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

// Damages the first page of a table in a closed SQLite file, as a failing disk would: the other
// tables stay readable, and SQLite reports the file as malformed at the first read of this one.
inline bool damageTable(const QString& path, const char* table)
{
    sqlite3* db = nullptr;
    sqlite3_stmt* query = nullptr;
    int page = 0;
    int pageSize = 0;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK
        && sqlite3_prepare_v2(db,
               "SELECT rootpage, (SELECT page_size FROM pragma_page_size) FROM sqlite_schema WHERE name = ?",
               -1,
               &query,
               nullptr)
            == SQLITE_OK) {
        sqlite3_bind_text(query, 1, table, -1, SQLITE_STATIC);
        if (sqlite3_step(query) == SQLITE_ROW) {
            page = sqlite3_column_int(query, 0);
            pageSize = sqlite3_column_int(query, 1);
        }
    }
    sqlite3_finalize(query);
    sqlite3_close(db);
    QFile file(path);
    if (page < 2 || !file.open(QIODevice::ReadWrite) || !file.seek(qint64(page - 1) * pageSize))
        return false;
    // No b-tree page starts with this byte.
    return file.write(QByteArray(16, char(0xA5))) == 16;
}

} // namespace marlet::test
