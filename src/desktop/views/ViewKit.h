#pragma once

#include <QString>
#include <QWidget>

#include <initializer_list>

class QBoxLayout;
class QFormLayout;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QVBoxLayout;

namespace marlet {

class Control;
class Form;
class ViewWidgets;

namespace views {

// What the hand-made views share: the widget of a control made for its kind and handed to the
// binder, a label carrying the caption that stands beside a field, and labelled rows.
//
// A control the form does not have gives no widget (nullptr) and the rows simply leave it out,
// so that a view never breaks a screen; the screen tests check that every control has its place.
class ViewKit
{
public:
    ViewKit(Form& form, ViewWidgets& widgets);

    // The widget that shows the named control, of the kind the binder drives, inside `parent`.
    QWidget* make(const QString& name, QWidget* parent);
    template<typename T>
    T* make(const QString& name, QWidget* parent)
    {
        return qobject_cast<T*>(make(name, parent));
    }
    // A text box of several lines for a report that the screen writes: no wrapping, and tabs of
    // eight characters, as the report lines up its values with them.
    QPlainTextEdit* reportBox(const QString& name, QWidget* parent, QSize minimum);
    // A label control placed beside a field: one line, centred on the field.
    QLabel* label(const QString& name, QWidget* parent);
    // A frame of the form shown as `widget` (a page, a panel, a group box); returns it.
    template<typename T>
    T* frame(const QString& name, T* widget)
    {
        place(name, widget);
        return widget;
    }

    // A label with the caption beside the named field, whose mnemonic focuses that field.
    QLabel* caption(const QString& name, QWidget* parent);
    // Adds "caption: field" for the named field; returns the field's widget.
    QWidget* addRow(QFormLayout& form, const QString& name, QWidget* parent);
    // Adds a row whose label is `label` and whose field is the widgets given, side by side.
    void addRow(QFormLayout& form, QWidget* label, std::initializer_list<QWidget*> fields);

private:
    // Names the widget that shows the control.
    void place(const QString& name, QWidget* widget);
    Control* control(const QString& name) const;

    Form& m_form;
    ViewWidgets& m_widgets;
};

// A form layout as every view sets it up: fields at their own width, labels right-aligned.
QFormLayout* formLayout(QWidget* parent = nullptr);
// The widgets side by side, left-aligned; missing ones are left out.
QHBoxLayout* line(std::initializer_list<QWidget*> widgets);
// Adds the widgets that exist to a box layout.
void addAll(QBoxLayout& box, std::initializer_list<QWidget*> widgets);
// Makes the label columns of separate form layouts as wide as the widest of them, so that their
// fields line up.
void alignLabels(std::initializer_list<QFormLayout*> forms);
// A tab strip over an area whose pages take turns in one cell, as the tabs of a tab widget look.
// The strip's control decides which page shows, so the pages are plain widgets added with
// addTakingTurns; `layout` holds the strip above the area.
struct TabbedArea
{
    QVBoxLayout* layout = nullptr;
    QWidget* area = nullptr;
    QGridLayout* cell = nullptr;
};
TabbedArea tabbedArea(ViewKit& kit, QWidget& root, const QString& tabStrip, const QString& areaName);
// Adds a page to the area's cell: a hidden page keeps its size, so the window does not jump when
// the pages change.
void addTakingTurns(QGridLayout& cell, QWidget* page);

// The window the view sits in takes its size from the layout and is not resized by hand: for
// small dialogs without a list.
void fixWindowSize(QWidget& root);

} // namespace views

} // namespace marlet
