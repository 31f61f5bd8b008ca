#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace marlet {

class Form;
class GridData;

enum class ControlKind {
    Label,
    TextBox,
    CommandButton,
    CheckBox,
    OptionButton,
    ComboBox,
    ListBox,
    Frame,
    TabStrip,
    Grid,
    ProgressBar,
    Slider,
    DateTimePicker,
    Image,
    Menu,
};

QString controlKindName(ControlKind kind);
// Kinds that take the keyboard focus and count in the tab order.
bool takesFocus(ControlKind kind);

// Which part of a control changed; the front end refreshes that part of its widget.
enum class Property {
    Caption,
    Text,
    Selection,
    Value,
    Enabled,
    Visible,
    Locked,
    MaxLength,
    Items,
    ListIndex,
    Grid,
    ToolTip,
    Colors,
    Geometry,
    Range,
    Tabs,
    DateTime,
    Font,
    Picture,
};

// Check box values.
namespace CheckState {
constexpr int Unchecked = 0;
constexpr int Checked = 1;
constexpr int Grayed = 2;
} // namespace CheckState

namespace MouseButton {
constexpr int Left = 1;
constexpr int Right = 2;
} // namespace MouseButton

// Key codes the screens look at, as the host's form model numbers them.
namespace Key {
constexpr int Backspace = 8;
constexpr int Tab = 9;
constexpr int Enter = 13;
constexpr int Escape = 27;
} // namespace Key

// Colours as the screens give them: an integer with red in the low byte.
namespace Colour {
constexpr int Black = 0;
constexpr int Red = 255;
constexpr int White = 0xFFFFFF;
// The face of buttons: a text box in it reads as one that is not for editing.
constexpr int ButtonFace = 0xF0F0F0;
} // namespace Colour

// Told of every change of a control's state: the desktop's binding of the control's widget.
class ControlWatcher
{
public:
    virtual void controlChanged(Property property) = 0;
    // The control is being destroyed; the watcher must not reach it again.
    virtual void controlGone() = 0;

protected:
    virtual ~ControlWatcher() = default;
};

// One control of a form: the state a screen can observe or set, and the events it answers.
// One class serves every kind; a kind simply leaves the properties it has no use for alone.
// A screen of hundreds builds all of them on every opening, so a control is a plain object: its
// changes go to the watchers it has, without the bookkeeping of an object with signals.
class Control
{
public:
    Control(Form& form, ControlKind kind, QString name, int index = -1);
    ~Control();
    Q_DISABLE_COPY_MOVE(Control)

    Form& form() const { return m_form; }
    ControlKind kind() const { return m_kind; }
    const QString& name() const { return m_name; }
    int index() const { return m_index; }
    // Name as scripts and the front end address it: "Text7" or "Text7(8)" for an array element.
    QString key() const;
    // Caption by which a control without a name of its own is known ("&Generate New Ticket(s)").
    const QString& label() const { return m_label; }
    void setLabel(const QString& label) { m_label = label; }
    // Frame or tab page the control sits in; option buttons are exclusive within it.
    Control* container() const { return m_container; }
    void setContainer(Control* frame) { m_container = frame; }

    // Caption of labels, buttons, frames, check and option boxes and menu items.
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);

    // Text of a text box or of the edit part of a combo box. A change fires the change event.
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    int selStart() const { return m_selStart; }
    int selLength() const { return m_selLength; }
    void setSelection(int start, int length);
    void selectAll() { setSelection(0, int(m_text.size())); }
    int maxLength() const { return m_maxLength; } // 0: no limit
    void setMaxLength(int length);
    bool locked() const { return m_locked; }
    void setLocked(bool locked);
    bool passwordChar() const { return m_passwordChar; }
    void setPasswordChar(bool masked) { m_passwordChar = masked; }

    // Check box (0, 1, 2), option button (0, 1), progress bar and slider value.
    // Setting a check or option box to a new value fires its click event, as the host's forms do.
    int value() const { return m_value; }
    void setValue(int value);
    bool isChecked() const { return m_value != 0; }
    // A check box that is ticked, not cleared or greyed.
    bool ticked() const { return m_value == CheckState::Checked; }
    int minimum() const { return m_min; }
    int maximum() const { return m_max; }
    void setRange(int minimum, int maximum);
    void setMaximum(int maximum) { setRange(m_min, maximum); }

    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    bool visible() const { return m_visible; }
    void setVisible(bool visible);
    // Enabled and visible, and so is every frame around it.
    bool canFocus() const;

    const QString& toolTip() const { return m_toolTip; }
    void setToolTip(const QString& tip);
    int foreColor() const { return m_foreColor; }
    void setForeColor(int color);
    int backColor() const { return m_backColor; }
    void setBackColor(int color);
    bool fontBold() const { return m_fontBold; }
    int fontSize() const { return m_fontSize; }
    void setFont(bool bold, int size);

    // Geometry in twips (1/1440 inch), as the screens state it.
    int left() const { return m_left; }
    int top() const { return m_top; }
    int width() const { return m_width; }
    int height() const { return m_height; }
    void setGeometry(int left, int top, int width, int height);
    void setTop(int top) { setGeometry(m_left, top, m_width, m_height); }
    void setLeft(int left) { setGeometry(left, m_top, m_width, m_height); }
    void setWidth(int width) { setGeometry(m_left, m_top, width, m_height); }
    void setHeight(int height) { setGeometry(m_left, m_top, m_width, height); }

    // List and combo boxes; a tab strip keeps its tab captions here too.
    const QStringList& items() const { return m_items; }
    int listCount() const { return int(m_items.size()); }
    QString item(int i) const { return m_items.value(i); }
    void addItem(const QString& item);
    void addItems(const QStringList& items);
    void removeItem(int i);
    void clear();
    // What the last change of the entries was, so that a view of a long list can follow an append
    // or a removal without rebuilding itself.
    struct ItemsChange
    {
        enum class Kind { Reset, Appended, Removed };
        Kind kind = Kind::Reset;
        int index = -1; // the entry removed
    };
    const ItemsChange& lastItemsChange() const { return m_lastItemsChange; }
    // -1 when nothing is selected. A new index fires the click event.
    int listIndex() const { return m_listIndex; }
    void setListIndex(int index);
    // Selects the entry whose text equals the given one; -1 when none does.
    int findItem(const QString& text) const { return int(m_items.indexOf(text)); }
    bool multiSelect() const { return m_multiSelect; }
    void setMultiSelect(bool multi) { m_multiSelect = multi; }
    bool selected(int i) const;
    void setSelected(int i, bool selected);
    int selectedCount() const;
    // A combo box whose edit part takes free text, as opposed to a pick-only list.
    bool editable() const { return m_editable; }
    void setEditable(bool editable) { m_editable = editable; }

    // Tab strip: the selected tab, 1-based as the screens number them.
    int selectedTab() const { return m_listIndex + 1; }
    void setSelectedTab(int tab) { setListIndex(tab - 1); }
    // Tab strip: the tip of each tab, by entry from 0; removing an entry removes its tip.
    QString itemTip(int i) const { return m_itemTips.value(i); }
    void setItemTip(int i, const QString& tip);

    // Date and time picker.
    const QDateTime& dateTime() const { return m_dateTime; }
    void setDateTime(const QDateTime& value);
    const QString& customFormat() const { return m_customFormat; }
    void setCustomFormat(const QString& format) { m_customFormat = format; }

    // Image: the picture's bytes (PNG or another image format), empty when there is none.
    const QByteArray& picture() const { return m_picture; }
    void setPicture(const QByteArray& picture);

    // Grid cells; only grids have them.
    GridData& grid();
    const GridData& grid() const;

    // Menu item: the menu it belongs to, and whether it is only a separator.
    Control* parentMenu() const { return m_parentMenu; }
    void setParentMenu(Control* menu) { m_parentMenu = menu; }
    std::vector<Control*> menuItems() const;
    bool separator() const { return m_caption == QLatin1String("-"); }

    // Announces a change; GridData calls it for a change of the grid's cells.
    void notify(Property property)
    {
        // By index: a watcher may be added while the others are told.
        for (size_t i = 0; i < m_watchers.size(); ++i)
            m_watchers[i]->controlChanged(property);
    }
    // Watchers are told of each change from now on, until they stop or the control goes.
    void addWatcher(ControlWatcher& watcher);
    void removeWatcher(ControlWatcher& watcher);

    // Events the screens answer. Unset handlers do nothing.
    std::function<void()> onClick;
    std::function<void()> onDblClick;
    std::function<void()> onChange;
    std::function<void(int& keyAscii)> onKeyPress;
    std::function<void(int& keyCode, int shift)> onKeyDown;
    std::function<void(int& keyCode, int shift)> onKeyUp;
    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;
    std::function<void()> onDropDown;
    // Grid: the pointer's row and column come with the event; x and y are twips otherwise.
    std::function<void(int button, int shift, int x, int y)> onMouseDown;
    std::function<void(int button, int shift, int x, int y)> onMouseUp;
    std::function<void(int button, int shift, int x, int y)> onMouseMove;
    // Tab strip: may refuse the change by setting cancel.
    std::function<void(bool& cancel)> onBeforeClick;

    // Firing helpers, so that a missing handler is no concern of the caller.
    void fireClick();
    void fireChange();

private:
    void clearOtherOptions();

    Form& m_form;
    ControlKind m_kind;
    QString m_name;
    int m_index;
    QString m_label;
    Control* m_container = nullptr;
    Control* m_parentMenu = nullptr;
    QString m_caption;
    QString m_text;
    int m_selStart = 0;
    int m_selLength = 0;
    int m_maxLength = 0;
    bool m_locked = false;
    bool m_passwordChar = false;
    int m_value = 0;
    int m_min = 0;
    int m_max = 100;
    bool m_enabled = true;
    bool m_visible = true;
    QString m_toolTip;
    int m_foreColor = 0;
    int m_backColor = Colour::White;
    bool m_fontBold = false;
    int m_fontSize = 8;
    int m_left = 0;
    int m_top = 0;
    int m_width = 0;
    int m_height = 0;
    QStringList m_items;
    QStringList m_itemTips;
    ItemsChange m_lastItemsChange;
    int m_listIndex = -1;
    bool m_multiSelect = false;
    bool m_editable = false;
    // A list of flags rather than packed bits: removing the first entry of a long list stays cheap.
    QList<bool> m_selected;
    int m_selectedCount = 0; // of the flags set, kept as they change: screens ask after each entry
    QDateTime m_dateTime;
    QString m_customFormat;
    QByteArray m_picture;
    std::unique_ptr<GridData> m_grid;
    std::vector<ControlWatcher*> m_watchers;
};

} // namespace marlet
