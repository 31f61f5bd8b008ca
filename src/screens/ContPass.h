#pragma once

#include "platform/Form.h"

namespace marlet {

class Session;

// Password gate in front of guarded settings: asks for one password and answers through the
// session's PassMode (0 check the staff or administrator password, 3 accept anything,
// 4 check the old password of GateUsername; 2, 5 and 6 are its answers).
class ContPass : public Form
{
public:
    explicit ContPass(Session& session);

protected:
    void build() override;

private:
    void ok();
    void cancel();
    // PassMode 0: the password of CurrentStaff, or of ADMINISTRATOR under Administrator power.
    void checkStaffPassword(const QString& entry);
    void checkOldPassword(const QString& entry);

    Session& m_session;
};

} // namespace marlet
