#include "store/PreferenceKeys.h"

#include "values/Numbers.h"
#include "values/Texts.h"

namespace marlet {

namespace {

// The text is the word without regard to case, as Qt compares them; ASCII is compared here at
// once, which is what nearly every saved switch holds.
bool isWord(QStringView text, QLatin1StringView word)
{
    if (text.size() != word.size())
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x80)
            return text.compare(word, Qt::CaseInsensitive) == 0;
        if (values::lowerAscii(c) != values::lowerAscii(char16_t(word[i].unicode())))
            return false;
    }
    return true;
}

} // namespace

std::span<const PreferenceKey> preferenceCatalogue()
{
    return detail::preferenceCatalogue;
}

const PreferenceKey* findPreferenceKey(QStringView section, QStringView name)
{
    for (const PreferenceKey& key : detail::preferenceCatalogue) {
        if (QLatin1StringView(key.section.data(), qsizetype(key.section.size())).compare(section, Qt::CaseInsensitive)
                == 0
            && QLatin1StringView(key.name.data(), qsizetype(key.name.size())).compare(name, Qt::CaseInsensitive) == 0)
            return &key;
    }
    return nullptr;
}

SessionPreferences::SessionPreferences(Preferences& store, QString appTitle)
    : m_store(store)
    , m_appTitle(std::move(appTitle))
{
}

QString SessionPreferences::application(const PreferenceKey& key) const
{
    return key.application == PreferenceApp::Product ? QString(ProductWord) : m_appTitle;
}

QString SessionPreferences::text(const PreferenceKey& key) const
{
    const QString* value = m_store.findLasting(
        key.application == PreferenceApp::Product ? QAnyStringView(ProductWord) : QAnyStringView(m_appTitle),
        key.section,
        key.name);
    return value ? *value : key.defaultText();
}

QString SessionPreferences::text(const PreferenceKey& key, const QString& defaultValue) const
{
    return m_store.GetSetting(application(key), key.sectionText(), key.nameText(), defaultValue);
}

double SessionPreferences::number(const PreferenceKey& key) const
{
    return numberOf(text(key));
}

double SessionPreferences::number(const PreferenceKey& key, const QString& defaultValue) const
{
    return numberOf(text(key, defaultValue));
}

bool SessionPreferences::truth(const PreferenceKey& key) const
{
    return truthOf(text(key));
}

bool SessionPreferences::truth(const PreferenceKey& key, const QString& defaultValue) const
{
    return truthOf(text(key, defaultValue));
}

void SessionPreferences::save(const PreferenceKey& key, const QString& value)
{
    m_store.SaveSetting(application(key), key.sectionText(), key.nameText(), value);
}

double SessionPreferences::numberOf(const QString& text)
{
    return values::leadingNumber(text);
}

bool SessionPreferences::truthOf(const QString& text)
{
    // A switch is nearly always saved as one digit.
    if (text.size() == 1 && text.front() >= u'0' && text.front() <= u'9')
        return text.front() != u'0';
    const QString trimmed = text.trimmed();
    // Texts equal without regard to case have the same length: most texts are told by it alone.
    if (isWord(trimmed, QLatin1StringView("True")))
        return true;
    if (isWord(trimmed, QLatin1StringView("False")))
        return false;
    return values::isNumeric(trimmed) && values::leadingNumber(trimmed) != 0;
}

} // namespace marlet
