#pragma once

#include <QString>
#include <QVariant>

namespace marlet {

class ScreenRegistry;
class Session;

// The component's public class: six entry operations, each one complete administrative session.
// An operation copies its arguments into the session, opens the shared connection, shows one
// modal screen and returns when it closes. Flags are 16-bit, -1 true and 0 false.
class TimerDll
{
public:
    TimerDll(Session& session, ScreenRegistry& screens);

    void LoadAccountInfo(const QVariant& Cn1, const QString& App, const QString& TName);
    // tPower goes in and comes back; ClientUp comes back.
    void LoadOptions(const QVariant& Cn1,
        const QString& App,
        const QString& User,
        qint16& tPower,
        qint16& ClientUp,
        qint16 TMax,
        const QString& Ports,
        const QString& TPortName,
        qint16 HideAccount);
    // Shows the generate screen without a gate and leaves the connection open on return.
    void LoadGenAc(const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path);
    void LoadGenAcc(const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path);
    void LoadRecycleBin(const QVariant& Cn1, const QString& App);
    // A second name of LoadGenAcc, step for step.
    void LoadAutoGen(const QVariant& Cn1, const QString& App, const QString& User, qint16 tPower, const QString& Path);

private:
    void takeGenerateArguments(const QString& App, const QString& User, qint16 tPower, const QString& Path);
    // Creates the connection if needed and opens it; an open on an open connection fails quietly.
    void openConnection(const QVariant& Cn1);
    // Closes the connection if open and releases it, so the next session creates a new one.
    void releaseConnection();
    Session& m_session;
    ScreenRegistry& m_screens;
};

} // namespace marlet
