#pragma once

#include <QString>
#include <QVariant>

namespace marlet {

class WorkHost;
class Recordset;

// The ticket web page temp.htm in the application folder: a grid of bordered ticket boxes that the
// operator prints from the browser. Three designs, Small, Medium and Large, each with a writer of
// real tickets and a writer of a fixed sample page.
//
// A ticket writer takes the open result set of tickets at its first row and reads it to its end. It
// builds the page in memory and writes it at the end (the Large design keeps only the parts flushed
// on the way), shows the page or not, and closes the screen's progress display. The "Stop" button
// is answered between blocks of boxes. A writer has no error handling of its own: false means a
// step failed (temp.htm missing, a file or record error) and the caller reports it.
class TicketDocuments
{
public:
    explicit TicketDocuments(WorkHost& host);

    bool WriteSmallTickets(Recordset& tickets);
    bool WriteMediumTickets(Recordset& tickets);
    bool WriteLargeTickets(Recordset& tickets);
    bool WriteSmallSample();
    bool WriteMediumSample();
    bool WriteLargeSample();

    QString pagePath() const;

private:
    WorkHost& m_host;
};

// Where the ticket page of an application folder lives.
QString ticketPagePath(const QString& applicationFolder);
// A writer replaces the page and fails when there is none to replace: the application folder gets
// an empty page when it is set up.
void provideTicketPage(const QString& applicationFolder);

// Fields of the current row read by name, remembering whether every name was found.
class FieldReader
{
public:
    explicit FieldReader(const Recordset& row)
        : m_row(row)
    {
    }

    QVariant operator()(const char* name);
    bool ok() const { return m_ok; }

private:
    const Recordset& m_row;
    bool m_ok = true;
};

} // namespace marlet
