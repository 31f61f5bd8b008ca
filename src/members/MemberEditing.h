#pragma once

#include <QString>

#include <functional>

namespace marlet {

class Form;
class Session;

// The work behind the member record screen: filling it from the store, Save with its checks and
// the rename path, leaving with unsaved changes, the four member commands and the print-out.
class MemberEditing
{
public:
    // `registrationWeekday` gives the weekday list of the generate screen's member tab, which Save
    // writes into Reday.
    MemberEditing(Session& session, Form& form, std::function<QString()> registrationWeekday);

    // Fills the record of a member ticket; false when the name is no member's.
    bool load(const QString& username);
    void save();
    // "<< Back": asks about unsaved changes; false when the screen stays (a check refused Save).
    bool leave();

    void changeUsername();
    void changePassword();
    void toggleAutocharge();
    void rechargeNow();
    void print();
    // "Set Ticket Option ..." and "<< Back to Ticket Info".
    void toggleSettings();

private:
    bool saveAccount(QString& group);
    bool saveMember(const QString& group);
    void setAutochargeState(bool on);
    bool warn(const QString& message) const;

    Session& m_session;
    Form& m_form;
    std::function<QString()> m_registrationWeekday;
};

} // namespace marlet
