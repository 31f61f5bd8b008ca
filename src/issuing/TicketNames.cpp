#include "issuing/TicketNames.h"

#include "store/Connection.h"
#include "store/PreferenceKeys.h"
#include "values/Numbers.h"

#include <QStringList>

#include <algorithm>

namespace marlet {

namespace {

constexpr int BatchRandomLength = 7;
constexpr int DefaultPasswordLength = 5;
constexpr int MaxTypedLength = 10;
constexpr int MaxVipTypedLength = 7;

enum class Entry { Username, Password };

// Only digits and the letters A to Z may stand in a typed name or password.
bool isTicketCharacter(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z');
}

bool hasOnlyTicketCharacters(const QString& upper)
{
    return std::all_of(upper.cbegin(), upper.cend(), isTicketCharacter);
}

// The first line of the character message. The custom tab and the finishing step of a member ticket
// speak of the password for both fields; the first member step speaks of the user name for both.
QString characterMessage(TicketPath path, Entry entry)
{
    const bool username
        = path == TicketPath::Membership || (path == TicketPath::CredentialChange && entry == Entry::Username);
    return (username ? QStringLiteral("Invalid Character entered in Username!")
                     : QStringLiteral("Invalid Character entered in Password!"))
        + MessageLineBreak + QStringLiteral("Valid entry include A-Z and 0-9.");
}

QString reservedNameMessage()
{
    return QStringLiteral("Username not acceptable, already in use by client(s)!");
}

} // namespace

QString batchPrefix(const SessionPreferences& preferences, bool vip)
{
    return vip ? preferences.text(keys::SelPrefix) : preferences.text(keys::STR).left(3);
}

QString batchUsername(const SessionPreferences& preferences, const QString& prefix, const UniformSource& source)
{
    return prefix + Random(preferences, BatchRandomLength, source);
}

int batchPasswordLength(const SessionPreferences& preferences)
{
    const QString length = preferences.text(keys::TPlen);
    // A single digit, as the settings screen writes it, needs no general conversion.
    if (length.size() == 1 && length.front() >= u'0' && length.front() <= u'9')
        return length.front().unicode() - u'0';
    if (!values::isNumeric(length))
        return DefaultPasswordLength;
    return values::toInt16(length).value_or(0);
}

QString batchPassword(const SessionPreferences& preferences, const UniformSource& source)
{
    return Random(preferences, batchPasswordLength(preferences), source);
}

NameLookup lookUpUsername(Recordset& recordset, Connection& connection, const QString& name, LockType lock)
{
    if (recordset.State() == 1)
        recordset.Close();
    const Statement lookup(QStringLiteral("Select * from Account where Username = '{}'"), {name});
    if (!recordset.Open(lookup, connection, CursorType::Static, lock))
        return NameLookup::Failed;
    return recordset.RecordCount() > 0 ? NameLookup::Taken : NameLookup::Free;
}

std::optional<QString> drawFreeUsername(Recordset& recordset,
    Connection& connection,
    const SessionPreferences& preferences,
    const QString& prefix,
    const UniformSource& source)
{
    for (int attempt = 0; attempt < UsernameDrawAttempts; ++attempt) {
        const QString name = batchUsername(preferences, prefix, source);
        if (lookUpUsername(recordset, connection, name) == NameLookup::Free)
            return name;
    }
    return std::nullopt;
}

bool isReservedName(const QString& typed)
{
    static const QStringList reserved {QStringLiteral("ADMIN"),
        QStringLiteral("ADMINISTRATOR"),
        QStringLiteral("SOLOTIMER"),
        QStringLiteral("SHUTTIMER"),
        QStringLiteral("SHUTDOWN"),
        QStringLiteral("RESTART"),
        QStringLiteral("LOGOFF"),
        QStringLiteral("INFO")};
    return reserved.contains(typedUpperCase(typed));
}

QString typedUpperCase(const QString& typed)
{
    QString upper = typed;
    for (QChar& c : upper)
        c = c.toUpper();
    return upper;
}

std::optional<QString> usernameProblem(const QString& typed, TicketPath path, bool vipLength)
{
    const QString upper = typedUpperCase(typed);
    if (upper.isEmpty())
        return QStringLiteral("Username is empty!");
    if (path == TicketPath::CredentialChange) {
        if (upper.size() > MaxTypedLength)
            return QStringLiteral("Username is greater than 10 characters!");
    } else {
        const int limit = vipLength ? MaxVipTypedLength : MaxTypedLength;
        if (upper.size() > limit)
            return QStringLiteral("Username not correctly entered, 1-%1 characters required!").arg(limit);
    }
    if (!hasOnlyTicketCharacters(upper))
        return characterMessage(path, Entry::Username);
    if (isReservedName(upper))
        return reservedNameMessage();
    return std::nullopt;
}

QString typedUsername(const SessionPreferences& preferences, const QString& typed, bool vipPrefix)
{
    const QString name = typedUpperCase(typed);
    return vipPrefix ? typedUpperCase(preferences.text(keys::SelPrefix)) + name : name;
}

QString existingNameMessage(TicketPath path, bool member)
{
    switch (path) {
    case TicketPath::Batch:
    case TicketPath::Custom:
        return QStringLiteral("Ticket not created because it Already exist!");
    case TicketPath::Membership:
        return member ? QString(MemberExistsQuestion) : QStringLiteral("Ticket ID already exist!");
    case TicketPath::MembershipFinish:
        return QStringLiteral("Member Ticket not created because it Already exist!");
    case TicketPath::CredentialChange:
        return QStringLiteral("Username is already existing!");
    }
    return QString();
}

std::optional<QString> passwordProblem(const QString& typed, TicketPath path)
{
    const bool change = path == TicketPath::CredentialChange;
    const QString upper = typedUpperCase(typed);
    if (upper.isEmpty())
        return change ? QStringLiteral("Password is empty!") : QStringLiteral("Password incorrect!");
    if (upper.size() > MaxTypedLength) {
        return change ? QStringLiteral("Password is greater than 10 characters!")
                      : QStringLiteral("Password not correctly entered (1-10 characters required)!");
    }
    if (!hasOnlyTicketCharacters(upper))
        return characterMessage(path, Entry::Password);
    if (change && isReservedName(upper))
        return reservedNameMessage();
    return std::nullopt;
}

QString typedPassword(const QString& typed)
{
    return typedUpperCase(typed);
}

} // namespace marlet
