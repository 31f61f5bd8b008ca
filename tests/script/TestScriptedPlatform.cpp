#include "script/ScriptedPlatform.h"

#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/Operator.h"

#include <QTest>

using namespace marlet;

namespace {

// A form with a text box and a button whose click the test decides.
class SimpleForm : public Form
{
public:
    SimpleForm(Platform& platform, const QString& name)
        : Form(platform, name)
    {
    }

    std::function<void()> onButton;
    bool refuseClose = false;

protected:
    void build() override
    {
        setCaption(name() + QStringLiteral(" caption"));
        add(ControlKind::TextBox, QStringLiteral("Text1"));
        addLabelled(ControlKind::CommandButton, QStringLiteral("Command1"), QStringLiteral("&Go")).onClick = [this] {
            if (onButton)
                onButton();
        };
        onQueryUnload = [this](bool& cancel, int mode) { cancel = refuseClose && mode == UnloadMode::FormControlMenu; };
        Control& menu = add(ControlKind::Menu, QStringLiteral("m_click"));
        Control& first = addLabelled(ControlKind::Menu, QStringLiteral("m_first"), QStringLiteral("&First"));
        first.setParentMenu(&menu);
        Control& separator = addLabelled(ControlKind::Menu, QStringLiteral("m_sep"), QStringLiteral("-"));
        separator.setParentMenu(&menu);
        Control& second = addLabelled(ControlKind::Menu, QStringLiteral("m_second"), QStringLiteral("&Second"));
        second.setParentMenu(&menu);
        second.setEnabled(false);
    }
};

} // namespace

class TestScriptedPlatform : public QObject
{
    Q_OBJECT

private slots:
    void testAnExpectedMessageIsAnsweredAndRecorded()
    {
        ScriptedPlatform p;
        p.expectMessage(QStringLiteral("Continue?"), MsgStyle::YesNoQuestionNoDefault, MsgResult::Yes);
        QCOMPARE(p.messageBox(QStringLiteral("Continue?"), 292), MsgResult::Yes);
        QVERIFY2(p.failures().isEmpty(), qPrintable(p.failures().join(u'\n')));
        QCOMPARE(p.messages().size(), size_t(1));
        QCOMPARE(p.messages()[0].title, QStringLiteral("Norvantis v2.3.1"));
        QCOMPARE(p.messages()[0].answer, MsgResult::Yes);
        QCOMPARE(p.pendingMessages(), 0);
    }

    void testWithoutAGivenAnswerTheDefaultButtonIsPressed_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("answer");
        QTest::newRow("OK only") << 0 << int(MsgResult::Ok);
        QTest::newRow("an exclamation") << 48 << int(MsgResult::Ok);
        QTest::newRow("Yes and No") << 36 << int(MsgResult::Yes);
        QTest::newRow("Yes and No with No as default") << 292 << int(MsgResult::No);
        QTest::newRow("Yes, No and Cancel") << 35 << int(MsgResult::Yes);
        QTest::newRow("Yes, No and Cancel with Cancel as default") << 35 + 512 << int(MsgResult::Cancel);
        QTest::newRow("Abort, Retry and Ignore with Retry as default") << 2 + 256 << int(MsgResult::Retry);
        QTest::newRow("Retry and Cancel") << 5 << int(MsgResult::Retry);
        QTest::newRow("OK and Cancel with Cancel as default") << 1 + 256 << int(MsgResult::Cancel);
    }

    void testWithoutAGivenAnswerTheDefaultButtonIsPressed()
    {
        QFETCH(int, style);
        QFETCH(int, answer);
        ScriptedPlatform p;
        p.expectMessage(QStringLiteral("Sure?"), style);
        QCOMPARE(int(p.messageBox(QStringLiteral("Sure?"), style)), answer);
        QVERIFY(p.failures().isEmpty());
    }

    void testADifferentTextIsAFailureThatShowsTheTrailingBlank()
    {
        ScriptedPlatform p;
        p.expectMessage(QStringLiteral("Wrong Password!"), 48);
        p.setContext(QStringLiteral("gate.scenario:7: click OK"));
        QCOMPARE(p.messageBox(QStringLiteral("Wrong Password! "), 48), MsgResult::Ok);
        QCOMPARE(p.failures().size(), 1);
        QCOMPARE(p.failures().first(),
            QStringLiteral("gate.scenario:7: click OK\n"
                           "  message box is not the one expected\n"
                           "  text:\n"
                           "    expected: \"Wrong Password!\"\n"
                           "    actual:   \"Wrong Password! \"\n"
                           "    actual has more after character 15"));
    }

    void testADifferentStyleOrTitleIsAFailureAndTheStyleDefaultAnswers()
    {
        ScriptedPlatform p;
        ScriptedPlatform::ExpectedMessage expected;
        expected.text = QStringLiteral("Sure?");
        expected.style = 36;
        expected.title = QStringLiteral("Norvantis");
        expected.answer = MsgResult::Yes;
        expected.origin = QStringLiteral("a.scenario:3");
        p.expectMessage(expected);
        QCOMPARE(p.messageBox(QStringLiteral("Sure?"), 292, QStringLiteral("Norvantis ")), MsgResult::No);
        QCOMPARE(p.failures().size(), 1);
        const QString failure = p.failures().first();
        QVERIFY2(failure.startsWith(QStringLiteral("message box is not the one expected (expected at a.scenario:3)\n"
                                                   "style: expected 36, actual 292\ntitle:\n")),
            qPrintable(failure));
        QVERIFY(failure.contains(QStringLiteral("actual:   \"Norvantis \"")));
    }

    void testAnUnexpectedMessageIsAFailure()
    {
        ScriptedPlatform p;
        QCOMPARE(p.messageBox(QStringLiteral("Delete?"), 36), MsgResult::Yes);
        QCOMPARE(p.failures(),
            QStringList(
                {QStringLiteral("unexpected message box: \"Delete?\" (style 36, title \"Norvantis v2.3.1\")")}));
        QCOMPARE(p.messages().size(), size_t(1));
    }

    void testAnAnswerThatTheStyleDoesNotOfferIsAFailure()
    {
        ScriptedPlatform p;
        p.expectMessage(QStringLiteral("Saved!"), 64, MsgResult::Yes);
        QCOMPARE(p.messageBox(QStringLiteral("Saved!"), 64), MsgResult::Ok);
        QCOMPARE(p.failures(), QStringList({QStringLiteral("the answer Yes is not a button of style 64")}));
    }

    void testInvisibleCharactersAreShownEscaped()
    {
        QCOMPARE(ScriptedPlatform::visible(QStringLiteral("a\tb\n\"c\"\\") + QChar(0xA0)),
            QStringLiteral("\"a\\tb\\n\\\"c\\\"\\\\\\u{a0}\""));
        QCOMPARE(ScriptedPlatform::describeDifference(QStringLiteral("abc"), QStringLiteral("abd")),
            QStringLiteral("expected: \"abc\"\nactual:   \"abd\"\nfirst difference at character 3"));
        QCOMPARE(ScriptedPlatform::describeDifference(QStringLiteral("abc"), QStringLiteral("ab")),
            QStringLiteral("expected: \"abc\"\nactual:   \"ab\"\nactual ends after character 2"));
    }

    void testFinishReportsExpectationsNeverUsed()
    {
        ScriptedPlatform p;
        ScriptedPlatform::ExpectedMessage expected;
        expected.text = QStringLiteral("Done");
        expected.origin = QStringLiteral("x.scenario:4");
        p.expectMessage(expected);
        p.expectInput(QStringLiteral("100"));
        p.expectMenu(QStringLiteral("&First"));
        QCOMPARE(p.pendingExpectations(), 3);
        p.finish();
        QCOMPARE(p.failures(),
            QStringList({QStringLiteral("expected message never shown: \"Done\" (expected at x.scenario:4)"),
                QStringLiteral("expected input box never shown, answer \"100\""),
                QStringLiteral("expected pop-up menu never shown")}));
        QCOMPARE(p.pendingExpectations(), 0);
    }

    void testInputBoxesAnswerInOrderAndCheckWhatIsGiven()
    {
        ScriptedPlatform p;
        p.expectInput({QStringLiteral("250"),
            QStringLiteral("Enter the Quota?"),
            QStringLiteral("Norvantis"),
            QStringLiteral("100"),
            QString()});
        p.expectInput(QString());
        QCOMPARE(p.inputBox(QStringLiteral("Enter the Quota?"), QStringLiteral("Norvantis"), QStringLiteral("100")),
            QStringLiteral("250"));
        QCOMPARE(p.inputBox(QStringLiteral("Name?"), QStringLiteral("T"), QString()), QString());
        QVERIFY(p.failures().isEmpty());
        QCOMPARE(p.inputs().size(), size_t(2));
        QCOMPARE(p.inputs()[1].prompt, QStringLiteral("Name?"));
    }

    void testAnInputBoxWithAnotherPromptIsAFailure()
    {
        ScriptedPlatform p;
        p.expectInput({QStringLiteral("1"), QStringLiteral("Quota?"), std::nullopt, std::nullopt, QString()});
        QCOMPARE(p.inputBox(QStringLiteral("Quota"), QStringLiteral("any"), QString()), QStringLiteral("1"));
        QCOMPARE(p.failures().size(), 1);
        QVERIFY(p.failures().first().startsWith(QStringLiteral("input box is not the one expected\nprompt:\n")));
        QCOMPARE(p.inputBox(QStringLiteral("again"), QString(), QString()), QString());
        QCOMPARE(p.failures().last(), QStringLiteral("unexpected input box: \"again\""));
    }

    void testTheClockIsVirtualAndSleepsAreCounted()
    {
        ScriptedPlatform p;
        QCOMPARE(p.now(), QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
        p.sleep(50);
        p.sleep(500);
        p.advance(1000);
        QCOMPARE(p.now(), QDateTime(QDate(2026, 11, 21), QTime(10, 0, 1, 550)));
        QCOMPARE(p.sleptMilliseconds(), 550);
        p.setNow(QDateTime(QDate(2009, 1, 5), QTime(23, 59, 59)));
        p.sleep(1000);
        QCOMPARE(p.today(), QDate(2009, 1, 6));
    }

    void testYieldHooksCountFromWhenTheyAreSet()
    {
        ScriptedPlatform p;
        QList<int> fired;
        p.yield();
        p.atYield(3, [&] { fired << p.yieldCount(); });
        p.atYield(1, [&] {
            fired << p.yieldCount();
            p.atYield(1, [&] { fired << -p.yieldCount(); });
        });
        for (int i = 0; i < 5; ++i)
            p.yield();
        QCOMPARE(fired, QList<int>({2, -3, 4}));
        QCOMPARE(p.yieldCount(), 6);
    }

    void testShowModalRunsQueuedActionsUntilTheFormCloses()
    {
        ScriptedPlatform p;
        SimpleForm form(p, QStringLiteral("Outer"));
        p.queueAction([](Form& top) { Operator::type(top[QStringLiteral("Text1")], QStringLiteral("hello")); });
        p.queueAction([](Form& top) { QVERIFY(Operator::closeWindow(top)); });
        bool extraRan = false;
        p.queueAction([&extraRan](Form&) { extraRan = true; });
        form.showModal();
        QVERIFY(!form.isLoaded());
        QCOMPARE(form[QStringLiteral("Text1")].text(), QStringLiteral("hello"));
        QVERIFY(!extraRan);
        QCOMPARE(p.topForm(), nullptr);
        QVERIFY(p.failures().isEmpty());
    }

    void testANestedModalFormTakesTheActionsUntilItCloses()
    {
        ScriptedPlatform p;
        SimpleForm outer(p, QStringLiteral("Outer"));
        SimpleForm inner(p, QStringLiteral("Inner"));
        QStringList seen;
        outer.onButton = [&] {
            inner.showModal();
            seen << QStringLiteral("inner returned");
        };
        inner.onButton = [&inner] { inner.unload(); };
        auto note = [&seen](Form& top) { seen << top.name(); };
        p.queueAction([](Form& top) { Operator::click(top[QStringLiteral("Command1")]); });
        p.queueAction(note);
        p.queueAction([](Form& top) { Operator::click(top[QStringLiteral("Command1")]); });
        p.queueAction(note);
        p.queueAction([](Form& top) { Operator::closeWindow(top); });
        outer.showModal();
        QCOMPARE(
            seen, QStringList({QStringLiteral("Inner"), QStringLiteral("inner returned"), QStringLiteral("Outer")}));
        QCOMPARE(p.formsShown(), QStringList({QStringLiteral("Outer"), QStringLiteral("Inner")}));
        QVERIFY(p.failures().isEmpty());
    }

    void testAFormThatClosesItselfAndOpensTheNextHandsTheActionsOn()
    {
        ScriptedPlatform p;
        SimpleForm gate(p, QStringLiteral("GenPasstoAccs"));
        SimpleForm screen(p, QStringLiteral("GenAcc"));
        gate.onButton = [&] {
            gate.unload();
            screen.showModal();
        };
        QStringList seen;
        p.queueAction([](Form& top) { Operator::click(top[QStringLiteral("Command1")]); });
        p.queueAction([&seen](Form& top) { seen << top.name(); });
        p.queueAction([](Form& top) { Operator::closeWindow(top); });
        gate.showModal();
        QCOMPARE(seen, QStringList({QStringLiteral("GenAcc")}));
        QVERIFY(!gate.isLoaded());
        QVERIFY(!screen.isLoaded());
        QVERIFY(p.openForms().empty());
        QVERIFY(p.failures().isEmpty());
    }

    void testAnActionSourceSuppliesActionsWhenTheQueueIsEmpty()
    {
        ScriptedPlatform p;
        SimpleForm form(p, QStringLiteral("Outer"));
        int pulled = 0;
        p.setActionSource([&pulled]() -> std::optional<ScriptedPlatform::Action> {
            ++pulled;
            return [](Form& top) { top.unload(); };
        });
        form.showModal();
        QCOMPARE(pulled, 1);
        QVERIFY(!form.isLoaded());
    }

    void testRunningOutOfActionsClosesTheFormAndFails_data()
    {
        QTest::addColumn<bool>("refuseClose");
        QTest::newRow("a form that lets itself be closed") << false;
        QTest::newRow("a form that refuses to close") << true;
    }

    void testRunningOutOfActionsClosesTheFormAndFails()
    {
        QFETCH(bool, refuseClose);
        ScriptedPlatform p;
        SimpleForm form(p, QStringLiteral("GenAcc"));
        form.refuseClose = refuseClose;
        form.showModal();
        QVERIFY(!form.isLoaded());
        QCOMPARE(
            p.failures(), QStringList({QStringLiteral("script ended while GenAcc (\"GenAcc caption\") was open")}));
    }

    void testAFormAlreadyShownCannotBeShownAgain()
    {
        ScriptedPlatform p;
        SimpleForm form(p, QStringLiteral("Once"));
        form.onButton = [&form] { form.showModal(); };
        p.queueAction([](Form& top) { Operator::click(top[QStringLiteral("Command1")]); });
        p.queueAction([](Form& top) { top.unload(); });
        form.showModal();
        QCOMPARE(p.failures().size(), 1);
        QVERIFY(p.failures().first().contains(QStringLiteral("already shown")));
    }

    void testPopUpMenusAreAnsweredByNameOrCaption_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("failure");
        QTest::newRow("a caption with its accelerator") << "&First"
                                                        << "m_first"
                                                        << "";
        QTest::newRow("a caption without its accelerator") << "First"
                                                           << "m_first"
                                                           << "";
        QTest::newRow("a control name") << "m_first"
                                        << "m_first"
                                        << "";
        QTest::newRow("a disabled item") << "&Second"
                                         << ""
                                         << "menu item \"&Second\" cannot be chosen: it is disabled or hidden";
        QTest::newRow("an item the menu does not have") << "Third"
                                                        << ""
                                                        << "pop-up menu m_click has no item \"Third\"";
    }

    void testPopUpMenusAreAnsweredByNameOrCaption()
    {
        QFETCH(QString, answer);
        QFETCH(QString, chosen);
        QFETCH(QString, failure);
        ScriptedPlatform p;
        SimpleForm form(p, QStringLiteral("Menus"));
        form.load();
        p.expectMenu(answer);
        Control* item = p.popupMenu(form, form[QStringLiteral("m_click")]);
        QCOMPARE(item ? item->name() : QString(), chosen);
        QCOMPARE(p.failures(), failure.isEmpty() ? QStringList() : QStringList({failure}));
        QCOMPARE(p.menusShown(), QStringList({QStringLiteral("m_click")}));
    }

    void testADismissedMenuChoosesNothingAndAnUnexpectedOneFails()
    {
        ScriptedPlatform p;
        SimpleForm form(p, QStringLiteral("Menus"));
        form.load();
        p.expectMenu(std::nullopt);
        QCOMPARE(p.popupMenu(form, form[QStringLiteral("m_click")]), nullptr);
        QVERIFY(p.failures().isEmpty());
        QCOMPARE(p.popupMenu(form, form[QStringLiteral("m_click")]), nullptr);
        QCOMPARE(p.failures(), QStringList({QStringLiteral("unexpected pop-up menu m_click")}));
    }

    void testFileAndColourDialogsAnswerInOrder()
    {
        ScriptedPlatform p;
        p.expectFileDialog(QStringLiteral("/tmp/pic.bmp"));
        p.expectFileDialog(std::nullopt);
        p.expectColorDialog(255);
        FileDialogRequest request;
        request.title = QStringLiteral("Open Picture");
        QCOMPARE(p.fileDialog(request), std::optional<QString>(QStringLiteral("/tmp/pic.bmp")));
        QCOMPARE(p.fileDialog(request), std::optional<QString>());
        QCOMPARE(p.colorDialog(0), std::optional<int>(255));
        QCOMPARE(p.colorDialog(0), std::optional<int>());
        QCOMPARE(p.fileDialogs().size(), size_t(2));
        QCOMPARE(p.failures(), QStringList({QStringLiteral("unexpected colour dialog")}));
    }

    void testPrintersDefaultToNone()
    {
        ScriptedPlatform p;
        QCOMPARE(p.defaultPrinter(), QString());
        QVERIFY(p.printers().isEmpty());
        p.setDefaultPrinter(QStringLiteral("PDF"));
        QCOMPARE(p.defaultPrinter(), QStringLiteral("PDF"));
        QCOMPARE(p.printers(), QStringList({QStringLiteral("PDF")}));
    }

    void testTheSerialPortRecordsWhatIsWrittenWhileOpen()
    {
        ScriptedPlatform p;
        std::unique_ptr<SerialPort> port = p.serialPort();
        QVERIFY(!port->write("lost"));
        QVERIFY(port->open(QStringLiteral("COM1"), 9600));
        QVERIFY(port->isOpen());
        QVERIFY(port->write("Test"));
        port->close();
        QVERIFY(!port->isOpen());
        QCOMPARE(p.serialWrites().size(), size_t(1));
        QCOMPARE(p.serialWrites()[0].port, QStringLiteral("COM1"));
        QCOMPARE(p.serialWrites()[0].baud, 9600);
        QCOMPARE(p.serialWrites()[0].data, QByteArray("Test"));
        p.setSerialPortWorks(false);
        QVERIFY(!p.serialPort()->open(QStringLiteral("COM1"), 9600));
    }

    void testComponentsAreFakesRegisteredByName()
    {
        ScriptedPlatform p;
        QCOMPARE(p.createComponent(QStringLiteral("Vellum.Sheets")), nullptr);
        p.addRecordingComponent(QStringLiteral("Vellum.Sheets"));
        p.addRecordingComponent(QStringLiteral("Brisling.Tidy"), false);
        std::unique_ptr<NamedComponent> sheets = p.createComponent(QStringLiteral("vellum.sheets"));
        QVERIFY(sheets);
        QVERIFY(sheets->call(QStringLiteral("PrintPreview"), {QStringLiteral("x"), 3}));
        QVERIFY(!p.createComponent(QStringLiteral("Brisling.Tidy"))->call(QStringLiteral("LoadCleanUp"), {}));
        QCOMPARE(p.componentCalls().size(), size_t(2));
        QCOMPARE(p.componentCalls()[0].progId, QStringLiteral("Vellum.Sheets"));
        QCOMPARE(p.componentCalls()[0].arguments, QVariantList({QStringLiteral("x"), 3}));
        QCOMPARE(p.componentCalls()[1].operation, QStringLiteral("LoadCleanUp"));
        QCOMPARE(p.componentsCreated().size(), 3);
    }

    void testDocumentsProgramsAndTheClipboardAreRecorded()
    {
        ScriptedPlatform p;
        QVERIFY(p.openDocument(QStringLiteral("/srv/temp.htm")));
        p.setOpenDocumentResult(false);
        QVERIFY(!p.openDocument(QStringLiteral("/srv/other.htm")));
        QCOMPARE(p.documentsOpened().size(), 2);
        p.setStartProgramResult(false);
        QVERIFY(!p.startProgram(QStringLiteral("pelcap.exe"), {QStringLiteral("-a")}, true));
        QCOMPARE(p.programsStarted().size(), size_t(1));
        QVERIFY(p.programsStarted()[0].wait);
        QVERIFY(p.clipboardImage().isEmpty());
        p.setClipboardImage("PNG");
        QCOMPARE(p.clipboardImage(), QByteArray("PNG"));
        p.clearClipboard();
        QVERIFY(p.clipboardImage().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestScriptedPlatform)
#include "TestScriptedPlatform.moc"
