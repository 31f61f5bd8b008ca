#include "issuing/RandomText.h"

#include "store/PreferenceKeys.h"
#include "values/Numbers.h"

#include <QRandomGenerator>

#include <array>
#include <cmath>
#include <cstring>
#include <memory>

#include <sys/random.h>

namespace marlet {

namespace {

// Bytes of the kernel's secure generator, fetched a block at a time.
class SecureBytes
{
public:
    quint8 next()
    {
        if (m_next == m_bytes.size())
            refill();
        return m_bytes[m_next++];
    }

private:
    void refill()
    {
        // One call fills the block. Where the kernel's call fails, Qt's system generator does.
        std::size_t filled = 0;
        while (filled < m_bytes.size()) {
            const ssize_t got = ::getrandom(m_bytes.data() + filled, m_bytes.size() - filled, 0);
            if (got <= 0)
                break;
            filled += std::size_t(got);
        }
        if (filled < m_bytes.size()) {
            std::array<quint32, BlockSize / 4> words {};
            QRandomGenerator::system()->fillRange(words.data(), qsizetype(words.size()));
            std::memcpy(m_bytes.data(), words.data(), m_bytes.size());
        }
        m_next = 0;
    }

    static constexpr std::size_t BlockSize = 256;
    std::array<quint8, BlockSize> m_bytes {};
    std::size_t m_next = BlockSize;
};

} // namespace

UniformSource systemUniformSource()
{
    // The processor's own generator, behind Qt's system generator, costs microseconds a call in a
    // virtual machine, more than the rest of a ticket's making. The kernel's generator gives a block
    // of bytes in one call, and a draw needs one byte k, giving k / 256: uniform from 0 up to but not
    // including 1, and times 255 with the fraction dropped it hits each code from 1 to 254 exactly
    // once, so every alphabet stays even.
    return [bytes = std::make_shared<SecureBytes>()]() { return double(bytes->next()) / 256.0; };
}

TicketAlphabet ticketAlphabet(const QString& passGenType)
{
    // A single digit, as the settings screen writes it, needs no general conversion.
    const bool digit = passGenType.size() == 1 && passGenType.front() >= u'0' && passGenType.front() <= u'9';
    switch (digit ? passGenType.front().unicode() - u'0' : values::toInt16(passGenType).value_or(0)) {
    case 1:
        return TicketAlphabet::Digits;
    case 2:
        return TicketAlphabet::Letters;
    default:
        return TicketAlphabet::Clear;
    }
}

TicketAlphabet ticketAlphabet(const SessionPreferences& preferences)
{
    return ticketAlphabet(preferences.text(keys::PassGenType));
}

bool acceptsCode(TicketAlphabet alphabet, int code)
{
    const bool digit = code >= '0' && code <= '9';
    const bool letter = code >= 'A' && code <= 'Z';
    switch (alphabet) {
    case TicketAlphabet::Digits:
        return digit;
    case TicketAlphabet::Letters:
        return letter;
    case TicketAlphabet::Clear:
        return (digit && code >= '2') || (letter && code != 'I' && code != 'O');
    }
    return false;
}

QChar drawCharacter(TicketAlphabet alphabet, const UniformSource& source)
{
    for (;;) {
        const int code = int(std::floor(source() * 255));
        if (acceptsCode(alphabet, code))
            return QChar(char16_t(code));
    }
}

QString Random(const SessionPreferences& preferences, int Length, const UniformSource& source)
{
    const TicketAlphabet alphabet = ticketAlphabet(preferences);
    QString text;
    for (int i = 0; i < Length; ++i)
        text += drawCharacter(alphabet, source);
    return text;
}

} // namespace marlet
