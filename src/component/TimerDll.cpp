#include "component/TimerDll.h"

#include "component/ScreenRegistry.h"
#include "session/Session.h"
#include "store/Connection.h"

namespace marlet {

TimerDll::TimerDll(Session& session, ScreenRegistry& screens)
    : m_session(session)
    , m_screens(screens)
{
}

void TimerDll::openConnection(const QVariant& Cn1)
{
    // Continue-on-error: a connection that cannot open still lets the screen show, and a
    // connection left open by LoadGenAc makes this open fail quietly and stay as it stands.
    m_session.connection().Open(Cn1.toString());
}

void TimerDll::releaseConnection()
{
    if (m_session.general.SharedConnection && m_session.general.SharedConnection->State() == 1)
        m_session.general.SharedConnection->Close();
    m_session.general.SharedConnection.reset();
}

void TimerDll::takeGenerateArguments(const QString& App, const QString& User, qint16 tPower, const QString& Path)
{
    m_session.general.ServerPath = Path;
    m_session.general.CurrentStaff = User;
    m_session.general.AppTitle = App;
    m_session.general.AdminPowered = tPower;
}

void TimerDll::LoadAccountInfo(const QVariant& Cn1, const QString& App, const QString& TName)
{
    m_session.general.AppTitle = App;
    m_session.general.TicketName = TName;
    openConnection(Cn1);
    m_screens.show(Screen::AccountInfo);
    releaseConnection();
}

void TimerDll::LoadOptions(const QVariant& Cn1,
    const QString& App,
    const QString& User,
    qint16& tPower,
    qint16& ClientUp,
    qint16 TMax,
    const QString& Ports,
    const QString& TPortName,
    qint16 HideAccount)
{
    m_session.general.AdminPowered = tPower;
    m_session.general.CurrentStaff = User;
    m_session.general.AppTitle = App;
    m_session.general.MaxComputers = TMax;
    m_session.general.ServerPorts = Ports;
    m_session.general.ServerPortName = TPortName;
    m_session.general.ClientUp = 0;
    openConnection(Cn1);
    // Stored after the open: the screen's load step reads it.
    m_session.general.HideAccount = HideAccount;
    m_screens.show(Screen::Options);
    tPower = m_session.general.AdminPowered;
    ClientUp = m_session.general.ClientUp;
    releaseConnection();
}

void TimerDll::LoadGenAc(
    const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path)
{
    takeGenerateArguments(App, User, tPower, Path);
    openConnection(Cn1);
    m_screens.show(Screen::GenAcc);
    // The connection stays open on purpose; a later operation finds it as it stands.
}

void TimerDll::LoadGenAcc(
    const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path)
{
    takeGenerateArguments(App, User, tPower, Path);
    openConnection(Cn1);
    m_screens.show(Screen::GenPasstoAccs);
    releaseConnection();
}

void TimerDll::LoadRecycleBin(const QVariant& Cn1, const QString& App)
{
    m_session.general.AppTitle = App;
    openConnection(Cn1);
    m_screens.show(Screen::RecycleBin);
    releaseConnection();
}

void TimerDll::LoadAutoGen(
    const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path)
{
    LoadGenAcc(Cn1, App, User, tPower, Path);
}

} // namespace marlet
