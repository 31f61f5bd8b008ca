#include "screens/UserAccountTab.h"

#include "platform/KeyRules.h"
#include "platform/Platform.h"
#include "screens/Options.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "settings/StaffRights.h"
#include "store/Recordset.h"
#include "values/Numbers.h"
#include "values/Texts.h"

#include <QScopedValueRollback>

namespace marlet {

namespace {

constexpr int Flag = 1;
constexpr qint16 AnyEntryMode = 3;
constexpr qint16 StaffPasswordMode = 0;
constexpr qint16 OldPasswordMode = 4;
constexpr qint16 OldPasswordRight = 5;
constexpr qint16 OldPasswordWrong = 6;
constexpr int FieldLength = 15;

const QString DefaultLogins = QStringLiteral("999");
const QString DefaultSolotime = QStringLiteral("60");

bool blank(const QString& text)
{
    return values::trimBlanks(text).isEmpty();
}

// Enter in the field moves the focus on to the next one.
void enterMovesTo(Options& screen, Control& field, const QString& next)
{
    field.onKeyPress = [&screen, next, previous = std::move(field.onKeyPress)](int& key) {
        if (key == Key::Enter) {
            key = 0;
            screen.setFocus(screen[next]);
            return;
        }
        if (previous)
            previous(key);
    };
}

// The text of a number field, while it is a number the spinners can show.
bool spinnable(const QString& text)
{
    if (!values::isNumeric(text))
        return false;
    const double number = values::leadingNumber(text);
    return number >= 0 && number <= 999;
}

// A spinner beside its number field: the field's number goes into the spinner when the field takes
// the focus, and moving the spinner writes its value into the field while that holds such a number.
void tieSpinner(Control& text, Control& spinner, int maximum)
{
    spinner.setRange(0, maximum);
    text.onGotFocus = [&text, &spinner, previous = std::move(text.onGotFocus)] {
        if (previous)
            previous();
        if (spinnable(text.text()))
            spinner.setValue(int(values::leadingNumber(text.text())));
    };
    spinner.onChange = [&text, &spinner] {
        if (spinnable(text.text()) && text.text() != QString::number(spinner.value()))
            text.setText(QString::number(spinner.value()));
    };
}

} // namespace

UserAccountTab::UserAccountTab(Options& screen)
    : m_screen(screen)
{
}

// ---- building ---------------------------------------------------------------------------------

void UserAccountTab::build(Control& panel)
{
    buildAccountFields(panel);
    buildNumberFields(panel);
    buildLists(panel);
    buildPolicies(panel);
}

void UserAccountTab::buildAccountFields(Control& panel)
{
    Control& frame = m_screen.addToFrame(panel, ControlKind::Frame, options::FUserFields, QStringLiteral("Account"));
    Control& name = m_screen.addToFrame(frame, ControlKind::TextBox, options::txtUserName, QStringLiteral("Username:"));
    name.setMaxLength(FieldLength);
    name.onKeyPress = [](int& key) { key = QChar(char16_t(key)).toUpper().unicode(); };
    // A key that is no digit, point or letter passes here; it locks the ticket prefix instead.
    name.onKeyDown = [this](int& keyCode, int) {
        if (!keyrules::isNumericKey(keyCode) && !keyrules::isLetterKey(keyCode)) {
            if (Control* prefix = m_screen.control(options::txtPrefix))
                prefix->setLocked(true);
        }
    };
    name.onLostFocus = [&name] { name.setText(name.text().toUpper()); };
    name.onChange = [this] { lookUp(); };
    enterMovesTo(m_screen, name, options::txtUserPassword);

    Control& password
        = m_screen.addToFrame(frame, ControlKind::TextBox, options::txtUserPassword, QStringLiteral("Password:"));
    password.setMaxLength(FieldLength);
    password.setPasswordChar(true);
    password.onLostFocus = [&password] { password.setText(password.text().toUpper()); };
    enterMovesTo(m_screen, password, options::txtUserRetype);

    Control& retype
        = m_screen.addToFrame(frame, ControlKind::TextBox, options::txtUserRetype, QStringLiteral("Re-type Password:"));
    retype.setMaxLength(FieldLength);
    retype.setPasswordChar(true);
    retype.setToolTip(QStringLiteral("Reenter Password(PS)"));

    Control& type
        = m_screen.addToFrame(frame, ControlKind::ComboBox, options::cboUserType, QStringLiteral("User Type:"));
    type.setEditable(true);
    type.onClick = [this] { rebuildRights(); };
    // A typed or a set type picks its entry of the list too, so that the next pick of that entry
    // is a change again.
    type.onChange = [&type, this] {
        const int entry = type.findItem(type.text());
        if (entry >= 0 && entry != type.listIndex())
            type.setListIndex(entry);
        else
            rebuildRights();
    };
    type.onLostFocus = [this] { leaveType(); };
    enterMovesTo(m_screen, type, options::txtUserLogins);

    for (Control* field : {&name, &password, &retype})
        keyrules::selectAllOnFocus(*field);
}

void UserAccountTab::buildNumberFields(Control& panel)
{
    Control& frame = m_screen[options::FUserFields];
    Control& logins
        = m_screen.addToFrame(frame, ControlKind::TextBox, options::txtUserLogins, QStringLiteral("Number of Login:"));
    logins.setMaxLength(3);
    Control& loginSpinner = m_screen.addToFrame(frame, ControlKind::Slider, options::sldUserLogins);
    Control& solotime = m_screen.addToFrame(
        frame, ControlKind::TextBox, options::txtUserSolotime, QStringLiteral("Max Solotime per day:"));
    solotime.setMaxLength(4);
    solotime.setToolTip(QStringLiteral("Maximum Solotime that can be allowed."));
    solotime.setText(DefaultSolotime);
    Control& solotimeSpinner = m_screen.addToFrame(frame, ControlKind::Slider, options::sldUserSolotime);
    for (Control* field : {&logins, &solotime}) {
        keyrules::lockUntilReleased(*field, keyrules::isNumericKey);
        keyrules::selectAllOnFocus(*field);
    }
    tieSpinner(logins, loginSpinner, 999);
    tieSpinner(solotime, solotimeSpinner, 9999);
    logins.onLostFocus = [this] { leaveLogins(); };
    enterMovesTo(m_screen, logins, options::lstUserRights);
    Q_UNUSED(panel);
}

void UserAccountTab::buildLists(Control& panel)
{
    Control& rights
        = m_screen.addToFrame(panel, ControlKind::ListBox, options::lstUserRights, QStringLiteral("Rights:"));
    rights.setMultiSelect(true);
    rights.onClick = [this] { clickRights(); };
    Control& users = m_screen.addToFrame(
        panel, ControlKind::ListBox, options::lstExistingUsers, QStringLiteral("Existing User(s)"));
    users.onClick = [this] { clickExistingUser(); };
    m_screen.addToFrame(panel, ControlKind::CommandButton, options::cmdUserAddChange, QStringLiteral("&Add/Change"))
        .onClick
        = [this] { addChange(); };
    m_screen.addToFrame(panel, ControlKind::CommandButton, options::cmdUserRemove, QStringLiteral("&Remove")).onClick
        = [this] { remove(); };
}

void UserAccountTab::buildPolicies(Control& panel)
{
    Control& power = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkAdministratorPower,
        QStringLiteral("Given Administrator Account Greatest Power"));
    power.setToolTip(QStringLiteral("Administrator Account has only the power to delete, to add accounts"));
    power.onClick = [this, &power] { turnPolicy(power, AnyEntryMode); };
    Control& twoAccounts = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkNoUser,
        QStringLiteral("Two Accounts required for Ticket Generation"));
    twoAccounts.setToolTip(QStringLiteral("Two User logs in to Generate tickets"));
    twoAccounts.onClick = [this, &twoAccounts] { turnPolicy(twoAccounts, StaffPasswordMode); };
    for (Control* box : {&power, &twoAccounts})
        m_screen.trackChanges(*box, Flag);
}

// ---- loading ----------------------------------------------------------------------------------

void UserAccountTab::load()
{
    Connection& connection = m_screen.session().connection();
    Recordset users;
    users.Open(Statement(QStringLiteral("Select * from Users")), connection, CursorType::Static, LockType::ReadOnly);
    Control& list = m_screen[options::lstExistingUsers];
    for (; !users.Eof(); users.MoveNext())
        list.addItem(users.value(QStringLiteral("Username")).toString());
    users.Close();
    Recordset row;
    if (row.Open(Statement(QStringLiteral("Select * FROM Options")), connection, CursorType::Static, LockType::ReadOnly)
        && !row.Eof()) {
        // The flag is still clear: the switches show the row without asking for a password.
        m_screen[options::chkAdministratorPower].setValue(
            row.value(QStringLiteral("AdministratorPower")).toBool() ? CheckState::Checked : CheckState::Unchecked);
        m_screen[options::chkNoUser].setValue(
            row.value(QStringLiteral("NoUser")).toBool() ? CheckState::Checked : CheckState::Unchecked);
    }
    Control& type = m_screen[options::cboUserType];
    if (type.listCount() == 0)
        type.addItems({staff::Administrator, staff::User, staff::Viewer});
    type.setText(staff::User);
    m_screen.setFocus(m_screen[options::txtUserName]);
}

// ---- the account's fields ---------------------------------------------------------------------

void UserAccountTab::enableNumbers(bool logins, bool solotime)
{
    for (const QString& name : {options::txtUserLogins, options::sldUserLogins})
        m_screen[name].setEnabled(logins);
    for (const QString& name : {options::txtUserSolotime, options::sldUserSolotime})
        m_screen[name].setEnabled(solotime);
}

void UserAccountTab::rebuildRights()
{
    Control& list = m_screen[options::lstUserRights];
    Control& type = m_screen[options::cboUserType];
    list.clear();
    const auto fill = [&list](const QList<staff::Right>& rights) {
        for (const staff::Right& right : rights)
            list.addItem(right.caption);
        for (int position = 0; position < rights.size(); ++position)
            list.setSelected(position, rights[position].tickedWhenBuilt);
    };
    const QString kind = type.text().toUpper();
    if (staff::isBuiltIn(m_screen[options::txtUserName].text())) {
        for (const QString& name : {options::txtUserLogins, options::sldUserLogins, options::cboUserType})
            m_screen[name].setEnabled(false);
        fill(staff::builtInRights());
        list.setEnabled(false);
    } else if (kind == staff::Administrator) {
        for (const QString& name : {options::txtUserLogins, options::sldUserLogins})
            m_screen[name].setEnabled(false);
        type.setEnabled(true);
        list.setEnabled(true);
        fill(staff::rightsFor(kind));
    } else if (kind == staff::User || kind == staff::Viewer) {
        fill(staff::rightsFor(kind));
        for (const QString& name : {options::txtUserLogins, options::sldUserLogins})
            m_screen[name].setEnabled(true);
        m_screen[options::txtUserLogins].setText(DefaultLogins);
        type.setEnabled(true);
        list.setEnabled(true);
    }
}

void UserAccountTab::setType(const QString& type)
{
    Control& field = m_screen[options::cboUserType];
    // Putting back the same text changes nothing, so the list is built afresh here.
    if (field.text() == type)
        rebuildRights();
    else
        field.setText(type);
}

void UserAccountTab::leaveType()
{
    Control& type = m_screen[options::cboUserType];
    const QString text = type.text().toUpper();
    if (!blank(type.text())) {
        bool listed = false;
        for (const QString& item : type.items())
            listed = listed || item.toUpper() == text;
        if (!listed) {
            m_screen.platform().messageBox(QStringLiteral("The Value is not permitted!"), MsgStyle::Warning);
            type.setText(staff::User);
        }
    }
    rebuildRights();
}

void UserAccountTab::setTicks(const QList<bool>& ticks)
{
    Control& list = m_screen[options::lstUserRights];
    // A position the list does not have is passed over.
    for (int position = 0; position < ticks.size(); ++position)
        list.setSelected(position, ticks[position]);
}

QList<bool> UserAccountTab::ticks() const
{
    const Control& list = m_screen[options::lstUserRights];
    QList<bool> ticks;
    for (int position = 0; position < list.listCount(); ++position)
        ticks.append(list.selected(position));
    return ticks;
}

void UserAccountTab::lookUp()
{
    if (m_lookingUp || m_resetting)
        return;
    Control& name = m_screen[options::txtUserName];
    if (blank(name.text())) {
        reset();
        return;
    }
    const QScopedValueRollback guard(m_lookingUp, true);
    Recordset row;
    // A name that breaks the statement finds no account.
    const bool found = row.Open(Statement(QStringLiteral("Select * from Users where Username = '{}'"), {name.text()}),
                           m_screen.session().connection(),
                           CursorType::Static,
                           LockType::ReadOnly)
        && !row.Eof();
    if (found) {
        showAccount(row);
        return;
    }
    if (m_screen[options::cboUserType].text() != staff::User)
        m_screen[options::cboUserType].setText(staff::User);
    if (m_screen[options::txtUserSolotime].text() != DefaultSolotime)
        m_screen[options::txtUserSolotime].setText(DefaultSolotime);
}

void UserAccountTab::showAccount(const Recordset& row)
{
    Control& name = m_screen[options::txtUserName];
    const QString stored = row.value(QStringLiteral("Username")).toString();
    if (name.text() != stored)
        name.setText(stored);
    setType(row.value(QStringLiteral("Type")).toString());
    const QString kind = m_screen[options::cboUserType].text().toUpper();
    const auto column = [&row](const QString& field) { return row.value(field).toBool(); };
    const QString expire = row.value(QStringLiteral("Expire")).toString();
    const QString logins = values::isNumeric(expire) ? expire : DefaultLogins;
    const QString solotime = values::numberText(row.value(QStringLiteral("Solotime")).toDouble());
    Control& type = m_screen[options::cboUserType];
    if (staff::isBuiltIn(name.text())) {
        // A display only: these ticks are not the stored row's.
        setTicks({true, true, true, false, false, false, false, false, true, true});
        m_screen[options::txtUserLogins].setText(DefaultLogins);
        m_screen[options::txtUserSolotime].setText(DefaultLogins);
        enableNumbers(false, false);
        type.setEnabled(false);
    } else if (kind == staff::Administrator) {
        m_screen[options::txtUserLogins].setText(DefaultLogins);
        enableNumbers(false, true);
        m_screen[options::txtUserSolotime].setText(solotime);
        type.setEnabled(true);
        setTicks(staff::ticksOf(kind, column));
    } else if (kind == staff::User) {
        enableNumbers(true, true);
        m_screen[options::txtUserLogins].setText(logins);
        m_screen[options::txtUserSolotime].setText(solotime);
        type.setEnabled(true);
        setTicks(staff::ticksOf(kind, column));
    } else {
        // A viewer keeps the solotime the field shows.
        enableNumbers(true, false);
        m_screen[options::txtUserLogins].setText(logins);
        setTicks({!column(QStringLiteral("enabled"))});
        type.setEnabled(true);
    }
}

void UserAccountTab::reset()
{
    const QScopedValueRollback guard(m_resetting, true);
    m_screen[options::txtUserName].setText(QString());
    Control& type = m_screen[options::cboUserType];
    // Through VIEWER, so that the list is built again even when the type already was USER.
    type.setText(staff::Viewer);
    type.setText(staff::User);
    m_screen[options::txtUserPassword].setText(QString());
    m_screen[options::txtUserLogins].setText(DefaultLogins);
    m_screen[options::txtUserSolotime].setText(DefaultSolotime);
    m_screen[options::txtUserRetype].setText(QString());
}

void UserAccountTab::clickExistingUser()
{
    Control& users = m_screen[options::lstExistingUsers];
    const int index = users.listIndex();
    if (index < 0)
        return;
    Recordset row;
    const bool found
        = row.Open(Statement(QStringLiteral("Select * from Users where Username = '{}'"), {users.item(index)}),
              m_screen.session().connection(),
              CursorType::Static,
              LockType::ReadOnly)
        && !row.Eof();
    if (!found) {
        m_screen.platform().messageBox(QStringLiteral("Account doesn't exist!"), MsgStyle::Warning);
        return;
    }
    Control& name = m_screen[options::txtUserName];
    const QString stored = row.value(QStringLiteral("Username")).toString();
    // The same name again changes no text: the account is shown afresh all the same.
    if (name.text() == stored)
        lookUp();
    else
        name.setText(stored);
    m_screen.setFocus(name);
    clickRights();
}

void UserAccountTab::clickRights()
{
    const QString kind = m_screen[options::cboUserType].text().toUpper();
    const bool allocates = (kind == staff::User || kind == staff::Administrator)
        && m_screen[options::lstUserRights].listCount() > 0 && m_screen[options::lstUserRights].selected(0);
    for (const QString& name : {options::txtUserSolotime, options::sldUserSolotime})
        m_screen[name].setEnabled(allocates);
}

void UserAccountTab::leaveLogins()
{
    Control& logins = m_screen[options::txtUserLogins];
    QString warning;
    if (!values::isNumeric(logins.text()))
        warning = QStringLiteral("Expire number is not numerical!");
    else if (values::leadingNumber(logins.text()) < 0 || values::leadingNumber(logins.text()) > 999)
        warning = QStringLiteral("Expire number is between 0-999!");
    if (warning.isEmpty())
        return;
    m_screen.platform().messageBox(warning, MsgStyle::Warning);
    logins.setText(DefaultLogins);
    m_screen.setFocus(logins);
}

// ---- Add/Change and Remove --------------------------------------------------------------------

int UserAccountTab::existingUser(const QString& username) const
{
    const Control& users = m_screen[options::lstExistingUsers];
    for (int index = 0; index < users.listCount(); ++index) {
        if (users.item(index).toUpper() == username.toUpper())
            return index;
    }
    return -1;
}

void UserAccountTab::addChange()
{
    Platform& platform = m_screen.platform();
    const QString username = m_screen[options::txtUserName].text();
    const QString password = m_screen[options::txtUserPassword].text();
    const QString retyped = m_screen[options::txtUserRetype].text();
    if (blank(username) || blank(password) || blank(retyped) || blank(m_screen[options::cboUserType].text())) {
        platform.messageBox(QStringLiteral("Username or Password can't be Blank!"), MsgStyle::Warning);
        m_screen.setFocus(m_screen[options::txtUserName]);
        return;
    }
    if (password.toUpper() != retyped.toUpper()) {
        platform.messageBox(QStringLiteral("Password mismatch!"), MsgStyle::Warning);
        return;
    }
    if (password.size() > FieldLength) {
        platform.messageBox(QStringLiteral("Password can't be greater than 15 characters!"), MsgStyle::Warning);
        return;
    }
    if (existingUser(username) >= 0)
        change(username);
    else
        create(username);
}

void UserAccountTab::writeRights(Recordset& row, const QString& username, bool creation)
{
    const QString type = m_screen[options::cboUserType].text();
    row.setValue(QStringLiteral("Password"), m_screen[options::txtUserPassword].text().toUpper());
    row.setValue(QStringLiteral("Type"), type.toUpper());
    const staff::Save save = creation ? staff::Save::Creation : staff::Save::Change;
    for (const staff::ColumnValue& right : staff::rightsToWrite(username, type, ticks(), save))
        row.setValue(right.column, right.value);
    const double solotime = values::leadingNumber(m_screen[options::txtUserSolotime].text());
    const QString logins = m_screen[options::txtUserLogins].text();
    if (staff::isBuiltIn(username)) {
        row.setValue(QStringLiteral("Expire"), DefaultLogins);
        if (!creation) {
            row.setValue(QStringLiteral("Solotime"), 60);
            return;
        }
    }
    if (creation) {
        const QString kind = type.toUpper();
        if (kind == staff::Administrator || kind == staff::User || kind == staff::Viewer)
            row.setValue(QStringLiteral("Expire"), values::numberText(values::leadingNumber(logins)));
    } else {
        row.setValue(QStringLiteral("Expire"), logins);
    }
    row.setValue(QStringLiteral("Solotime"), solotime);
}

void UserAccountTab::change(const QString& username)
{
    Platform& platform = m_screen.platform();
    if (platform.messageBox(
            QStringLiteral("Account Already Exist, Change Properties?"), MsgStyle::YesNoQuestionNoDefault)
        != MsgResult::Yes)
        return;
    General& general = m_screen.session().general;
    general.GateUsername = username;
    general.PassMode = OldPasswordMode;
    m_screen.askPassword();
    if (general.PassMode == OldPasswordWrong) {
        platform.messageBox(QStringLiteral("Wrong Old Password for Account: ") + username + u'!', MsgStyle::Warning);
        return;
    }
    // Cancelled, or no answer at all: the account stays as it is.
    if (general.PassMode != OldPasswordRight)
        return;
    Recordset row;
    const bool found = row.Open(Statement(QStringLiteral("Select * from Users where Username = '{}'"),
                                    {general.GateUsername.toUpper()}),
                           m_screen.session().connection(),
                           CursorType::Static,
                           LockType::Optimistic)
        && !row.Eof();
    if (!found) {
        platform.messageBox(QStringLiteral("Account doesn't exist!"), MsgStyle::Warning);
    } else if (blank(m_screen[options::cboUserType].text())) {
        platform.messageBox(
            QStringLiteral("Account Information can't be completed!\r\nUpdated cancelled!"), MsgStyle::Warning);
    } else {
        writeRights(row, username, false);
        if (row.Update())
            platform.messageBox(QStringLiteral("Account Information has been Updated!"), MsgStyle::Info);
    }
    clearAfterChange();
    row.Close();
}

void UserAccountTab::clearAfterChange()
{
    m_screen[options::txtUserName].setText(QString());
    m_screen[options::txtUserPassword].setText(QString());
    m_screen[options::txtUserLogins].setText(QStringLiteral("0"));
    m_screen[options::txtUserSolotime].setText(DefaultSolotime);
    m_screen[options::cboUserType].setText(staff::User);
    m_screen[options::txtUserRetype].setText(QString());
}

void UserAccountTab::create(const QString& username)
{
    Recordset users;
    if (!users.Open(Statement(QStringLiteral("Select * from Users")),
            m_screen.session().connection(),
            CursorType::Static,
            LockType::Optimistic)
        || !users.AddNew())
        return;
    // The values are bound, never joined into a statement: a quote is stored as it was typed.
    users.setValue(QStringLiteral("Username"), username.toUpper());
    writeRights(users, username, true);
    if (!users.Update())
        return;
    m_screen[options::lstExistingUsers].addItem(username.toUpper());
    m_screen.platform().messageBox(
        QStringLiteral("User Account ") + username + QStringLiteral(" Created successfully!"), MsgStyle::Info);
    reset();
    users.Close();
    m_screen.setFocus(m_screen[options::txtUserPassword]);
}

void UserAccountTab::remove()
{
    Platform& platform = m_screen.platform();
    Control& name = m_screen[options::txtUserName];
    const QString username = name.text();
    if (blank(username)) {
        platform.messageBox(QStringLiteral("Username is blank!"), MsgStyle::Warning);
        m_screen.setFocus(name);
        return;
    }
    if (staff::isBuiltIn(username)) {
        platform.messageBox(QStringLiteral("Can't Delete this User Account!"), MsgStyle::Warning);
        return;
    }
    if (platform.messageBox(QStringLiteral("Delete User Account Account?"), MsgStyle::YesNoQuestionNoDefault)
        != MsgResult::Yes)
        return;
    const int entry = existingUser(username);
    if (entry < 0) {
        platform.messageBox(QStringLiteral("Account Don't Exist!"), MsgStyle::Warning);
        return;
    }
    Recordset row;
    const bool found
        = row.Open(Statement(QStringLiteral("Select * from Users where Username  = '{}'"), {username.toUpper()}),
              m_screen.session().connection(),
              CursorType::Static,
              LockType::Optimistic)
        && !row.Eof();
    if (!found) {
        platform.messageBox(QStringLiteral("User Account don't Exist!"), MsgStyle::Warning);
        return;
    }
    if (!row.Delete())
        return;
    m_screen[options::lstExistingUsers].removeItem(entry);
    platform.messageBox(
        QStringLiteral("User Account ") + username + QStringLiteral(" deleted Successfully!"), MsgStyle::Info);
    reset();
    row.Close();
}

// ---- the policies -----------------------------------------------------------------------------

void UserAccountTab::turnPolicy(Control& box, qint16 mode)
{
    // Loading shows the stored switch without a gate.
    if (!m_screen.tabLoaded(Flag) || !box.isChecked())
        return;
    General& general = m_screen.session().general;
    if (isSet(general.AdminPowered))
        return;
    general.PassMode = mode;
    m_screen.askPassword();
    if (general.PassMode == 0)
        box.setValue(CheckState::Unchecked);
}

void UserAccountTab::apply(Recordset& options)
{
    Platform& platform = m_screen.platform();
    General& general = m_screen.session().general;
    if (m_screen[options::chkAdministratorPower].isChecked()) {
        if (!isSet(general.AdminPowered)
            && platform.messageBox(QStringLiteral("The Administrator Powered is Enabled and will therefore permit only "
                                                  "the Administrator account to change passwords and access some "
                                                  "other features, Continue? "),
                   MsgStyle::YesNoQuestion)
                == MsgResult::Yes) {
            general.AdminPowered = flag(true);
            options.setValue(QStringLiteral("AdministratorPower"), true);
            platform.messageBox(QStringLiteral("Administrator Powered Enabled!"), MsgStyle::Info);
        }
    } else {
        general.AdminPowered = flag(false);
        options.setValue(QStringLiteral("AdministratorPower"), false);
    }
    if (m_screen[options::chkNoUser].isChecked()) {
        options.setValue(QStringLiteral("NoUser"), true);
        platform.messageBox(
            QStringLiteral("Two Administrator Accounts are required to generate tickets now!"), MsgStyle::Info);
    } else {
        options.setValue(QStringLiteral("NoUser"), false);
    }
}

} // namespace marlet
