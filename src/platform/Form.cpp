#include "platform/Form.h"

#include "platform/Platform.h"

#include <cstddef>
#include <mutex>
#include <new>
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

struct Form::ControlBlock
{
    static constexpr size_t Capacity = 32;
    alignas(Control) std::byte storage[Capacity * sizeof(Control)];
};

Form::~Form()
{
    m_index.clear();
    destroyControls();
}

namespace {

// As many blocks as the largest screen takes.
constexpr size_t KeptSpareBlocks = 16;

// The blocks of closed forms, waiting for the next form. A screen of hundreds of controls is built
// on every opening: blocks freed when it closes went back to the system, and the next opening got
// them again page by page, each page faulted in and cleared.
template<typename Block>
struct SpareBlocks
{
    std::mutex mutex;
    std::vector<std::unique_ptr<Block>> blocks;

    // Never destroyed: a form may close after the program's statics have gone.
    static SpareBlocks& instance()
    {
        static auto* spare = new SpareBlocks;
        return *spare;
    }
};

} // namespace

void Form::keepSpareBlocks(BlockList& blocks)
{
    auto& spare = SpareBlocks<ControlBlock>::instance();
    const std::lock_guard lock(spare.mutex);
    for (std::unique_ptr<ControlBlock>& block : blocks) {
        if (spare.blocks.size() < KeptSpareBlocks)
            spare.blocks.push_back(std::move(block));
    }
    blocks.clear();
}

std::unique_ptr<Form::ControlBlock> Form::takeBlock()
{
    auto& spare = SpareBlocks<ControlBlock>::instance();
    const std::lock_guard lock(spare.mutex);
    if (spare.blocks.empty())
        return std::make_unique_for_overwrite<ControlBlock>();
    std::unique_ptr<ControlBlock> block = std::move(spare.blocks.back());
    spare.blocks.pop_back();
    return block;
}

void Form::destroyControls()
{
    for (Control* control : m_controls)
        control->~Control();
    m_controls.clear();
    keepSpareBlocks(m_blocks);
    m_usedInBlock = 0;
}

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
    if (m_blocks.empty() || m_usedInBlock == ControlBlock::Capacity) {
        m_blocks.push_back(takeBlock());
        m_usedInBlock = 0;
    }
    std::byte* place = m_blocks.back()->storage + m_usedInBlock * sizeof(Control);
    Control* control = new (place) Control(*this, kind, name, index);
    ++m_usedInBlock;
    m_controls.push_back(control);
    if (!m_index.insert(*control))
        qFatal("Form %s has two controls %s(%d)", qPrintable(m_name), qPrintable(name), index);
    return *control;
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
            return c;
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
            found.push_back(c);
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
        if (m_controls[i] == from)
            start = i + 1;
    }
    for (size_t step = 0; step < count; ++step) {
        Control* c = m_controls[(start + step) % count];
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
    destroyControls();
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
