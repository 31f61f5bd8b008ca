#include "desktop/FormBinder.h"
#include "desktop/FormDialog.h"
#include "desktop/QtPlatform.h"
#include "desktop/Screenshot.h"
#include "desktop/ViewFactory.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Operator.h"

#include <QAction>
#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace marlet {

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

// One control of every kind; the handlers write what fired into the log.
class SampleForm : public Form
{
public:
    explicit SampleForm(Platform& platform, const QString& name = QStringLiteral("Sample"))
        : Form(platform, name)
    {
    }

    QStringList log;
    bool refuseTab = false;
    bool refuseClose = false;
    bool holdText1 = false;

protected:
    void build() override
    {
        setCaption(latin("Sample Screen"));
        setSize(9000, 7500);

        Control& label = add(ControlKind::Label, latin("Label1"));
        label.setCaption(latin("&Name:"));
        label.setGeometry(120, 120, 1200, 255);
        label.onClick = [this] { log << latin("Label1 Click"); };

        Control& text1 = add(ControlKind::TextBox, latin("Text1"));
        text1.setGeometry(1440, 120, 1800, 315);
        text1.onKeyPress = [this](int& key) {
            log << latin("Text1 KeyPress ") + QString::number(key);
            if (QChar(key).isLetter())
                key = 0;
            else if (key == Key::Enter)
                setFocus((*this)[latin("Text2")]);
        };
        text1.onChange = [this] { log << latin("Text1 Change"); };
        watchFocus(text1);
        text1.onLostFocus = [this, &text1] {
            log << latin("Text1 LostFocus");
            if (holdText1)
                setFocus(text1);
        };

        Control& text2 = add(ControlKind::TextBox, latin("Text2"));
        text2.setGeometry(1440, 480, 1800, 315);
        text2.onKeyPress = [](int& key) { key = QChar(key).toUpper().unicode(); };
        watchFocus(text2);

        Control& text3 = add(ControlKind::TextBox, latin("Text3"));
        text3.setGeometry(1440, 840, 1800, 315);
        text3.setPasswordChar(true);
        watchFocus(text3);

        Control& button = addLabelled(ControlKind::CommandButton, latin("Command1"), latin("&Generate New Ticket(s)"));
        button.setGeometry(3480, 120, 2400, 375);
        button.onClick = [this] { log << latin("Command1 Click"); };

        Control& check = add(ControlKind::CheckBox, latin("Check1"));
        check.setCaption(latin("Make Ticket(s) in VIP"));
        check.setGeometry(3480, 600, 2400, 255);
        check.onClick = [this, &check] { log << latin("Check1 Click ") + QString::number(check.value()); };

        addOptions(latin("Frame1"), latin("Option1"), 1200);
        addOptions(latin("Frame2"), latin("Option2"), 2400);

        Control& combo = add(ControlKind::ComboBox, latin("Combo1"));
        combo.setGeometry(6000, 120, 1800, 315);
        combo.addItems({latin("SUNDAY"), latin("MONDAY"), latin("TUESDAY")});
        combo.onClick = [this, &combo] { log << latin("Combo1 Click ") + combo.text(); };
        combo.onDropDown = [this, &combo] {
            log << latin("Combo1 DropDown");
            if (combo.listCount() < 5)
                combo.addItems({latin("WEDNESDAY"), latin("THURSDAY")});
        };

        Control& editable = add(ControlKind::ComboBox, latin("Combo2"));
        editable.setEditable(true);
        editable.setGeometry(6000, 480, 1800, 315);
        editable.addItems({latin("0"), latin("5"), latin("10")});
        editable.onKeyPress = [](int& key) {
            if (!QChar(key).isDigit() && key != Key::Backspace)
                key = 0;
        };

        Control& list = add(ControlKind::ListBox, latin("List1"));
        list.setMultiSelect(true);
        list.setGeometry(6000, 840, 1800, 1200);
        list.addItems({latin("Alpha"), latin("Beta"), latin("Gamma"), latin("Delta")});
        list.onClick = [this] { log << latin("List1 Click"); };

        Control& tabs = add(ControlKind::TabStrip, latin("TabStrip1"));
        tabs.setGeometry(120, 3600, 6000, 375);
        tabs.addItems({latin("New Ticket"), latin("Custom Ticket"), latin("Settings")});
        tabs.setSelectedTab(1);
        tabs.onBeforeClick = [this](bool& cancel) {
            log << latin("TabStrip1 BeforeClick");
            cancel = refuseTab;
        };
        tabs.onClick = [this, &tabs] { log << latin("TabStrip1 Click ") + QString::number(tabs.selectedTab()); };

        Control& grid = add(ControlKind::Grid, latin("PrintList"));
        grid.setGeometry(120, 4080, 6000, 2000);
        GridData& cells = grid.grid();
        cells.setCols(3);
        cells.setRows(1);
        cells.setTextMatrix(0, 0, latin("No."));
        cells.setTextMatrix(0, 1, latin("Username"));
        cells.setTextMatrix(0, 2, latin("Password"));
        grid.onMouseDown = [this, &grid](int button, int, int, int) {
            log << latin("PrintList MouseDown %1 row %2 col %3")
                       .arg(button)
                       .arg(grid.grid().mouseRow())
                       .arg(grid.grid().mouseCol());
        };

        Control& progress = add(ControlKind::ProgressBar, latin("ProgressBar1"));
        progress.setGeometry(6240, 3600, 2400, 255);

        Control& slider = add(ControlKind::Slider, latin("Slider1"));
        slider.setGeometry(6240, 4080, 2400, 375);
        slider.setRange(0, 10);
        slider.onChange = [this, &slider] { log << latin("Slider1 Change ") + QString::number(slider.value()); };

        Control& picker = add(ControlKind::DateTimePicker, latin("DTPicker1"));
        picker.setGeometry(6240, 4560, 1200, 315);
        picker.setCustomFormat(latin("HH:mm"));
        picker.setDateTime(QDateTime(QDate(2026, 11, 21), QTime(0, 0)));
        picker.onChange
            = [this, &picker] { log << latin("DTPicker1 Change ") + picker.dateTime().toString(latin("HH:mm")); };

        Control& image = add(ControlKind::Image, latin("Image1"));
        image.setGeometry(6240, 5040, 1500, 1500);

        addMenus();

        onQueryUnload = [this](bool& cancel, int mode) {
            log << latin("QueryUnload ") + QString::number(mode);
            cancel = refuseClose;
        };
    }

private:
    void watchFocus(Control& control)
    {
        const QString name = control.name();
        control.onGotFocus = [this, name] { log << name + latin(" GotFocus"); };
        control.onLostFocus = [this, name] { log << name + latin(" LostFocus"); };
    }

    void addOptions(const QString& frameName, const QString& optionName, int top)
    {
        Control& frame = add(ControlKind::Frame, frameName);
        frame.setCaption(frameName);
        frame.setGeometry(120, top, 3000, 1100);
        for (int i = 0; i < 2; ++i) {
            Control& option = add(ControlKind::OptionButton, optionName, i);
            option.setContainer(&frame);
            option.setCaption(optionName + QString::number(i));
            option.setGeometry(120, 240 + 360 * i, 2400, 255);
            option.onClick = [this, &option] { log << option.key() + latin(" Click"); };
        }
    }

    void addMenus()
    {
        Control& file = add(ControlKind::Menu, latin("m_File"));
        file.setCaption(latin("&File"));
        const char* items[][2] = {{"m_Open", "&Open"}, {"m_Sep", "-"}, {"m_Exit", "E&xit"}};
        for (const auto& [name, caption] : items) {
            Control& item = add(ControlKind::Menu, latin(name));
            item.setCaption(latin(caption));
            item.setParentMenu(&file);
            item.onClick = [this, name = latin(name)] { log << name + latin(" Click"); };
        }
        Control& popup = add(ControlKind::Menu, latin("m_click"));
        popup.setCaption(latin("click"));
        popup.setVisible(false);
        Control& search = add(ControlKind::Menu, latin("m_searchs"));
        search.setCaption(latin("&Search for Ticket..."));
        search.setParentMenu(&popup);
    }
};

QByteArray pngOf(const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

class TestFormBinder : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void testLabelFollowsCaptionColoursAndVisibility();
    void testLabelClickReachesModel();
    void testTextBoxFollowsModel();
    void testTypingGoesThroughKeyFilter();
    void testKeyFilterReplacingKeys();
    void testBackspaceAndDeleteReachModel();
    void testEnterHandlerMovesKeyboardFocus();
    void testFocusMovesFireLostFocus();
    void testTabKeyMovesInFormOrder();
    void testRefusedFocusPutsFocusBack();
    void testFirstControlTakesFocusOnShow();
    void testButtonCaptionKeepsAcceleratorAndClickFires();
    void testCheckBoxToggleFiresClick();
    void testCheckBoxFollowsModelValues();
    void testOptionButtonsExclusivePerFrame();
    void testComboPickFiresClick();
    void testComboDropDownFillsListFirst();
    void testEditableComboTakesFilteredKeys();
    void testListMultiSelect();
    void testListFollowsModel();
    void testTabChangeRefusedByBeforeClick();
    void testTabStripFollowsModel();
    void testGridShowsCellsAndHeader();
    void testGridRightClickReachesMouseDownWithRow();
    void testGridLeftClickMovesCurrentCell();
    void testGridHeaderClickIsRowZero();
    void testGridOfHundredThousandRows();
    void testProgressBarFollowsModel();
    void testSliderMoveChangesModel();
    void testDatePickerUsesCustomFormat();
    void testImageShowsPicture();
    void testMenusFollowModel();
    void testMenuItemChosenFiresClick();
    void testFrameHidesItsControls();
    void testTwipsPlacement();
    void testTitleBarCloseRefusedByQueryUnload();
    void testEscapeDoesNotCloseForm();
    void testHandMadeViewIsBound();
    void testFormBuiltAnewIsBoundAgain();
    void testScreenshotRendersForm();

private:
    template<typename W>
    W* widget(const QString& name) const
    {
        W* found = m_dialog->findChild<W*>(name);
        if (!found)
            qWarning("no widget %s", qPrintable(name));
        return found;
    }
    Control& control(const QString& key) const { return *m_form->find(key); }
    void show();
    void click(QWidget* widget);
    void clickList(const QString& name, int row);
    void clickGrid(int row, int col, Qt::MouseButton button);
    QStringList takeLog();

    std::unique_ptr<QtPlatform> m_platform;
    std::unique_ptr<SampleForm> m_form;
    std::unique_ptr<FormDialog> m_dialog;
};

void TestFormBinder::init()
{
    m_platform = std::make_unique<QtPlatform>();
    m_form = std::make_unique<SampleForm>(*m_platform);
    m_form->load();
    show();
}

void TestFormBinder::cleanup()
{
    m_dialog.reset();
    m_form.reset();
    m_platform.reset();
}

void TestFormBinder::show()
{
    m_dialog = std::make_unique<FormDialog>(*m_form);
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    QCoreApplication::processEvents();
    m_form->log.clear();
}

void TestFormBinder::click(QWidget* target)
{
    QVERIFY(target);
    // Check and option boxes answer only on their mark and caption: click near the mark.
    const bool box = qobject_cast<QCheckBox*>(target) || qobject_cast<QRadioButton*>(target);
    QTest::mouseClick(target, Qt::LeftButton, {}, box ? QPoint(6, target->height() / 2) : target->rect().center());
}

void TestFormBinder::clickList(const QString& name, int row)
{
    auto* list = widget<QListWidget>(name);
    QVERIFY(list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

void TestFormBinder::clickGrid(int row, int col, Qt::MouseButton button)
{
    auto* table = widget<QTableView>(latin("PrintList"));
    QVERIFY(table);
    QCoreApplication::processEvents();
    const QRect cell = table->visualRect(table->model()->index(row, col));
    QVERIFY(cell.isValid());
    QTest::mouseClick(table->viewport(), button, {}, cell.center());
}

QStringList TestFormBinder::takeLog()
{
    return std::exchange(m_form->log, QStringList());
}

void TestFormBinder::testLabelFollowsCaptionColoursAndVisibility()
{
    auto* label = widget<QLabel>(latin("Label1"));
    QVERIFY(label);
    QCOMPARE(label->text(), latin("&Name:"));
    QCOMPARE(label->buddy(), widget<QLineEdit>(latin("Text1")));

    control(latin("Label1")).setCaption(latin("Processing .... Please wait "));
    QCOMPARE(label->text(), latin("Processing .... Please wait "));

    control(latin("Label1")).setForeColor(255);
    QCOMPARE(label->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    control(latin("Label1")).setBackColor(16744576);
    QCOMPARE(label->palette().color(QPalette::Window), QColor(128, 128, 255));
    QVERIFY(label->autoFillBackground());

    control(latin("Label1")).setToolTip(latin("0 Record(s)"));
    QCOMPARE(label->toolTip(), latin("0 Record(s)"));
    control(latin("Label1")).setEnabled(false);
    QVERIFY(!label->isEnabled());
    control(latin("Label1")).setVisible(false);
    QVERIFY(label->isHidden());
    control(latin("Label1")).setVisible(true);
    QVERIFY(label->isVisible());
}

void TestFormBinder::testLabelClickReachesModel()
{
    click(widget<QLabel>(latin("Label1")));
    QCOMPARE(takeLog(), QStringList {latin("Label1 Click")});
}

void TestFormBinder::testTextBoxFollowsModel()
{
    auto* line = widget<QLineEdit>(latin("Text1"));
    QVERIFY(line);
    Control& text1 = control(latin("Text1"));
    text1.setText(latin("NVT"));
    QCOMPARE(line->text(), latin("NVT"));
    text1.setSelection(1, 2);
    QCOMPARE(line->selectedText(), latin("VT"));
    text1.setMaxLength(7);
    QCOMPARE(line->maxLength(), 7);
    text1.setLocked(true);
    QVERIFY(line->isReadOnly());
    text1.setEnabled(false);
    QVERIFY(!line->isEnabled());
    QCOMPARE(widget<QLineEdit>(latin("Text3"))->echoMode(), QLineEdit::Password);
    QCOMPARE(widget<QLineEdit>(latin("Text2"))->echoMode(), QLineEdit::Normal);
}

void TestFormBinder::testTypingGoesThroughKeyFilter()
{
    auto* line = widget<QLineEdit>(latin("Text1"));
    click(line);
    takeLog();
    QTest::keyClicks(line, latin("a1b2."));
    QCOMPARE(control(latin("Text1")).text(), latin("12."));
    QCOMPARE(line->text(), latin("12."));
    QCOMPARE(line->cursorPosition(), 3);
    const QStringList expected {latin("Text1 KeyPress 97"),
        latin("Text1 KeyPress 49"),
        latin("Text1 Change"),
        latin("Text1 KeyPress 98"),
        latin("Text1 KeyPress 50"),
        latin("Text1 Change"),
        latin("Text1 KeyPress 46"),
        latin("Text1 Change")};
    QCOMPARE(takeLog(), expected);
}

void TestFormBinder::testKeyFilterReplacingKeys()
{
    auto* line = widget<QLineEdit>(latin("Text2"));
    click(line);
    QTest::keyClicks(line, latin("ab1"));
    QCOMPARE(control(latin("Text2")).text(), latin("AB1"));
    QCOMPARE(line->text(), latin("AB1"));
}

void TestFormBinder::testBackspaceAndDeleteReachModel()
{
    auto* line = widget<QLineEdit>(latin("Text1"));
    click(line);
    QTest::keyClicks(line, latin("123"));
    QTest::keyClick(line, Qt::Key_Backspace);
    QCOMPARE(control(latin("Text1")).text(), latin("12"));
    QTest::keyClick(line, Qt::Key_Home);
    QCOMPARE(control(latin("Text1")).selStart(), 0);
    QTest::keyClick(line, Qt::Key_Delete);
    QCOMPARE(control(latin("Text1")).text(), latin("2"));
    QCOMPARE(line->text(), latin("2"));
    QCOMPARE(control(latin("Text1")).selStart(), 0);
    QTest::keyClicks(line, latin("9"));
    QCOMPARE(control(latin("Text1")).text(), latin("92"));
}

void TestFormBinder::testEnterHandlerMovesKeyboardFocus()
{
    auto* line = widget<QLineEdit>(latin("Text1"));
    click(line);
    takeLog();
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(m_form->focused(), &control(latin("Text2")));
    QCOMPARE(QApplication::focusWidget(), widget<QLineEdit>(latin("Text2")));
    const QStringList expected {latin("Text1 KeyPress 13"), latin("Text1 LostFocus"), latin("Text2 GotFocus")};
    QCOMPARE(takeLog(), expected);
    QCOMPARE(control(latin("Text1")).text(), QString());
}

void TestFormBinder::testFocusMovesFireLostFocus()
{
    click(widget<QLineEdit>(latin("Text1")));
    takeLog();
    click(widget<QLineEdit>(latin("Text2")));
    const QStringList expected {latin("Text1 LostFocus"), latin("Text2 GotFocus")};
    QCOMPARE(takeLog(), expected);
    QCOMPARE(m_form->focused(), &control(latin("Text2")));

    click(widget<QPushButton>(latin("Command1")));
    const QStringList toButton {latin("Text2 LostFocus"), latin("Command1 Click")};
    QCOMPARE(takeLog(), toButton);
    QCOMPARE(m_form->focused(), &control(latin("Command1")));
}

void TestFormBinder::testTabKeyMovesInFormOrder()
{
    auto* line = widget<QLineEdit>(latin("Text2"));
    click(line);
    takeLog();
    QTest::keyClick(line, Qt::Key_Tab);
    QCOMPARE(m_form->focused(), &control(latin("Text3")));
    QCOMPARE(QApplication::focusWidget(), widget<QLineEdit>(latin("Text3")));
    const QStringList expected {latin("Text2 LostFocus"), latin("Text3 GotFocus")};
    QCOMPARE(takeLog(), expected);

    // A disabled control is passed over.
    control(latin("Command1")).setEnabled(false);
    QTest::keyClick(widget<QLineEdit>(latin("Text3")), Qt::Key_Tab);
    QCOMPARE(m_form->focused(), &control(latin("Check1")));
    QCOMPARE(QApplication::focusWidget(), widget<QCheckBox>(latin("Check1")));
}

void TestFormBinder::testRefusedFocusPutsFocusBack()
{
    auto* text1 = widget<QLineEdit>(latin("Text1"));
    click(text1);
    m_form->holdText1 = true;
    takeLog();
    click(widget<QLineEdit>(latin("Text2")));
    QCOMPARE(m_form->focused(), &control(latin("Text1")));
    QCOMPARE(QApplication::focusWidget(), text1);
    QVERIFY(takeLog().contains(latin("Text1 LostFocus")));
    // Typing still goes to the control the model keeps the focus on.
    QTest::keyClicks(QApplication::focusWidget(), latin("5"));
    QCOMPARE(control(latin("Text1")).text(), latin("5"));
    QCOMPARE(control(latin("Text2")).text(), QString());
}

void TestFormBinder::testFirstControlTakesFocusOnShow()
{
    // Text1 is the first control that can take the focus in the form's order.
    m_dialog.reset();
    m_form->unload();
    m_form->load();
    m_form->log.clear();
    m_dialog = std::make_unique<FormDialog>(*m_form);
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    QCOMPARE(m_form->focused(), &control(latin("Text1")));
    QCOMPARE(QApplication::focusWidget(), widget<QLineEdit>(latin("Text1")));
    QCOMPARE(m_form->log, QStringList {latin("Text1 GotFocus")});
}

void TestFormBinder::testButtonCaptionKeepsAcceleratorAndClickFires()
{
    auto* button = widget<QPushButton>(latin("Command1"));
    QVERIFY(button);
    QCOMPARE(button->text(), latin("&Generate New Ticket(s)"));
    control(latin("Command1")).setCaption(latin("Stop"));
    control(latin("Command1")).setBackColor(255);
    QCOMPARE(button->text(), latin("Stop"));
    QCOMPARE(button->palette().color(QPalette::Button), QColor(255, 0, 0));
    click(button);
    QVERIFY(takeLog().contains(latin("Command1 Click")));
    control(latin("Command1")).setEnabled(false);
    click(button);
    QVERIFY(!takeLog().contains(latin("Command1 Click")));
}

void TestFormBinder::testCheckBoxToggleFiresClick()
{
    auto* check = widget<QCheckBox>(latin("Check1"));
    click(check);
    QCOMPARE(control(latin("Check1")).value(), CheckState::Checked);
    QCOMPARE(check->checkState(), Qt::Checked);
    click(check);
    QCOMPARE(control(latin("Check1")).value(), CheckState::Unchecked);
    QCOMPARE(check->checkState(), Qt::Unchecked);
    const QStringList expected {latin("Check1 Click 1"), latin("Check1 Click 0")};
    QCOMPARE(takeLog().filter(latin("Check1")), expected);
    QTest::keyClick(check, Qt::Key_Space);
    QCOMPARE(control(latin("Check1")).value(), CheckState::Checked);
}

void TestFormBinder::testCheckBoxFollowsModelValues()
{
    auto* check = widget<QCheckBox>(latin("Check1"));
    QCOMPARE(check->text(), latin("Make Ticket(s) in VIP"));
    control(latin("Check1")).setValue(CheckState::Grayed);
    QCOMPARE(check->checkState(), Qt::PartiallyChecked);
    control(latin("Check1")).setValue(CheckState::Checked);
    QCOMPARE(check->checkState(), Qt::Checked);
    // The model's own click fired as the value changed, once each; the widget added none.
    QCOMPARE(takeLog(), (QStringList {latin("Check1 Click 2"), latin("Check1 Click 1")}));
}

void TestFormBinder::testOptionButtonsExclusivePerFrame()
{
    auto* first1 = widget<QRadioButton>(latin("Option1(0)"));
    auto* second1 = widget<QRadioButton>(latin("Option1(1)"));
    auto* first2 = widget<QRadioButton>(latin("Option2(0)"));
    click(first1);
    click(first2);
    QCOMPARE(control(latin("Option1(0)")).value(), 1);
    QCOMPARE(control(latin("Option2(0)")).value(), 1);
    QVERIFY(first1->isChecked());
    QVERIFY(first2->isChecked());

    click(second1);
    QCOMPARE(control(latin("Option1(0)")).value(), 0);
    QCOMPARE(control(latin("Option1(1)")).value(), 1);
    QVERIFY(!first1->isChecked());
    QVERIFY(second1->isChecked());
    QVERIFY(first2->isChecked());

    // Clicking the chosen one again keeps it chosen and fires nothing.
    takeLog();
    click(second1);
    QVERIFY(second1->isChecked());
    QVERIFY(takeLog().filter(latin("Click")).isEmpty());
}

void TestFormBinder::testComboPickFiresClick()
{
    auto* combo = widget<QComboBox>(latin("Combo1"));
    QVERIFY(combo);
    QCOMPARE(combo->count(), 3);
    control(latin("Combo1")).setListIndex(0);
    QCOMPARE(combo->currentIndex(), 0);
    takeLog();
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(control(latin("Combo1")).listIndex(), 1);
    QCOMPARE(control(latin("Combo1")).text(), latin("MONDAY"));
    QCOMPARE(combo->currentText(), latin("MONDAY"));
    QVERIFY(takeLog().contains(latin("Combo1 Click MONDAY")));

    control(latin("Combo1")).removeItem(0);
    QCOMPARE(combo->count(), 2);
    QCOMPARE(combo->itemText(0), latin("MONDAY"));
    control(latin("Combo1")).clear();
    QCOMPARE(combo->count(), 0);
}

void TestFormBinder::testComboDropDownFillsListFirst()
{
    auto* combo = widget<QComboBox>(latin("Combo1"));
    combo->showPopup();
    QVERIFY(takeLog().contains(latin("Combo1 DropDown")));
    QCOMPARE(combo->count(), 5);
    QCOMPARE(combo->itemText(4), latin("THURSDAY"));
    combo->hidePopup();
}

void TestFormBinder::testEditableComboTakesFilteredKeys()
{
    auto* combo = widget<QComboBox>(latin("Combo2"));
    QVERIFY(combo && combo->isEditable());
    click(combo->lineEdit());
    QCOMPARE(m_form->focused(), &control(latin("Combo2")));
    QTest::keyClicks(combo->lineEdit(), latin("1x5"));
    QCOMPARE(control(latin("Combo2")).text(), latin("15"));
    QCOMPARE(combo->currentText(), latin("15"));
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    QCOMPARE(combo->count(), 3);
    control(latin("Combo2")).setText(latin("50"));
    QCOMPARE(combo->lineEdit()->text(), latin("50"));
}

void TestFormBinder::testListMultiSelect()
{
    clickList(latin("List1"), 0);
    clickList(latin("List1"), 2);
    Control& list = control(latin("List1"));
    QVERIFY(list.selected(0));
    QVERIFY(!list.selected(1));
    QVERIFY(list.selected(2));
    QCOMPARE(list.selectedCount(), 2);
    auto* widgetList = widget<QListWidget>(latin("List1"));
    QCOMPARE(widgetList->selectedItems().size(), 2);

    clickList(latin("List1"), 0);
    QVERIFY(!list.selected(0));
    QVERIFY(!widgetList->item(0)->isSelected());
    QCOMPARE(takeLog().filter(latin("List1 Click")).size(), 3);
}

void TestFormBinder::testListFollowsModel()
{
    auto* widgetList = widget<QListWidget>(latin("List1"));
    Control& list = control(latin("List1"));
    QCOMPARE(widgetList->count(), 4);
    list.setSelected(1, true);
    QVERIFY(widgetList->item(1)->isSelected());
    list.addItem(latin("Epsilon"));
    QCOMPARE(widgetList->count(), 5);
    QCOMPARE(widgetList->item(4)->text(), latin("Epsilon"));
    list.removeItem(0);
    QCOMPARE(widgetList->item(0)->text(), latin("Beta"));
    QVERIFY(widgetList->item(0)->isSelected());
}

void TestFormBinder::testTabChangeRefusedByBeforeClick()
{
    auto* tabs = widget<QTabBar>(latin("TabStrip1"));
    QVERIFY(tabs);
    m_form->refuseTab = true;
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(control(latin("TabStrip1")).selectedTab(), 1);
    QCOMPARE(takeLog().filter(latin("TabStrip1")), QStringList {latin("TabStrip1 BeforeClick")});

    m_form->refuseTab = false;
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(control(latin("TabStrip1")).selectedTab(), 2);
    const QStringList expected {latin("TabStrip1 BeforeClick"), latin("TabStrip1 Click 2")};
    QCOMPARE(takeLog().filter(latin("TabStrip1")), expected);
}

void TestFormBinder::testTabStripFollowsModel()
{
    auto* tabs = widget<QTabBar>(latin("TabStrip1"));
    QCOMPARE(tabs->count(), 3);
    QCOMPARE(tabs->tabText(1), latin("Custom Ticket"));
    control(latin("TabStrip1")).setSelectedTab(3);
    QCOMPARE(tabs->currentIndex(), 2);
    QCOMPARE(takeLog().filter(latin("TabStrip1")), QStringList {latin("TabStrip1 Click 3")});
}

void TestFormBinder::testGridShowsCellsAndHeader()
{
    GridData& cells = control(latin("PrintList")).grid();
    cells.addItem(latin("1\tNVT1234\tABCD"));
    cells.addItem(latin("2\tNVT5678\tEFGH"));
    cells.setColWidth(1, 1500);
    auto* table = widget<QTableView>(latin("PrintList"));
    QTRY_COMPARE(table->model()->rowCount(), 2);
    QCOMPARE(table->model()->columnCount(), 3);
    QCOMPARE(table->model()->index(1, 1).data().toString(), latin("NVT5678"));
    QCOMPARE(table->model()->headerData(1, Qt::Horizontal).toString(), latin("Username"));
    // 1500 twips are 100 pixels in a font with 6-pixel digits; a wider font widens the column.
    QVERIFY(table->columnWidth(1) >= 100);
    QVERIFY(table->columnWidth(1) >= 100 * table->fontMetrics().horizontalAdvance(u'0') / 6);

    cells.setTextMatrix(2, 2, latin("WXYZ"));
    QCOMPARE(table->model()->index(1, 2).data().toString(), latin("WXYZ"));
    cells.setRows(1);
    QTRY_COMPARE(table->model()->rowCount(), 0);
}

void TestFormBinder::testGridRightClickReachesMouseDownWithRow()
{
    GridData& cells = control(latin("PrintList")).grid();
    cells.addItem(latin("1\tNVT1234\tABCD"));
    cells.addItem(latin("2\tNVT5678\tEFGH"));
    clickGrid(1, 2, Qt::RightButton);
    QCOMPARE(takeLog().filter(latin("MouseDown")), QStringList {latin("PrintList MouseDown 2 row 2 col 2")});
    QCOMPARE(m_form->focused(), &control(latin("PrintList")));
    // The right button leaves the current cell where it was.
    QCOMPARE(cells.row(), 0);
}

void TestFormBinder::testGridLeftClickMovesCurrentCell()
{
    GridData& cells = control(latin("PrintList")).grid();
    cells.addItem(latin("1\tNVT1234\tABCD"));
    cells.addItem(latin("2\tNVT5678\tEFGH"));
    clickGrid(1, 1, Qt::LeftButton);
    QCOMPARE(takeLog().filter(latin("MouseDown")), QStringList {latin("PrintList MouseDown 1 row 2 col 1")});
    QCOMPARE(cells.row(), 2);
    QCOMPARE(cells.col(), 1);
    auto* table = widget<QTableView>(latin("PrintList"));
    QTRY_COMPARE(table->currentIndex().row(), 1);
    QVERIFY(table->selectionModel()->isSelected(table->model()->index(1, 1)));

    // The model moving the current cell moves the view's.
    cells.setRow(1);
    QTRY_COMPARE(table->currentIndex().row(), 0);
}

void TestFormBinder::testGridHeaderClickIsRowZero()
{
    auto* table = widget<QTableView>(latin("PrintList"));
    QHeaderView* header = table->horizontalHeader();
    QVERIFY(header->isVisible());
    const QPoint point(header->sectionViewportPosition(1) + 5, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::RightButton, {}, point);
    QCOMPARE(takeLog().filter(latin("MouseDown")), QStringList {latin("PrintList MouseDown 2 row 0 col 1")});
}

void TestFormBinder::testGridOfHundredThousandRows()
{
    constexpr int rows = 100000;
    GridData& cells = control(latin("PrintList")).grid();
    auto* table = widget<QTableView>(latin("PrintList"));
    QElapsedTimer timer;
    timer.start();
    for (int i = 1; i <= rows; ++i)
        cells.addItem(QString::number(i) + latin("\tNVT") + QString::number(i) + latin("\tPASS"));
    QCoreApplication::processEvents();
    table->scrollToBottom();
    QCoreApplication::processEvents();
    qInfo("%d rows filled and shown in %lld ms", rows, timer.elapsed());
    QCOMPARE(table->model()->rowCount(), rows);
    QCOMPARE(table->model()->index(rows - 1, 1).data().toString(), latin("NVT100000"));
    QCOMPARE(table->indexAt(QPoint(5, table->viewport()->height() - 5)).row(), rows - 1);
}

void TestFormBinder::testProgressBarFollowsModel()
{
    auto* bar = widget<QProgressBar>(latin("ProgressBar1"));
    QVERIFY(bar);
    Control& progress = control(latin("ProgressBar1"));
    progress.setRange(0, 50);
    progress.setValue(25);
    QCOMPARE(bar->maximum(), 50);
    QCOMPARE(bar->value(), 25);
    progress.setVisible(false);
    QVERIFY(bar->isHidden());
}

void TestFormBinder::testSliderMoveChangesModel()
{
    auto* slider = widget<QSlider>(latin("Slider1"));
    QVERIFY(slider);
    QCOMPARE(slider->maximum(), 10);
    control(latin("Slider1")).setValue(4);
    QCOMPARE(slider->value(), 4);
    takeLog();
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    QCOMPARE(control(latin("Slider1")).value(), 5);
    QCOMPARE(takeLog().filter(latin("Slider1")), QStringList {latin("Slider1 Change 5")});
    QCOMPARE(m_form->focused(), &control(latin("Slider1")));
}

void TestFormBinder::testDatePickerUsesCustomFormat()
{
    auto* picker = widget<QDateTimeEdit>(latin("DTPicker1"));
    QVERIFY(picker);
    QCOMPARE(picker->displayFormat(), latin("HH:mm"));
    QCOMPARE(picker->text(), latin("00:00"));
    control(latin("DTPicker1")).setDateTime(QDateTime(QDate(2026, 11, 21), QTime(6, 0)));
    QCOMPARE(picker->text(), latin("06:00"));
    takeLog();
    picker->setFocus();
    picker->setCurrentSection(QDateTimeEdit::HourSection);
    QTest::keyClick(picker, Qt::Key_Up);
    QCOMPARE(control(latin("DTPicker1")).dateTime().time(), QTime(7, 0));
    QCOMPARE(takeLog().filter(latin("DTPicker1")), QStringList {latin("DTPicker1 Change 07:00")});
}

void TestFormBinder::testImageShowsPicture()
{
    auto* image = widget<QLabel>(latin("Image1"));
    QVERIFY(image);
    QVERIFY(image->pixmap().isNull());
    control(latin("Image1")).setPicture(pngOf(QSize(20, 10), Qt::red));
    QCOMPARE(image->pixmap().size(), QSize(20, 10));
    QCOMPARE(image->pixmap().toImage().pixelColor(5, 5), QColor(Qt::red));
    control(latin("Image1")).setPicture(QByteArray());
    QVERIFY(image->pixmap().isNull());
}

void TestFormBinder::testMenusFollowModel()
{
    auto* bar = m_dialog->findChild<QMenuBar*>();
    QVERIFY(bar);
    QVERIFY(bar->isVisible());
    auto* open = m_dialog->findChild<QAction*>(latin("m_Open"));
    auto* separator = m_dialog->findChild<QAction*>(latin("m_Sep"));
    QVERIFY(open && separator);
    QCOMPARE(open->text(), latin("&Open"));
    QVERIFY(separator->isSeparator());
    control(latin("m_Open")).setEnabled(false);
    QVERIFY(!open->isEnabled());
    control(latin("m_Open")).setCaption(latin("&Open..."));
    QCOMPARE(open->text(), latin("&Open..."));
    control(latin("m_File")).setVisible(false);
    QVERIFY(bar->isHidden());
}

void TestFormBinder::testMenuItemChosenFiresClick()
{
    m_dialog->findChild<QAction*>(latin("m_Exit"))->trigger();
    QCOMPARE(takeLog(), QStringList {latin("m_Exit Click")});
}

void TestFormBinder::testFrameHidesItsControls()
{
    auto* frame = widget<QGroupBox>(latin("Frame1"));
    QVERIFY(frame);
    QCOMPARE(frame->title(), latin("Frame1"));
    control(latin("Frame1")).setCaption(latin("Selection"));
    QCOMPARE(frame->title(), latin("Selection"));
    auto* option = widget<QRadioButton>(latin("Option1(0)"));
    QVERIFY(option->isVisible());
    control(latin("Frame1")).setVisible(false);
    QVERIFY(!option->isVisible());
    control(latin("Frame1")).setVisible(true);
    control(latin("Frame1")).setEnabled(false);
    QVERIFY(!option->isEnabled());
}

void TestFormBinder::testTwipsPlacement()
{
    auto* line = widget<QLineEdit>(latin("Text1"));
    QCOMPARE(line->geometry(), QRect(96, 8, 120, 21));
    auto* option = widget<QRadioButton>(latin("Option1(1)"));
    QCOMPARE(option->parentWidget(), widget<QGroupBox>(latin("Frame1")));
    QCOMPARE(option->geometry().topLeft(), QPoint(8, 40));
    control(latin("Text1")).setLeft(3000);
    QCOMPARE(line->x(), 200);
    QCOMPARE(m_dialog->windowTitle(), latin("Sample Screen"));
    QCOMPARE(m_dialog->findChild<QWidget*>(latin("formView"))->size(), QSize(592, 473));
}

void TestFormBinder::testTitleBarCloseRefusedByQueryUnload()
{
    m_form->refuseClose = true;
    QVERIFY(!m_dialog->close());
    QVERIFY(m_dialog->isVisible());
    QVERIFY(m_form->isLoaded());
    QCOMPARE(takeLog(), QStringList {latin("QueryUnload 0")});

    m_form->refuseClose = false;
    QVERIFY(m_dialog->close());
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(!m_form->isLoaded());
    QCOMPARE(takeLog(), QStringList {latin("QueryUnload 0")});
}

void TestFormBinder::testEscapeDoesNotCloseForm()
{
    auto* line = widget<QLineEdit>(latin("Text1"));
    click(line);
    takeLog();
    QTest::keyClick(line, Qt::Key_Escape);
    QVERIFY(m_dialog->isVisible());
    QVERIFY(m_form->isLoaded());
    QCOMPARE(takeLog(), QStringList {latin("Text1 KeyPress 27")});
    // Closing from the form's own code ends the window.
    QVERIFY(m_form->unload());
    QVERIFY(!m_dialog->isVisible());
}

void TestFormBinder::testHandMadeViewIsBound()
{
    ViewFactory::add(latin("HandMade"), [](Form& form, QWidget& root, ViewWidgets& widgets) {
        auto* layout = new QFormLayout(&root);
        auto* edit = new QLineEdit(&root);
        edit->setObjectName(latin("ownName"));
        layout->addRow(latin("Number:"), edit);
        widgets.add(form[latin("Text1")], edit);
        // A widget of the wrong kind is not used.
        auto* wrong = new QLabel(&root);
        layout->addRow(wrong);
        widgets.add(latin("text2"), wrong);
    });
    m_dialog.reset();
    SampleForm handMade(*m_platform, latin("HandMade"));
    handMade.load();
    QTest::ignoreMessage(QtWarningMsg, "View of HandMade shows Text2 with a widget that doesn't fit it");
    FormDialog dialog(handMade);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    ViewFactory::remove(latin("HandMade"));

    FormBinder* binder = dialog.binder();
    QVERIFY(!binder->placedByTwips());
    auto* edit = qobject_cast<QLineEdit*>(binder->widgetFor(*handMade.find(latin("Text1"))));
    QVERIFY(edit);
    QCOMPARE(edit->objectName(), latin("Text1"));
    QVERIFY(edit->isVisible());
    click(edit);
    QTest::keyClicks(edit, latin("a7"));
    QCOMPARE(handMade.find(latin("Text1"))->text(), latin("7"));

    // Controls the view left out have widgets, bound but out of sight.
    QWidget* text2 = binder->widgetFor(*handMade.find(latin("Text2")));
    QVERIFY(qobject_cast<QLineEdit*>(text2));
    QVERIFY(!text2->isVisibleTo(&dialog));
    handMade.find(latin("Text2"))->setText(latin("kept"));
    QCOMPARE(qobject_cast<QLineEdit*>(text2)->text(), latin("kept"));
}

void TestFormBinder::testFormBuiltAnewIsBoundAgain()
{
    QVERIFY(m_form->unload());
    m_form->load();
    auto* line = qobject_cast<QLineEdit*>(m_dialog->binder()->widgetFor(control(latin("Text1"))));
    QVERIFY(line);
    QVERIFY(line->isVisibleTo(m_dialog.get()));
    control(latin("Text1")).setText(latin("again"));
    QCOMPARE(line->text(), latin("again"));
    QCOMPARE(line->text(), latin("again"));
    // The widgets of the first load go once the event loop comes round.
    QTRY_COMPARE(m_dialog->findChildren<QLineEdit*>(latin("Text1")).size(), 1);
}

void TestFormBinder::testScreenshotRendersForm()
{
    QTemporaryDir temporary;
    const QString folder = qEnvironmentVariableIsSet("MARLET_SCREENS_DIR") ? qEnvironmentVariable("MARLET_SCREENS_DIR")
                                                                           : temporary.path();
    m_dialog.reset();
    control(latin("Text1")).setText(latin("NVT"));
    const QString path = saveScreenshot(*m_form, folder);
    QCOMPARE(path, folder + latin("/Sample.png"));
    QImage picture(path);
    QVERIFY(!picture.isNull());
    QVERIFY(picture.width() >= 592);
    QVERIFY(picture.height() >= 473);
}

} // namespace marlet

QTEST_MAIN(marlet::TestFormBinder)
#include "TestFormBinder.moc"
