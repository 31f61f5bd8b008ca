#pragma once

#include "platform/Form.h"

namespace marlet {

class ScreenOpener;
class Session;
class Recordset;

// The gate in front of the generate screen: one administrator login, or two when the shared
// option NoUser asks for a second approver. On success it opens the generate screen itself.
class GenPasstoAccs : public Form
{
public:
    GenPasstoAccs(Session& session, ScreenOpener& screens);

protected:
    void build() override;

private:
    void buildFrame(int number);
    void layOut();
    void ok();
    // Checks the first login; false when the routine has to stop.
    bool checkFirst(Recordset& users);
    bool checkSecond(Recordset& users);
    // Looks a staff name up; false when the lookup itself failed.
    bool lookUp(Recordset& users, const QString& name);
    // Shows a refusal and puts the focus where the operator has to correct it.
    void refuse(const QString& message, Control* focusTarget = nullptr);
    // "Wrong Password!", after the pause that repeated wrong passwords cost.
    void refuseWrongPassword(Control& password);
    // Refuses an account whose "Disable User's Account" is ticked; false when it is enabled.
    bool refusedAsDisabled(Recordset& users, Control& focusTarget);
    bool secondShown() const;

    Session& m_session;
    ScreenOpener& m_screens;
};

} // namespace marlet
