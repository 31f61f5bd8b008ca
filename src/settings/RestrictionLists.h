#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace marlet {

class Connection;
class Recordset;
class Statement;

// The restriction lists towards the clients: two lists of program file names in RestrictDisallow
// (Type True: the programs still allowed when all others are restricted; Type False: the programs
// forbidden), window captions in Capt, and the machines in Restriction (excluded from all
// restrictions) and RClient (serving reserved tickets). Every entry is written the moment it is
// added or removed. Values are bound, never joined into the statement: a value holding a quote
// makes the statement fail, and the operation then writes nothing.
namespace restrictions {

enum class ProgramList { Allowed, Forbidden };
enum class ClientList { Excluded, Reserved };

// The controls of one list on a screen, by name: the switch that governs it (none for a list that
// has no switch), the entries, the edit field and the two buttons.
template<typename List>
struct ListControls
{
    List list;
    const QString* box;
    const QString* entries;
    const QString* edit;
    const QString* add;
    const QString* remove;
};

// A refusal of an entry before the store is looked at: the message and its style. An empty text
// refuses without a word.
struct Refusal
{
    QString text;
    int style = 0;
};

// What the store made of an addition.
enum class Added { Added, AlreadyThere, Failed };

// The checks of Add Item on a program name, in their order; `listCount` is the entries shown.
std::optional<Refusal> programRefusal(const QString& text, int listCount);
// The checks of Add Caption, in their order.
std::optional<Refusal> captionRefusal(const QString& text, int listCount);
// True when the text is nothing but blanks (all of them taken out, it is empty).
bool onlyBlanks(const QString& text);

// The lines of the examples box, after its title line, first column then second.
QString examplesText();

class Store
{
public:
    explicit Store(Connection& connection);

    // The names of one program list, lower-cased as they are shown.
    QStringList programs(ProgramList list) const;
    // Adds the name lower-cased, unless it is there already.
    Added addProgram(ProgramList list, const QString& name);
    // Deletes the row of exactly this name, as typed; false when there is none.
    bool removeProgram(ProgramList list, const QString& name);

    QStringList captions() const;
    // Adds the caption upper-cased, unless it is there already.
    Added addCaption(const QString& caption);
    // Deletes the rows of the caption as it stands.
    bool removeCaption(const QString& caption);

    QStringList clients(ClientList list) const;
    // Adds the machine upper-cased with the time and the staff member, unless it is there already.
    Added addClient(ClientList list, const QString& name, const QDateTime& now, const QString& staff);
    // Deletes the rows of the name as it stands, whether the screen lists it or not.
    bool removeClient(ClientList list, const QString& name);

private:
    QStringList column(const QString& statement, const QString& field) const;
    // Adds a row unless the lookup finds one; `fill` sets the new row's fields.
    Added addRow(const Statement& lookup, const std::function<bool(Recordset&)>& fill);

    Connection& m_connection;
};

} // namespace restrictions

} // namespace marlet
