#include "component/Component.h"
#include "component/ScreenRegistry.h"
#include "desktop/FormBinder.h"
#include "desktop/FormDialog.h"
#include "desktop/views/ScreenViews.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Operator.h"
#include "screens/Memberinfo.h"
#include "script/ScriptedPlatform.h"
#include "support/ScreenDriver.h"
#include "support/StoreTestDatabase.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

namespace marlet {

using test::latin;

namespace {

// The widgets a view placed for the form's controls, and the captions beside its fields.
QList<QWidget*> placedWidgets(QWidget& window, const Form& form)
{
    QList<QWidget*> placed;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        if (!widget->isVisibleTo(&window) || name.isEmpty())
            continue;
        if (form.find(name) || name.endsWith(latin("Caption")))
            placed << widget;
    }
    return placed;
}

QString textOf(const QWidget* widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(widget))
        return box->title();
    return QString();
}

// What would spoil a picture: a control cut off by its frame or by the window, one squeezed below
// the size it needs to show its text, two that overlap.
QStringList layoutDefects(QWidget& window, const Form& form, const QStringList& inFront)
{
    QStringList defects;
    const QList<QWidget*> placed = placedWidgets(window, form);
    for (const QWidget* widget : placed) {
        const QString name = widget->objectName();
        if (!widget->parentWidget()->rect().contains(widget->geometry()))
            defects << name + latin(" is cut off");
        // Lists, buttons and labels show their whole text; other widgets may shrink to their minimum.
        const bool whole = qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractButton*>(widget)
            || qobject_cast<const QLabel*>(widget);
        const QSize needed = whole ? widget->sizeHint() : widget->minimumSizeHint();
        if (widget->width() < needed.width() || widget->height() < needed.height())
            defects << name + latin(" is squeezed: ") + textOf(widget);
    }
    for (qsizetype i = 0; i < placed.size(); ++i) {
        for (qsizetype j = i + 1; j < placed.size(); ++j) {
            const QWidget* a = placed.at(i);
            const QWidget* b = placed.at(j);
            if (inFront.contains(a->objectName()) || inFront.contains(b->objectName()))
                continue;
            if (a->parentWidget() == b->parentWidget() && a->geometry().intersects(b->geometry()))
                defects << a->objectName() + latin(" overlaps ") + b->objectName();
        }
    }
    return defects;
}

// Controls whose widget the view left out: the binder keeps them out of sight.
QStringList unplaced(FormDialog& dialog)
{
    QStringList names;
    if (const QWidget* holder = dialog.findChild<QWidget*>(latin("unplacedControls"))) {
        for (const QWidget* widget : holder->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            names << widget->objectName();
    }
    return names;
}

} // namespace

// Every screen with a hand-made view, rendered in its states on the offscreen platform: each must
// place all of its controls, none cut off, squeezed or overlapping. With MARLET_SCREENS_DIR set the
// pictures are kept there (tools/screenshots writes docs/screens this way).
class TestScreensPictures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void testContPass();
    void testGenPasstoAccsBothLayouts();
    void testGenAccTabs();
    void testGenAccQuickTicket();
    void testOptionsGeneral();
    void testOptionsClientOption();
    void testOptionsUserAccount();
    void testOptionsTicketSetting();
    void testOptionsQuickTicket();
    void testOptionsIncludeExclude();
    void testOptionsMonitorPosAutomationMaintenance();
    void testRecycleBin();
    void testAccountInfo();
    void testMembers();

private:
    // Shows the form's window, checks its layout and keeps a picture of it.
    void render(Form& form, const QString& fileName, const QStringList& inFront = {});
    std::unique_ptr<Form> open(Screen screen);
    void generate(Form& screen, int number);
    Session& session() { return m_component->session(); }

    QTemporaryDir m_pictures;
    QString m_folder;
    std::unique_ptr<QTemporaryDir> m_prefs;
    std::unique_ptr<test::StoreTestDatabase> m_database;
    std::unique_ptr<ScriptedPlatform> m_platform;
    std::unique_ptr<Component> m_component;
    QMap<QString, QSize> m_sizes;
};

void TestScreensPictures::initTestCase()
{
    registerScreenViews();
    m_folder = qEnvironmentVariableIsSet("MARLET_SCREENS_DIR") ? qEnvironmentVariable("MARLET_SCREENS_DIR")
                                                               : m_pictures.path();
    QVERIFY(QDir().mkpath(m_folder));
}

void TestScreensPictures::init()
{
    m_prefs = std::make_unique<QTemporaryDir>();
    m_database = std::make_unique<test::StoreTestDatabase>();
    QVERIFY2(m_database->isValid(), qPrintable(m_database->error()));
    m_platform = std::make_unique<ScriptedPlatform>();
    m_platform->setNow(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
    m_component
        = std::make_unique<Component>(*m_platform, m_prefs->filePath(latin("prefs")), m_prefs->filePath(latin("app")));
    session().general.AppTitle = latin("Norvantis");
    session().general.CurrentStaff = latin("ADMINISTRATOR");
    QVERIFY(session().connection().Open(m_database->connectionString()));
}

void TestScreensPictures::cleanup()
{
    m_platform->finish();
    QCOMPARE(m_platform->failures(), QStringList());
    m_component.reset();
    m_platform.reset();
    m_database.reset();
}

std::unique_ptr<Form> TestScreensPictures::open(Screen screen)
{
    std::unique_ptr<Form> form = m_component->screens().create(screen);
    form->load();
    form->activate();
    return form;
}

void TestScreensPictures::render(Form& form, const QString& fileName, const QStringList& inFront)
{
    FormDialog dialog(form);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    // Pending grid and layout changes reach the view.
    QCoreApplication::processEvents();
    // The offscreen screen is small, and a window opens no larger than two thirds of the screen:
    // the picture shows the window at the size it takes on a desktop of today.
    dialog.resize(dialog.sizeHint());
    QCoreApplication::processEvents();
    // A page that a screen showed before its window opened settles its size only now.
    if (dialog.width() < dialog.sizeHint().width()) {
        dialog.resize(dialog.sizeHint());
        QCoreApplication::processEvents();
    }
    const QStringList left = unplaced(dialog);
    QVERIFY2(left.isEmpty(), qPrintable(latin("not placed: ") + left.join(latin(", "))));
    const QStringList defects = layoutDefects(dialog, form, inFront);
    QVERIFY2(defects.isEmpty(), qPrintable(defects.join(latin(", "))));
    m_sizes.insert(fileName, dialog.size());
    QVERIFY(dialog.grab().save(QDir(m_folder).filePath(fileName), "PNG"));
}

void TestScreensPictures::testContPass()
{
    std::unique_ptr<Form> gate = open(Screen::ContPass);
    render(*gate, latin("ContPass.png"));
    gate->forceUnload();
}

void TestScreensPictures::testGenPasstoAccsBothLayouts()
{
    std::unique_ptr<Form> one = open(Screen::GenPasstoAccs);
    QVERIFY(!(*one)[latin("Frame2")].visible());
    render(*one, latin("GenPasstoAccs.png"));
    one->forceUnload();

    QVERIFY(m_database->connection().Execute(Statement(latin("UPDATE Options SET NoUser = true"))));
    std::unique_ptr<Form> two = open(Screen::GenPasstoAccs);
    QVERIFY((*two)[latin("Frame2")].visible());
    render(*two, latin("GenPasstoAccs-two-logins.png"));
    // The second frame makes the window taller, not wider.
    const QSize oneSize = m_sizes.value(latin("GenPasstoAccs.png"));
    const QSize twoSize = m_sizes.value(latin("GenPasstoAccs-two-logins.png"));
    QVERIFY(!oneSize.isEmpty());
    QCOMPARE(twoSize.width(), oneSize.width());
    QVERIFY(twoSize.height() > oneSize.height());
}

void TestScreensPictures::generate(Form& screen, int number)
{
    Operator::setText(screen[latin("cboNumber")], QString::number(number));
    Operator::setText(screen[latin("cboHours")], latin("1"));
    m_platform->expectMessage(latin("You have choosen to Generate ") + QString::number(number)
            + latin(" number(s) of 1hour(s) 0min(s)' Ticket(s) of Cost N50 with Expiration "
                    "Date of 5 days, Continue?"),
        MsgStyle::YesNoQuestionNoDefault,
        MsgResult::Yes);
    m_platform->expectMessage(
        latin("And Print Preview Ticket(s) with Large Print? "), MsgStyle::YesNoCancelQuestion, MsgResult::No);
    m_platform->expectMessage(latin("Ticket Generation Completed Successfully!"), MsgStyle::Info);
    QVERIFY(Operator::click(screen[latin("cmdGenerate")]));
}

void TestScreensPictures::testGenAccTabs()
{
    std::unique_ptr<Form> screen = open(Screen::GenAcc);
    // The panel in front of the frames while the batch runs: yields 1 and 2 belong to the panel,
    // then one a ticket.
    m_platform->atYield(6, [this, &screen] { render(*screen, latin("GenAcc-progress.png"), {latin("FProgress")}); });
    generate(*screen, 8);
    QCOMPARE((*screen)[latin("PrintList")].grid().rows(), 9);

    const char* pictures[] = {
        "GenAcc-new.png", "GenAcc-custom.png", "GenAcc-membership.png", "GenAcc-existing.png", "GenAcc-settings.png"};
    Control& tabs = (*screen)[latin("TabStrip1")];
    for (int tab = 1; tab <= 5; ++tab) {
        QVERIFY(Operator::chooseTab(tabs, tab));
        if (tab == 4) {
            QVERIFY(Operator::click((*screen)[latin("Option2")]));
            QVERIFY(Operator::click((*screen)[latin("Command2")]));
        }
        render(*screen, latin(pictures[tab - 1]));
    }
    QVERIFY(QFile::exists(QDir(m_folder).filePath(latin("GenAcc-progress.png"))));
    // Every tab in a window of the same size.
    for (const char* picture : pictures)
        QCOMPARE(m_sizes.value(latin(picture)), m_sizes.value(latin(pictures[0])));
    screen->forceUnload();
}

void TestScreensPictures::testGenAccQuickTicket()
{
    QVERIFY(m_database->connection().Execute(
        Statement(latin("INSERT INTO QuickT (TicketType) Values ('60min(s) - N50 [Time Ticket]')"))));
    session().settings().save(keys::QuickTicket, latin("1"));
    std::unique_ptr<Form> screen = open(Screen::GenAcc);
    QVERIFY((*screen)[latin("FQuick")].visible());
    QVERIFY(!(*screen)[latin("FManual")].visible());
    render(*screen, latin("GenAcc-quick-ticket.png"));
    screen->forceUnload();
}

void TestScreensPictures::testOptionsGeneral()
{
    session().general.ServerPorts = latin("192.168.0.10");
    std::unique_ptr<Form> screen = open(Screen::Options);
    QVERIFY((*screen)[latin("FGeneral")].visible());
    // The custom bind shows the text box white and editable.
    QVERIFY(Operator::pick((*screen)[latin("cboBindType")], latin("CUSTOM SETTING")));
    render(*screen, latin("options-general.png"));
    screen->forceUnload();
}

void TestScreensPictures::testOptionsClientOption()
{
    QVERIFY(m_database->connection().Execute(
        Statement(latin("INSERT INTO RestrictDisallow (Name, Type) Values ('winword.exe', true)"))));
    QVERIFY(m_database->connection().Execute(
        Statement(latin("INSERT INTO RestrictDisallow (Name, Type) Values ('poker.exe', false)"))));
    QVERIFY(m_database->connection().Execute(Statement(latin("INSERT INTO Capt (Caption) Values ('CASINO')"))));
    session().settings().save(keys::Colour, latin("3381759"));
    std::unique_ptr<Form> screen = open(Screen::Options);
    Form& options = *screen;
    QVERIFY(Operator::chooseTab(options[latin("TabStrip1")], 3));
    QVERIFY(options[latin("FClientOption")].visible());
    // The browser limit picked: its explanation with the number of browsers beside it.
    QVERIFY(Operator::pick(options[latin("lstClientSettings")], 49));
    QVERIFY(options[latin("cboBrowsers")].visible());
    render(options, latin("options-client-option.png"));
    QVERIFY(Operator::click(options[latin("cmdProgramRestriction")]));
    QVERIFY(options[latin("FProgramRestriction")].visible());
    QVERIFY(!options[latin("FClientSettings")].visible());
    render(options, latin("options-program-restriction.png"));
    QVERIFY(Operator::click(options[latin("cmdProgramBack")]));
    QVERIFY(Operator::click(options[latin("cmdSiteRestriction")]));
    QCOMPARE(options[latin("lstCaptions")].listCount(), 1);
    render(options, latin("options-site-restriction.png"));
    // Every page in a window of the same size.
    QCOMPARE(
        m_sizes.value(latin("options-program-restriction.png")), m_sizes.value(latin("options-client-option.png")));
    QCOMPARE(m_sizes.value(latin("options-site-restriction.png")), m_sizes.value(latin("options-client-option.png")));
    screen->forceUnload();
}

void TestScreensPictures::testOptionsUserAccount()
{
    QVERIFY(m_database->connection().Execute(Statement(
        latin("INSERT INTO Users (Username, Password, Type, Solotime, Expire, Allocate, enabled) Values ('CLERK', "
              "'PW', 'USER', 90, '25', true, true)"))));
    std::unique_ptr<Form> screen = open(Screen::Options);
    QVERIFY(Operator::chooseTab((*screen)[latin("TabStrip1")], 2));
    QVERIFY((*screen)[latin("FUserAccount")].visible());
    QVERIFY(Operator::pick((*screen)[latin("lstExistingUsers")], latin("CLERK")));
    QCOMPARE((*screen)[latin("lstUserRights")].listCount(), 7);
    render(*screen, latin("options-user-account.png"));
    screen->forceUnload();
}

void TestScreensPictures::testOptionsTicketSetting()
{
    std::unique_ptr<Form> screen = open(Screen::Options);
    QVERIFY(Operator::chooseTab((*screen)[latin("TabStrip1")], 4));
    QVERIFY((*screen)[latin("FTicketSetting")].visible());
    QVERIFY(Operator::tick((*screen)[latin("chkExternalData")], true));
    render(*screen, latin("options-ticket-setting.png"));
    screen->forceUnload();
}

void TestScreensPictures::testOptionsQuickTicket()
{
    QVERIFY(m_database->connection().Execute(
        Statement(latin("INSERT INTO QuickT (TicketType) Values ('60min(s) - N50 [Time Ticket]')"))));
    std::unique_ptr<Form> screen = open(Screen::Options);
    QVERIFY(Operator::chooseTab((*screen)[latin("TabStrip1")], 8));
    QVERIFY((*screen)[latin("FQuickTicket")].visible());
    Operator::setText((*screen)[latin("cboQuickTime")], latin("30"));
    Operator::setText((*screen)[latin("cboQuickCost")], latin("20"));
    QVERIFY(Operator::tick((*screen)[latin("chkQuickVIP")], true));
    QVERIFY(Operator::click((*screen)[latin("cmdAddQuickTicket")]));
    QCOMPARE((*screen)[latin("lstQuickTickets")].item(1), latin("30min(s) - N20 [Normal Ticket] - VIP"));
    render(*screen, latin("options-quick-ticket.png"));
    screen->forceUnload();
}

void TestScreensPictures::testOptionsIncludeExclude()
{
    QVERIFY(m_database->connection().Execute(Statement(
        latin("INSERT INTO Restriction (ComputerName, Times, User) Values ('PC-01', now, 'ADMINISTRATOR')"))));
    QVERIFY(m_database->connection().Execute(
        Statement(latin("INSERT INTO RClient (ComputerName, Times, User) Values ('VIP-01', now, 'ADMINISTRATOR')"))));
    session().settings().save(keys::SelClient, latin("1"));
    session().general.MaxComputers = 6;
    QVERIFY(m_database->connection().Execute(
        Statement(latin("INSERT INTO Cafe (Cafename, SystemName) Values (2, 'FRONT-PC')"))));
    std::unique_ptr<Form> screen = open(Screen::Options);
    QVERIFY(Operator::chooseTab((*screen)[latin("TabStrip1")], 9));
    QVERIFY((*screen)[latin("FIncludeExclude")].visible());
    QVERIFY((*screen)[latin("lstReserved")].enabled());
    QCOMPARE((*screen)[latin("lstCafes")].item(0), latin("Cafe2 - [FRONT-PC]"));
    render(*screen, latin("options-include-exclude.png"));
    screen->forceUnload();
}

void TestScreensPictures::testOptionsMonitorPosAutomationMaintenance()
{
    m_platform->setPrinters({latin("Office Laser")});
    m_platform->setDefaultPrinter(latin("PDF"));
    session().settings().save(keys::PrintBtype, latin("0"));
    session().settings().save(keys::EnablePrint, latin("1"));
    session().settings().save(keys::PingDisabled, latin("0"));
    std::unique_ptr<Form> screen = open(Screen::Options);
    Control& tabs = (*screen)[latin("TabStrip1")];
    QVERIFY(Operator::chooseTab(tabs, 7));
    QVERIFY((*screen)[latin("FPrintMonitor")].visible());
    QVERIFY(Operator::tick((*screen)[latin("chkUserPrint")], true));
    render(*screen, latin("options-print-monitor.png"));
    QVERIFY(Operator::chooseTab(tabs, 10));
    render(*screen, latin("options-pos.png"));
    QVERIFY(Operator::chooseTab(tabs, 5));
    QVERIFY(Operator::tick((*screen)[latin("chkPingPause")], true));
    QVERIFY(Operator::tick((*screen)[latin("chkMOffline")], true));
    render(*screen, latin("options-automated-action.png"));
    QVERIFY(Operator::chooseTab(tabs, 6));
    render(*screen, latin("options-maintenance.png"));
    // Every page in a window of the same size.
    for (const char* picture : {"options-pos.png", "options-automated-action.png", "options-maintenance.png"})
        QCOMPARE(m_sizes.value(latin(picture)), m_sizes.value(latin("options-print-monitor.png")));
    screen->forceUnload();
}

void TestScreensPictures::testRecycleBin()
{
    const char* const names[] = {"AAA0000001", "BBB0000002", "CCC0000003", "DDD0000004", "EEE0000005"};
    for (const char* name : names) {
        QVERIFY(m_database->connection().Execute(
            Statement(latin("INSERT INTO RecycleBin (TicketGrp, TicketNo, Username, Password, Time, OrgTime, ByWhom, "
                            "Days, DateCreated, Amount, LastUsed, NEW, ComputerUsed, AccountAdded, NoAdded, Member, "
                            "Night, Once, TotalTimeUsed, DateTimeDeleted, Reason) Values ('261101080000', '001', '{}', "
                            "'PW', 5430, 9000, 'ADMINISTRATOR', 0, '2026-11-01', 'N200', '2026-11-14', false, 'PC-04', "
                            "'RECHARGED', 1, false, false, false, 60, '16/11/26/09:05', 'Deleted by User.')"),
                      {latin(name)})));
    }
    std::unique_ptr<Form> screen = open(Screen::RecycleBin);
    Control& list = (*screen)[latin("List1")];
    QCOMPARE(list.listCount(), 5);
    QVERIFY(Operator::pick(list, 3));
    QVERIFY(Operator::pick(list, 1));
    render(*screen, latin("recycle-bin.png"));
    screen->forceUnload();
}

void TestScreensPictures::testAccountInfo()
{
    QVERIFY(m_database->connection().Execute(Statement(
        latin("INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, OrgTime, ByWhom, Expire, Days, "
              "DateCreated, Amount, LastUsed, NEW, StartTime, EndTime, ComputerUsed, AccountAdded, NoAdded, POS, "
              "Member, Autorecharge, Night, Once, TotalTimeUsed, TimeLastUsed, NoLogIn, Print) Values "
              "('261101080000', '007', 'AAA0000007', 'PW', 5430, 3600, 'ADMINISTRATOR', '2026-12-31', 0, "
              "'2026-11-01', 'N200', '2026-11-14', false, '1899-12-30 22:00:00', '1899-12-30 06:30:00', 'PC-04', "
              "'RECHARGED', 1, false, false, 'NONE', true, false, 30, '09:15 PM', 4, 2)"))));
    session().general.TicketName = latin("AAA0000007");
    std::unique_ptr<Form> screen = open(Screen::AccountInfo);
    QCOMPARE((*screen)[latin("Label2")].caption(), latin("Ticket found in main Ticket database."));
    render(*screen, latin("account-info.png"));
    screen->forceUnload();
}

// A member's picture as a camera would give it: a head and shoulders on a light background.
static QByteArray portrait()
{
    QImage image(240, 280, QImage::Format_RGB32);
    image.fill(QColor(0xdd, 0xe6, 0xf0));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x4a, 0x5d, 0x7e));
    painter.drawEllipse(QRect(40, 190, 160, 180));
    painter.setBrush(QColor(0xc8, 0x9f, 0x7c));
    painter.drawEllipse(QRect(75, 60, 90, 110));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

void TestScreensPictures::testMembers()
{
    session().general.ServerPath = m_prefs->filePath(latin("server/Server.exe"));
    QVERIFY(QDir().mkpath(m_prefs->filePath(latin("server/pic"))));
    QFile file(m_prefs->filePath(latin("server/pic/261101090000SM")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QByteArray photo = portrait();
    file.write(photo);
    file.close();
    const char* const members[][6] = {
        {"261101090000", "ADA01", "Smith", "Ada", "ada@example.com", "261101090000SM"},
        {"261102090000", "BEN02", "Okafor", "Ben", "ben@mail.ng", "261102090000OK"},
        {"261103090000", "CHI03", "Eze", "Chioma", "chioma@eze.ng", "261103090000EZ"},
    };
    for (const auto& member : members) {
        QVERIFY(m_database->connection().Execute(
            Statement(latin("INSERT INTO Account (TicketGrp, TicketNo, Username, Password, Time, Days, Expire, "
                            "DateCreated, NEW, Member, Amount, Autorecharge, Reday, Retime, Night, StartTime, EndTime) "
                            "Values ('{}', '000', '{}', 'PW', 6000, 0, '2026-12-24', '2026-11-01', true, true, 'N200', "
                            "'7 day(s)', 'MON - FRI (WEEKDAY)', '3 hour(s)', true, '2026-11-01 08:00:00', "
                            "'2026-11-01 17:30:00')"),
                {latin(member[0]), latin(member[1])})));
        QVERIFY(m_database->connection().Execute(
            Statement(latin("INSERT INTO Members (Member_ID, Surname, Firstname, title, Othername, DateofBirth, "
                            "Company, Occupation, Address, State, Country, Telephone, Identification_item, "
                            "Identication_no, SpecifyOrder, Email, Sex, Picture) Values ('{}', '{}', '{}', 'Mrs', "
                            "'Lovelace', '1990-05-01', 'Analytical Ltd', 'Engineer', '12 Long Road', 'Lagos', "
                            "'Nigeria', '0801234567', 'Passport No.', 'A1234567', '', '{}', '1', '{}')"),
                {latin(member[0]), latin(member[2]), latin(member[3]), latin(member[4]), latin(member[5])})));
    }

    // The generate screen's member page, between the two steps.
    std::unique_ptr<Form> screen = open(Screen::GenAcc);
    QVERIFY(Operator::chooseTab((*screen)[latin("TabStrip1")], 3));
    Operator::setText((*screen)[latin("txtMemberUsername")], latin("DAVE04"));
    Operator::setText((*screen)[latin("txtMemberPassword")], latin("PW4"));
    QVERIFY(Operator::click((*screen)[latin("cmdCreateMember")]));
    QVERIFY((*screen)[latin("FMemberPage")].visible());
    Operator::setText(screen->at(latin("Text7"), 0), latin("Adeyemi"));
    Operator::setText(screen->at(latin("Text7"), 1), latin("Dave"));
    render(*screen, latin("GenAcc-member-page.png"));
    screen->forceUnload();

    // The directory, listed, with the first member's picture.
    std::unique_ptr<Form> list = open(Screen::MemberList);
    QVERIFY(Operator::click((*list)[latin("Command21")]));
    QCOMPARE((*list)[latin("memList")].grid().rows(), 4);
    Operator::clickGrid((*list)[latin("memList")], 3, 1, MouseButton::Left);
    QCOMPARE((*list)[latin("mpicture2")].picture(), photo);
    render(*list, latin("MemberList.png"));
    list->forceUnload();

    // The record, with its ticket information and then its settings.
    std::unique_ptr<Form> record = m_component->screens().create(Screen::Memberinfo);
    static_cast<Memberinfo&>(*record).setUsername(latin("ADA01"));
    record->load();
    record->activate();
    QCOMPARE((*record)[latin("mPicture")].picture(), photo);
    render(*record, latin("Memberinfo.png"));
    QVERIFY(Operator::click((*record)[latin("Command26")]));
    QVERIFY((*record)[latin("Frame21")].visible());
    render(*record, latin("Memberinfo-settings.png"));
    record->forceUnload();
}

} // namespace marlet

QTEST_MAIN(marlet::TestScreensPictures)
#include "TestScreensPictures.moc"
