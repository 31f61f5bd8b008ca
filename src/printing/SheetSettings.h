#pragma once

#include <QString>
#include <QStringList>

namespace marlet {

class Connection;
class Preferences;
class SessionPreferences;

// Saves the ticket prefix: STR in this machine's preferences, and Options.TicketIniName for the
// other programs of the system, which keeps at most three letters and takes "NVT" for a longer
// prefix. False when the table could not be written, with the reason in *error.
bool saveTicketPrefix(SessionPreferences& settings, Connection& connection, const QString& prefix, QString* error = nullptr);

// A quick-ticket type as the operator describes it: the minutes and the cost as typed, the kind
// of ticket and whether it goes to reserved (VIP) computers.
struct QuickTicketDefinition
{
    QString minutes;
    QString cost;
    bool timeTicket = false; // used within the night time frame
    bool once = false; // only with timeTicket: used once
    bool vip = false;
};

// The result of adding a definition to the list of quick-ticket types.
struct QuickTicketAddition
{
    enum class Field { None, Cost, Time };

    QString entry; // the text added, empty when refused
    QString refusal; // the warning shown instead
    Field focus = Field::None; // the field to correct

    bool added() const { return refusal.isEmpty(); }
};

// The text of a quick-ticket type: minutes, "min(s) - ", currency and cost, the kind in brackets,
// and " - VIP" for reserved computers, e.g. "60min(s) - N50 [Time Ticket]". The generate screen
// parses the same text back.
QString quickTicketEntry(const QuickTicketDefinition& definition, const QString& currency);
// Checks the cost, then the minutes, then that the list does not hold the same text already.
QuickTicketAddition addQuickTicket(
    const QStringList& existing, const QuickTicketDefinition& definition, const QString& currency);

// Rewrites table QuickT with the entries, in their order: every row is deleted, then one added an
// entry. False when a statement failed, with the reason in *error; what was written before it stays.
bool saveQuickTickets(Connection& connection, const QStringList& entries, QString* error = nullptr);

// What the report component's settings window edits. Everything is read and written under the
// product word, the only application name a component outside the host knows.
struct SheetSettings
{
    QString prefix; // STR, the three-letter ticket prefix
    int printType = 3; // 1 small, 2 medium, 3 large, 4 export
    bool quickTicket = false; // QuickTicket: generation by quick-ticket type
    QStringList quickTickets; // the rows of QuickT, in table order
    QString currency; // Currency, written into new quick-ticket types

    static SheetSettings load(Preferences& preferences, Connection& connection);
    // Writes the preferences, the prefix into Options and the whole QuickT table anew. False when a
    // statement failed, with the reason in *error; what was written before it stays.
    bool save(Preferences& preferences, Connection& connection, QString* error = nullptr) const;
};

} // namespace marlet
