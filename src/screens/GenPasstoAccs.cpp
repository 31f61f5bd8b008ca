#include "screens/GenPasstoAccs.h"

#include "platform/Platform.h"
#include "screens/GenPasstoAccsNames.h"
#include "screens/ScreenOpener.h"
#include "session/Session.h"
#include "settings/StaffRights.h"
#include "store/Recordset.h"

namespace marlet {

namespace {

const QString Administrator = QStringLiteral("ADMINISTRATOR");

} // namespace

GenPasstoAccs::GenPasstoAccs(Session& session, ScreenOpener& screens)
    : Form(session.platform(), genpasstoaccs::FormName)
    , m_session(session)
    , m_screens(screens)
{
}

void GenPasstoAccs::buildFrame(int number)
{
    Control& frame = add(ControlKind::Frame, genpasstoaccs::Frames[number - 1]);
    Control& user
        = addLabelled(ControlKind::TextBox, genpasstoaccs::Usernames[number - 1], QStringLiteral("Username:"));
    Control& password
        = addLabelled(ControlKind::TextBox, genpasstoaccs::Passwords[number - 1], QStringLiteral("Password:"));
    user.setCaption(QString());
    password.setCaption(QString());
    password.setPasswordChar(true);
    for (Control* field : {&user, &password}) {
        field->setContainer(&frame);
        field->onGotFocus = [field] { field->selectAll(); };
    }
    user.onLostFocus = [&user] { user.setText(user.text().toUpper()); };

    // Enter walks through the fields and ends on OK.
    user.onKeyPress = [this, &password](int& key) {
        if (key == Key::Enter) {
            key = 0;
            setFocus(password);
        }
    };
    password.onKeyPress = [this, number](int& key) {
        if (key != Key::Enter)
            return;
        key = 0;
        if (number == 1 && secondShown())
            setFocus((*this)[genpasstoaccs::txtUsername2]);
        else
            ok();
    };
}

void GenPasstoAccs::build()
{
    setCaption(QStringLiteral("Enter Password"));
    buildFrame(1);
    buildFrame(2);
    addLabelled(ControlKind::CommandButton, genpasstoaccs::cmdOK, QStringLiteral("OK")).onClick = [this] { ok(); };
    addLabelled(ControlKind::CommandButton, genpasstoaccs::cmdCancel, QStringLiteral("Cancel")).onClick
        = [this] { unload(); };

    onLoad = [this] { layOut(); };
    onActivate = [this] {
        Control& first = (*this)[genpasstoaccs::txtUsername1];
        first.setText(m_session.general.CurrentStaff.toUpper());
        first.setEnabled(false);
        setFocus((*this)[genpasstoaccs::txtPassword1]);
    };
}

void GenPasstoAccs::layOut()
{
    Recordset options;
    options.Open(Statement(QStringLiteral("Select * FROM Options")),
        m_session.connection(),
        CursorType::Static,
        LockType::ReadOnly);
    // A failed read counts as true, as every failed test does: two approvers are then asked for.
    const QVariant noUser = options.value(QStringLiteral("NoUser"));
    const bool twoStaff = !noUser.isValid() || noUser.isNull() || noUser.toBool();
    options.Close();

    Control& frame1 = (*this)[genpasstoaccs::Frame1];
    Control& frame2 = (*this)[genpasstoaccs::Frame2];
    Control& okButton = (*this)[genpasstoaccs::cmdOK];
    Control& cancelButton = (*this)[genpasstoaccs::cmdCancel];
    frame1.setCaption(twoStaff ? QStringLiteral("1st") : QString());
    frame2.setVisible(twoStaff);
    setSize(width(), twoStaff ? 5325 : 2835);
    okButton.setTop(twoStaff ? 840 : 120);
    cancelButton.setTop(twoStaff ? 3360 : 1440);
}

bool GenPasstoAccs::secondShown() const
{
    return (*this)[genpasstoaccs::Frame2].visible();
}

void GenPasstoAccs::refuse(const QString& message, Control* focusTarget)
{
    platform().messageBox(message, MsgStyle::Warning);
    if (focusTarget)
        setFocus(*focusTarget);
}

void GenPasstoAccs::refuseWrongPassword(Control& password)
{
    platform().sleep(m_session.general.WrongPasswords.wrong());
    refuse(QStringLiteral("Wrong Password!"), &password);
}

bool GenPasstoAccs::refusedAsDisabled(Recordset& users, Control& focusTarget)
{
    if (!staff::isDisabled(users.value(QStringLiteral("enabled"))))
        return false;
    refuse(staff::DisabledAccountMessage, &focusTarget);
    return true;
}

bool GenPasstoAccs::lookUp(Recordset& users, const QString& name)
{
    users.Close();
    return users.Open(Statement(QStringLiteral("Select * from Users where Username = '{}'"), {name}),
        m_session.connection(),
        CursorType::Static,
        LockType::ReadOnly);
}

bool GenPasstoAccs::checkFirst(Recordset& users)
{
    Control& user = (*this)[genpasstoaccs::txtUsername1];
    Control& password = (*this)[genpasstoaccs::txtPassword1];
    if (!lookUp(users, user.text()))
        return false;
    if (users.RecordCount() == 0) {
        platform().messageBox(QStringLiteral("Username doesn't Exist!"), MsgStyle::Warning);
        // The first name is disabled: the focus cannot go there, and that failure ends the routine.
        setFocus(user);
        return false;
    }
    if (password.text().toUpper() != users.value(QStringLiteral("Password")).toString().toUpper()) {
        refuseWrongPassword(password);
        return false;
    }
    if (users.value(QStringLiteral("Type")).toString() != Administrator) {
        refuse(QStringLiteral("An Administrator's Account is required!"), &password);
        return false;
    }
    return !refusedAsDisabled(users, user);
}

bool GenPasstoAccs::checkSecond(Recordset& users)
{
    Control& user = (*this)[genpasstoaccs::txtUsername2];
    Control& password = (*this)[genpasstoaccs::txtPassword2];
    if (!lookUp(users, user.text()))
        return false;
    if (users.RecordCount() == 0) {
        refuse(QStringLiteral("Username doesn't Exist!"), &user);
        return false;
    }
    // Unlike the first login, the stored password is compared as it stands.
    if (password.text().toUpper() != users.value(QStringLiteral("Password")).toString()) {
        refuseWrongPassword(password);
        return false;
    }
    if (users.value(QStringLiteral("Type")).toString() != Administrator) {
        refuse(QStringLiteral("An Administrator's Account is required!"), &user);
        return false;
    }
    if (refusedAsDisabled(users, user))
        return false;
    // Only the second approver needs the right to generate: the staff account tab's "Disable
    // Generate Tickets" ticked (Generate true) takes it away, and a value that cannot be read
    // counts as taken away.
    const QVariant generate = users.value(QStringLiteral("generate"));
    if (!generate.isValid() || generate.isNull() || generate.toBool()) {
        refuse(QStringLiteral("This Administrator's Account doesn't have access to Generate Ticket!"), &user);
        return false;
    }
    m_session.general.SecondStaff = user.text().toUpper();
    return true;
}

void GenPasstoAccs::ok()
{
    // This routine stops at its first failure, silently; a failure never opens the gate.
    const bool twoStaff = secondShown();
    if (twoStaff
        && (*this)[genpasstoaccs::txtUsername1].text().toUpper()
            == (*this)[genpasstoaccs::txtUsername2].text().toUpper()) {
        refuse(QStringLiteral("You must enter different Usernames!"));
        return;
    }
    Recordset users;
    if (!checkFirst(users))
        return;
    if (twoStaff && !checkSecond(users))
        return;
    users.Close();
    m_session.general.WrongPasswords.right();
    unload();
    m_screens.showGenAcc();
}

} // namespace marlet
