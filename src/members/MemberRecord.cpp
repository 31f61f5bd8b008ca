#include "members/MemberRecord.h"

#include "members/MemberinfoNames.h"
#include "platform/Form.h"
#include "session/General.h"
#include "store/Recordset.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace marlet {

namespace {

// The mapped fields and their columns, in the order they are written.
struct ColumnOfField
{
    MemberField field;
    const char* column;
};

constexpr ColumnOfField MappedColumns[] = {
    {Surname, "Surname"},
    {Firstname, "Firstname"},
    {Title, "title"},
    {OtherNames, "Othername"},
    {Company, "Company"},
    {Occupation, "Occupation"},
    {Address, "Address"},
    {State, "State"},
    {Country, "Country"},
    {Telephone, "Telephone"},
    {IdentificationNumber, "Identication_no"},
    {SpecifyOrder, "SpecifyOrder"},
    {Email, "Email"},
};

MemberProblem refusal(const QString& message, MemberField field)
{
    return {message, memberinfo::Text7, int(field)};
}

// A position from 1 as the form language counts it, 0 when the sign is missing.
qsizetype position(const QString& text, QChar sign)
{
    return text.indexOf(sign) + 1;
}

} // namespace

MemberDetails readMemberDetails(const Form& form)
{
    MemberDetails details;
    for (int i = 0; i < MemberFieldCount; ++i) {
        if (const Control* field = form.control(memberinfo::Text7, i))
            details.text[i] = field->text();
    }
    details.DateofBirth = form[memberinfo::DateofBirth].dateTime().date();
    if (form.at(memberinfo::Option6, 0).value() != 0)
        details.sex = Sex::Male;
    else if (form.at(memberinfo::Option6, 1).value() != 0)
        details.sex = Sex::Female;
    const Control& items = form[memberinfo::Combo7];
    details.identificationIndex = items.listIndex();
    details.Identification_item = items.text();
    details.specifyOrderEnabled = form.at(memberinfo::Text7, SpecifyOrder).enabled();
    return details;
}

std::optional<MemberProblem> memberProblem(const MemberDetails& d, const QDate& today)
{
    if (d[Surname].trimmed().isEmpty())
        return std::nullopt;
    if (d[Surname].size() < 2)
        return refusal(QStringLiteral("Surname is too short or blank!"), Surname);
    if (d[Firstname].size() < 2)
        return refusal(QStringLiteral("Firstname is too short or blank!"), Firstname);
    if (d.sex == Sex::Neither)
        return MemberProblem {QStringLiteral("Gender (Male or Female) must be selected!"), QString(), -1};
    // The first name is tested a second time here, as the record always has been.
    if (d[Firstname].size() < 2)
        return refusal(QStringLiteral("Firstname is too short or blank!"), Firstname);
    if (d[Address].size() < 2)
        return refusal(QStringLiteral("Address is too short or blank!"), Address);
    if (d[State].size() < 3)
        return refusal(QStringLiteral("State is too short or blank!"), State);
    if (d[Telephone].size() < 6)
        return refusal(QStringLiteral("Telephone number is too short or blank!"), Telephone);
    if (d[Country].size() < 2)
        return refusal(QStringLiteral("Country is too short or blank!"), Country);
    if (today.year() - d.DateofBirth.year() < 6)
        return MemberProblem {QStringLiteral("Member must be older than 5 years!"), memberinfo::DateofBirth, -1};
    const QString& email = d[Email];
    if (email.size() < 5)
        return refusal(QStringLiteral("Email Address is too short or blank!"), Email);
    if (position(email, u'@') < 2 || position(email, u'.') < 3)
        return refusal(QStringLiteral("Email Address is not correct!"), Email);
    if (d.identificationIndex <= 0)
        return MemberProblem {QStringLiteral("Identication Item is not selected!"), memberinfo::Combo7, -1};
    if (d[SpecifyOrder].size() < 5 && d.specifyOrderEnabled)
        return refusal(QStringLiteral("Specify Identication item's name is too short or blank!"), SpecifyOrder);
    if (d[IdentificationNumber].size() < 5)
        return refusal(QStringLiteral("Identication Item is too short or blank!"), IdentificationNumber);
    return std::nullopt;
}

bool writeMemberColumns(Recordset& row, const MemberDetails& details)
{
    bool written = true;
    for (const ColumnOfField& mapped : MappedColumns)
        written = row.setValue(QLatin1String(mapped.column), details[mapped.field]) && written;
    written = row.setValue(QStringLiteral("DateofBirth"), details.DateofBirth) && written;
    written = row.setValue(QStringLiteral("Identification_item"), details.Identification_item) && written;
    const QString sex = details.sex == Sex::Male ? QStringLiteral("0") : QStringLiteral("1");
    return row.setValue(QStringLiteral("Sex"), sex) && written;
}

bool blankMemberColumns(Recordset& row, const QVariant& dateOfBirth)
{
    bool written = true;
    for (const ColumnOfField& mapped : MappedColumns)
        written = row.setValue(QLatin1String(mapped.column), QString()) && written;
    written = row.setValue(QStringLiteral("DateofBirth"), dateOfBirth) && written;
    written = row.setValue(QStringLiteral("Identification_item"), QString()) && written;
    return row.setValue(QStringLiteral("Sex"), QStringLiteral("-1")) && written;
}

QString pictureFileName(const QString& group, const QString& surname)
{
    return group + surname.left(2).toUpper();
}

QString pictureFolder(const General& general)
{
    const QString server = general.serverFolder();
    if (server.isEmpty() || !QDir::isAbsolutePath(server))
        return QString();
    return QDir(server).filePath(QStringLiteral("pic"));
}

bool ensurePictureFolder(const General& general)
{
    const QString folder = pictureFolder(general);
    return !folder.isEmpty() && QDir().mkpath(folder);
}

QString picturePath(const General& general, const QString& fileName)
{
    const QString folder = pictureFolder(general);
    const bool leaves = fileName.contains(u'/') || fileName.contains(u'\\') || fileName.contains(u'\'')
        || fileName.contains(u'"') || fileName.contains(QLatin1String(".."));
    if (folder.isEmpty() || fileName.isEmpty() || leaves)
        return QString();
    return QDir(folder).filePath(fileName);
}

QByteArray readPicture(const General& general, const QString& fileName)
{
    QFile file(picturePath(general, fileName));
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

bool writePicture(const General& general, const QString& fileName, const QByteArray& picture)
{
    QFile file(picturePath(general, fileName));
    if (file.fileName().isEmpty() || !file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(picture) == picture.size();
}

} // namespace marlet

namespace marlet {

void clearMemberFields(Form& form, const QDate& day)
{
    for (int i = 0; i < MemberFieldCount; ++i) {
        if (Control* field = form.control(memberinfo::Text7, i))
            field->setText(QString());
    }
    form[memberinfo::DateofBirth].setDateTime(QDateTime(day, QTime()));
    form.at(memberinfo::Option6, 0).setValue(0);
    form.at(memberinfo::Option6, 1).setValue(0);
    form[memberinfo::Combo7].setListIndex(0);
    form[memberinfo::mPicture].setPicture(QByteArray());
    if (Control* skip = form.control(memberinfo::Check16))
        skip->setValue(0);
}

} // namespace marlet
