#pragma once

#include "store/Connection.h"
#include "store/DatabaseInit.h"

#include <QString>
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

} // namespace marlet::test
