#pragma once

#include <QString>

namespace marlet {

class Form;
class Recordset;
class Session;

// The member directory: lists members, searches them by surname, user name, e-mail or first name,
// shows the picture of the row clicked, and deletes a member with its ticket and picture file. It
// works on the MemberList screen's controls.
class MemberDirectory
{
public:
    MemberDirectory(Session& session, Form& form);

    // The directory as it opens: no picture, an empty search by surname, the grid's header alone.
    void reset();
    void listAll();
    void search();
    void rowClicked();
    // "Edit": the user name of the current row, or empty after "No Member selected!".
    QString memberToEdit();
    void deleteMember();
    // Rewrites the current row from the store, under the name the record now stands under.
    void refreshRow(const QString& username);

    // The grid's header row.
    static void setHeader(Form& form);

private:
    void fill(Recordset& members);

    Session& m_session;
    Form& m_form;
};

// A member's line in the directory: number, user name, surname, first name, e-mail, expiry, date
// created and picture file, separated by tabs.
QString memberRowLine(const QString& number, const Recordset& member);

} // namespace marlet
