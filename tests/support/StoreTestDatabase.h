#pragma once

#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/Recordset.h"
#include "store/ScratchDatabase.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

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

} // namespace marlet::test
