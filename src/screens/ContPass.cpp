#include "screens/ContPass.h"

#include "platform/Platform.h"
#include "screens/ContPassNames.h"
#include "session/Session.h"
#include "settings/StaffRights.h"
#include "store/Recordset.h"

namespace marlet {

namespace PassModes {
constexpr qint16 Refused = 0;
constexpr qint16 Accepted = 2;
constexpr qint16 AnyEntry = 3;
constexpr qint16 CheckOld = 4;
constexpr qint16 OldRight = 5;
constexpr qint16 OldWrong = 6;
} // namespace PassModes

ContPass::ContPass(Session& session)
    : Form(session.platform(), contpass::FormName)
    , m_session(session)
{
}

void ContPass::build()
{
    setCaption(QStringLiteral("Enter Pasword to Continue"));
    setSize(4200, 1800);
    Control& label = add(ControlKind::Label, contpass::lblPassword);
    label.setCaption(m_session.general.PassMode == PassModes::CheckOld ? QStringLiteral("Old Password:")
                                                                       : QStringLiteral("Enter Password:"));
    Control& field = addLabelled(ControlKind::TextBox, contpass::txtPassword, label.caption());
    field.setCaption(QString());
    field.setPasswordChar(true);
    field.onKeyPress = [this](int& key) {
        if (key == Key::Enter) {
            key = 0;
            ok();
        }
    };
    addLabelled(ControlKind::CommandButton, contpass::cmdOK, QStringLiteral("OK")).onClick = [this] { ok(); };
    addLabelled(ControlKind::CommandButton, contpass::cmdCancel, QStringLiteral("Cancel")).onClick
        = [this] { cancel(); };
    onActivate = [this] { setFocus((*this)[contpass::txtPassword]); };
}

void ContPass::cancel()
{
    m_session.general.PassMode = PassModes::Refused;
    unload();
}

void ContPass::ok()
{
    const QString entry = (*this)[contpass::txtPassword].text().toUpper();
    if (m_session.general.PassMode == PassModes::Refused)
        checkStaffPassword(entry);
    else if (m_session.general.PassMode == PassModes::CheckOld)
        checkOldPassword(entry);
    // Every other mode passes unchecked; that is how mode 3 accepts any entry.
    unload();
}

void ContPass::checkStaffPassword(const QString& entry)
{
    const bool powered = isSet(m_session.general.AdminPowered);
    const Statement lookup = powered
        ? Statement(QStringLiteral("Select * from Users where Username = 'ADMINISTRATOR' and "
                                   "Type = 'ADMINISTRATOR' and Password = '{}'"),
            {entry})
        : Statement(QStringLiteral("Select * from Users where Username = '{}' and "
                                   "Type = 'ADMINISTRATOR' and Password = '{}'"),
            {m_session.general.CurrentStaff, entry});
    Recordset users;
    // A lookup that fails counts as a refusal: a gate never opens on an error.
    if (users.Open(lookup, m_session.connection(), CursorType::Static, LockType::ReadOnly) && users.RecordCount() > 0) {
        if (staff::isDisabled(users.value(QStringLiteral("enabled")))) {
            platform().messageBox(staff::DisabledAccountMessage, MsgStyle::Warning);
            return;
        }
        m_session.general.WrongPasswords.right();
        m_session.general.PassMode = PassModes::Accepted;
        return;
    }
    platform().sleep(m_session.general.WrongPasswords.wrong());
    platform().messageBox(QStringLiteral("Wrong Password!"), MsgStyle::Warning);
    if (powered) {
        platform().messageBox(
            QStringLiteral("Administrator Powered is enabled, You must Log In with the Account ADMINISTRATOR!"),
            MsgStyle::Warning,
            MessageTitle() + u' ');
    }
}

void ContPass::checkOldPassword(const QString& entry)
{
    Recordset users;
    const bool found
        = users.Open(Statement(QStringLiteral("Select * from Users where Username = '{}' and Password = '{}'"),
                         {m_session.general.GateUsername, entry}),
              m_session.connection(),
              CursorType::Static,
              LockType::ReadOnly)
        && users.RecordCount() > 0;
    m_session.general.PassMode = found ? PassModes::OldRight : PassModes::OldWrong;
}

} // namespace marlet
