#include "shell/TimerDll.h"

#include "platform/Form.h"
#include "shell/General.h"
#include "shell/Screens.h"
#include "store/Connection.h"

namespace marlet {

TimerDll::TimerDll(General& session)
    : m_session(session)
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
    if (m_session.SharedConnection && m_session.SharedConnection->State() == 1)
        m_session.SharedConnection->Close();
    m_session.SharedConnection.reset();
}

void TimerDll::showOnce(const QString& screen)
{
    std::unique_ptr<Form> form = createScreen(screen, m_session);
    form->showModal();
}

void TimerDll::showKept(const QString& screen)
{
    std::unique_ptr<Form>& slot = screen == QLatin1String("GenAcc") ? m_session.GenAcc : m_session.GenPasstoAccs;
    if (!slot)
        slot = createScreen(screen, m_session);
    slot->showModal();
}

void TimerDll::takeGenerateArguments(const QString& App, const QString& User, qint16 tPower, const QString& Path)
{
    m_session.ServerPath = Path;
    m_session.CurrentStaff = User;
    m_session.AppTitle = App;
    m_session.AdminPowered = tPower;
}

void TimerDll::LoadAccountInfo(const QVariant& Cn1, const QString& App, const QString& TName)
{
    m_session.AppTitle = App;
    m_session.TicketName = TName;
    openConnection(Cn1);
    showOnce(QStringLiteral("AccountInfo"));
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
    m_session.AdminPowered = tPower;
    m_session.CurrentStaff = User;
    m_session.AppTitle = App;
    m_session.MaxComputers = TMax;
    m_session.ServerPorts = Ports;
    m_session.ServerPortName = TPortName;
    m_session.ClientUp = 0;
    openConnection(Cn1);
    // Stored after the open: the screen's load step reads it.
    m_session.HideAccount = HideAccount;
    showOnce(QStringLiteral("Options"));
    tPower = m_session.AdminPowered;
    ClientUp = m_session.ClientUp;
    releaseConnection();
}

void TimerDll::LoadGenAc(const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path)
{
    takeGenerateArguments(App, User, tPower, Path);
    openConnection(Cn1);
    showKept(QStringLiteral("GenAcc"));
    // The connection stays open on purpose; a later operation finds it as it stands.
}

void TimerDll::LoadGenAcc(const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path)
{
    takeGenerateArguments(App, User, tPower, Path);
    openConnection(Cn1);
    showKept(QStringLiteral("GenPasstoAccs"));
    releaseConnection();
}

void TimerDll::LoadRecycleBin(const QVariant& Cn1, const QString& App)
{
    m_session.AppTitle = App;
    openConnection(Cn1);
    showOnce(QStringLiteral("RecycleBin"));
    releaseConnection();
}

void TimerDll::LoadAutoGen(const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path)
{
    LoadGenAcc(Cn1, App, User, tPower, Path);
}

} // namespace marlet
