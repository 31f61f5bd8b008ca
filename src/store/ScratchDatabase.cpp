#include "store/ScratchDatabase.h"

#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/RowStore.h"
#include "store/StoreEngine.h"

#include <QAtomicInteger>
#include <QCoreApplication>
#include <QUuid>

namespace marlet {

namespace {

const QString templateName = QStringLiteral("marlet_template");
// Any number of one's own: the lock that keeps two first runs from both making the template.
constexpr qint64 templateLock = 0x6d61726c6574;

QString withDatabase(const QString& server, const QString& database)
{
    return server + QStringLiteral(" dbname=") + database;
}

bool databaseExists(Connection& maintenance, const QString& name)
{
    RowStore rows;
    QList<ResultColumn> columns;
    return maintenance.engine()->select(
               QStringLiteral("SELECT 1 FROM pg_database WHERE datname = ?"), {name}, columns, rows)
        && rows.rowCount() == 1;
}

// Makes the template once per server: a database that `marlet init` filled.
QString ensureTemplate(Connection& maintenance, const QString& server)
{
    StoreEngine& engine = *maintenance.engine();
    if (!engine.execute(QStringLiteral("SELECT pg_advisory_lock(?)"), {templateLock}))
        return engine.lastError();
    QString error;
    if (!databaseExists(maintenance, templateName)) {
        if (!engine.execute(QStringLiteral("CREATE DATABASE ") + templateName, {}))
            error = engine.lastError();
        else
            error = DatabaseInit {withDatabase(server, templateName), QStringLiteral("ADMIN"), false}.run().error;
        if (!error.isEmpty())
            engine.execute(QStringLiteral("DROP DATABASE IF EXISTS ") + templateName, {});
    }
    engine.execute(QStringLiteral("SELECT pg_advisory_unlock(?)"), {templateLock});
    return error;
}

} // namespace

bool ScratchDatabase::wanted()
{
    return qEnvironmentVariable("MARLET_TEST_ENGINE").compare(u"postgres", Qt::CaseInsensitive) == 0;
}

QString ScratchDatabase::server()
{
    return qEnvironmentVariable("MARLET_TEST_POSTGRES").trimmed();
}

QString ScratchDatabase::create(const QString& password)
{
    m_server = server();
    if (m_server.isEmpty())
        return QStringLiteral("No PostgreSQL server is given (MARLET_TEST_POSTGRES).");
    Connection maintenance;
    if (!maintenance.Open(withDatabase(m_server, QStringLiteral("postgres"))))
        return maintenance.lastError();
    if (const QString error = ensureTemplate(maintenance, m_server); !error.isEmpty())
        return error;
    const QString name = QStringLiteral("marlet_%1_%2")
                             .arg(QCoreApplication::applicationPid())
                             .arg(QUuid::createUuid().toString(QUuid::Id128).left(12));
    if (!maintenance.executeNative(
            QStringLiteral("CREATE DATABASE ") + name + QStringLiteral(" TEMPLATE ") + templateName))
        return maintenance.lastError();
    m_name = name;
    m_connectionString = withDatabase(m_server, name);
    if (password.compare(u"ADMIN", Qt::CaseInsensitive) != 0) {
        Connection connection;
        if (!connection.Open(m_connectionString)
            || !connection.executeNative(
                QStringLiteral("UPDATE users SET password = ? WHERE username = 'ADMINISTRATOR'"), {password.toUpper()}))
            return connection.lastError();
    }
    return QString();
}

ScratchDatabase::~ScratchDatabase()
{
    if (m_name.isEmpty())
        return;
    Connection maintenance;
    if (maintenance.Open(withDatabase(m_server, QStringLiteral("postgres"))))
        maintenance.executeNative(
            QStringLiteral("DROP DATABASE IF EXISTS ") + m_name + QStringLiteral(" WITH (FORCE)"));
}

} // namespace marlet
