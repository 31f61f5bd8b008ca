#include "values/Texts.h"

namespace marlet::values {

QString mid(const QString& text, int start, int length)
{
    const qsizetype from = qMax(start, 1) - 1;
    return from >= text.size() ? QString() : text.mid(from, length < 0 ? -1 : length);
}

int textPosition(const QString& text, const QString& sought)
{
    return textPosition(1, text, sought);
}

int textPosition(int start, const QString& text, const QString& sought)
{
    const qsizetype from = qMax(start, 1);
    if (text.isEmpty() || from > text.size())
        return 0;
    if (sought.isEmpty())
        return int(from);
    return int(text.indexOf(sought, from - 1) + 1);
}

QString trimBlanks(const QString& text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin);
}

} // namespace marlet::values
