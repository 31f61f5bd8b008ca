#pragma once

#include "desktop/ControlBinding.h"

class QAbstractButton;
class QAction;
class QComboBox;
class QDateTimeEdit;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QProgressBar;
class QAbstractSlider;
class QTabBar;
class QTableView;

// The bindings of each kind of control. Only createBinding() needs to know them.
namespace marlet {

class GridModel;

// Labels and images: a caption or a picture, and a click.
class LabelBinding : public ControlBinding
{
public:
    LabelBinding(Control& control, QLabel* label, FormBinder& binder);
    bool handleEvent(QObject* watched, QEvent* event) override;

protected:
    void refreshOwn(Property property) override;

private:
    QLabel* m_label;
};

// Command buttons, check boxes and option buttons: a caption and a click.
class ButtonBinding : public ControlBinding
{
public:
    ButtonBinding(Control& control, QAbstractButton* button, FormBinder& binder);
    void refreshValue() override;

protected:
    void refreshOwn(Property property) override;

private:
    QAbstractButton* m_button;
};

class FrameBinding : public ControlBinding
{
public:
    FrameBinding(Control& control, QWidget* frame, FormBinder& binder);

protected:
    void refreshOwn(Property property) override;
};

// The edit line of a text box or an editable combo box. Keys are the model's: the binder sends
// them through Operator::pressKey and the line only ever shows the model's text and selection.
// What the line does on its own (delete, paste, cursor moves) is handed back to the model.
class EditLine : public QObject
{
public:
    EditLine(Control& control, QLineEdit* line, ControlBinding& binding, FormBinder& binder);
    void refreshText();
    void refreshSelection();

private:
    void takeSelection();

    Control& m_control;
    QLineEdit* m_line;
    FormBinder& m_binder;
};

class TextBoxBinding : public ControlBinding
{
public:
    TextBoxBinding(Control& control, QLineEdit* line, FormBinder& binder);
    void refreshValue() override;
    QObject* textTarget() const override;

protected:
    void refreshOwn(Property property) override;

private:
    QLineEdit* m_line;
    EditLine* m_edit;
};

// A text box shown on several lines, such as a report box. As in a line, typed keys go to the
// model, and the area shows the model's text (line breaks as CR LF or LF alike); the operator can
// select and copy.
class TextAreaBinding : public ControlBinding
{
public:
    TextAreaBinding(Control& control, QPlainTextEdit* area, FormBinder& binder);
    void refreshValue() override;
    QObject* textTarget() const override;

protected:
    void refreshOwn(Property property) override;

private:
    QPlainTextEdit* m_area;
};

class ComboBoxBinding : public ControlBinding
{
public:
    ComboBoxBinding(Control& control, QComboBox* combo, FormBinder& binder);
    void refreshValue() override;
    QObject* textTarget() const override;

protected:
    void refreshOwn(Property property) override;

private:
    void refreshItems();
    void refreshIndex();

    QComboBox* m_combo;
    EditLine* m_edit = nullptr;
};

class ListBoxBinding : public ControlBinding
{
public:
    ListBoxBinding(Control& control, QListWidget* list, FormBinder& binder);
    void refreshValue() override;
    bool handleEvent(QObject* watched, QEvent* event) override;
    bool handleKey(QKeyEvent* event) override;

protected:
    void refreshOwn(Property property) override;

private:
    void refreshItems();
    void refreshCurrentRow();

    QListWidget* m_list;
};

class TabStripBinding : public ControlBinding
{
public:
    TabStripBinding(Control& control, QTabBar* tabs, FormBinder& binder);
    void refreshValue() override;
    bool handleEvent(QObject* watched, QEvent* event) override;

protected:
    void refreshOwn(Property property) override;

private:
    void refreshTabs();

    QTabBar* m_tabs;
};

// The grid's cells reach the view through a GridModel. Changes are announced once per turn of
// the event loop, however many rows a screen adds in between.
class GridBinding : public ControlBinding
{
public:
    GridBinding(Control& control, QTableView* table, FormBinder& binder);
    bool handleEvent(QObject* watched, QEvent* event) override;
    // Announces pending changes now.
    void flush();

protected:
    void refreshOwn(Property property) override;

private:
    void schedule();
    void applyColumns();
    void applySelection();
    bool mouseOnCells(QEvent* event);
    bool mouseOnHeader(QEvent* event);

    QTableView* m_table;
    GridModel* m_model;
    bool m_pending = false;
};

// Progress bars and sliders: a value within a range.
class RangeBinding : public ControlBinding
{
public:
    RangeBinding(Control& control, QWidget* widget, FormBinder& binder);
    void refreshValue() override;

protected:
    void refreshOwn(Property property) override;

private:
    QProgressBar* m_progress;
    QAbstractSlider* m_slider;
};

class DateTimeBinding : public ControlBinding
{
public:
    DateTimeBinding(Control& control, QDateTimeEdit* edit, FormBinder& binder);
    void refreshValue() override;

protected:
    void refreshOwn(Property property) override;

private:
    QDateTimeEdit* m_edit;
};

// A menu or menu item: an action in the menu bar or in its parent's menu.
class MenuBinding : public ControlBinding
{
public:
    // A menu with items of its own comes with the menu they drop down in.
    MenuBinding(Control& control, QAction* action, QMenu* menu, FormBinder& binder);

protected:
    void refreshOwn(Property property) override;

private:
    QPointer<QAction> m_action;
};

} // namespace marlet
