#include "store/Statement.h"

using namespace Qt::StringLiterals;

namespace marlet {

Statement::Statement(const QString& pattern)
    : m_pattern(pattern)
{
}

Statement::Statement(QString pattern, QVariantList values)
    : m_pattern(std::move(pattern))
    , m_values(std::move(values))
{
}

QString Statement::text() const
{
    static const QString marker = u"{}"_s;
    QString result;
    qsizetype from = 0;
    for (const QVariant& value : m_values) {
        const qsizetype at = m_pattern.indexOf(marker, from);
        if (at < 0)
            break;
        result += QStringView(m_pattern).sliced(from, at - from) + valueText(value);
        from = at + marker.size();
    }
    return result + QStringView(m_pattern).sliced(from);
}

QString Statement::valueText(const QVariant& value)
{
    if (value.isNull())
        return QString();
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? u"True"_s : u"False"_s;
    return value.toString();
}

} // namespace marlet
