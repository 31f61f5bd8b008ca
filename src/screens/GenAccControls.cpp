#include "screens/GenAccControls.h"

#include "issuing/Expiry.h"
#include "issuing/TicketRules.h"
#include "platform/Form.h"
#include "platform/GridData.h"
#include "platform/Platform.h"
#include "screens/GenAcc.h"
#include "session/Session.h"
#include "values/Numbers.h"

namespace marlet::genacc {

namespace {

bool isDigit(int key)
{
    return key >= '0' && key <= '9';
}

} // namespace

void filterNumericKeys(Control& field)
{
    field.onKeyPress = [](int& key) {
        if (!isDigit(key) && key != '.' && key != Key::Backspace)
            key = 0;
    };
}

void filterTicketTextKeys(Control& field)
{
    field.onKeyPress = [](int& key) {
        if (key >= 'a' && key <= 'z')
            key = key - 'a' + 'A';
        if (!isDigit(key) && !(key >= 'A' && key <= 'Z') && key != '.' && key != Key::Backspace)
            key = 0;
    };
}

void wireTimePeriod(Control& periodBox, Control* onceBox, Control& start, Control& end)
{
    periodBox.onClick = [&periodBox, onceBox, &start, &end] {
        const bool ticked = periodBox.ticked();
        if (onceBox) {
            if (!ticked)
                onceBox->setValue(CheckState::Unchecked);
            onceBox->setEnabled(ticked);
        }
        start.setEnabled(ticked);
        end.setEnabled(ticked);
    };
    // The screen opens with the box cleared, so the controls it rules start as a cleared box
    // leaves them.
    periodBox.onClick();
}

void wireCostList(GenAcc& screen, Control& cost)
{
    cost.onLostFocus = [&screen, &cost] {
        const QString text = cost.text();
        if (!values::isNumeric(text) || values::leadingNumber(text) < 0 || values::leadingNumber(text) > 99999) {
            screen.platform().messageBox(QStringLiteral("Amount must be between 0 to 99,999!"), MsgStyle::Warning);
            cost.setText(QStringLiteral("0"));
        }
    };
    // Only the entry count guards the extension, and one extension leaves it below the limit, so
    // a cost list grows twice.
    cost.onDropDown = [&screen, &cost] {
        if (cost.listCount() >= 367)
            return;
        for (int value = 370; value <= 2000; value += 10) {
            cost.addItem(QString::number(value));
            screen.platform().yield();
        }
    };
}

void wireHoursCheck(GenAcc& screen, Control& hours)
{
    hours.onLostFocus = [&screen, &hours] {
        const QString text = hours.text();
        if (!values::isNumeric(text) || values::leadingNumber(text) < 0 || values::leadingNumber(text) > 360) {
            screen.platform().messageBox(
                QStringLiteral("Hour(s) Can't be less than 0 or greater than 360!"), MsgStyle::Warning);
            hours.setText(QStringLiteral("0"));
        }
    };
}

void wireVip(GenAcc& screen, Control& vipBox, Control* userName)
{
    vipBox.onClick = [&screen, &vipBox, userName] {
        const bool ticked = vipBox.ticked();
        if (ticked && !clientSeparationOn(screen.session().settings())) {
            screen.platform().messageBox(
                QStringLiteral("The Client Reservation/Seperation has not been enabled, Please goto Include/Exclude "
                               "in Option to enable this feature."),
                MsgStyle::Info);
            vipBox.setValue(CheckState::Unchecked);
            return;
        }
        if (!userName)
            return;
        userName->setMaxLength(ticked ? 7 : 10);
        if (ticked)
            userName->setText(userName->text().left(7));
    };
}

void wireExpiry(GenAcc& screen, Control& list, Control& days, Control& daysLabel)
{
    list.onClick = [&screen, &list, &days, &daysLabel] {
        const ExpiryKind kind = expiryKind(list.listIndex());
        const bool counted = kind != ExpiryKind::Never;
        days.setEnabled(counted);
        daysLabel.setVisible(counted);
        if (!counted)
            return;
        const SessionPreferences settings = screen.session().settings();
        const bool fixed = kind == ExpiryKind::Fixed;
        const QString stored = settings.text(fixed ? keys::Expire : keys::ExLog);
        const bool usable = values::isNumeric(stored) && values::leadingNumber(stored) < 366;
        days.setText(usable ? stored : (fixed ? QStringLiteral("20") : QStringLiteral("5")));
    };
    days.onLostFocus = [&screen, &list, &days] {
        SessionPreferences settings = screen.session().settings();
        const DaysFieldResult result = leaveDaysField(settings, list.listIndex(), days.text());
        if (result.message)
            screen.platform().messageBox(*result.message, MsgStyle::Warning);
        days.setText(result.text);
    };
}

void setTicketGridHeader(Control& grid)
{
    GridData& cells = grid.grid();
    cells.setCols(8);
    cells.setFixedRows(1);
    cells.setRows(1);
    const QStringList headers = {QStringLiteral("No."),
        QStringLiteral("Username"),
        QStringLiteral("Password"),
        QStringLiteral("Time"),
        QStringLiteral("Ticket Group"),
        QStringLiteral("Expire Date"),
        QStringLiteral("Date Created"),
        QString()};
    const int widths[] = {500, 1300, 1000, 1000, 1300, 1000, 1100, 500};
    for (int col = 0; col < 8; ++col) {
        cells.setTextMatrix(0, col, headers[col]);
        cells.setColWidth(col, widths[col]);
    }
}

} // namespace marlet::genacc
