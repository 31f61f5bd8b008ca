#pragma once

#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/Recordset.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace marlet::test {

// A new database with every table and required row in a folder of its own, removed with the object.
// The connection is open; the ADMINISTRATOR password is "ADMIN".
class StoreTestDatabase
{
public:
    StoreTestDatabase()
    {
        const InitResult created = DatabaseInit {connectionString(), QStringLiteral("ADMIN"), false}.run();
        m_error = created.error;
        if (created.ok() && !m_connection.Open(connectionString()))
            m_error = m_connection.lastError();
    }

    bool isValid() const { return m_connection.State() == 1; }
    QString error() const { return m_error; }
    QString path() const { return m_dir.filePath(QStringLiteral("marlet.db")); }
    QString connectionString() const { return QStringLiteral("sqlite:") + path(); }
    Connection& connection() { return m_connection; }

private:
    QTemporaryDir m_dir;
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
