#pragma once

#include "issuing/RandomText.h"
#include "store/Connection.h"
#include "store/DatabaseInit.h"
#include "support/StoreTestDatabase.h"

#include <QString>
#include <QTemporaryDir>
#include <QVariant>

#include <cmath>
#include <vector>

namespace marlet::test {

// A fresh SQLite database with every table of the component, in a folder of its own.
class TemporaryStore
{
public:
    // Empty on success, else why the store could not be made.
    QString open()
    {
        if (!m_dir.isValid())
            return QStringLiteral("no temporary folder");
        QString connectionString;
        if (const QString error = createTestStore(m_dir, QStringLiteral("SECRET"), m_scratch, connectionString);
            !error.isEmpty())
            return error;
        return connection.Open(connectionString) ? QString() : connection.lastError();
    }

    // A bare ticket row, as another program might have left it, in Account or RecycleBin.
    bool addTicket(const QString& table, const QString& username, bool member)
    {
        return connection.executeNative(QStringLiteral("INSERT INTO %1 (TicketGrp, Username, Member) VALUES (?, ?, ?)")
                                            .arg(SqlTranslator::quoteIdentifier(table)),
            {QStringLiteral("240101120000"), username, member ? -1 : 0});
    }

    Connection connection;

private:
    QTemporaryDir m_dir;
    ScratchDatabase m_scratch;
};

// The number u that makes the generator draw `code`: the whole part of u x 255 is the code.
inline double uniformFor(int code)
{
    return (code + 0.5) / 255;
}

// A source that hands out the given numbers in turn, from the start again when they run out, and
// counts how many it gave.
class ScriptedSource
{
public:
    explicit ScriptedSource(std::vector<double> values)
        : m_values(std::move(values))
    {
    }
    // The numbers that draw these characters, in order.
    static ScriptedSource drawing(const QString& characters)
    {
        std::vector<double> values;
        for (QChar c : characters)
            values.push_back(uniformFor(c.unicode()));
        return ScriptedSource(values);
    }

    UniformSource source()
    {
        return [this] { return m_values.at(std::size_t(m_calls++) % m_values.size()); };
    }
    int calls() const { return m_calls; }

private:
    std::vector<double> m_values;
    int m_calls = 0;
};

} // namespace marlet::test
