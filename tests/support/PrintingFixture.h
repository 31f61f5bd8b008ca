#pragma once

#include "component/Component.h"
#include "printing/TicketDocuments.h"
#include "screens/GenAcc.h"
#include "script/ScriptedPlatform.h"
#include "store/Preferences.h"
#include "store/Recordset.h"
#include "support/StoreTestDatabase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QVariantMap>

#include <memory>

namespace marlet::test {

// One ticket as a test writes it into Account; unset columns keep these values.
struct TicketSetup
{
    QString group = QStringLiteral("261121100000");
    int number = 1; // TicketNo "001"
    QString username;
    QString password = QStringLiteral("12345");
    double seconds = 3600;
    QString amount = QStringLiteral("N50");
    QVariant expire; // Null: no fixed date
    double days = 0;
    bool night = false;
    bool once = false;
    QTime start = QTime(0, 0);
    QTime end = QTime(6, 0);
    double quota = 0;
    QString byWhom = QStringLiteral("ADMINISTRATOR");
    QVariant autorecharge; // Null, as on batch tickets
    QVariant flexy; // Null, as on batch tickets
};

// The generate screen of a session on a fresh database, with its own preference file and
// application folder holding an empty ticket page, all on the scripted platform.
class PrintingFixture
{
    // First, so that they outlive the session and the screen.
    QTemporaryDir m_dir;
    StoreTestDatabase m_database;

public:
    PrintingFixture()
        : component(platform, m_dir.filePath(QStringLiteral("prefs")), m_dir.filePath(QStringLiteral("app")))
        , preferences(component.preferences())
        , session(component.session())
    {
        session.general.AppTitle = QStringLiteral("Norvantis");
        session.general.CurrentStaff = QStringLiteral("ADMINISTRATOR");
        if (m_database.isValid())
            session.connection().Open(m_database.connectionString());
        screen.reset(static_cast<GenAcc*>(component.screens().create(Screen::GenAcc).release()));
        screen->Form::load(); // builds the controls and runs the load step
    }

    bool isValid() { return m_dir.isValid() && m_database.isValid() && session.connection().State() == 1; }
    QString error() const { return m_database.error(); }
    Connection& store() { return m_database.connection(); }

    void setPreference(
        const QString& key, const QString& value, const QString& application = QStringLiteral("Norvantis"))
    {
        preferences.SaveSetting(application, QStringLiteral("Option"), key, value);
    }

    bool addTicket(const TicketSetup& t)
    {
        Recordset account;
        if (!account.Open(
                Statement(QStringLiteral("Select * from Account")), store(), CursorType::Static, LockType::Optimistic)
            || !account.AddNew())
            return false;
        const QDate created(2026, 11, 21);
        const QVariantMap values = {
            {QStringLiteral("TicketGrp"), t.group},
            {QStringLiteral("TicketNo"), QString::number(t.number).rightJustified(3, u'0')},
            {QStringLiteral("Username"), t.username},
            {QStringLiteral("Password"), t.password},
            {QStringLiteral("Time"), t.seconds},
            {QStringLiteral("BackTime"), t.seconds},
            {QStringLiteral("OrgTime"), t.seconds},
            {QStringLiteral("ByWhom"), t.byWhom},
            {QStringLiteral("Expire"), t.expire},
            {QStringLiteral("Days"), t.days},
            {QStringLiteral("DateCreated"), created},
            {QStringLiteral("LastUsed"), created},
            {QStringLiteral("Amount"), t.amount},
            {QStringLiteral("NEW"), true},
            {QStringLiteral("StartTime"), QDateTime(created, t.start)},
            {QStringLiteral("EndTime"), QDateTime(created, t.end)},
            {QStringLiteral("Member"), false},
            {QStringLiteral("Autorecharge"), t.autorecharge},
            {QStringLiteral("Flexy"), t.flexy},
            {QStringLiteral("Quota"), t.quota},
            {QStringLiteral("Night"), t.night},
            {QStringLiteral("Once"), t.once},
        };
        for (auto it = values.constBegin(); it != values.constEnd(); ++it) {
            if (!account.setValue(it.key(), it.value()))
                return false;
        }
        return account.Update();
    }

    // Tickets 1 to count of one group, named U<group's last digits><number>.
    bool addTickets(int count, TicketSetup setup = {})
    {
        store().executeNative(QStringLiteral("BEGIN"));
        bool ok = true;
        for (int i = 1; i <= count && ok; ++i) {
            setup.number = i;
            setup.username = QStringLiteral("USER%1").arg(i, 3, 10, QLatin1Char('0'));
            setup.password = QStringLiteral("P%1").arg(i, 4, 10, QLatin1Char('0'));
            ok = addTicket(setup);
        }
        store().executeNative(QStringLiteral("COMMIT"));
        return ok;
    }

    // The tickets of a group, read-only at the first row, as the writers get them.
    std::unique_ptr<Recordset> openGroup(const QString& group = QStringLiteral("261121100000"))
    {
        auto tickets = std::make_unique<Recordset>();
        tickets->Open(
            Statement(QStringLiteral("Select * From Account where TicketGrp = '{}'"), {group}), session.connection());
        return tickets;
    }

    QString pagePath() const { return ticketPagePath(session.applicationFolder()); }
    QByteArray pageBytes() const
    {
        QFile file(pagePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QString page() const { return QString::fromLatin1(pageBytes()); }

    ScriptedPlatform platform;
    Component component;
    Preferences& preferences;
    Session& session;
    std::unique_ptr<GenAcc> screen;
};

} // namespace marlet::test
