#include "screens/GenAcc.h"

#include "inventory/TicketDeletion.h"
#include "inventory/TicketListing.h"
#include "inventory/TicketRecharge.h"
#include "inventory/TicketSearch.h"
#include "issuing/BatchGeneration.h"
#include "issuing/CustomTicket.h"
#include "issuing/GenAccNames.h"
#include "members/MemberinfoNames.h"
#include "members/MembershipTicket.h"
#include "platform/KeyRules.h"
#include "platform/Platform.h"
#include "screens/GenAccControls.h"
#include "screens/MemberFields.h"
#include "screens/ScreenOpener.h"
#include "session/Session.h"
#include "values/Numbers.h"

// The controls of the generate screen's five tabs, in the order of the tabs and, within each, in
// the order the screen's tab key walks them.
namespace marlet {

namespace {

// The two entry boxes of the selection take digits, the full stop and Backspace; any other key has
// no effect.
void filterEntryKeys(Control& box)
{
    keyrules::lockUntilReleased(box, keyrules::isNumericKey);
    keyrules::selectAllOnFocus(box);
}

} // namespace

void GenAcc::buildNewTab(Control& frame)
{
    Control& manual = addToFrame(frame, ControlKind::Frame, genacc::FManual);
    Control& number
        = addToFrame(manual, ControlKind::ComboBox, genacc::cboNumber, QStringLiteral("Number of Ticket(s):"));
    Control& hours = addToFrame(manual, ControlKind::ComboBox, genacc::cboHours, QStringLiteral("Hours:"));
    Control& minutes = addToFrame(manual, ControlKind::ComboBox, genacc::cboMinutes, QStringLiteral("Min(s):"));
    addToFrame(manual, ControlKind::Label, genacc::lblCost);
    addToFrame(manual, ControlKind::Label, genacc::lblCurrency);
    Control& cost = addToFrame(manual, ControlKind::ComboBox, genacc::cboCost, QStringLiteral("Cost for each Ticket:"));
    for (Control* field : {&number, &hours, &minutes, &cost}) {
        field->setEditable(true);
        genacc::filterNumericKeys(*field);
    }
    number.onLostFocus = [this, &number] {
        if (!values::isNumeric(number.text())) {
            number.setText(QStringLiteral("50"));
            platform().messageBox(QStringLiteral("A numeric Value is required! (eg. 123)"), MsgStyle::Warning);
        } else if (values::leadingNumber(number.text()) > 999) {
            platform().messageBox(
                QStringLiteral("You can't generate more than 999 tickets at a time!"), MsgStyle::Warning);
            number.setText(QStringLiteral("999"));
        }
    };
    number.onDropDown = [this, &number] {
        if (number.listCount() >= 366)
            return;
        for (int i = 370; i <= 995; i += 5) {
            number.addItem(QString::number(i));
            platform().yield();
        }
    };
    genacc::wireHoursCheck(*this, hours);
    genacc::wireCostList(*this, cost);

    Control& quick = addToFrame(frame, ControlKind::Frame, genacc::FQuick, QStringLiteral("Quick-Ticket"));
    // Its text reads "None" before a type is picked, so it takes text beside its entries.
    addToFrame(quick, ControlKind::ComboBox, genacc::cboTicketType, QStringLiteral("Ticket Type:")).setEditable(true);
    addToFrame(quick, ControlKind::ComboBox, genacc::cboPages, QStringLiteral("No. of Pages:"));
    addToFrame(quick, ControlKind::ComboBox, genacc::cboSizeType, QStringLiteral("Ticket Size Type:"));

    Control& expiry = addToFrame(frame, ControlKind::ComboBox, genacc::cboExpiry, QStringLiteral("Expiration:"));
    Control& days = addToFrame(frame, ControlKind::ComboBox, genacc::txtDays, QStringLiteral("Days:"));
    Control& daysLabel = addToFrame(frame, ControlKind::Label, genacc::lblDays, QStringLiteral("day(s)"));
    days.setEditable(true);
    genacc::filterNumericKeys(days);
    genacc::wireExpiry(*this, expiry, days, daysLabel);

    Control& prefix = addToFrame(frame, ControlKind::TextBox, genacc::txtPrefix, QStringLiteral("Ticket Prefix:"));
    prefix.setToolTip(QStringLiteral("This will make up the first digits contained in your ticket."));
    prefix.onChange = [this] { savePrefix(); };
    prefix.onLostFocus = [this, &prefix] {
        if (prefix.text().isEmpty())
            prefix.setText(m_session.settings().text(keys::STR));
    };

    Control& vip = addToFrame(frame, ControlKind::CheckBox, genacc::chkVIP, QStringLiteral("Make Ticket(s) in VIP"));
    genacc::wireVip(*this, vip, nullptr);
    // On the screen, read by nothing.
    addToFrame(frame, ControlKind::CheckBox, genacc::chkFlex, QStringLiteral("Make Ticket(s) in FlexTicket"));
    Control& period = addToFrame(
        frame, ControlKind::CheckBox, genacc::chkTimePeriod, QStringLiteral("Use ticket(s) within Time Period"));
    Control& once = addToFrame(
        frame, ControlKind::CheckBox, genacc::chkOnce, QStringLiteral("Use Ticket Only &Once (i.e. Night Ticket)"));
    Control& start = addToFrame(frame, ControlKind::DateTimePicker, genacc::dtStart, QStringLiteral("Start Time:"));
    Control& end = addToFrame(frame, ControlKind::DateTimePicker, genacc::dtEnd, QStringLiteral("End Time:"));
    genacc::wireTimePeriod(period, &once, start, end);
    start.onChange = [this] { saveNightTime(true); };
    end.onChange = [this] { saveNightTime(false); };

    addToFrame(frame, ControlKind::CommandButton, genacc::cmdGenerate, QStringLiteral("&Generate New Ticket(s)"))
        .onClick
        = [this] { BatchGeneration(*this).run(); };
}

void GenAcc::buildCustomTab(Control& frame)
{
    Control& user
        = addToFrame(frame, ControlKind::TextBox, genacc::txtCustomUsername, QStringLiteral("Ticket Username:"));
    Control& password
        = addToFrame(frame, ControlKind::TextBox, genacc::txtCustomPassword, QStringLiteral("Ticket Password:"));
    user.setMaxLength(10);
    for (Control* field : {&user, &password})
        genacc::filterTicketTextKeys(*field);
    Control& hours = addToFrame(frame, ControlKind::ComboBox, genacc::cboCustomHours, QStringLiteral("Hours:"));
    Control& minutes = addToFrame(frame, ControlKind::ComboBox, genacc::cboCustomMinutes, QStringLiteral("Min(s):"));
    Control& cost = addToFrame(frame, ControlKind::ComboBox, genacc::cboCustomCost, QStringLiteral("Cost Per Ticket:"));
    addToFrame(frame, ControlKind::Label, genacc::lblCustomCurrency);
    for (Control* field : {&hours, &minutes, &cost}) {
        field->setEditable(true);
        genacc::filterNumericKeys(*field);
    }
    genacc::wireHoursCheck(*this, hours);
    genacc::wireCostList(*this, cost);

    Control& expiry = addToFrame(frame, ControlKind::ComboBox, genacc::cboCustomExpiry, QStringLiteral("Expiration:"));
    Control& days = addToFrame(frame, ControlKind::ComboBox, genacc::txtCustomDays, QStringLiteral("Days:"));
    Control& daysLabel = addToFrame(frame, ControlKind::Label, genacc::lblCustomDays, QStringLiteral("day(s)"));
    days.setEditable(true);
    genacc::filterNumericKeys(days);
    genacc::wireExpiry(*this, expiry, days, daysLabel);

    // On the screen, read by nothing.
    addToFrame(frame, ControlKind::CheckBox, genacc::chkCustomFlex, QStringLiteral("Make Ticket into FlexTicket"));
    Control& vip
        = addToFrame(frame, ControlKind::CheckBox, genacc::chkCustomVIP, QStringLiteral("Make ticket into VIP"));
    genacc::wireVip(*this, vip, &user);
    Control& period = addToFrame(
        frame, ControlKind::CheckBox, genacc::chkCustomTimePeriod, QStringLiteral("Use ticket within Time Period"));
    Control& once
        = addToFrame(frame, ControlKind::CheckBox, genacc::chkCustomOnce, QStringLiteral("Use Ticket Only &Once"));
    Control& start
        = addToFrame(frame, ControlKind::DateTimePicker, genacc::dtCustomStart, QStringLiteral("Start Time:"));
    Control& end = addToFrame(frame, ControlKind::DateTimePicker, genacc::dtCustomEnd, QStringLiteral("End Time:"));
    genacc::wireTimePeriod(period, &once, start, end);
    addToFrame(
        frame, ControlKind::CommandButton, genacc::cmdCreateCustom, QStringLiteral("Create a Customized New Ticket"))
        .onClick
        = [this] { CustomTicket(*this).run(); };
}

void GenAcc::buildMemberTab(Control& frame)
{
    Control& user
        = addToFrame(frame, ControlKind::TextBox, genacc::txtMemberUsername, QStringLiteral("Ticket Username:"));
    Control& password
        = addToFrame(frame, ControlKind::TextBox, genacc::txtMemberPassword, QStringLiteral("Ticket Password:"));
    user.setMaxLength(10);
    for (Control* field : {&user, &password})
        genacc::filterTicketTextKeys(*field);

    Control& useTime = addToFrame(frame, ControlKind::CheckBox, genacc::chkUseTime, QStringLiteral("Use Time"));
    Control& hours = addToFrame(frame, ControlKind::ComboBox, genacc::cboMemberHours, QStringLiteral("Hours:"));
    Control& minutes = addToFrame(frame, ControlKind::ComboBox, genacc::cboMemberMinutes, QStringLiteral("Min(s):"));
    Control& cost = addToFrame(frame, ControlKind::ComboBox, genacc::cboMemberCost, QStringLiteral("Cost for Ticket:"));
    addToFrame(frame, ControlKind::Label, genacc::lblMemberCurrency);
    for (Control* field : {&hours, &minutes, &cost}) {
        field->setEditable(true);
        genacc::filterNumericKeys(*field);
    }
    genacc::wireHoursCheck(*this, hours);
    genacc::wireCostList(*this, cost);

    Control& recharge
        = addToFrame(frame, ControlKind::CheckBox, genacc::chkRecharge, QStringLiteral("Recharge Ticket every"));
    Control& rechargeDays = addToFrame(frame, ControlKind::ComboBox, genacc::cboRechargeDays);
    Control& rechargePeriod = addToFrame(frame, ControlKind::ComboBox, genacc::cboRechargePeriod);
    recharge.onClick = [&recharge, &rechargeDays, &rechargePeriod] {
        const bool ticked = recharge.ticked();
        rechargeDays.setEnabled(ticked);
        rechargePeriod.setEnabled(ticked);
    };
    useTime.onClick = [&useTime, &recharge, &hours, &minutes, &rechargeDays, &rechargePeriod] {
        const bool ticked = useTime.ticked();
        for (Control* field : {&recharge, &hours, &minutes})
            field->setEnabled(ticked);
        const bool listsOn = ticked && recharge.ticked();
        rechargeDays.setEnabled(listsOn);
        rechargePeriod.setEnabled(listsOn);
    };
    // The boxes start cleared, and their fields as a cleared box leaves them.
    useTime.fireClick();

    Control& expiry = addToFrame(frame, ControlKind::ComboBox, genacc::cboMemberExpiry, QStringLiteral("Expiration:"));
    Control& days = addToFrame(frame, ControlKind::ComboBox, genacc::txtMemberDays, QStringLiteral("Days:"));
    Control& daysLabel = addToFrame(frame, ControlKind::Label, genacc::lblMemberDays, QStringLiteral("day(s)"));
    days.setEditable(true);
    genacc::filterNumericKeys(days);
    genacc::wireExpiry(*this, expiry, days, daysLabel);

    Control& vip = addToFrame(frame, ControlKind::CheckBox, genacc::chkMemberVIP, QStringLiteral("Make ticket in VIP"));
    // The box limits the Custom tab's name field, not this tab's: a member's name keeps its ten
    // characters and the prefix comes on top.
    genacc::wireVip(*this, vip, &(*this)[genacc::txtCustomUsername]);
    Control& period = addToFrame(
        frame, ControlKind::CheckBox, genacc::chkMemberTimePeriod, QStringLiteral("Use ticket within Time Period"));
    addToFrame(frame, ControlKind::ComboBox, genacc::cboWeekday, QStringLiteral("Use only on this Day of the Week:"));
    Control& start
        = addToFrame(frame, ControlKind::DateTimePicker, genacc::dtMemberStart, QStringLiteral("Start Time:"));
    Control& end = addToFrame(frame, ControlKind::DateTimePicker, genacc::dtMemberEnd, QStringLiteral("End Time:"));
    genacc::wireTimePeriod(period, nullptr, start, end);
    addToFrame(
        frame, ControlKind::CommandButton, genacc::cmdCreateMember, QStringLiteral("Create a Membership Ticket >>"))
        .onClick
        = [this] {
              const QString member = MembershipTicket(*this).begin();
              if (!member.isEmpty())
                  m_screens.showMemberList(member);
          };
    addToFrame(frame, ControlKind::CommandButton, genacc::Command24, QStringLiteral("Existing Members")).onClick
        = [this] { m_screens.showMemberList(QString()); };
}

void GenAcc::buildMemberPage()
{
    Control& page = add(ControlKind::Frame, genacc::FMemberPage);
    page.setVisible(false);
    Control& ticket = addToFrame(page, ControlKind::Frame, memberinfo::Frame28, QStringLiteral("Ticket Information"));
    buildMemberFields(*this, page, ticket, m_session);
    // A new member's date of birth starts at today, as a cleared page leaves it.
    (*this)[memberinfo::DateofBirth].setDateTime(QDateTime(platform().today(), QTime()));
    addToFrame(page, ControlKind::CheckBox, memberinfo::Check16, QStringLiteral("Skip Membership Information"));
    addToFrame(page, ControlKind::CommandButton, genacc::cmdMemberBack, QStringLiteral("<< Back")).onClick
        = [this] { MembershipTicket(*this).back(); };
    addToFrame(page, ControlKind::CommandButton, genacc::cmdFinishMember, QStringLiteral("Finish Registration ||"))
        .onClick
        = [this] { MembershipTicket(*this).finish(); };
}

void GenAcc::buildExistingTab(Control& frame)
{
    buildSelection(frame);
    buildGridMenu();
    buildTextCommands(frame);
    addToFrame(frame, ControlKind::CommandButton, genacc::Command4, QStringLiteral("&Delete Selection")).onClick
        = [this] { TicketDeletion(*this).deleteSelection(); };
    Control& printExisting = addToFrame(
        frame, ControlKind::CommandButton, genacc::cmdPrintExisting, QStringLiteral("&Print Existing Ticket"));
    printExisting.setToolTip(QStringLiteral("Print existing tickets"));
    printExisting.onClick = [this] { printExistingTickets(); };
    addToFrame(frame, ControlKind::CommandButton, genacc::Command10, QStringLiteral("Recycle &Bin")).onClick
        = [this] { m_screens.showRecycleBin(); };
}

void GenAcc::buildSelection(Control& frame)
{
    Control& selection = addToFrame(frame, ControlKind::Frame, genacc::FSelection, QStringLiteral("Selection"));
    const QString captions[] = {QStringLiteral("&All"),
        QStringLiteral("Un&used"),
        QStringLiteral("U&sed"),
        QStringLiteral("By &Time"),
        QStringLiteral("By Ticket Group")};
    for (int option = 1; option <= int(genacc::SelectionOptions.size()); ++option) {
        Control& button = addToFrame(
            selection, ControlKind::OptionButton, genacc::SelectionOptions[option - 1], captions[option - 1]);
        button.onClick = [this, option] { TicketListing(*this).chooseOption(option); };
    }
    Control& time = addToFrame(selection, ControlKind::TextBox, genacc::Text1, QStringLiteral("Minutes:"));
    time.setMaxLength(4);
    filterEntryKeys(time);
    time.onKeyPress = [this](int& key) {
        if (key == Key::Enter)
            TicketListing(*this).viewSelection();
    };
    time.onLostFocus = [this, &time] {
        if (!values::isNumeric(time.text())) {
            time.setText(QStringLiteral("0"));
        } else if (values::leadingNumber(time.text()) > 5000) {
            platform().messageBox(QStringLiteral("Time Can't be greater than 5000!"), MsgStyle::Warning);
            time.setText(QStringLiteral("5000"));
        }
    };
    Control& group = addToFrame(selection, ControlKind::TextBox, genacc::Text5, QStringLiteral("Ticket Group:"));
    group.setMaxLength(12);
    filterEntryKeys(group);
    addToFrame(selection, ControlKind::CommandButton, genacc::Command2, QStringLiteral("&View Selection")).onClick
        = [this] { TicketListing(*this).viewSelection(); };

    Control& grid = (*this)[genacc::PrintList];
    grid.onClick = [this] { TicketListing(*this).rowClicked(); };
    grid.onMouseDown = [this](int button, int, int, int) { TicketListing(*this).gridMouseDown(button); };
}

void GenAcc::buildGridMenu()
{
    Control& menu = add(ControlKind::Menu, genacc::m_click);
    menu.setVisible(false);
    const auto item = [this, &menu](const QString& name, const QString& caption) -> Control& {
        Control& entry = addLabelled(ControlKind::Menu, name, caption);
        entry.setParentMenu(&menu);
        return entry;
    };
    item(genacc::m_searchs, QStringLiteral("&Search for Ticket...")).onClick
        = [this] { TicketSearch(*this).search(SearchByUsername); };
    item(genacc::m_Dels, QStringLiteral("&Delete Ticket")).onClick
        = [this] { TicketDeletion(*this).deleteGridTicket(); };
    item(genacc::m_Rec, QStringLiteral("&Recharge Ticket")).onClick
        = [this] { TicketRecharge(*this).recharge(TicketSource::GridRow); };
    item(genacc::m_ChangePass, QStringLiteral("Change Ticket's &Password")).onClick
        = [this] { TicketSearch(*this).changePassword(TicketSource::GridRow); };
    item(genacc::m_separator, QStringLiteral("-"));
    item(genacc::m_cancel, QStringLiteral("Can&cel"));
}

void GenAcc::buildTextCommands(Control& frame)
{
    // Dark red under the mouse, bright red while pressed, as links look.
    constexpr int Hover = 64;
    const auto command = [this, &frame](const QString& name, const QString& caption) -> Control& {
        Control& label = addToFrame(frame, ControlKind::Label, name, caption);
        label.onMouseMove = [this, &label](int, int, int, int) {
            for (const QString& other :
                {genacc::m_search, genacc::m_password, genacc::m_del, genacc::m_change, genacc::m_recharge})
                (*this)[other].setForeColor(Colour::Black);
            label.setForeColor(Hover);
        };
        label.onMouseDown = [&label](int, int, int, int) { label.setForeColor(Colour::Red); };
        label.onMouseUp = [&label](int, int, int, int) { label.setForeColor(Hover); };
        return label;
    };
    command(genacc::m_search, QStringLiteral("Search for a Ticket by Username")).onClick
        = [this] { TicketSearch(*this).search(SearchByUsername); };
    command(genacc::m_password, QStringLiteral("Search for a Ticket by Password")).onClick
        = [this] { TicketSearch(*this).search(SearchByPassword); };
    command(genacc::m_del, QStringLiteral("Delete a Ticket by Username")).onClick
        = [this] { TicketDeletion(*this).deleteByUsername(); };
    command(genacc::m_change, QStringLiteral("Change Password of a Ticket")).onClick
        = [this] { TicketSearch(*this).changePassword(TicketSource::Typed); };
    command(genacc::m_recharge, QStringLiteral("Recharge a Ticket")).onClick
        = [this] { TicketRecharge(*this).recharge(TicketSource::Typed); };
}

void GenAcc::buildSettingsTab(Control& frame)
{
    Control& autoSave = addToFrame(
        frame, ControlKind::CheckBox, genacc::chkAutoSave, QStringLiteral("Automatically &Save Generated Tickets"));
    Control& noList = addToFrame(
        frame, ControlKind::CheckBox, genacc::chkNoList, QStringLiteral("Don't Display Ticket(s) when Generating"));
    Control& noPassList = addToFrame(
        frame, ControlKind::CheckBox, genacc::Check4, QStringLiteral("Don't Show Password of Ticket(s) when Listing"));
    Control& sizes = addToFrame(frame, ControlKind::Frame, genacc::FPrintSize, QStringLiteral("Ticket Print Size"));
    Control& small = addToFrame(sizes, ControlKind::OptionButton, genacc::optSmallPrint, QStringLiteral("Small Print"));
    Control& medium
        = addToFrame(sizes, ControlKind::OptionButton, genacc::optMediumPrint, QStringLiteral("Medium Print"));
    Control& large = addToFrame(sizes, ControlKind::OptionButton, genacc::optLargePrint, QStringLiteral("Large Print"));
    Control& exportFile
        = addToFrame(sizes, ControlKind::OptionButton, genacc::optExport, QStringLiteral("Export to File"));
    addToFrame(frame,
        ControlKind::CommandButton,
        genacc::cmdPrintSettings,
        QStringLiteral("More Ticket, Quick-Ticket, FlexTicket Settings"))
        .onClick
        = [this] { openPrintSettings(); };
    Control& save
        = addToFrame(frame, ControlKind::CommandButton, genacc::cmdSaveChanges, QStringLiteral("Save Changes"));
    save.onClick = [this] { saveSettingsTab(); };

    // Any change on this tab enables "Save Changes", but only while the tab is showing.
    for (Control* box : {&autoSave, &noList, &noPassList, &small, &medium, &large, &exportFile}) {
        box->onClick = [this, &save] {
            if ((*this)[genacc::FSetting].visible())
                save.setEnabled(true);
        };
    }
}

} // namespace marlet
