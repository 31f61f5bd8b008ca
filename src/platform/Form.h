#pragma once

#include "platform/Control.h"
#include "platform/ControlIndex.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace marlet {

class Platform;

// Why a form is being closed, as the query-unload event reports it.
namespace UnloadMode {
constexpr int FormControlMenu = 0; // the operator closed the window
constexpr int FormCode = 1;        // the screen's own code unloads it
} // namespace UnloadMode

// A screen: named controls, the form-level events, focus and the load/unload life cycle.
// Screens derive from it, create their controls in build() and wire their handlers there.
class Form : public QObject
{
    Q_OBJECT

public:
    Form(Platform& platform, QString name);
    ~Form() override;

    Platform& platform() const { return m_platform; }
    const QString& name() const { return m_name; }
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);
    // Size in twips.
    int width() const { return m_width; }
    int height() const { return m_height; }
    void setSize(int width, int height);

    // Creates a control owned by the form. Names are unique per index; arrays share a name.
    Control& add(ControlKind kind, const QString& name, int index = -1);
    // Same, for a control the screens know only by its caption: the caption becomes its label.
    Control& addLabelled(ControlKind kind, const QString& name, const QString& caption, int index = -1);
    // Same, inside a frame or a tab's panel. Text fields and lists show their caption beside them,
    // not in them: for those it becomes the label only.
    Control& addToFrame(Control& frame, ControlKind kind, const QString& name, const QString& caption = {});

    // Lookup without regard to case: "Text7", "Text7(8)", or a label with or without its "&".
    Control* find(const QString& key) const;
    Control* control(const QString& name, int index = -1) const;
    // The control by name; a screen asks only for controls it created, so a miss is a defect.
    Control& operator[](const QString& name) const;
    Control& at(const QString& name, int index) const;
    // In creation order.
    const std::vector<Control*>& controls() const { return m_controls; }
    std::vector<Control*> controlsIn(const Control* container) const;

    // Focus. Moving it fires lost-focus on the old control and got-focus on the new one.
    // Focusing a disabled or hidden control fails and returns false, changing nothing.
    Control* focused() const { return m_focused; }
    bool setFocus(Control& control);
    // The next control that can take the focus, in creation order (the tab order).
    Control* nextInTabOrder(const Control* from) const;

    // Life cycle.
    bool isLoaded() const { return m_loaded; }
    // Builds the controls afresh and fires the load event. Does nothing when already loaded.
    void load();
    void activate();
    // Asks to close: query-unload and unload may refuse. Returns true when the form closed.
    bool unload(int mode = UnloadMode::FormCode);
    // Closes without asking query-unload or unload: for a test harness that must not leave a form
    // open when its script has run out, whatever the form's handlers say.
    void forceUnload();
    // Loads and shows the form modally through the platform; returns when it has closed.
    void showModal();
    // Shows a pop-up menu and runs the chosen item's click.
    void popupMenu(Control& menu);

    std::function<void()> onLoad;
    std::function<void()> onActivate;
    std::function<void(bool& cancel, int mode)> onQueryUnload;
    std::function<void(bool& cancel)> onUnload;

signals:
    // The controls were created anew; a front end binds again.
    void rebuilt();
    void captionChanged();
    void closed();

protected:
    // Creates the controls and wires the handlers. Runs on every load.
    virtual void build() {}

private:
    struct ControlBlock;
    using BlockList = std::vector<std::unique_ptr<ControlBlock>>;
    void destroyControls();
    // Blocks that forms gave back, kept for the next form; and taking one.
    static void keepSpareBlocks(BlockList& blocks);
    static std::unique_ptr<ControlBlock> takeBlock();

    Platform& m_platform;
    QString m_name;
    QString m_caption;
    int m_width = 0;
    int m_height = 0;
    // The controls live in blocks of a few dozen: a screen of hundreds builds all of them on each
    // opening, and an allocation for each, freed one by one, cost as much as building them.
    BlockList m_blocks;
    size_t m_usedInBlock = 0;
    std::vector<Control*> m_controls;
    // Every control by name and index without regard to case, so that adding a control to a screen
    // of hundreds need not compare its name with each one there already, and a long operation that
    // asks for the same few controls once a row need not search them all.
    ControlIndex m_index;
    Control* m_focused = nullptr;
    bool m_loaded = false;
};

} // namespace marlet
