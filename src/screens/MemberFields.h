#pragma once

namespace marlet {

class Control;
class Form;
class Session;

// The member fields that the member page of the generate screen and the member record screen
// share: the text array Text7 with its captions, the identification list, the date of birth, the
// gender options, the picture with its commands and the hint. The display-only fields are locked.
// The ticket's fields (user name and the display-only ones) go into `ticketFrame`, the others into
// `frame`.
void buildMemberFields(Form& form, Control& frame, Control& ticketFrame, Session& session);

} // namespace marlet
