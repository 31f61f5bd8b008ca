#pragma once

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QVariant>

#include <array>
#include <optional>

namespace marlet {

class Form;
class Recordset;
struct General;

// The indexes of the member fields in the text array Text7 and the columns they hold.
enum MemberField {
    Surname = 0,
    Firstname = 1,
    SpecifyOrder = 2,
    Occupation = 3,
    Address = 4,
    Country = 5,
    Email = 6,
    IdentificationNumber = 7,
    TicketUsername = 8,
    Title = 9,
    OtherNames = 10,
    Company = 11,
    State = 12,
    Telephone = 13,
    ExpireText = 14,
    TimeText = 15,
    CostText = 16,
    RechargeableText = 17,
    RechargeDays = 18,
    RechargeTime = 19,
    TimePeriodText = 20,
};
inline constexpr int MemberFieldCount = 21;

// Sex as the Members table holds it: "0" male, "1" female, "-1" neither.
enum class Sex { Neither = -1, Male = 0, Female = 1 };

// A member's personal data as a member page or record screen holds it.
struct MemberDetails
{
    std::array<QString, MemberFieldCount> text;
    QDate DateofBirth;
    Sex sex = Sex::Neither;
    int identificationIndex = 0; // the position in the identification list, 0 "[Select ID Type]"
    QString Identification_item; // the list's text
    bool specifyOrderEnabled = true;

    const QString& operator[](MemberField field) const { return text[field]; }
};

// Reads the fields of a form that carries the member names (the record screen or the member page).
MemberDetails readMemberDetails(const Form& form);

// A refused record: the message, shown with the exclamation icon, and the control that gets the
// focus afterwards (empty for none; Text7 fields by index).
struct MemberProblem
{
    QString message;
    QString focusControl;
    int focusIndex = -1;
};

// The checks of a member record, in their order; the first that fails is returned. With a blank
// surname (after trimming) nothing is checked: the membership information is skipped. The test of
// the age compares calendar years only, and the e-mail test looks at the first "@" and the first "."
// anywhere in the address.
std::optional<MemberProblem> memberProblem(const MemberDetails& details, const QDate& today);

// Writes the personal columns of a Members row from the details: every mapped field,
// DateofBirth, Identification_item and Sex "0" or "1". Member_ID and Picture are the caller's.
bool writeMemberColumns(Recordset& row, const MemberDetails& details);
// Blanks the personal columns of a member whose information is skipped: every text column empty,
// DateofBirth as given and Sex "-1".
bool blankMemberColumns(Recordset& row, const QVariant& dateOfBirth);

// The file name of a member's picture, given at registration: the group number and the first two
// characters of the surname in upper case, without extension; the group alone when skipped.
QString pictureFileName(const QString& group, const QString& surname);

// The folder of member pictures, "pic" below the server folder. Empty when the server folder is no
// absolute path of this system: nothing is then read or written.
QString pictureFolder(const General& general);
// Makes the picture folder when it is missing; false when there is none or it cannot be made.
bool ensurePictureFolder(const General& general);
// The path of a picture file in the folder, or empty when the name could lead out of it (a path
// separator, "..", a quote) or there is no folder.
QString picturePath(const General& general, const QString& fileName);
// The picture bytes of a file, empty when it cannot be read.
QByteArray readPicture(const General& general, const QString& fileName);
// Writes the picture bytes into the folder under the name; false when it cannot.
bool writePicture(const General& general, const QString& fileName, const QByteArray& picture);

// The largest picture file that is accepted, in bytes: a file must be smaller than this.
inline constexpr qint64 PictureSizeLimit = 1024000;

} // namespace marlet

namespace marlet {

// Empties the member fields of a form: every text field, the date of birth to the given day, both
// gender options off, the identification list back to its first entry, the picture off and, where
// the form has it, "Skip Membership Information" off.
void clearMemberFields(Form& form, const QDate& day);

} // namespace marlet
