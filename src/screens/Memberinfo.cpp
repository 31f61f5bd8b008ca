#include "screens/Memberinfo.h"

#include "issuing/GenAccNames.h"
#include "members/MemberEditing.h"
#include "members/MemberRecord.h"
#include "members/MemberinfoNames.h"
#include "screens/MemberFields.h"
#include "session/Session.h"

namespace marlet {

Memberinfo::Memberinfo(Session& session, std::function<QString()> registrationWeekday)
    : Form(session.platform(), memberinfo::FormName)
    , m_session(session)
    , m_registrationWeekday(std::move(registrationWeekday))
{
}

QString Memberinfo::currentUsername() const
{
    return at(memberinfo::Label44, 0).caption();
}

void Memberinfo::build()
{
    setCaption(QStringLiteral("Member's Information"));
    setSize(10800, 7800);
    const auto work = [this] { return MemberEditing(m_session, *this, m_registrationWeekday); };
    Control& personal = addLabelled(ControlKind::Frame, memberinfo::Frame22, QStringLiteral("Personal Information"));
    Control& ticket = addLabelled(ControlKind::Frame, memberinfo::Frame28, QStringLiteral("Ticket Information"));
    buildMemberFields(*this, personal, ticket, m_session);
    buildSettings(addLabelled(ControlKind::Frame, memberinfo::Frame21, QStringLiteral("Member's Settings")));

    Control& save = addLabelled(ControlKind::CommandButton, memberinfo::Command27, QStringLiteral("Save"));
    save.onClick = [work] { work().save(); };
    addLabelled(ControlKind::CommandButton, memberinfo::Command28, QStringLiteral("Print")).onClick
        = [work] { work().print(); };
    addLabelled(ControlKind::CommandButton, memberinfo::Command26, QStringLiteral("Set Ticket Option ...")).onClick
        = [work] { work().toggleSettings(); };
    addLabelled(ControlKind::CommandButton, memberinfo::Command25, QStringLiteral("<< Back")).onClick = [this, work] {
        if (work().leave())
            unload();
    };

    // Any change of the record enables Save.
    const auto changed = [&save] { save.setEnabled(true); };
    for (int i = 0; i < MemberFieldCount; ++i) {
        if (i != TicketUsername && i < ExpireText)
            at(memberinfo::Text7, i).onChange = changed;
    }
    Control& items = (*this)[memberinfo::Combo7];
    const std::function<void()> itemRule = items.onClick;
    items.onClick = [itemRule, changed] {
        itemRule();
        changed();
    };
    for (int i = 0; i < 2; ++i)
        at(memberinfo::Option6, i).onClick = changed;
    for (const QString& name : {memberinfo::DateofBirth, memberinfo::DT7, memberinfo::DT8, memberinfo::Combo22})
        (*this)[name].onChange = changed;
    for (const QString& name : {memberinfo::Combo21, memberinfo::Combo22, memberinfo::Check18})
        (*this)[name].onClick = changed;

    onLoad = [this, work] { work().load(m_username); };
    // Closing the window is "<< Back": unsaved changes are asked about, and a refused save stays.
    onQueryUnload = [work](bool& cancel, int mode) {
        if (mode == UnloadMode::FormControlMenu)
            cancel = !work().leave();
    };
}

void Memberinfo::buildSettings(Control& frame)
{
    const auto work = [this] { return MemberEditing(m_session, *this, m_registrationWeekday); };
    Control& addDays
        = addToFrame(frame, ControlKind::ComboBox, memberinfo::Combo22, QStringLiteral("Add Expiration day(s):"));
    addDays.setEditable(true);
    for (int i = 0; i <= 365; ++i)
        addDays.addItem(QString::number(i));
    addDays.addItem(QStringLiteral("NVR"));
    Control& weekday
        = addToFrame(frame, ControlKind::ComboBox, memberinfo::Combo21, QStringLiteral("This Day of the Week:"));
    weekday.addItems(genacc::Weekdays);
    weekday.setListIndex(0);
    addToFrame(frame, ControlKind::CheckBox, memberinfo::Check18, QStringLiteral("Use ticket within Time Period"));
    addToFrame(frame, ControlKind::DateTimePicker, memberinfo::DT7, QStringLiteral("Start Time:"))
        .setCustomFormat(QStringLiteral("HH:mm"));
    addToFrame(frame, ControlKind::DateTimePicker, memberinfo::DT8, QStringLiteral("End Time:"))
        .setCustomFormat(QStringLiteral("HH:mm"));
    addToFrame(frame, ControlKind::CommandButton, memberinfo::Command29, QStringLiteral("Change Username")).onClick
        = [work] { work().changeUsername(); };
    addToFrame(frame, ControlKind::CommandButton, memberinfo::Command32, QStringLiteral("Change Password")).onClick
        = [work] { work().changePassword(); };
    addToFrame(frame, ControlKind::CommandButton, memberinfo::Command30, QStringLiteral("Autocharge Off")).onClick
        = [work] { work().toggleAutocharge(); };
    addToFrame(frame, ControlKind::CommandButton, memberinfo::Command31, QStringLiteral("Recharge Now")).onClick
        = [work] { work().rechargeNow(); };
}

} // namespace marlet
