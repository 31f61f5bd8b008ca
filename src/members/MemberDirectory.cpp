#include "members/MemberDirectory.h"

#include "issuing/Expiry.h"
#include "members/MemberListNames.h"
#include "members/MemberRecord.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "session/Session.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "values/Formats.h"

#include <QFile>

namespace marlet {

namespace {

const QString SelectMembers
    = QStringLiteral("select account.*,members.* from Account,Members where account.member=true and ");
const QString JoinAndOrder
    = QStringLiteral(" and account.ticketgrp=members.member_id Order by members.Surname,members.Firstname");
constexpr int Columns = 8;
constexpr int PictureColumn = 7;

// The condition of each search field, partial and exact.
QString searchCondition(int field, bool partial)
{
    static const char* const columns[] = {"members.surname", "account.username", "members.email", "members.firstname"};
    const QString column = QLatin1String(columns[field]);
    return partial ? column + QStringLiteral(" like '%{}%'") : column + QStringLiteral("='{}'");
}

} // namespace

QString memberRowLine(const QString& number, const Recordset& member)
{
    const QStringList cells {number,
        member.value(QStringLiteral("username")).toString(),
        member.value(QStringLiteral("surname")).toString(),
        member.value(QStringLiteral("firstname")).toString(),
        member.value(QStringLiteral("email")).toString(),
        expiryListText(member.value(QStringLiteral("days")), member.value(QStringLiteral("Expire"))),
        values::format(member.value(QStringLiteral("datecreated")).toDate(), QStringLiteral("dd/mmm/yy")),
        member.value(QStringLiteral("picture")).toString()};
    return cells.join(u'\t');
}

MemberDirectory::MemberDirectory(Session& session, Form& form)
    : m_session(session)
    , m_form(form)
{
}

void MemberDirectory::setHeader(Form& form)
{
    GridData& cells = form[memberlist::memList].grid();
    cells.setCols(Columns);
    cells.setFixedRows(1);
    cells.setRows(1);
    const QStringList headers = {QStringLiteral("No."),
        QStringLiteral("Username"),
        QStringLiteral("Surname"),
        QStringLiteral("FirstName"),
        QStringLiteral("Email"),
        QStringLiteral("Expire Date"),
        QStringLiteral("Date Created"),
        QString()};
    const int widths[] = {500, 1300, 1000, 1000, 1300, 1000, 1100, 500};
    for (int col = 0; col < Columns; ++col) {
        cells.setTextMatrix(0, col, headers[col]);
        cells.setColWidth(col, widths[col]);
    }
}

void MemberDirectory::reset()
{
    m_form[memberlist::mpicture2].setPicture(QByteArray());
    m_form[memberlist::Text12].setText(QString());
    m_form.at(memberlist::Option7, memberlist::BySurname).setValue(1);
    m_form[memberlist::Check17].setValue(0);
    setHeader(m_form);
}

void MemberDirectory::fill(Recordset& members)
{
    GridData& grid = m_form[memberlist::memList].grid();
    const long count = members.RecordCount();
    for (long i = 1; i <= count; ++i) {
        grid.addItem(memberRowLine(QString::number(i), members));
        if (!members.Eof())
            members.MoveNext();
        m_session.platform().yield();
    }
}

void MemberDirectory::listAll()
{
    Control& button = m_form[memberlist::Command21];
    button.setEnabled(false);
    m_form[memberlist::memList].grid().setRows(1);
    m_form[memberlist::mpicture2].setPicture(QByteArray());
    Recordset members;
    const Statement all(
        QStringLiteral("select account.*,members.* from Account,Members where account.member=true and "
                       "account.ticketgrp=members.member_id Order by members.Surname,members.Firstname"));
    if (members.Open(all, m_session.connection())) {
        if (members.RecordCount() > 0)
            fill(members);
        else
            m_session.platform().messageBox(QStringLiteral("No Members avaliable!"), MsgStyle::Warning);
    }
    members.Close();
    button.setEnabled(true);
}

void MemberDirectory::search()
{
    Platform& platform = m_session.platform();
    const QString text = m_form[memberlist::Text12].text();
    if (text.isEmpty()) {
        platform.messageBox(QStringLiteral("Search query can't be blank!"), MsgStyle::Warning);
        return;
    }
    m_form[memberlist::memList].grid().setRows(1);
    m_form[memberlist::mpicture2].setPicture(QByteArray());
    int field = -1;
    for (int i = 0; i < int(memberlist::SearchCaptions.size()); ++i) {
        if (m_form.at(memberlist::Option7, i).value() != 0)
            field = i;
    }
    if (field < 0) {
        platform.messageBox(QStringLiteral("Select query list type (Surname,firstname,email)!"), MsgStyle::Warning);
        return;
    }
    const bool partial = m_form[memberlist::Check17].ticked();
    Recordset members;
    if (!members.Open(
            Statement(SelectMembers + searchCondition(field, partial) + JoinAndOrder, {text}), m_session.connection()))
        return;
    if (members.RecordCount() > 0)
        fill(members);
    else
        platform.messageBox(
            (partial ? QStringLiteral("No Search Result like '") : QStringLiteral("No Search Result for '")) + text
                + QStringLiteral("'!"),
            MsgStyle::Warning);
    members.Close();
}

void MemberDirectory::rowClicked()
{
    const GridData& grid = m_form[memberlist::memList].grid();
    if (grid.row() <= 0)
        return;
    Control& picture = m_form[memberlist::mpicture2];
    picture.setPicture(QByteArray());
    picture.setPicture(readPicture(m_session.general, grid.textMatrix(grid.row(), PictureColumn)));
}

QString MemberDirectory::memberToEdit()
{
    const GridData& grid = m_form[memberlist::memList].grid();
    const QString name = grid.row() < 1 ? QString() : grid.textMatrix(grid.row(), 1);
    if (name.isEmpty())
        m_session.platform().messageBox(QStringLiteral("No Member selected!"), MsgStyle::Warning);
    return name;
}

void MemberDirectory::deleteMember()
{
    GridData& grid = m_form[memberlist::memList].grid();
    const int row = grid.row();
    if (row < 1)
        return;
    const QString username = grid.textMatrix(row, 1);
    const QString who = QStringLiteral("[Username:") + username + QStringLiteral(" - ") + grid.textMatrix(row, 2)
        + QStringLiteral(", ") + grid.textMatrix(row, 3) + u']';
    Platform& platform = m_session.platform();
    if (platform.messageBox(
            QStringLiteral("Delete Member ") + who + u'?', MsgStyle::Info + MsgStyle::YesNo + MsgStyle::DefaultButton2)
        != MsgResult::Yes)
        return;
    long affected = 0;
    const bool deleted = m_session.connection().Execute(
        Statement(QStringLiteral("Delete account.*,members.* from Account,Members where account.member=true and "
                                 "account.username='{}' and account.ticketgrp=members.member_id"),
            {username}),
        &affected);
    // A statement that failed ends here, as its error handler ends it.
    if (!deleted)
        return;
    if (affected > 0) {
        const QString path = picturePath(m_session.general, grid.textMatrix(row, PictureColumn));
        if (!path.isEmpty() && QFile::exists(path))
            QFile::remove(path);
    }
    platform.messageBox(QStringLiteral("Member ") + who + QStringLiteral(" deleted!"), MsgStyle::Info);
    for (int col = 0; col < Columns; ++col)
        grid.setTextMatrix(row, col, QString());
}

void MemberDirectory::refreshRow(const QString& username)
{
    GridData& grid = m_form[memberlist::memList].grid();
    const int row = grid.row();
    if (row < 1)
        return;
    Recordset member;
    const Statement edit(QStringLiteral("select account.*,members.* from Account,Members where account.member=true and "
                                        "account.username='{}' and account.ticketgrp=members.member_id Order by "
                                        "members.Surname,members.Firstname"),
        {username});
    if (!member.Open(edit, m_session.connection()))
        return;
    const QStringList cells = memberRowLine(QString::number(row), member).split(u'\t');
    for (int col = 0; col < Columns; ++col)
        grid.setTextMatrix(row, col, member.Eof() ? QString() : cells.value(col));
    member.Close();
}

} // namespace marlet
