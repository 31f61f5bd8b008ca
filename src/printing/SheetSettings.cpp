#include "printing/SheetSettings.h"

#include "store/Connection.h"
#include "store/PreferenceKeys.h"
#include "store/Recordset.h"
#include "values/Numbers.h"

namespace marlet {

namespace {

SessionPreferences productSettings(Preferences& preferences)
{
    return SessionPreferences(preferences, QString(ProductWord));
}

QString kindText(const QuickTicketDefinition& definition)
{
    if (!definition.timeTicket)
        return QStringLiteral(" [Normal Ticket]");
    return definition.once ? QStringLiteral(" [Time Once]") : QStringLiteral(" [Time Ticket]");
}

bool failed(QString* error, const QString& reason)
{
    if (error)
        *error = reason;
    return false;
}

} // namespace

// The prefix goes to this machine's preferences and to Options for the other programs of the
// system; Options keeps at most three letters and takes the product's own prefix for a longer one.
bool saveTicketPrefix(SessionPreferences& settings, Connection& connection, const QString& prefix, QString* error)
{
    settings.save(keys::STR, prefix);
    Recordset options;
    if (!options.Open(Statement(QStringLiteral("Select TicketIniName from Options")),
            connection,
            CursorType::Static,
            LockType::Optimistic))
        return failed(error, options.lastError());
    if (options.RecordCount() == 0)
        options.AddNew();
    options.setValue(QStringLiteral("TicketIniName"), prefix.size() > 3 ? QStringLiteral("NVT") : prefix);
    return options.Update() || failed(error, options.lastError());
}

bool saveQuickTickets(Connection& connection, const QStringList& entries, QString* error)
{
    if (!connection.Execute(Statement(QStringLiteral("Delete * from QuickT"))))
        return failed(error, connection.lastError());
    Recordset table;
    if (!table.Open(
            Statement(QStringLiteral("Select * from QuickT")), connection, CursorType::Static, LockType::Optimistic))
        return failed(error, table.lastError());
    for (const QString& entry : entries) {
        if (!table.AddNew() || !table.setValue(QStringLiteral("TicketType"), entry) || !table.Update())
            return failed(error, table.lastError());
    }
    return true;
}

QString quickTicketEntry(const QuickTicketDefinition& definition, const QString& currency)
{
    return definition.minutes + QStringLiteral("min(s) - ") + currency + definition.cost + kindText(definition)
        + (definition.vip ? QStringLiteral(" - VIP") : QString());
}

QuickTicketAddition addQuickTicket(
    const QStringList& existing, const QuickTicketDefinition& definition, const QString& currency)
{
    using Field = QuickTicketAddition::Field;
    const QString numericRequired = QStringLiteral("Numeric Value required!");
    if (!values::isNumeric(definition.cost))
        return {{}, numericRequired, Field::Cost};
    if (!values::isNumeric(definition.minutes))
        return {{}, numericRequired, Field::Time};
    const QString entry = quickTicketEntry(definition, currency);
    if (existing.contains(entry))
        return {{}, QStringLiteral("Quick-Ticket entry already exist!"), Field::None};
    return {entry, {}, Field::None};
}

SheetSettings SheetSettings::load(Preferences& preferences, Connection& connection)
{
    const SessionPreferences settings = productSettings(preferences);
    SheetSettings loaded;
    loaded.prefix = settings.text(keys::STR).left(3);
    const int printType = int(settings.number(keys::PrintType));
    loaded.printType = printType >= 1 && printType <= 4 ? printType : 3;
    loaded.quickTicket = settings.number(keys::QuickTicket) == 1;
    loaded.currency = settings.text(keys::Currency);
    Recordset types;
    types.Open(Statement(QStringLiteral("Select * from QuickT")), connection);
    for (; !types.Eof(); types.MoveNext())
        loaded.quickTickets.append(types.value(QStringLiteral("TicketType")).toString());
    return loaded;
}

bool SheetSettings::save(Preferences& preferences, Connection& connection, QString* error) const
{
    SessionPreferences settings = productSettings(preferences);
    settings.save(keys::PrintType, QString::number(printType));
    settings.save(keys::QuickTicket, quickTicket ? QStringLiteral("1") : QStringLiteral("0"));
    return saveTicketPrefix(settings, connection, prefix.toUpper(), error)
        && saveQuickTickets(connection, quickTickets, error);
}

} // namespace marlet
