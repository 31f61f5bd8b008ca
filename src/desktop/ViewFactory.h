#pragma once

#include <QHash>
#include <QString>

#include <functional>

class QWidget;

namespace marlet {

class Control;
class Form;

// The widgets a hand-made view built for the controls of its form, by control key ("Text7",
// "Text7(8)"), matched without regard to case.
class ViewWidgets
{
public:
    void add(const QString& key, QWidget* widget);
    void add(const Control& control, QWidget* widget);
    QWidget* widget(const Control& control) const;

private:
    QHash<QString, QWidget*> m_widgets;
};

// Hand-made views by form name. A screen that wants a tidier face than the twips placement
// registers a builder: it lays out widgets of its choice inside the root and names, for each
// control it shows, the widget that shows it. The binder then drives those widgets exactly as it
// drives its own; controls the view leaves out still get a widget, kept hidden.
namespace ViewFactory {

using Builder = std::function<void(Form& form, QWidget& root, ViewWidgets& widgets)>;

// Form names match without regard to case; a second builder for a name replaces the first.
void add(const QString& formName, Builder builder);
void remove(const QString& formName);
// The builder for the form, or an empty function when the form has none.
Builder find(const QString& formName);

} // namespace ViewFactory

} // namespace marlet
