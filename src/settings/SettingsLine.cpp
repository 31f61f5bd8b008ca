#include "settings/SettingsLine.h"

#include <algorithm>

namespace marlet {

namespace {

// Each character's code lies between 0 and 255, so the sum between 501 and 756: always three digits.
constexpr int Offset = 501;
constexpr int GroupLength = 3;

} // namespace

QString ScrambleLine(const QString& text)
{
    QByteArray codes = text.toLatin1();
    std::reverse(codes.begin(), codes.end());
    QString digits;
    digits.reserve(codes.size() * GroupLength);
    for (const char code : codes) {
        QString group = QString::number(int(static_cast<unsigned char>(code)) + Offset);
        std::reverse(group.begin(), group.end());
        digits += group;
    }
    return digits;
}

std::optional<QString> UnscrambleLine(const QString& digits)
{
    if (digits.size() % GroupLength != 0)
        return std::nullopt;
    QString text;
    text.reserve(digits.size() / GroupLength);
    for (qsizetype at = 0; at < digits.size(); at += GroupLength) {
        int number = 0;
        for (qsizetype i = at + GroupLength - 1; i >= at; --i) {
            const QChar digit = digits.at(i);
            if (digit < u'0' || digit > u'9')
                return std::nullopt;
            number = number * 10 + digit.digitValue();
        }
        const int code = number - Offset;
        if (code < 0 || code > 255)
            return std::nullopt;
        text += QChar(char16_t(code));
    }
    std::reverse(text.begin(), text.end());
    return text;
}

} // namespace marlet
