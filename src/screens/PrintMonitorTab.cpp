#include "screens/PrintMonitorTab.h"

#include "platform/Platform.h"
#include "screens/Options.h"
#include "screens/OptionsFields.h"
#include "screens/OptionsNames.h"
#include "session/Session.h"
#include "store/PreferenceKeys.h"

namespace marlet {

namespace {

constexpr int Flag = 6;

const QString NoPrinter = QStringLiteral("None");

// The check boxes around a print and their keys, in the order they are loaded and saved.
struct CheckField
{
    QString name;
    const PreferenceKey* key;
};
const CheckField ClientBoxes[] = {
    {options::chkUserPrint, &keys::UserPrint},
    {options::chkWaitPrint, &keys::WaitPrint},
    {options::chkOtherPrint, &keys::OtherPrint},
    {options::chkReportPrint, &keys::ReportPrint},
    {options::chkDefaultPrinter, &keys::DefaultPrinter},
    {options::chkEnablePrint, &keys::EnablePrint},
};

// The four boxes that the master switch turns on and off with itself.
const QString SwitchedBoxes[]
    = {options::chkWaitPrint, options::chkOtherPrint, options::chkReportPrint, options::chkDefaultPrinter};
const QString Lists[] = {options::cboTimePrint, options::cboCostPrint, options::cboWordPrint, options::cboWordCPrint};
const QString Modes[] = {options::optPrintAuthorization, options::optPrintDeduction, options::optPrintNone};

QStringList oneToFiveHundred()
{
    QStringList numbers;
    for (int n = 1; n <= 500; ++n)
        numbers << QString::number(n);
    return numbers;
}

} // namespace

PrintMonitorTab::PrintMonitorTab(Options& screen)
    : m_screen(screen)
{
}

SessionPreferences PrintMonitorTab::settings() const
{
    return m_screen.session().settings();
}

// ---- building -------------------------------------------------------------------------------

void PrintMonitorTab::build(Control& panel)
{
    Control& master = m_screen.addToFrame(panel,
        ControlKind::CheckBox,
        options::chkEnablePrint,
        QStringLiteral("Enable Print Monitor Utitliy on Server for Client(s)"));
    master.setToolTip(QStringLiteral("Enables Printer monitor on Clients"));
    master.onClick = [this] { masterSwitch(); };
    master.onGotFocus = [this, &master] {
        if (master.isChecked())
            m_screen.platform().messageBox(
                QStringLiteral("Please you are adviced to Connect your Printer directly to the Server to use Print "
                               "Monitor!"),
                MsgStyle::Info);
    };
    m_screen.trackChanges(master, Flag);
    buildModes(panel);
    buildBill(panel);
    buildClientBoxes(panel);
}

void PrintMonitorTab::buildModes(Control& panel)
{
    Control& frame
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FPrintMode, QStringLiteral("Print Monitor Mode"));
    const std::tuple<QString, const char*, const char*> modes[] = {
        {options::optPrintAuthorization,
            "Use Authorization Mode to Permit Printing (Demand for Password before authorizing printing)",
            "Authorization to print is done manually "},
        {options::optPrintDeduction,
            "Use Deduction Mode to Permit Printing (Time is deducted automatically be the follow mode below)",
            "Automatic deduction of time when Clients prints"},
        {options::optPrintNone,
            "Use No Printing Mode (Printing is not block but every log of print out at kept)",
            "Authorization to print is done manually"},
    };
    for (const auto& [name, caption, tip] : modes) {
        Control& option = m_screen.addToFrame(frame, ControlKind::OptionButton, name, QLatin1String(caption));
        option.setToolTip(QLatin1String(tip));
        option.onClick = [this] { pickMode(); };
        m_screen.trackChanges(option, Flag);
    }
}

void PrintMonitorTab::buildBill(Control& panel)
{
    Control& frame
        = m_screen.addToFrame(panel, ControlKind::Frame, options::FBillType, QStringLiteral("Deduction Mode Billing"));
    Control& time = m_screen.addToFrame(frame,
        ControlKind::OptionButton,
        options::optBillTime,
        QStringLiteral("Bill Printing by Time Deduction (in min/Page):"));
    Control& timeList = m_screen.addToFrame(frame, ControlKind::ComboBox, options::cboTimePrint);
    // Its caption carries the currency of the General tab; the tab's selection sets it.
    Control& cost = m_screen.addToFrame(frame,
        ControlKind::OptionButton,
        options::optBillCost,
        QStringLiteral("Bill Printing by Cost Deduction (in N/Page)"));
    Control& costList = m_screen.addToFrame(frame, ControlKind::ComboBox, options::cboCostPrint);
    Control& printerBox = m_screen.addToFrame(frame,
        ControlKind::CheckBox,
        options::chkUserPrint,
        QStringLiteral("Use a different Billing Cost for Printer name:"));
    printerBox.setToolTip(QStringLiteral("Use a particular cost for a printer containing the word below"));
    Control& printerList = m_screen.addToFrame(frame, ControlKind::ComboBox, options::cboWordPrint);
    Control& unit = m_screen.addToFrame(frame, ControlKind::Label, options::lblPrintUnit, QStringLiteral("Cost/Page:"));
    unit.setCaption(QStringLiteral("Cost/Page:"));
    Control& rateList = m_screen.addToFrame(frame, ControlKind::ComboBox, options::cboWordCPrint);
    for (Control* option : {&time, &cost, &printerBox})
        option->onClick = [this] { pickBill(); };
    // Typed rates and printer names are taken as they are.
    for (Control* list : {&timeList, &costList, &printerList, &rateList})
        list->setEditable(true);
    for (Control* field : {&time, &cost, &printerBox, &timeList, &costList, &printerList, &rateList})
        m_screen.trackChanges(*field, Flag);
}

void PrintMonitorTab::buildClientBoxes(Control& panel)
{
    const std::tuple<QString, const char*, const char*> boxes[] = {
        {options::chkWaitPrint, "Prompt on Client Before Deduction", "Ask client to permit print deduction"},
        {options::chkOtherPrint,
            "Apply print prevention for only Computers with Norvantis",
            "Prevent only connected clients to the server from printing"},
        {options::chkReportPrint,
            "Keep Log of Print(s) on Server",
            "Reports Clients Printing to Server for summary report"},
        {options::chkDefaultPrinter,
            "Use default Printer and Other Printer for Print Billing",
            "Reports Clients Printing to Server for summary report"},
    };
    for (const auto& [name, caption, tip] : boxes) {
        Control& box = m_screen.addToFrame(panel, ControlKind::CheckBox, name, QLatin1String(caption));
        box.setToolTip(QLatin1String(tip));
        m_screen.trackChanges(box, Flag);
    }
}

// ---- loading ----------------------------------------------------------------------------------

void PrintMonitorTab::selected()
{
    // The currency as the General tab's field holds it now, edited or not.
    const Control* currency = m_screen.control(options::txtCurrency);
    m_screen[options::optBillCost].setCaption(QStringLiteral("Bill Printing by Cost Deduction (in ")
        + (currency ? currency->text() : QString()) + QStringLiteral("/Page)"));
}

void PrintMonitorTab::load()
{
    const SessionPreferences stored = settings();
    const double mode = stored.number(keys::PrintBtype);
    m_screen[mode == 1  ? options::optPrintAuthorization
            : mode == 0 ? options::optPrintDeduction
                        : options::optPrintNone]
        .setValue(1);
    m_screen[stored.truth(keys::Billtype) ? options::optBillTime : options::optBillCost].setValue(1);

    const QStringList numbers = oneToFiveHundred();
    for (const QString& list : {options::cboTimePrint, options::cboCostPrint, options::cboWordCPrint})
        m_screen[list].addItems(numbers);
    Control& printers = m_screen[options::cboWordPrint];
    printers.addItem(NoPrinter);
    printers.addItems(m_screen.platform().printers());

    m_screen[options::cboTimePrint].setText(stored.text(keys::TimePrint));
    m_screen[options::cboCostPrint].setText(stored.text(keys::CostPrint));
    const QString printer = stored.text(keys::WordPrint);
    printers.setText(printer.isEmpty() ? NoPrinter : printer);
    m_screen[options::cboWordCPrint].setText(stored.text(keys::WordCPrint));
    for (const CheckField& box : ClientBoxes)
        optionsfields::showCheckValue(m_screen[box.name], stored.text(*box.key));
    masterSwitch();
}

// ---- rules of the fields ----------------------------------------------------------------------

void PrintMonitorTab::masterSwitch()
{
    Control& master = m_screen[options::chkEnablePrint];
    if (m_screen.platform().defaultPrinter().isEmpty() && master.isChecked()) {
        m_screen.platform().messageBox(QStringLiteral("No Printer Detected!"), MsgStyle::Info);
        // Turning the box off runs this rule once more, with the box off.
        master.setValue(CheckState::Unchecked);
        return;
    }
    const bool on = master.isChecked();
    for (const QString& box : SwitchedBoxes)
        m_screen[box].setEnabled(on);
    Control& deduction = m_screen[options::optPrintDeduction];
    // The lists follow the deduction option as it stood before the modes are switched on.
    const bool listsOn = on && deduction.enabled();
    for (const QString& list : Lists)
        m_screen[list].setEnabled(listsOn);
    for (const QString& mode : Modes)
        m_screen[mode].setEnabled(on);
    Control& time = m_screen[options::optBillTime];
    Control& cost = m_screen[options::optBillCost];
    Control& printerBox = m_screen[options::chkUserPrint];
    if (!on) {
        for (Control* field : {&printerBox, &time, &cost})
            field->setEnabled(false);
        return;
    }
    if (deduction.isChecked()) {
        time.setEnabled(true);
        cost.setEnabled(true);
        printerBox.setEnabled(true);
        m_screen[options::cboTimePrint].setEnabled(time.isChecked());
        m_screen[options::cboCostPrint].setEnabled(cost.isChecked());
        m_screen[options::cboWordPrint].setEnabled(printerBox.isChecked());
        m_screen[options::cboWordCPrint].setEnabled(printerBox.isChecked());
    } else {
        for (const QString& field : {options::optBillTime,
                 options::optBillCost,
                 options::chkUserPrint,
                 options::cboWordPrint,
                 options::cboWordCPrint})
            m_screen[field].setEnabled(false);
    }
}

void PrintMonitorTab::pickMode()
{
    optionsfields::markPicked(
        m_screen, {options::optPrintAuthorization, options::optPrintDeduction, options::optPrintNone});
    if (!m_screen[options::optPrintDeduction].isChecked()) {
        for (const QString& field :
            {options::optBillTime, options::optBillCost, options::chkUserPrint, options::FBillType})
            m_screen[field].setEnabled(false);
        for (const QString& list : Lists)
            m_screen[list].setEnabled(false);
        return;
    }
    for (const QString& field : {options::FBillType, options::optBillTime, options::optBillCost, options::chkUserPrint})
        m_screen[field].setEnabled(true);
    pickBill();
}

void PrintMonitorTab::pickBill()
{
    const bool byTime = m_screen[options::optBillTime].isChecked();
    const bool deduction = m_screen[options::optPrintDeduction].isChecked();
    m_screen[options::chkUserPrint].setCaption(
        byTime ? QStringLiteral("Use this Time for Printer name:") : QStringLiteral("Use this Cost for Printer name:"));
    m_screen[options::lblPrintUnit].setCaption(byTime ? QStringLiteral("min(s)/page") : QStringLiteral("Cost/Page"));
    m_screen[options::cboTimePrint].setEnabled(byTime && deduction);
    m_screen[options::cboCostPrint].setEnabled(!byTime);
    const bool printerRate = m_screen[options::chkUserPrint].isChecked();
    m_screen[options::cboWordPrint].setEnabled(printerRate);
    m_screen[options::cboWordCPrint].setEnabled(printerRate);
    optionsfields::markPicked(m_screen, {options::optBillTime, options::optBillCost});
}

// ---- Apply ------------------------------------------------------------------------------------

void PrintMonitorTab::apply(Recordset&)
{
    SessionPreferences stored = settings();
    for (const CheckField& box : ClientBoxes)
        stored.save(*box.key, optionsfields::checkValue(m_screen[box.name]));
    const QString mode = m_screen[options::optPrintAuthorization].isChecked() ? QStringLiteral("1")
        : m_screen[options::optPrintNone].isChecked()                         ? QStringLiteral("2")
                                                                              : QStringLiteral("0");
    stored.save(keys::PrintBtype, mode);
    stored.save(keys::Billtype, optionsfields::yesNoText(m_screen[options::optBillTime].isChecked()));
    stored.save(keys::TimePrint, m_screen[options::cboTimePrint].text());
    stored.save(keys::CostPrint, m_screen[options::cboCostPrint].text());
    const QString printer = m_screen[options::cboWordPrint].text();
    stored.save(keys::WordPrint, printer == NoPrinter ? QString() : printer);
    stored.save(keys::WordCPrint, m_screen[options::cboWordCPrint].text());
}

} // namespace marlet
