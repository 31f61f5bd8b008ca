#include "screens/MemberFields.h"

#include "members/MemberPicture.h"
#include "members/MemberRecord.h"
#include "members/MemberinfoNames.h"
#include "platform/Form.h"

namespace marlet {

namespace {

// The captions of Text7, by index.
const char* const FieldCaptions[MemberFieldCount] = {"Surname*:",
    "Firstname*:",
    "Specify Order*:",
    "Occupation:",
    "Address*:",
    "Country*:",
    "Email*:",
    "Identification Number*:",
    "Username:",
    "Title:",
    "Other Names:",
    "Company:",
    "State*:",
    "Telephone*:",
    "Expire:",
    "Time:",
    "Cost:",
    "Rehargeable:",
    "Recharge day(s):",
    "Recharge Time:",
    "Time Period:"};

Control& addIndexed(
    Form& form, Control& frame, ControlKind kind, const QString& name, int index, const QString& caption)
{
    Control& control = form.addLabelled(kind, name, caption, index);
    control.setContainer(&frame);
    return control;
}

} // namespace

void buildMemberFields(Form& form, Control& frame, Control& ticketFrame, Session& session)
{
    form.addToFrame(frame, ControlKind::Label, memberinfo::Label8);
    for (int i = 0; i < MemberFieldCount; ++i) {
        // The ticket's own values are shown, not typed; the member commands change them.
        const bool ticketField = i == TicketUsername || i >= ExpireText;
        addIndexed(form,
            ticketField ? ticketFrame : frame,
            ControlKind::TextBox,
            memberinfo::Text7,
            i,
            QLatin1String(FieldCaptions[i]))
            .setLocked(ticketField);
    }
    Control& items
        = form.addToFrame(frame, ControlKind::ComboBox, memberinfo::Combo7, QStringLiteral("Identification Item*:"));
    for (const QString& item : memberinfo::IdentificationItems)
        items.addItem(item);
    items.setListIndex(0);
    Control& specify = form.at(memberinfo::Text7, SpecifyOrder);
    specify.setEnabled(false);
    // Only "Other!" asks for the item's name.
    items.onClick = [&items, &specify] {
        specify.setEnabled(items.listIndex() == int(memberinfo::IdentificationItems.size()) - 1);
    };
    form.addToFrame(frame, ControlKind::DateTimePicker, memberinfo::DateofBirth, QStringLiteral("Date of Birth*:"))
        .setCustomFormat(QStringLiteral("dd-MMM-yyyy"));
    Control& sexes = form.addToFrame(frame, ControlKind::Frame, QStringLiteral("FrameSex"), QStringLiteral("Sex*"));
    addIndexed(form, sexes, ControlKind::OptionButton, memberinfo::Option6, 0, QStringLiteral("Male"));
    addIndexed(form, sexes, ControlKind::OptionButton, memberinfo::Option6, 1, QStringLiteral("Female"));
    form.add(ControlKind::Label, memberinfo::Label44, 0).setVisible(false);
    form.add(ControlKind::Label, memberinfo::Label44, 1).setVisible(false);

    // The picture and the methods of getting one.
    Control& pictureFrame = form.addToFrame(frame, ControlKind::Frame, memberinfo::Frame26);
    form.addToFrame(pictureFrame, ControlKind::Image, memberinfo::mPicture);
    const auto picture = [&session, &form] { return MemberPicture(session, form); };
    form.addToFrame(pictureFrame, ControlKind::CommandButton, memberinfo::Command13, QStringLiteral("Add Picture"))
        .onClick
        = [picture] { picture().addPicture(); };
    Control& methods = form.addToFrame(frame, ControlKind::Frame, memberinfo::Frame27, QStringLiteral("Method:"));
    methods.setVisible(false);
    form.addToFrame(methods, ControlKind::CommandButton, memberinfo::Command14, QStringLiteral("from File")).onClick
        = [picture] { picture().fromFile(); };
    form.addToFrame(methods, ControlKind::CommandButton, memberinfo::Command15, QStringLiteral("Scanner")).onClick
        = [picture] { picture().scanner(); };
    form.addToFrame(methods, ControlKind::CommandButton, memberinfo::Command17, QStringLiteral("Select Image Source"))
        .onClick
        = [picture] { picture().selectImageSource(); };
    form.addToFrame(methods, ControlKind::CommandButton, memberinfo::Command18, QStringLiteral("Blank Image")).onClick
        = [picture] { picture().blankImage(); };
    form.addToFrame(methods, ControlKind::CommandButton, memberinfo::Command16, QStringLiteral("Cancel")).onClick
        = [picture] { picture().cancel(); };
}

} // namespace marlet
