#pragma once

#include "screens/OptionsTab.h"

#include <QList>
#include <QString>

namespace marlet {

class Options;

// The User Account page of the settings screen: staff accounts of table Users with their type and
// rights, written the moment Add/Change or Remove is pressed, and the two account policies of the
// Options row, which wait for Apply. A change of an existing account asks for its old password.
class UserAccountTab : public OptionsTab
{
public:
    explicit UserAccountTab(Options& screen);

    void build(Control& panel) override;
    void load() override;
    void apply(Recordset& options) override;

private:
    void buildAccountFields(Control& panel);
    void buildNumberFields(Control& panel);
    void buildLists(Control& panel);
    void buildPolicies(Control& panel);

    void rebuildRights();
    void setType(const QString& type);
    void leaveType();
    void lookUp();
    void showAccount(const Recordset& row);
    void reset();
    void clickExistingUser();
    void clickRights();
    void leaveLogins();
    void setTicks(const QList<bool>& ticks);
    QList<bool> ticks() const;
    void enableNumbers(bool logins, bool solotime);

    void addChange();
    void change(const QString& username);
    void create(const QString& username);
    void writeRights(Recordset& row, const QString& username, bool creation);
    void clearAfterChange();
    void remove();
    int existingUser(const QString& username) const;

    void turnPolicy(Control& box, qint16 mode);

    Options& m_screen;
    // The lookup puts the stored name back into the field, and Reset blanks it: neither may start
    // itself again through the field's change.
    bool m_lookingUp = false;
    bool m_resetting = false;
};

} // namespace marlet
