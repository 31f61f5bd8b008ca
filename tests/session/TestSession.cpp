#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "script/ScriptedPlatform.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/Connection.h"
#include "store/Preferences.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;
using namespace Qt::StringLiterals;

namespace {

// The smallest screen that hosts long work: a grid, a text and a bar, and a panel that only counts
// how often it was shown and put away.
class CountingHost : public Form, public WorkHost
{
public:
    explicit CountingHost(Session& session)
        : Form(session.platform(), u"CountingHost"_s)
        , m_session(session)
    {
    }

    using Form::platform;

    Session& session() const override { return m_session; }
    Form& form() override { return *this; }
    void StartProgress() override { ++starts; }
    void EndProgress() override { ++ends; }
    void ProgressAdjust() override { }
    void setProgressText(const QString& text) override { (*this)[u"Text"_s].setCaption(text); }
    Control& progressBar() override { return (*this)[u"Bar"_s]; }
    Control& ticketGrid() override { return (*this)[u"Grid"_s]; }

    int starts = 0;
    int ends = 0;

protected:
    void build() override
    {
        add(ControlKind::Grid, u"Grid"_s).grid().setCols(2);
        add(ControlKind::Label, u"Text"_s);
        add(ControlKind::ProgressBar, u"Bar"_s).setRange(0, 10);
    }

private:
    Session& m_session;
};

} // namespace

// The session's rules over its variables, its services, and what every screen that hosts long work
// gets from the WorkHost interface itself.
class TestSession : public QObject
{
    Q_OBJECT

private slots:
    void testAdministratorIsRecognisedWhateverTheCase_data();
    void testAdministratorIsRecognisedWhateverTheCase();
    void testAdministratorPowerRestrictsOthersOnly_data();
    void testAdministratorPowerRestrictsOthersOnly();
    void testByWhomJoinsTheSecondApprover();
    void testServerFolderIsThePathUpToItsLastSeparator_data();
    void testServerFolderIsThePathUpToItsLastSeparator();
    void testConnectionIsMadeOnceAndReadsTheSessionClock();
    void testSettingsAreAddressedUnderTheTitle();
    void testWorkHostStepsTheBarAndEmptiesTheGrid();

private:
    struct Fixture
    {
        QTemporaryDir folder;
        ScriptedPlatform platform;
        Preferences preferences {folder.filePath(u"prefs"_s)};
        Session session {platform, preferences, folder.filePath(u"app"_s)};
    };
};

void TestSession::testAdministratorIsRecognisedWhateverTheCase_data()
{
    QTest::addColumn<QString>("staff");
    QTest::addColumn<bool>("administrator");

    QTest::newRow("the built-in name") << u"ADMINISTRATOR"_s << true;
    QTest::newRow("in lower case") << u"administrator"_s << true;
    QTest::newRow("another staff member") << u"CASHIER"_s << false;
    QTest::newRow("the name with a blank") << u"ADMINISTRATOR "_s << false;
    QTest::newRow("nobody") << QString() << false;
}

void TestSession::testAdministratorIsRecognisedWhateverTheCase()
{
    QFETCH(QString, staff);
    QFETCH(bool, administrator);
    General general;
    general.CurrentStaff = staff;
    QCOMPARE(general.isAdministrator(), administrator);
}

void TestSession::testAdministratorPowerRestrictsOthersOnly_data()
{
    QTest::addColumn<QString>("staff");
    QTest::addColumn<qint16>("power");
    QTest::addColumn<bool>("restricted");

    QTest::newRow("another staff member under the power") << u"CASHIER"_s << qint16(-1) << true;
    QTest::newRow("any value but 0 counts as set") << u"CASHIER"_s << qint16(1) << true;
    QTest::newRow("another staff member without the power") << u"CASHIER"_s << qint16(0) << false;
    QTest::newRow("the administrator under the power") << u"Administrator"_s << qint16(-1) << false;
}

void TestSession::testAdministratorPowerRestrictsOthersOnly()
{
    QFETCH(QString, staff);
    QFETCH(qint16, power);
    QFETCH(bool, restricted);
    General general;
    general.CurrentStaff = staff;
    general.AdminPowered = power;
    QCOMPARE(general.restrictedByAdminPower(), restricted);
}

void TestSession::testByWhomJoinsTheSecondApprover()
{
    General general;
    general.CurrentStaff = u"ADMINISTRATOR"_s;
    QCOMPARE(general.byWhom(), u"ADMINISTRATOR"_s);
    general.SecondStaff = u"BOSS"_s;
    QCOMPARE(general.byWhom(), u"ADMINISTRATOR & BOSS"_s);
}

void TestSession::testServerFolderIsThePathUpToItsLastSeparator_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");

    QTest::newRow("a Windows path") << u"C:\\Norvantis\\Server.exe"_s << u"C:\\Norvantis"_s;
    QTest::newRow("a path with slashes") << u"/opt/cafe/server"_s << u"/opt/cafe"_s;
    QTest::newRow("the last separator of either kind") << u"D:\\srv/bin\\x.exe"_s << u"D:\\srv/bin"_s;
    QTest::newRow("a bare program name") << u"Server.exe"_s << QString();
}

void TestSession::testServerFolderIsThePathUpToItsLastSeparator()
{
    QFETCH(QString, path);
    QFETCH(QString, folder);
    General general;
    general.ServerPath = path;
    QCOMPARE(general.serverFolder(), folder);
}

void TestSession::testConnectionIsMadeOnceAndReadsTheSessionClock()
{
    Fixture f;
    QVERIFY(!f.session.general.SharedConnection);
    Connection& connection = f.session.connection();
    QCOMPARE(&f.session.connection(), &connection);
    QCOMPARE(f.session.general.SharedConnection.get(), &connection);
    QCOMPARE(connection.State(), 0);

    const QDateTime morning(QDate(2026, 11, 24), QTime(9, 30));
    f.platform.setNow(morning);
    QCOMPARE(connection.now(), morning);
    f.platform.advance(60000);
    QCOMPARE(connection.now(), morning.addSecs(60));
}

void TestSession::testSettingsAreAddressedUnderTheTitle()
{
    Fixture f;
    f.session.general.AppTitle = u"CafeHost"_s;
    f.session.settings().save(keys::Currency, u"GHS"_s);
    QCOMPARE(f.preferences.GetSetting(u"CafeHost"_s, u"Option"_s, u"Currency"_s, QString()), u"GHS"_s);
    QCOMPARE(f.session.applicationFolder(), f.folder.filePath(u"app"_s));
}

void TestSession::testWorkHostStepsTheBarAndEmptiesTheGrid()
{
    Fixture f;
    CountingHost host(f.session);
    host.Form::load();
    WorkHost& work = host;
    QCOMPARE(&work.platform(), static_cast<Platform*>(&f.platform));

    work.stepProgress();
    work.stepProgress();
    QCOMPARE(work.progressBar().value(), 2);

    GridData& grid = work.ticketGrid().grid();
    grid.setFixedRows(1);
    grid.addItem(u"1\tA"_s);
    grid.addItem(u"2\tB"_s);
    grid.setColSel(1);
    work.resetTicketGrid();
    QCOMPARE(grid.rows(), 1);
    QCOMPARE(grid.colSel(), 0);
    QVERIFY(!work.StopRequested);
}

QTEST_GUILESS_MAIN(TestSession)
#include "TestSession.moc"
