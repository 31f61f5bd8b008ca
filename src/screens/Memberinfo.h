#pragma once

#include "platform/Form.h"

#include <functional>

namespace marlet {

class Session;

// The member record: a member's personal data, the ticket's information and the member's settings
// with their four commands, the picture, Save and Print. It opens on one member ticket.
class Memberinfo : public Form
{
public:
    Memberinfo(Session& session, std::function<QString()> registrationWeekday);

    // The member to show; set before the screen is shown.
    void setUsername(const QString& username) { m_username = username; }
    // The name the record stands under, after a rename too.
    QString currentUsername() const;

protected:
    void build() override;

private:
    void buildSettings(Control& frame);

    Session& m_session;
    std::function<QString()> m_registrationWeekday;
    QString m_username;
};

} // namespace marlet
