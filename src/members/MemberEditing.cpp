#include "members/MemberEditing.h"

#include "issuing/Expiry.h"
#include "issuing/TicketNames.h"
#include "members/MemberRecord.h"
#include "members/MemberinfoNames.h"
#include "platform/Form.h"
#include "platform/Platform.h"
#include "session/Session.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "values/Formats.h"
#include "values/Numbers.h"

#include <optional>

namespace marlet {

namespace {

const QString EditStatement
    = QStringLiteral("select account.*,members.* from Account,Members where account.member=true "
                     "and account.username='{}' and account.ticketgrp=members.member_id");
const QString AutochargeOn = QStringLiteral("Autocharge On");
const QString AutochargeOff = QStringLiteral("Autocharge Off");
const QString SettingsCaption = QStringLiteral("Set Ticket Option ...");
const QString BackToInfoCaption = QStringLiteral("<< Back to Ticket Info");
constexpr double MaxRechargeMinutes = 5000;

QString text(const Recordset& row, const char* column)
{
    return row.value(QLatin1String(column)).toString();
}

// A picker's time, or Null for a picker that a ticket without times left empty.
QVariant pickerValue(const Control& picker)
{
    return picker.dateTime().isValid() ? QVariant(picker.dateTime()) : QVariant();
}

// The answer to one of the autorecharge questions: a whole number of 1 to 365, or nothing after
// the message (or silently, for a blank answer).
std::optional<QString> askInterval(Platform& platform, const QString& prompt)
{
    const QString answer = platform.inputBox(prompt, QStringLiteral("Autorecharge Settings ..."), QString());
    if (answer.trimmed().isEmpty())
        return std::nullopt;
    QString refusal;
    if (!values::isNumeric(answer))
        refusal = QStringLiteral("Value is not numeric!");
    else if (values::leadingNumber(answer) <= 0)
        refusal = QStringLiteral("Value must be greater than 0!");
    else if (values::leadingNumber(answer) > 365)
        refusal = QStringLiteral("Value must be less than 366!");
    if (refusal.isEmpty())
        return answer;
    platform.messageBox(refusal, MsgStyle::Warning);
    return std::nullopt;
}

} // namespace

MemberEditing::MemberEditing(Session& session, Form& form, std::function<QString()> registrationWeekday)
    : m_session(session)
    , m_form(form)
    , m_registrationWeekday(std::move(registrationWeekday))
{
}

bool MemberEditing::warn(const QString& message) const
{
    m_session.platform().messageBox(message, MsgStyle::Warning);
    return false;
}

// ---- the record -------------------------------------------------------------------------------

bool MemberEditing::load(const QString& username)
{
    m_form[memberinfo::Label8].setCaption(QStringLiteral("Items with * must be filled."));
    Recordset row;
    if (!row.Open(Statement(EditStatement, {username}), m_session.connection()) || row.RecordCount() <= 0)
        return false;
    const auto field = [this](MemberField index) -> Control& { return m_form.at(memberinfo::Text7, index); };
    field(Surname).setText(text(row, "Surname"));
    field(Firstname).setText(text(row, "Firstname"));
    field(SpecifyOrder).setText(text(row, "SpecifyOrder"));
    field(Occupation).setText(text(row, "Occupation"));
    field(Address).setText(text(row, "Address"));
    field(Country).setText(text(row, "Country"));
    field(Email).setText(text(row, "Email"));
    field(IdentificationNumber).setText(text(row, "Identication_no"));
    field(TicketUsername).setText(text(row, "Username"));
    field(Title).setText(text(row, "title"));
    field(OtherNames).setText(text(row, "Othername"));
    field(Company).setText(text(row, "Company"));
    field(State).setText(text(row, "State"));
    field(Telephone).setText(text(row, "Telephone"));
    field(CostText).setText(text(row, "Amount"));
    m_form.at(memberinfo::Label44, 0).setCaption(text(row, "Username"));
    m_form.at(memberinfo::Label44, 1).setCaption(text(row, "Password"));

    Control& items = m_form[memberinfo::Combo7];
    const QString item = text(row, "Identification_item");
    items.setListIndex(item.isEmpty() ? 0 : items.findItem(item));
    const QString sex = text(row, "Sex");
    m_form.at(memberinfo::Option6, 0).setValue(sex == QLatin1String("0") ? 1 : 0);
    m_form.at(memberinfo::Option6, 1).setValue(sex == QLatin1String("1") ? 1 : 0);
    m_form[memberinfo::DateofBirth].setDateTime(QDateTime(row.value(QStringLiteral("DateofBirth")).toDate(), QTime()));
    m_form[memberinfo::mPicture].setPicture(readPicture(m_session.general, text(row, "Picture")));

    const double seconds = row.value(QStringLiteral("Time")).toDouble();
    field(TimeText).setText(QString::number(values::toInt16(seconds / 60).value_or(0)) + QStringLiteral("min(s)"));
    const QVariant days = row.value(QStringLiteral("Days"));
    const QVariant expire = row.value(QStringLiteral("Expire"));
    if (days.toDouble() == 0)
        field(ExpireText)
            .setText(expire.isNull() ? QStringLiteral("Never Expire")
                                     : values::format(expire.toDate(), QStringLiteral("dd-mmmm-yy")));
    else
        field(ExpireText).setText(days.toString() + QStringLiteral("day(s)"));

    Control& period = m_form[memberinfo::Check18];
    period.setValue(row.value(QStringLiteral("Night")).toBool() ? 1 : 0);
    m_form[memberinfo::DT7].setDateTime(row.value(QStringLiteral("StartTime")).toDateTime());
    m_form[memberinfo::DT8].setDateTime(row.value(QStringLiteral("EndTime")).toDateTime());
    Control& addDays = m_form[memberinfo::Combo22];
    addDays.setText(QStringLiteral("0"));
    addDays.setText(text(row, "Reday"));

    const QString autorecharge = text(row, "Autorecharge");
    const bool scheduled = autorecharge != QLatin1String("NONE");
    field(RechargeableText).setText(scheduled ? QStringLiteral("Yes") : QStringLiteral("No"));
    field(RechargeDays).setText(scheduled ? autorecharge : QStringLiteral("None"));
    field(RechargeTime).setText(scheduled ? text(row, "Retime") : QStringLiteral("None"));
    setAutochargeState(scheduled);

    QString periodText;
    if (period.ticked())
        periodText = values::format(m_form[memberinfo::DT7].dateTime(), QStringLiteral("HH:MM")) + u'-'
            + values::format(m_form[memberinfo::DT8].dateTime(), QStringLiteral("HH:MM")) + u'|';
    field(TimePeriodText).setText(periodText + text(row, "Reday"));
    row.Close();

    for (const QString& shown : {memberinfo::Frame22, memberinfo::Frame28, memberinfo::Frame26})
        m_form[shown].setVisible(true);
    for (const QString& hidden : {memberinfo::Frame21, memberinfo::Frame27})
        m_form[hidden].setVisible(false);
    m_form[memberinfo::Command27].setEnabled(false);
    m_form[memberinfo::Command26].setCaption(SettingsCaption);
    return true;
}

void MemberEditing::save()
{
    Control& username = m_form.at(memberinfo::Text7, TicketUsername);
    username.setText(typedUpperCase(username.text()));
    const MemberDetails details = readMemberDetails(m_form);
    if (const std::optional<MemberProblem> problem = memberProblem(details, m_session.platform().today())) {
        warn(problem->message);
        if (!problem->focusControl.isEmpty())
            m_form.setFocus(m_form.at(problem->focusControl, problem->focusIndex));
        return;
    }
    QString group;
    if (saveAccount(group) && saveMember(group))
        m_session.platform().messageBox(QStringLiteral("Member Ticket Saved Successfully!"), MsgStyle::Info);
    m_form[memberinfo::Command27].setEnabled(false);
}

// The ticket side of Save. The row is looked up under the name it stands under, before that name
// changes to the new one. False when the save ends here.
bool MemberEditing::saveAccount(QString& group)
{
    Recordset account;
    Control& lookupName = m_form.at(memberinfo::Label44, 0);
    if (!account.Open(Statement(QStringLiteral("Select * from Account where Username = '{}'"), {lookupName.caption()}),
            m_session.connection(),
            CursorType::Static,
            LockType::Optimistic))
        return false;
    if (account.RecordCount() <= 0)
        return true;
    if (!account.MoveFirst())
        return false;
    const float seconds = values::toSingle(values::leadingNumber(m_form.at(memberinfo::Text7, TimeText).text()) * 60);
    const QString newName = typedUpperCase(m_form.at(memberinfo::Text7, TicketUsername).text());
    group = account.value(QStringLiteral("TicketGrp")).toString();
    bool written = account.setValue(QStringLiteral("Username"), newName);
    written = account.setValue(QStringLiteral("Password"), typedUpperCase(m_form.at(memberinfo::Label44, 1).caption()))
        && written;
    written = account.setValue(QStringLiteral("Time"), double(seconds)) && written;

    const QDate today = m_session.platform().today();
    const QString addDays = m_form[memberinfo::Combo22].text();
    if (addDays != QLatin1String("NVR")) {
        const double days = values::leadingNumber(addDays);
        if (days > 0) {
            if (account.value(QStringLiteral("Expire")).isNull()) {
                written = account.setValue(QStringLiteral("Days"), days) && written;
            } else {
                written = account.setValue(QStringLiteral("Expire"), daysAfter(today, days)) && written;
                written = account.setValue(QStringLiteral("Days"), 0) && written;
            }
        }
    } else {
        written = account.setValue(QStringLiteral("Expire"), QVariant()) && written;
        written = account.setValue(QStringLiteral("Days"), 0) && written;
    }

    written = account.setValue(QStringLiteral("StartTime"), pickerValue(m_form[memberinfo::DT7])) && written;
    written = account.setValue(QStringLiteral("EndTime"), pickerValue(m_form[memberinfo::DT8])) && written;
    written = account.setValue(QStringLiteral("Member"), true) && written;
    const QString autorecharge = m_form.at(memberinfo::Text7, RechargeDays).text();
    if (account.value(QStringLiteral("Autorecharge")).toString().toUpper() != autorecharge.toUpper())
        written = account.setValue(QStringLiteral("Redate"), today) && written;
    written = account.setValue(QStringLiteral("Autorecharge"), autorecharge) && written;
    // The weekday of the generate screen's member tab, not this screen's own list.
    written = account.setValue(QStringLiteral("Reday"), m_registrationWeekday()) && written;
    written = account.setValue(QStringLiteral("Retime"), m_form.at(memberinfo::Text7, RechargeTime).text()) && written;
    written = account.setValue(QStringLiteral("Night"), m_form[memberinfo::Check18].ticked()) && written;
    if (!written || !account.Update()) {
        account.CancelUpdate();
        return false;
    }
    lookupName.setCaption(newName);
    m_session.platform().yield();
    account.Close();
    return true;
}

bool MemberEditing::saveMember(const QString& group)
{
    Recordset member;
    if (!member.Open(Statement(QStringLiteral("select * from Members where Member_ID='{}'"), {group}),
            m_session.connection(),
            CursorType::Static,
            LockType::Optimistic))
        return false;
    bool written = true;
    if (member.RecordCount() > 0) {
        const MemberDetails details = readMemberDetails(m_form);
        if (!details[Surname].trimmed().isEmpty()) {
            written = member.setValue(QStringLiteral("Member_ID"), group.toUpper()) && written;
            written = writeMemberColumns(member, details) && written;
            // The picture goes into the file the row names; the name never changes here.
            const General& general = m_session.general;
            ensurePictureFolder(general);
            const QByteArray picture = m_form[memberinfo::mPicture].picture();
            if (!picture.isEmpty())
                writePicture(general, member.value(QStringLiteral("Picture")).toString(), picture);
        } else {
            written = blankMemberColumns(member, member.value(QStringLiteral("DateofBirth"))) && written;
        }
    }
    if (!written || !member.Update()) {
        member.CancelUpdate();
        return false;
    }
    member.Close();
    return true;
}

bool MemberEditing::leave()
{
    if (m_form[memberinfo::Command27].enabled()
        && m_session.platform().messageBox(
               QStringLiteral("Last changes are not saved, do you want to save?"), MsgStyle::YesNoQuestion)
            == MsgResult::Yes) {
        save();
        if (m_form[memberinfo::Command27].enabled())
            return false;
    }
    return true;
}

// ---- the member commands ----------------------------------------------------------------------

void MemberEditing::changeUsername()
{
    Platform& platform = m_session.platform();
    Control& username = m_form.at(memberinfo::Text7, TicketUsername);
    const QString answer = typedUpperCase(
        platform.inputBox(QStringLiteral("Change Username from ") + username.text() + QStringLiteral(" to ..."),
            QStringLiteral("Change Username"),
            QString()));
    if (const std::optional<QString> problem = usernameProblem(answer, TicketPath::CredentialChange, false)) {
        warn(*problem);
        return;
    }
    Recordset existing;
    if (lookUpUsername(existing, m_session.connection(), answer, LockType::ReadOnly) != NameLookup::Free) {
        // A lookup that cannot run (a quote in the name) refuses the name as well.
        warn(existingNameMessage(TicketPath::CredentialChange));
        return;
    }
    m_form.at(memberinfo::Label44, 0).setCaption(username.text());
    username.setText(answer);
    m_form[memberinfo::Command27].setEnabled(true);
}

void MemberEditing::changePassword()
{
    const QString answer = typedUpperCase(m_session.platform().inputBox(
        QStringLiteral("Change Member's Password to ..."), QStringLiteral("Change Password"), QString()));
    if (const std::optional<QString> problem = passwordProblem(answer, TicketPath::CredentialChange)) {
        warn(*problem);
        return;
    }
    m_form.at(memberinfo::Label44, 1).setCaption(answer);
    m_form[memberinfo::Command27].setEnabled(true);
}

void MemberEditing::setAutochargeState(bool on)
{
    Control& button = m_form[memberinfo::Command30];
    button.setCaption(on ? AutochargeOn : AutochargeOff);
    button.setValue(on ? 1 : 0);
}

void MemberEditing::toggleAutocharge()
{
    if (m_form[memberinfo::Command30].caption() == AutochargeOn) {
        setAutochargeState(false);
        m_form.at(memberinfo::Text7, RechargeableText).setText(QStringLiteral("No"));
    } else {
        Platform& platform = m_session.platform();
        const std::optional<QString> days
            = askInterval(platform, QStringLiteral("Please enter day(s) interval to autorecharge?"));
        if (!days)
            return;
        const std::optional<QString> hours
            = askInterval(platform, QStringLiteral("Please enter number of hours(s) to autorecharge?"));
        if (!hours)
            return;
        setAutochargeState(true);
        m_form.at(memberinfo::Text7, RechargeableText).setText(QStringLiteral("Yes"));
        m_form.at(memberinfo::Text7, RechargeDays).setText(*days + QStringLiteral("day(s)"));
        m_form.at(memberinfo::Text7, RechargeTime).setText(*hours + QStringLiteral("hour(s)"));
    }
    m_form[memberinfo::Command27].setEnabled(true);
}

void MemberEditing::rechargeNow()
{
    Platform& platform = m_session.platform();
    // Titled as the other button is: so it has always been.
    const QString answer
        = platform.inputBox(QStringLiteral("Please enter number of minutes to add or reduce (e.g. -30)?"),
            QStringLiteral("Change Username"),
            QString());
    if (answer.trimmed().isEmpty())
        return;
    if (!values::isNumeric(answer)) {
        warn(QStringLiteral("Value is not numeric!"));
        return;
    }
    const double minutes = values::leadingNumber(answer);
    if (minutes == 0)
        return;
    if (minutes > MaxRechargeMinutes) {
        warn(QStringLiteral("The value must be less than 5001 min(s)!"));
        return;
    }
    Recordset account;
    if (!account.Open(Statement(QStringLiteral("Select * from Account where Username = '{}'"),
                          {m_form.at(memberinfo::Label44, 0).caption()}),
            m_session.connection(),
            CursorType::Static,
            LockType::Optimistic))
        return;
    if (account.RecordCount() <= 0) {
        warn(QStringLiteral("Member's record not found!"));
        return;
    }
    const double time = account.value(QStringLiteral("Time")).toDouble();
    // Subtracting the negative value makes this test rise with the deduction: it almost never fires.
    if (minutes < 0 && time / 60 - minutes < 0) {
        warn(QStringLiteral("The value you are deducing is more than the time avaiable!"));
        return;
    }
    const double newTime = time + minutes * 60;
    const QString staff = m_session.general.CurrentStaff;
    bool written = account.setValue(QStringLiteral("Time"), newTime);
    written = account.setValue(
                  QStringLiteral("BackTime"), account.value(QStringLiteral("BackTime")).toDouble() + minutes * 60)
        && written;
    written = account.setValue(QStringLiteral("NoAdded"), account.value(QStringLiteral("NoAdded")).toDouble() + 1)
        && written;
    written = account.setValue(QStringLiteral("AccountAdded"), QStringLiteral("RECHARGED")) && written;
    written = account.setValue(QStringLiteral("ComputerUsed"), staff) && written;
    m_form.at(memberinfo::Text7, TimeText).setText(values::numberText(newTime / 60) + QStringLiteral("min(s)"));
    if (!written || !account.Update()) {
        account.CancelUpdate();
        return;
    }
    const bool member = account.value(QStringLiteral("Member")).toBool();
    m_session.connection().Execute(
        Statement(QStringLiteral("Insert into Rechargeinfo (ReChargeType,Rechargetime,Rechargeduser,timedate,member,"
                                 "Username) Values ('MANUAL',{},'{}',now,'{}','{}')"),
            {values::numberText(minutes),
                staff,
                member ? QStringLiteral("YES") : QStringLiteral("NO"),
                account.value(QStringLiteral("Username"))}));
    warn(QStringLiteral("Member's time has been recharged!"));
    account.Close();
}

void MemberEditing::toggleSettings()
{
    Control& button = m_form[memberinfo::Command26];
    const bool toSettings = button.caption() == SettingsCaption;
    m_form[memberinfo::Frame21].setVisible(toSettings);
    m_form[memberinfo::Frame28].setVisible(!toSettings);
    button.setCaption(toSettings ? BackToInfoCaption : SettingsCaption);
}

// ---- the print-out ----------------------------------------------------------------------------

void MemberEditing::print()
{
    Platform& platform = m_session.platform();
    const auto field = [this](MemberField index) { return m_form.at(memberinfo::Text7, index).text(); };
    if (field(Surname).trimmed().isEmpty()) {
        warn(QStringLiteral("No Member's information to print!"));
        return;
    }
    const QString printer = platform.defaultPrinter();
    if (printer.isEmpty()) {
        warn(QStringLiteral("No Printer Installed!"));
        return;
    }
    if (platform.messageBox(
            QStringLiteral("Print Member's information with Printer [") + printer + QStringLiteral("]?"),
            MsgStyle::YesNoQuestion)
        != MsgResult::Yes)
        return;
    const Control& items = m_form[memberinfo::Combo7];
    const QString item = items.listIndex() == 3 ? field(SpecifyOrder) : items.text();
    const QStringList block {QStringLiteral("Surname: ") + field(Surname),
        QStringLiteral("Firstname: ") + field(Firstname),
        QStringLiteral("Other names: ") + field(OtherNames),
        QStringLiteral("Title: ") + field(Title),
        QStringLiteral("Date of Birth: ")
            + values::format(m_form[memberinfo::DateofBirth].dateTime().date(), QStringLiteral("dd-mmmm-yyyy")),
        QStringLiteral("Address: ") + field(Address),
        QStringLiteral("State: ") + field(State),
        QStringLiteral("Country: ") + field(Country),
        QStringLiteral("Telephone: ") + field(Telephone),
        QStringLiteral("Email: ") + field(Email),
        QStringLiteral("Identification Item: ") + item,
        QStringLiteral("Identification No.: ") + field(IdentificationNumber),
        QStringLiteral("Username: ") + field(TicketUsername),
        QStringLiteral("Time: ") + field(TimeText),
        QStringLiteral("Expire: ") + field(ExpireText),
        QStringLiteral("Rechargeable: ") + field(RechargeableText),
        QStringLiteral("Recharge Day(s): ") + field(RechargeDays),
        QStringLiteral("Recharge Time: ") + field(RechargeTime),
        QStringLiteral("Time Period: ") + field(TimePeriodText)};
    const QList<PrintedLine> page = {
        {QString(), false, 10},
        {QStringLiteral("Member's information - Printed: ")
                + values::format(platform.now(), QStringLiteral("hh:mm AMPM dd/mmm/yyyy")),
            false,
            10},
        {QString(80, u'-'), false, 10},
        {QString(), false, 10},
        {block.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"), false, 10},
    };
    if (!platform.printLines(page))
        platform.messageBox(QStringLiteral("Error Printing!"), MsgStyle::Stop);
}

} // namespace marlet
