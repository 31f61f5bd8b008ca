#include "screens/MemberList.h"

#include "members/MemberDirectory.h"
#include "members/MemberListNames.h"
#include "screens/ScreenOpener.h"
#include "session/Session.h"

namespace marlet {

MemberList::MemberList(Session& session, ScreenOpener& screens)
    : Form(session.platform(), memberlist::FormName)
    , m_session(session)
    , m_screens(screens)
{
}

void MemberList::build()
{
    setCaption(QStringLiteral("Existing Members"));
    setSize(10800, 7800);
    const auto directory = [this] { return MemberDirectory(m_session, *this); };
    Control& grid = add(ControlKind::Grid, memberlist::memList);
    grid.onClick = [directory] { directory().rowClicked(); };
    add(ControlKind::Image, memberlist::mpicture2);

    Control& search = addLabelled(ControlKind::Frame, QStringLiteral("FrameSearch"), QStringLiteral("Find Members"));
    addToFrame(search, ControlKind::TextBox, memberlist::Text12, QStringLiteral("Search for:"));
    for (int i = 0; i < int(memberlist::SearchCaptions.size()); ++i)
        addLabelled(ControlKind::OptionButton, memberlist::Option7, memberlist::SearchCaptions[i], i)
            .setContainer(&search);
    addToFrame(search, ControlKind::CheckBox, memberlist::Check17, QStringLiteral("include Partial Match"));
    addToFrame(search, ControlKind::CommandButton, memberlist::Command19, QStringLiteral("Member Search")).onClick
        = [directory] { directory().search(); };

    addLabelled(ControlKind::CommandButton, memberlist::Command21, QStringLiteral("List All")).onClick
        = [directory] { directory().listAll(); };
    addLabelled(ControlKind::CommandButton, memberlist::Command22, QStringLiteral("Edit")).onClick = [this] { edit(); };
    addLabelled(ControlKind::CommandButton, memberlist::Command23, QStringLiteral("Delete")).onClick
        = [directory] { directory().deleteMember(); };
    addLabelled(ControlKind::CommandButton, memberlist::Command20, QStringLiteral("<< Back")).onClick
        = [this] { unload(); };

    onLoad = [this, directory] {
        directory().reset();
        if (m_searchName.isEmpty())
            return;
        (*this)[memberlist::Text12].setText(m_searchName);
        at(memberlist::Option7, memberlist::ByUsername).setValue(1);
        directory().search();
    };
}

void MemberList::edit()
{
    MemberDirectory directory(m_session, *this);
    const QString name = directory.memberToEdit();
    if (name.isEmpty())
        return;
    // Back from the record, the row shows what the store holds now.
    const QString current = m_screens.showMemberinfo(name);
    directory.refreshRow(current);
}

} // namespace marlet
