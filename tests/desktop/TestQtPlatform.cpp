#include "desktop/ComponentRegistry.h"
#include "desktop/FormDialog.h"
#include "desktop/InputBoxDialog.h"
#include "desktop/QtPlatform.h"
#include "desktop/QtSerialPort.h"
#include "desktop/Units.h"
#include "platform/Form.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <functional>
#include <memory>

namespace marlet {

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

// Waits for a modal window of type T (with the given object name, if any) to come up, then acts
// on it. A window that never comes is reported, and whatever modal window is up is closed, so
// the test ends instead of hanging.
template<typename T>
void whenModal(std::function<void(T&)> act, bool& missed, const QString& name = QString())
{
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [timer, act, tries, name, &missed] {
        QWidget* top
            = QApplication::activePopupWidget() ? QApplication::activePopupWidget() : QApplication::activeModalWidget();
        T* window = qobject_cast<T*>(top);
        if (window && (name.isEmpty() || window->objectName() == name)) {
            timer->deleteLater();
            timer->stop();
            act(*window);
        } else if (++*tries > 300) {
            timer->deleteLater();
            timer->stop();
            missed = true;
            if (auto* dialog = qobject_cast<QDialog*>(top))
                dialog->done(0);
            else if (top)
                top->close();
        }
    });
    timer->start(10);
}

// A small dialog form: a text box, OK that unloads, and a log of its events.
class DialogForm : public Form
{
public:
    DialogForm(Platform& platform, const QString& name)
        : Form(platform, name)
    {
    }

    QStringList* log = nullptr;
    bool refuseClose = false;
    std::function<void()> onOk;

protected:
    void build() override
    {
        setCaption(name());
        setSize(4800, 2400);
        Control& text = add(ControlKind::TextBox, latin("Text1"));
        text.setGeometry(120, 120, 2400, 315);
        text.onGotFocus = [this] { note(latin("Text1 GotFocus")); };
        // Leaving the field empty is refused with a message and a value put in, as the number
        // fields of the generate screen do.
        text.onLostFocus = [this, &text] {
            note(latin("Text1 LostFocus"));
            if (text.text().isEmpty()) {
                platform().messageBox(latin("A numeric Value is required! (eg. 123)"), MsgStyle::Warning);
                text.setText(latin("50"));
            }
        };
        text.onChange = [this, &text] { note(latin("Text1 Change ") + text.text()); };
        Control& ok = addLabelled(ControlKind::CommandButton, latin("Command1"), latin("OK"));
        ok.setGeometry(2640, 120, 1200, 375);
        ok.onClick = [this] {
            note(latin("OK Click"));
            if (onOk)
                onOk();
            else
                unload();
        };
        onLoad = [this] { note(latin("Load")); };
        onActivate = [this] { note(latin("Activate")); };
        onQueryUnload = [this](bool& cancel, int mode) {
            note(latin("QueryUnload ") + QString::number(mode));
            cancel = refuseClose;
        };
        onUnload = [this](bool&) { note(latin("Unload")); };
    }

private:
    void note(const QString& event)
    {
        if (log)
            log->append(name() + u' ' + event);
    }
};

// A form with only a pop-up menu, as a grid's right click shows one.
class MenuForm : public Form
{
public:
    explicit MenuForm(Platform& platform)
        : Form(platform, QStringLiteral("MenuForm"))
    {
    }

    QStringList clicks;

protected:
    void build() override
    {
        Control& popup = add(ControlKind::Menu, latin("m_click"));
        popup.setVisible(false);
        const char* items[][2] = {{"m_searchs", "&Search for Ticket..."},
            {"m_Dels", "&Delete Ticket"},
            {"m_sep", "-"},
            {"m_cancel", "Can&cel"}};
        for (const auto& [name, caption] : items) {
            Control& item = add(ControlKind::Menu, latin(name));
            item.setCaption(latin(caption));
            item.setParentMenu(&popup);
            item.onClick = [this, key = latin(name)] { clicks << key; };
        }
        (*this)[latin("m_Dels")].setEnabled(false);
    }
};

class FakeComponent : public NamedComponent
{
public:
    explicit FakeComponent(QStringList& calls)
        : m_calls(calls)
    {
    }

    bool call(const QString& operation, const QVariantList& arguments) override
    {
        m_calls << operation + u'/' + QString::number(arguments.size());
        return operation == QLatin1String("PrintPreview");
    }

private:
    QStringList& m_calls;
};

QAction* actionNamed(QMenu& menu, const QString& text)
{
    for (QAction* action : menu.actions()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

} // namespace

class TestQtPlatform : public QObject
{
    Q_OBJECT

private slots:
    void testMessageBoxStyle_data();
    void testMessageBoxStyle();
    void testMessageBoxEscape_data();
    void testMessageBoxEscape();
    void testMessageBoxTextIsPlain();
    void testInputBoxReturnsTypedText();
    void testInputBoxCancelReturnsEmpty();
    void testInputBoxPositionInTwips();
    void testSleepKeepsEventsFlowing();
    void testYieldRunsPendingEvents();
    void testColorsAreBgr_data();
    void testColorsAreBgr();
    void testNameFilters_data();
    void testNameFilters();
    void testComponentsByName();
    void testClipboardImage();
    void testShowModalRunsUntilFormCloses();
    void testShowModalTitleBarClose();
    void testShowModalNested();
    void testMessageBoxFromLostFocus();
    void testPopupMenuReturnsChosenItem();
    void testPopupMenuEscapeChoosesNothing();
    void testSerialPortWritesToLine();
    void testSerialPortMissing();
    void testSerialPortNames_data();
    void testSerialPortNames();
    void testStartProgramWaits();
    void testStartProgramMissing();

private:
    QtPlatform m_platform;
};

void TestQtPlatform::testMessageBoxStyle_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<QMessageBox::StandardButton>("press");
    QTest::addColumn<int>("result");

    QTest::newRow("16 shows the stop icon and OK")
        << 16 << QMessageBox::Critical << QMessageBox::StandardButtons(QMessageBox::Ok) << QMessageBox::Ok
        << QMessageBox::Ok << int(MsgResult::Ok);
    QTest::newRow("48 shows the exclamation icon and OK")
        << 48 << QMessageBox::Warning << QMessageBox::StandardButtons(QMessageBox::Ok) << QMessageBox::Ok
        << QMessageBox::Ok << int(MsgResult::Ok);
    QTest::newRow("64 shows the information icon and OK")
        << 64 << QMessageBox::Information << QMessageBox::StandardButtons(QMessageBox::Ok) << QMessageBox::Ok
        << QMessageBox::Ok << int(MsgResult::Ok);
    QTest::newRow("36 asks Yes or No with Yes as default")
        << 36 << QMessageBox::Question << (QMessageBox::Yes | QMessageBox::No) << QMessageBox::Yes << QMessageBox::No
        << int(MsgResult::No);
    QTest::newRow("292 asks Yes or No with No as default")
        << 292 << QMessageBox::Question << (QMessageBox::Yes | QMessageBox::No) << QMessageBox::No << QMessageBox::Yes
        << int(MsgResult::Yes);
    QTest::newRow("35 asks Yes, No or Cancel")
        << 35 << QMessageBox::Question << (QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel) << QMessageBox::Yes
        << QMessageBox::Cancel << int(MsgResult::Cancel);
    QTest::newRow("1 offers OK and Cancel") << 1 << QMessageBox::NoIcon << (QMessageBox::Ok | QMessageBox::Cancel)
                                            << QMessageBox::Ok << QMessageBox::Ok << int(MsgResult::Ok);
    QTest::newRow("2 with 512 makes Ignore the default")
        << 2 + 512 << QMessageBox::NoIcon << (QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore)
        << QMessageBox::Ignore << QMessageBox::Retry << int(MsgResult::Retry);
    QTest::newRow("5 with 48 offers Retry and Cancel")
        << 5 + 48 << QMessageBox::Warning << (QMessageBox::Retry | QMessageBox::Cancel) << QMessageBox::Retry
        << QMessageBox::Cancel << int(MsgResult::Cancel);
}

void TestQtPlatform::testMessageBoxStyle()
{
    QFETCH(int, style);
    QFETCH(QMessageBox::Icon, icon);
    QFETCH(QMessageBox::StandardButtons, buttons);
    QFETCH(QMessageBox::StandardButton, defaultButton);
    QFETCH(QMessageBox::StandardButton, press);
    QFETCH(int, result);

    bool missed = false;
    QMessageBox::Icon seenIcon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons seenButtons;
    QMessageBox::StandardButton seenDefault = QMessageBox::NoButton;
    QString seenTitle;
    QString seenText;
    whenModal<QMessageBox>(
        [&](QMessageBox& box) {
            seenIcon = box.icon();
            seenButtons = box.standardButtons();
            seenDefault = box.standardButton(box.defaultButton());
            seenTitle = box.windowTitle();
            seenText = box.text();
            box.button(press)->click();
        },
        missed);
    const MsgResult answer = m_platform.messageBox(latin("Wrong Password!"), style);
    QVERIFY(!missed);
    QCOMPARE(seenIcon, icon);
    QCOMPARE(seenButtons, buttons);
    QCOMPARE(seenDefault, defaultButton);
    QCOMPARE(seenTitle, latin("Norvantis v2.3.1"));
    QCOMPARE(seenText, latin("Wrong Password!"));
    QCOMPARE(int(answer), result);
}

void TestQtPlatform::testMessageBoxEscape_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("titleBar");
    QTest::addColumn<int>("result");

    QTest::newRow("Escape on Yes and No answers No") << 36 << false << int(MsgResult::No);
    QTest::newRow("Escape on Yes, No and Cancel answers Cancel") << 35 << false << int(MsgResult::Cancel);
    QTest::newRow("Escape on OK answers OK") << 64 << false << int(MsgResult::Ok);
    QTest::newRow("Escape on OK and Cancel answers Cancel") << 1 << false << int(MsgResult::Cancel);
    QTest::newRow("Closing Yes and No with No as default answers No") << 292 << true << int(MsgResult::No);
    QTest::newRow("Closing Yes, No and Cancel answers Cancel") << 35 << true << int(MsgResult::Cancel);
}

void TestQtPlatform::testMessageBoxEscape()
{
    QFETCH(int, style);
    QFETCH(bool, titleBar);
    QFETCH(int, result);

    bool missed = false;
    whenModal<QMessageBox>(
        [titleBar](QMessageBox& box) {
            if (titleBar)
                box.close();
            else
                QTest::keyClick(&box, Qt::Key_Escape);
        },
        missed);
    const MsgResult answer = m_platform.messageBox(latin("Do you want to Save Changes?"), style, latin("Norvantis"));
    QVERIFY(!missed);
    QCOMPARE(int(answer), result);
}

void TestQtPlatform::testMessageBoxTextIsPlain()
{
    bool missed = false;
    QString shown;
    Qt::TextFormat format = Qt::AutoText;
    whenModal<QMessageBox>(
        [&](QMessageBox& box) {
            shown = box.text();
            format = box.textFormat();
            box.button(QMessageBox::Ok)->click();
        },
        missed);
    m_platform.messageBox(latin("Cost for each Ticket (in <N>): <b>5</b>"), MsgStyle::Info);
    QVERIFY(!missed);
    QCOMPARE(shown, latin("Cost for each Ticket (in <N>): <b>5</b>"));
    QCOMPARE(format, Qt::PlainText);
}

void TestQtPlatform::testInputBoxReturnsTypedText()
{
    bool missed = false;
    QString prompt;
    QString title;
    QString selected;
    whenModal<InputBoxDialog>(
        [&](InputBoxDialog& dialog) {
            prompt = dialog.findChild<QLabel*>(latin("prompt"))->text();
            title = dialog.windowTitle();
            auto* edit = dialog.findChild<QLineEdit*>(latin("edit"));
            selected = edit->selectedText();
            QTest::keyClicks(edit, latin("250"));
            QTest::keyClick(edit, Qt::Key_Return);
        },
        missed);
    const QString answer = m_platform.inputBox(latin("Enter the quota in MB:"), latin("Norvantis"), latin("-9999"));
    QVERIFY(!missed);
    QCOMPARE(prompt, latin("Enter the quota in MB:"));
    QCOMPARE(title, latin("Norvantis"));
    QCOMPARE(selected, latin("-9999"));
    QCOMPARE(answer, latin("250"));
}

void TestQtPlatform::testInputBoxCancelReturnsEmpty()
{
    bool missed = false;
    whenModal<InputBoxDialog>([](InputBoxDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }, missed);
    const QString answer = m_platform.inputBox(latin("Enter the quota in MB:"), latin("Norvantis"), latin("100"));
    QVERIFY(!missed);
    QCOMPARE(answer, QString());
}

void TestQtPlatform::testInputBoxPositionInTwips()
{
    bool missed = false;
    QPoint position;
    whenModal<InputBoxDialog>(
        [&](InputBoxDialog& dialog) {
            position = dialog.pos() - dialog.screen()->geometry().topLeft();
            dialog.reject();
        },
        missed);
    m_platform.inputBox(latin("Prompt"), latin("Title"), QString(), QPoint(1500, 3000));
    QVERIFY(!missed);
    QCOMPARE(position, QPoint(100, 200));
}

void TestQtPlatform::testSleepKeepsEventsFlowing()
{
    bool fired = false;
    QTimer::singleShot(10, [&fired] { fired = true; });
    QElapsedTimer timer;
    timer.start();
    m_platform.sleep(60);
    QVERIFY(fired);
    QVERIFY(timer.elapsed() >= 50);
}

void TestQtPlatform::testYieldRunsPendingEvents()
{
    bool fired = false;
    QTimer::singleShot(0, [&fired] { fired = true; });
    m_platform.yield();
    QVERIFY(fired);
}

void TestQtPlatform::testColorsAreBgr_data()
{
    QTest::addColumn<int>("bgr");
    QTest::addColumn<QColor>("color");
    QTest::newRow("255 is red") << 255 << QColor(255, 0, 0);
    QTest::newRow("16744576 is the close button's blue") << 16744576 << QColor(128, 128, 255);
    QTest::newRow("16711680 is blue") << 16711680 << QColor(0, 0, 255);
    QTest::newRow("65280 is green") << 65280 << QColor(0, 255, 0);
}

void TestQtPlatform::testColorsAreBgr()
{
    QFETCH(int, bgr);
    QFETCH(QColor, color);
    QCOMPARE(colorFromBgr(bgr), color);
    QCOMPARE(bgrFromColor(color), bgr);
}

void TestQtPlatform::testNameFilters_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("description with its patterns")
        << latin("Pictures (*.bmp;*.jpg)|*.bmp;*.jpg|All Files (*.*)|*.*")
        << QStringList {latin("Pictures (*.bmp *.jpg)"), latin("All Files (*.*)")};
    QTest::newRow("bare description") << latin("Settings File|*.Sav") << QStringList {latin("Settings File (*.Sav)")};
    QTest::newRow("no filter") << QString() << QStringList {};
}

void TestQtPlatform::testNameFilters()
{
    QFETCH(QString, filter);
    QFETCH(QStringList, expected);
    QCOMPARE(QtPlatform::nameFilters(filter), expected);
}

void TestQtPlatform::testComponentsByName()
{
    QStringList calls;
    ComponentRegistry::add(latin("Vellum.Sheets"), [&calls] { return std::make_unique<FakeComponent>(calls); });
    auto first = m_platform.createComponent(latin("VELLUM.SHEETS"));
    auto second = m_platform.createComponent(latin("Vellum.Sheets"));
    QVERIFY(first && second);
    QVERIFY(first.get() != second.get());
    QVERIFY(first->call(latin("PrintPreview"), {1, 2}));
    QVERIFY(!second->call(latin("NoSuchOperation"), {}));
    QCOMPARE(calls, (QStringList {latin("PrintPreview/2"), latin("NoSuchOperation/0")}));
    QVERIFY(!m_platform.createComponent(latin("Brisling.Tidy")));
    ComponentRegistry::remove(latin("vellum.sheets"));
    QVERIFY(!m_platform.createComponent(latin("Vellum.Sheets")));
}

void TestQtPlatform::testClipboardImage()
{
    QImage picture(32, 24, QImage::Format_RGB32);
    picture.fill(QColor(0, 128, 255));
    QGuiApplication::clipboard()->setImage(picture);
    const QByteArray bytes = m_platform.clipboardImage();
    QVERIFY(bytes.startsWith("\x89PNG"));
    const QImage back = QImage::fromData(bytes, "PNG");
    QCOMPARE(back.size(), QSize(32, 24));
    QCOMPARE(back.pixelColor(3, 3), QColor(0, 128, 255));
    m_platform.clearClipboard();
    QVERIFY(m_platform.clipboardImage().isEmpty());
}

void TestQtPlatform::testShowModalRunsUntilFormCloses()
{
    QStringList log;
    DialogForm form(m_platform, latin("Gate"));
    form.log = &log;
    bool missed = false;
    whenModal<FormDialog>(
        [](FormDialog& dialog) {
            QTest::keyClicks(QApplication::focusWidget(), latin("ab"));
            QTest::mouseClick(dialog.findChild<QPushButton*>(latin("Command1")), Qt::LeftButton);
        },
        missed);
    m_platform.showModal(form);
    QVERIFY(!missed);
    QVERIFY(!form.isLoaded());
    const QStringList expected {latin("Gate Load"),
        latin("Gate Activate"),
        latin("Gate Text1 GotFocus"),
        latin("Gate Text1 Change a"),
        latin("Gate Text1 Change ab"),
        latin("Gate Text1 LostFocus"),
        latin("Gate OK Click"),
        latin("Gate QueryUnload 1"),
        latin("Gate Unload")};
    QCOMPARE(log, expected);
}

void TestQtPlatform::testShowModalTitleBarClose()
{
    QStringList log;
    DialogForm form(m_platform, latin("Gate"));
    form.log = &log;
    form.refuseClose = true;
    bool missed = false;
    bool stillOpen = false;
    whenModal<FormDialog>(
        [&](FormDialog& dialog) {
            dialog.close();
            stillOpen = dialog.isVisible() && form.isLoaded();
            form.refuseClose = false;
            dialog.close();
        },
        missed);
    m_platform.showModal(form);
    QVERIFY(!missed);
    QVERIFY(stillOpen);
    QVERIFY(!form.isLoaded());
    QCOMPARE(
        log.filter(latin("QueryUnload")), (QStringList {latin("Gate QueryUnload 0"), latin("Gate QueryUnload 0")}));
}

void TestQtPlatform::testShowModalNested()
{
    QStringList log;
    DialogForm outer(m_platform, latin("Outer"));
    DialogForm inner(m_platform, latin("Inner"));
    outer.log = &log;
    inner.log = &log;
    // The outer OK closes the outer form and then opens the inner one, as a password gate opens
    // the screen it guards.
    outer.onOk = [&outer, &inner] {
        outer.unload();
        inner.showModal();
    };
    bool missed = false;
    const auto typeAndOk = [](FormDialog& dialog) {
        QTest::keyClicks(QApplication::focusWidget(), latin("1"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(latin("Command1")), Qt::LeftButton);
    };
    whenModal<FormDialog>(
        [&](FormDialog& dialog) {
            whenModal<FormDialog>(typeAndOk, missed, latin("Inner"));
            typeAndOk(dialog);
        },
        missed,
        latin("Outer"));
    m_platform.showModal(outer);
    QVERIFY(!missed);
    QVERIFY(!outer.isLoaded());
    QVERIFY(!inner.isLoaded());
    const QStringList expected {latin("Outer Load"),
        latin("Outer Activate"),
        latin("Outer Text1 GotFocus"),
        latin("Outer Text1 Change 1"),
        latin("Outer Text1 LostFocus"),
        latin("Outer OK Click"),
        latin("Outer QueryUnload 1"),
        latin("Outer Unload"),
        latin("Inner Load"),
        latin("Inner Activate"),
        latin("Inner Text1 GotFocus"),
        latin("Inner Text1 Change 1"),
        latin("Inner Text1 LostFocus"),
        latin("Inner OK Click"),
        latin("Inner QueryUnload 1"),
        latin("Inner Unload")};
    QCOMPARE(log, expected);
}

void TestQtPlatform::testMessageBoxFromLostFocus()
{
    QStringList log;
    DialogForm form(m_platform, latin("Gate"));
    form.log = &log;
    bool missed = false;
    QString message;
    whenModal<FormDialog>(
        [&](FormDialog& dialog) {
            whenModal<QMessageBox>(
                [&](QMessageBox& box) {
                    message = box.text();
                    box.button(QMessageBox::Ok)->click();
                },
                missed);
            QTest::mouseClick(dialog.findChild<QPushButton*>(latin("Command1")), Qt::LeftButton);
        },
        missed);
    m_platform.showModal(form);
    QVERIFY(!missed);
    QCOMPARE(message, latin("A numeric Value is required! (eg. 123)"));
    const QStringList expected {latin("Gate Load"),
        latin("Gate Activate"),
        latin("Gate Text1 GotFocus"),
        latin("Gate Text1 LostFocus"),
        latin("Gate Text1 Change 50"),
        latin("Gate OK Click"),
        latin("Gate QueryUnload 1"),
        latin("Gate Unload")};
    QCOMPARE(log, expected);
}

void TestQtPlatform::testPopupMenuReturnsChosenItem()
{
    MenuForm form(m_platform);
    form.load();
    bool missed = false;
    QStringList texts;
    bool deleteEnabled = true;
    whenModal<QMenu>(
        [&](QMenu& menu) {
            for (const QAction* action : menu.actions())
                texts << (action->isSeparator() ? latin("-") : action->text());
            deleteEnabled = actionNamed(menu, latin("&Delete Ticket"))->isEnabled();
            menu.setActiveAction(actionNamed(menu, latin("Can&cel")));
            QTest::keyClick(&menu, Qt::Key_Return);
        },
        missed);
    form.popupMenu(form[latin("m_click")]);
    QVERIFY(!missed);
    const QStringList expected {latin("&Search for Ticket..."), latin("&Delete Ticket"), latin("-"), latin("Can&cel")};
    QCOMPARE(texts, expected);
    QVERIFY(!deleteEnabled);
    QCOMPARE(form.clicks, QStringList {latin("m_cancel")});

    whenModal<QMenu>(
        [&](QMenu& menu) {
            menu.setActiveAction(actionNamed(menu, latin("&Search for Ticket...")));
            QTest::keyClick(&menu, Qt::Key_Return);
        },
        missed);
    QCOMPARE(m_platform.popupMenu(form, form[latin("m_click")]), &form[latin("m_searchs")]);
    QVERIFY(!missed);
}

void TestQtPlatform::testPopupMenuEscapeChoosesNothing()
{
    MenuForm form(m_platform);
    form.load();
    bool missed = false;
    whenModal<QMenu>([](QMenu& menu) { QTest::keyClick(&menu, Qt::Key_Escape); }, missed);
    QCOMPARE(m_platform.popupMenu(form, form[latin("m_click")]), nullptr);
    QVERIFY(!missed);
}

void TestQtPlatform::testSerialPortWritesToLine()
{
    // A pseudo-terminal stands in for the point-of-sale line: the port writes to one end, the
    // test reads the other.
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    QVERIFY(master >= 0);
    QVERIFY(grantpt(master) == 0 && unlockpt(master) == 0);
    const QString line = QString::fromLocal8Bit(ptsname(master));
    auto port = m_platform.serialPort();
    QVERIFY(port->open(line, 9600));
    QVERIFY(port->isOpen());
    QVERIFY(port->write("POS TEST\r\n"));
    QByteArray received;
    QElapsedTimer waited;
    waited.start();
    while (!received.contains('\n') && waited.elapsed() < 3000) {
        char buffer[64];
        const ssize_t count = ::read(master, buffer, sizeof buffer);
        if (count > 0)
            received.append(buffer, count);
    }
    port->close();
    ::close(master);
    QVERIFY(!port->isOpen());
    QVERIFY(received.contains("POS TEST"));
}

void TestQtPlatform::testSerialPortMissing()
{
    auto port = m_platform.serialPort();
    QVERIFY(!port->open(latin("/dev/no-such-port"), 9600));
    QVERIFY(!port->isOpen());
    QVERIFY(!port->write("x"));
}

void TestQtPlatform::testSerialPortNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("device");
    QTest::newRow("COM1 is the first serial device") << latin("COM1") << QString() << latin("/dev/ttyS0");
    QTest::newRow("COM4") << latin("COM4") << QString() << latin("/dev/ttyS3");
    QTest::newRow("LPT2 is the second printer port") << latin("LPT2") << QString() << latin("/dev/lp1");
    QTest::newRow("a name in any case") << latin("com2") << QString() << latin("/dev/ttyS1");
    QTest::newRow("the environment sets the device") << latin("COM1") << latin("/dev/ttyUSB0") << latin("/dev/ttyUSB0");
    QTest::newRow("a path stands as it is") << latin("/dev/pts/7") << QString() << latin("/dev/pts/7");
    QTest::newRow("another name stands as it is") << latin("ttyACM0") << QString() << latin("ttyACM0");
}

void TestQtPlatform::testSerialPortNames()
{
    QFETCH(QString, name);
    QFETCH(QString, setting);
    QFETCH(QString, device);
    const QByteArray variable = "MARLET_PORT_" + name.toUpper().toLatin1();
    if (!setting.isEmpty())
        qputenv(variable.constData(), setting.toLocal8Bit());
    const QString mapped = QtSerialPort::devicePath(name);
    qunsetenv(variable.constData());
    QCOMPARE(mapped, device);
}

void TestQtPlatform::testStartProgramWaits()
{
    QTemporaryDir folder;
    const QString file = folder.filePath(latin("done.txt"));
    QVERIFY(
        m_platform.startProgram(latin("/bin/sh"), {latin("-c"), latin("sleep 0.2; echo done > \"$0\""), file}, true));
    QVERIFY(QFile::exists(file));
}

void TestQtPlatform::testStartProgramMissing()
{
    QVERIFY(!m_platform.startProgram(latin("/no/such/program"), {}, true));
    QVERIFY(!m_platform.startProgram(latin("/no/such/program"), {}, false));
}

} // namespace marlet

QTEST_MAIN(marlet::TestQtPlatform)
#include "TestQtPlatform.moc"
