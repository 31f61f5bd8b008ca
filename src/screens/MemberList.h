#pragma once

#include "platform/Form.h"

namespace marlet {

class ScreenOpener;
class Session;

// The member directory: list and search members, see a member's picture, open a member's record,
// delete a member.
class MemberList : public Form
{
public:
    MemberList(Session& session, ScreenOpener& screens);

    // A user name to search for as the directory opens; empty for none.
    void setSearchName(const QString& username) { m_searchName = username; }

protected:
    void build() override;

private:
    void edit();

    Session& m_session;
    ScreenOpener& m_screens;
    QString m_searchName;
};

} // namespace marlet
