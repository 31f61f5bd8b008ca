#pragma once

#include <QLatin1StringView>
#include <QString>

namespace marlet {

class WorkHost;
class Recordset;

// Where a command of the "Existing Ticket" tab takes the ticket's name from: an input box, or
// column 1 of the grid's selected row (the context menu's commands).
enum class TicketSource { Typed, GridRow };

// The texts by which the two searches differ.
struct SearchTexts
{
    QLatin1StringView prompt;
    QLatin1StringView tooLong;
    QLatin1StringView statement; // {} takes the entry
};

inline constexpr SearchTexts SearchByUsername {QLatin1StringView("Enter Ticket's Username to Search for? "),
    QLatin1StringView("Username cant be greater that 10 characters!"),
    QLatin1StringView("Select * from Account where Username = '{}'")};
inline constexpr SearchTexts SearchByPassword {QLatin1StringView("Enter Ticket's Password to Search? "),
    QLatin1StringView("Password cant be greater that 10 characters"),
    QLatin1StringView("Select * from Account where Password = '{}'")};

// The searches and password changes of the "Existing Ticket" tab. Unlike the listings, both look
// at every ticket, member tickets included, so a member's ticket found by a search can be recharged
// or given a new password from the grid.
class TicketSearch
{
public:
    explicit TicketSearch(WorkHost& host);

    // "Search for a Ticket by Username" (m_search, also m_searchs) and "Search for a Ticket by
    // Password" (m_password): the found tickets replace the grid's rows. Failures are skipped.
    void search(const SearchTexts& texts);

    // "Change Password of a Ticket" (m_change) asks for the name and stores the new password as
    // typed; "Change Ticket's &Password" (m_ChangePass) takes the grid row's name, stores the new
    // password in upper case and shows it in the row.
    void changePassword(TicketSource source);

private:
    void listFound(Recordset& found);
    bool passwordsHidden() const;
    // The new password, or an empty text after the refusal was shown.
    QString newPassword(TicketSource source, const QString& name) const;

    WorkHost& m_host;
};

// The name a command acts on: column 1 of the grid's selected row, or what the operator types into an
// input box of `prompt` and `title` with an empty default (empty when cancelled).
QString ticketName(WorkHost& host, TicketSource source, const QString& prompt, const QString& title);

} // namespace marlet
