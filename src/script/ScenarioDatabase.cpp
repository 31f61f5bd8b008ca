#include "script/ScenarioDatabase.h"

#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "store/Recordset.h"
#include "store/ScratchDatabase.h"
#include "store/StoreValue.h"
#include "values/Numbers.h"

#include <QDir>

namespace marlet {

namespace {

QString cellText(const QVariant& value)
{
    if (value.isNull())
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::QDateTime:
        return storevalue::dateTimeText(value.toDateTime());
    case QMetaType::Float:
        return values::singleText(value.toFloat());
    case QMetaType::Double:
        return values::numberText(value.toDouble());
    default:
        return value.toString();
    }
}

class StoreScenarioDatabase : public ScenarioDatabase
{
public:
    explicit StoreScenarioDatabase(const ScenarioDatabaseRequest& request)
        : m_connectionString(QStringLiteral("sqlite:") + QDir(request.folder).filePath(QStringLiteral("marlet.db")))
    {
        if (request.clock)
            m_connection.setClock(request.clock);
    }

    // Makes the store afresh and opens it; the reason when that fails. Under MARLET_TEST_ENGINE
    // "postgres" the store is a database of its own on the test server instead of the file.
    QString create()
    {
        if (ScratchDatabase::wanted()) {
            if (const QString error = m_scratch.create(QStringLiteral("ADMIN")); !error.isEmpty())
                return error;
            m_connectionString = m_scratch.connectionString();
        } else if (const InitResult created = DatabaseInit {m_connectionString, QStringLiteral("ADMIN"), true}.run();
                   !created.ok()) {
            return created.error;
        }
        return m_connection.Open(m_connectionString) ? QString() : m_connection.lastError();
    }

    QString connectionString() const override { return m_connectionString; }

    QString execute(const QString& statement) override
    {
        return m_connection.Execute(Statement(statement)) ? QString() : m_connection.lastError();
    }

    QStringList query(const QString& statement, QString& error) override
    {
        Recordset rows;
        QStringList texts;
        if (!rows.Open(Statement(statement), m_connection)) {
            error = rows.lastError();
            return texts;
        }
        error.clear();
        for (; !rows.Eof(); rows.MoveNext())
            texts << rowText(rows);
        return texts;
    }

private:
    static QString rowText(const Recordset& rows)
    {
        QStringList cells;
        for (int i = 0; i < rows.fieldCount(); ++i)
            cells << cellText(rows.value(i));
        return cells.join(QStringLiteral(" | "));
    }

    QString m_connectionString;
    ScratchDatabase m_scratch; // dropped after the connection closes
    Connection m_connection;
};

} // namespace

std::unique_ptr<ScenarioDatabase> createStoreScenarioDatabase(const ScenarioDatabaseRequest& request, QString& error)
{
    auto database = std::make_unique<StoreScenarioDatabase>(request);
    error = database->create();
    if (!error.isEmpty())
        return nullptr;
    return database;
}

} // namespace marlet
