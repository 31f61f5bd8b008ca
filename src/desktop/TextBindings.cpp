#include "desktop/Bindings.h"

#include "desktop/DropDownComboBox.h"
#include "desktop/FormBinder.h"
#include "platform/Operator.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace marlet {

namespace {

// A line edit's own limit when the model sets none.
constexpr int unlimitedLength = 32767;

// Appends what the model added at the end; rebuilds the list when anything else changed.
void syncItems(QComboBox& combo, const QStringList& items)
{
    const int shown = combo.count();
    bool prefix = shown <= items.size();
    for (int i = 0; prefix && i < shown; ++i)
        prefix = combo.itemText(i) == items.at(i);
    if (prefix && shown == items.size())
        return;
    if (!prefix)
        combo.clear();
    combo.addItems(items.mid(combo.count()));
}

} // namespace

EditLine::EditLine(Control& control, QLineEdit* line, ControlBinding& binding, FormBinder& binder)
    : QObject(&binding)
    , m_control(control)
    , m_line(line)
    , m_binder(binder)
{
    // Typed keys never reach the line (the binder takes them); this is deleting, cutting and
    // pasting, which replace the text in one go.
    connect(m_line, &QLineEdit::textEdited, this, [this, &binding](const QString& text) {
        const int start = m_line->hasSelectedText() ? m_line->selectionStart() : m_line->cursorPosition();
        const int length = m_line->selectionLength();
        m_binder.dispatch(binding, [this, text, start, length] {
            Operator::setText(m_control, text);
            m_control.setSelection(start, length);
        });
    });
    // Cursor moves are state, not events: the next typed key goes where the cursor stands.
    connect(m_line, &QLineEdit::cursorPositionChanged, this, [this] {
        if (!m_binder.refreshing())
            takeSelection();
    });
    connect(m_line, &QLineEdit::selectionChanged, this, [this] {
        if (!m_binder.refreshing())
            takeSelection();
    });
}

void EditLine::refreshText()
{
    if (m_line->text() != m_control.text())
        m_line->setText(m_control.text());
    refreshSelection();
}

void EditLine::refreshSelection()
{
    const int start = m_control.selStart();
    const int length = m_control.selLength();
    const int shownStart = m_line->hasSelectedText() ? m_line->selectionStart() : m_line->cursorPosition();
    if (shownStart == start && m_line->selectionLength() == length)
        return;
    if (length > 0) {
        m_line->setSelection(start, length);
    } else {
        m_line->deselect();
        m_line->setCursorPosition(start);
    }
}

void EditLine::takeSelection()
{
    if (m_line->hasSelectedText())
        m_control.setSelection(m_line->selectionStart(), m_line->selectionLength());
    else
        m_control.setSelection(m_line->cursorPosition(), 0);
}

TextBoxBinding::TextBoxBinding(Control& control, QLineEdit* line, FormBinder& binder)
    : ControlBinding(control, line, binder)
    , m_line(line)
    , m_edit(new EditLine(control, line, *this, binder))
{
}

void TextBoxBinding::refreshValue()
{
    m_edit->refreshText();
}

QObject* TextBoxBinding::textTarget() const
{
    return m_line;
}

void TextBoxBinding::refreshOwn(Property property)
{
    switch (property) {
    case Property::Text:
        m_line->setEchoMode(control().passwordChar() ? QLineEdit::Password : QLineEdit::Normal);
        m_edit->refreshText();
        break;
    case Property::Selection:
        m_edit->refreshSelection();
        break;
    case Property::MaxLength:
        m_line->setMaxLength(control().maxLength() > 0 ? control().maxLength() : unlimitedLength);
        break;
    case Property::Locked:
        m_line->setReadOnly(control().locked());
        break;
    default:
        break;
    }
}

TextAreaBinding::TextAreaBinding(Control& control, QPlainTextEdit* area, FormBinder& binder)
    : ControlBinding(control, area, binder)
    , m_area(area)
{
    // Only the model changes the text: typed keys reach it through the binder, and the area's own
    // editing (paste, delete) stays off.
    m_area->setReadOnly(true);
}

void TextAreaBinding::refreshValue()
{
    // The area keeps a CR LF as one line break and gives it back as LF.
    QString text = control().text();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (m_area->toPlainText() != text)
        m_area->setPlainText(text);
}

QObject* TextAreaBinding::textTarget() const
{
    return m_area;
}

void TextAreaBinding::refreshOwn(Property property)
{
    if (property == Property::Text)
        refreshValue();
}

ComboBoxBinding::ComboBoxBinding(Control& control, QComboBox* combo, FormBinder& binder)
    : ControlBinding(control, combo, binder)
    , m_combo(combo)
{
    m_combo->setInsertPolicy(QComboBox::NoInsert);
    if (m_combo->isEditable()) {
        // The text is the model's, key by key: no completion of the combo's own.
        m_combo->setCompleter(nullptr);
        m_edit = new EditLine(control, m_combo->lineEdit(), *this, binder);
        watch(m_combo->lineEdit());
    }
    connect(m_combo, &QComboBox::activated, this, [this](int index) {
        dispatch([this, index] { Operator::pick(this->control(), index); });
    });
    if (auto* dropDown = qobject_cast<DropDownComboBox*>(m_combo)) {
        connect(dropDown, &DropDownComboBox::aboutToDropDown, this, [this] {
            dispatch([this] { Operator::dropDown(this->control()); });
        });
    }
}

void ComboBoxBinding::refreshValue()
{
    refreshIndex();
    if (m_edit)
        m_edit->refreshText();
}

QObject* ComboBoxBinding::textTarget() const
{
    return m_edit ? m_combo->lineEdit() : nullptr;
}

void ComboBoxBinding::refreshOwn(Property property)
{
    switch (property) {
    case Property::Items:
        refreshItems();
        break;
    case Property::ListIndex:
    case Property::Text:
        refreshValue();
        break;
    case Property::Selection:
        if (m_edit)
            m_edit->refreshSelection();
        break;
    case Property::Locked:
        if (m_edit)
            m_combo->lineEdit()->setReadOnly(control().locked());
        break;
    default:
        break;
    }
}

void ComboBoxBinding::refreshItems()
{
    syncItems(*m_combo, control().items());
    refreshValue();
}

void ComboBoxBinding::refreshIndex()
{
    if (m_combo->currentIndex() != control().listIndex())
        m_combo->setCurrentIndex(control().listIndex());
}

} // namespace marlet
