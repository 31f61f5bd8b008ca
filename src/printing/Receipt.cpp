#include "printing/Receipt.h"

#include "printing/TicketSheet.h"
#include "store/PreferenceKeys.h"

namespace marlet {

namespace {

constexpr char Esc = 0x1b;
constexpr char Gs = 0x1d;
constexpr char Lf = 0x0a;

QByteArray command(std::initializer_list<int> bytes)
{
    QByteArray out;
    for (int byte : bytes)
        out += char(byte);
    return out;
}

// Text in code page 1252 as far as Latin-1 reaches; other characters print as "?".
QByteArray printable(const QString& text)
{
    QByteArray out;
    for (QChar c : text)
        out += c.unicode() < 0x20 ? ' ' : c.unicode() < 0x100 ? char(c.unicode()) : '?';
    return out;
}

// The QR code commands of the function 165 group: model, module size, level, store, print.
QByteArray escposQr(const QString& text, int module)
{
    const QByteArray data = text.toUtf8();
    const int stored = int(data.size()) + 3;
    return command({Gs, '(', 'k', 4, 0, 49, 65, 50, 0}) + command({Gs, '(', 'k', 3, 0, 49, 67, module})
        + command({Gs, '(', 'k', 3, 0, 49, 69, 49})
        + command({Gs, '(', 'k', stored & 0xff, (stored >> 8) & 0xff, 49, 80, 48}) + data
        + command({Gs, '(', 'k', 3, 0, 49, 81, 48});
}

bool isOn(const SessionPreferences& settings, const PreferenceKey& key)
{
    return settings.text(key).trimmed() != QLatin1String("0");
}

} // namespace

ReceiptContent ReceiptContent::fromPreferences(Preferences& preferences)
{
    const SessionPreferences settings(preferences, QString(ProductWord));
    return {isOn(settings, keys::pos::Stitle),
        isOn(settings, keys::pos::Type),
        isOn(settings, keys::pos::SGroup),
        isOn(settings, keys::pos::SUserL),
        isOn(settings, keys::pos::SAddr),
        isOn(settings, keys::pos::SPassL)};
}

QList<ReceiptLine> receiptLines(const SheetTicket& ticket, const ReceiptPaper& paper, const ReceiptContent& content)
{
    QList<ReceiptLine> lines;
    const auto add = [&](const QString& text, bool centred, bool bold, bool large) {
        lines.append({text.left(large ? paper.columns / 2 : paper.columns), centred, bold, large});
    };
    if (content.title)
        add(ticket.title, true, true, false);
    if (content.address)
        add(ticket.address, true, false, false);
    add(QString(paper.columns, u'-'), false, false, false);
    add(QStringLiteral("User: ") + ticket.userName, false, true, content.largeUser);
    add(QStringLiteral("Password: ") + ticket.password, false, true, content.largePassword);
    const QString time = QStringLiteral("Time: ") + ticket.timeText;
    add(time + ticket.price.rightJustified(qMax<qsizetype>(1, paper.columns - time.size())), false, false, false);
    add(ticket.expiryText, false, false, false);
    if (content.type)
        add(ticket.timeRule, false, false, false);
    if (!ticket.quotaText.isEmpty())
        add(QStringLiteral("Quota: ") + ticket.quotaText, false, false, false);
    if (content.group)
        add(ticket.number, false, false, false);
    return lines;
}

QByteArray escposReceipt(const SheetTicket& ticket, const ReceiptPaper& paper, const ReceiptContent& content)
{
    QByteArray out = command({Esc, '@'}) + command({Esc, 't', 16});
    for (const ReceiptLine& line : receiptLines(ticket, paper, content)) {
        out += command({Esc, 'a', line.centred ? 1 : 0}) + command({Esc, 'E', line.bold ? 1 : 0})
            + command({Gs, '!', line.large ? 0x11 : 0x00}) + printable(line.text) + Lf;
    }
    out += command({Esc, 'E', 0}) + command({Gs, '!', 0});
    if (!ticket.loginCode.isEmpty())
        out += command({Esc, 'a', 1}) + escposQr(ticket.loginCode, paper.qrModule) + Lf;
    return out + command({Esc, 'a', 0}) + command({Esc, 'd', 4}) + command({Gs, 'V', 66, 0});
}

} // namespace marlet
