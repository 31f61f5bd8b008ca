#include "platform/Form.h"

#include "platform/Platform.h"

#include <utility>

namespace marlet {

namespace {

QString withoutAccelerator(QString text)
{
    text.replace(QStringLiteral("&&"), QStringLiteral("\x01"));
    text.remove(u'&');
    text.replace(u'\x01', u'&');
    return text;
}

// Splits "Text7(8)" into its name and index; a plain name has index -1.
std::pair<QString, int> splitKey(const QString& key)
{
    if (key.endsWith(u')')) {
        const qsizetype open = key.lastIndexOf(u'(');
        bool ok = false;
        const int index = key.mid(open + 1, key.size() - open - 2).toInt(&ok);
        if (open > 0 && ok)
            return {key.left(open), index};
    }
    return {key, -1};
}

} // namespace

Form::Form(Platform& platform, QString name)
    : m_platform(platform)
    , m_name(std::move(name))
{
}

Form::~Form() = default;

void Form::setCaption(const QString& caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    emit captionChanged();
}

void Form::setSize(int width, int height)
{
    m_width = width;
    m_height = height;
    emit captionChanged();
}

Control& Form::add(ControlKind kind, const QString& name, int index)
{
    m_controls.push_back(std::make_unique<Control>(*this, kind, name, index));
    if (!m_index.insert(*m_controls.back()))
        qFatal("Form %s has two controls %s(%d)", qPrintable(m_name), qPrintable(name), index);
    return *m_controls.back();
}

Control& Form::addLabelled(ControlKind kind, const QString& name, const QString& caption, int index)
{
    Control& c = add(kind, name, index);
    c.setLabel(caption);
    c.setCaption(caption);
    return c;
}

Control& Form::addToFrame(Control& frame, ControlKind kind, const QString& name, const QString& caption)
{
    Control& control = caption.isEmpty() ? add(kind, name) : addLabelled(kind, name, caption);
    control.setContainer(&frame);
    if (kind == ControlKind::TextBox || kind == ControlKind::ComboBox || kind == ControlKind::DateTimePicker
        || kind == ControlKind::ListBox)
        control.setCaption(QString());
    return control;
}

Control* Form::control(const QString& name, int index) const
{
    return m_index.find(name, index);
}

Control* Form::find(const QString& key) const
{
    const auto [name, index] = splitKey(key.trimmed());
    if (Control* c = control(name, index))
        return c;
    const QString plain = withoutAccelerator(key.trimmed());
    for (const auto& c : m_controls) {
        if (c->label().isEmpty())
            continue;
        if (c->label() == key || withoutAccelerator(c->label()).compare(plain, Qt::CaseInsensitive) == 0)
            return c.get();
    }
    return nullptr;
}

Control& Form::operator[](const QString& name) const
{
    return at(name, -1);
}

Control& Form::at(const QString& name, int index) const
{
    Control* c = control(name, index);
    if (!c)
        qFatal("Form %s has no control %s(%d)", qPrintable(m_name), qPrintable(name), index);
    return *c;
}

std::vector<Control*> Form::controlsIn(const Control* container) const
{
    std::vector<Control*> found;
    for (const auto& c : m_controls) {
        if (c->container() == container)
            found.push_back(c.get());
    }
    return found;
}

bool Form::setFocus(Control& control)
{
    if (!control.canFocus() || !takesFocus(control.kind()))
        return false;
    if (m_focused == &control)
        return true;
    Control* previous = m_focused;
    m_focused = &control;
    if (previous && previous->onLostFocus)
        previous->onLostFocus();
    // A lost-focus handler may have moved the focus elsewhere; only then is the new got-focus moot.
    if (m_focused == &control && control.onGotFocus)
        control.onGotFocus();
    return true;
}

Control* Form::nextInTabOrder(const Control* from) const
{
    auto focusable = [](const Control& c) { return takesFocus(c.kind()) && c.canFocus(); };
    const auto count = m_controls.size();
    size_t start = 0;
    for (size_t i = 0; i < count; ++i) {
        if (m_controls[i].get() == from)
            start = i + 1;
    }
    for (size_t step = 0; step < count; ++step) {
        Control* c = m_controls[(start + step) % count].get();
        if (c != from && focusable(*c))
            return c;
    }
    return nullptr;
}

void Form::load()
{
    if (m_loaded)
        return;
    m_focused = nullptr;
    m_index.clear();
    m_controls.clear();
    onLoad = nullptr;
    onActivate = nullptr;
    onQueryUnload = nullptr;
    onUnload = nullptr;
    build();
    m_loaded = true;
    emit rebuilt();
    if (onLoad)
        onLoad();
}

void Form::activate()
{
    if (onActivate)
        onActivate();
    // A form that shows without a focused control gives the focus to the first in tab order.
    if (!m_focused) {
        if (Control* first = nextInTabOrder(nullptr))
            setFocus(*first);
    }
}

bool Form::unload(int mode)
{
    if (!m_loaded)
        return true;
    bool cancel = false;
    if (onQueryUnload)
        onQueryUnload(cancel, mode);
    if (cancel)
        return false;
    if (onUnload)
        onUnload(cancel);
    if (cancel)
        return false;
    forceUnload();
    return true;
}

void Form::forceUnload()
{
    if (!m_loaded)
        return;
    m_loaded = false;
    m_focused = nullptr;
    emit closed();
}

void Form::showModal()
{
    m_platform.showModal(*this);
}

void Form::popupMenu(Control& menu)
{
    if (Control* chosen = m_platform.popupMenu(*this, menu); chosen && chosen->enabled())
        chosen->fireClick();
}

} // namespace marlet
