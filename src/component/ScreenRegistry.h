#pragma once

#include "screens/ScreenOpener.h"

#include <map>
#include <memory>

namespace marlet {

class Form;
class Session;

// The screens of the component.
enum class Screen { GenAcc, GenPasstoAccs, ContPass, Options, RecycleBin, AccountInfo, MemberList, Memberinfo };

// Makes the component's screens and keeps those that live as long as the component: GenAcc,
// GenPasstoAccs and ContPass are the same object each time they are shown, the others are made for
// the one showing. Screens that lead to others open them through this registry.
class ScreenRegistry : public ScreenOpener
{
public:
    explicit ScreenRegistry(Session& session);
    ~ScreenRegistry() override;

    // Shows the screen modally and returns when it has closed.
    void show(Screen screen);
    // A new object of the screen, for a caller that drives it itself.
    std::unique_ptr<Form> create(Screen screen);

    void showGenAcc() override;
    void showRecycleBin() override;
    void showContPass() override;
    void showMemberList(const QString& username) override;
    QString showMemberinfo(const QString& username) override;

private:
    static bool kept(Screen screen);
    // The weekday list of the generate screen's member tab, empty while that screen is not made.
    QString registrationWeekday() const;

    Session& m_session;
    std::map<Screen, std::unique_ptr<Form>> m_kept;
};

} // namespace marlet
