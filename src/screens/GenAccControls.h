#pragma once

#include "platform/Control.h"

#include <QString>

namespace marlet {

class GenAcc;

// Builders and rules for fields that several tabs of the generate screen share, so that one piece
// of code serves every tab that has such a field.
namespace genacc {

// Number, hours, minutes, cost and days fields: digits, "." and Backspace pass; all else is dropped.
void filterNumericKeys(Control& field);
// Typed user names and passwords: the key is upper-cased; digits, "A" to "Z", "." and Backspace pass.
void filterTicketTextKeys(Control& field);

// The time-period box: ticked enables the once box (if any) and both pickers; cleared clears and
// disables the once box and disables the pickers.
void wireTimePeriod(Control& periodBox, Control* onceBox, Control& start, Control& end);

// Cost lists: not numeric, negative or above 99999 gives "Amount must be between 0 to 99,999!"
// and "0"; dropping down with fewer than 367 entries adds 370 to 2000 in steps of 10.
void wireCostList(GenAcc& screen, Control& cost);
// Hours lists: not numeric, below 0 or above 360 gives the hours message and "0".
void wireHoursCheck(GenAcc& screen, Control& hours);

// The expiry list with its days field and the field's "day(s)" label: entry 0 loads the fixed
// expiry default, entry 1 the flexible one, entry 2 disables the field and hides the label; the
// field is checked when it loses the focus.
void wireExpiry(GenAcc& screen, Control& list, Control& days, Control& daysLabel);

// A VIP box: ticking it without client separation is refused with a message. With a user name
// field, ticking limits the name to 7 characters (cutting the text) and clearing allows 10.
void wireVip(GenAcc& screen, Control& vipBox, Control* userName);

// The ticket grid's header row.
void setTicketGridHeader(Control& grid);

} // namespace genacc

} // namespace marlet
