#include "desktop/ViewFactory.h"

#include "platform/Control.h"

namespace marlet {

void ViewWidgets::add(const QString& key, QWidget* widget)
{
    m_widgets.insert(key.toLower(), widget);
}

void ViewWidgets::add(const Control& control, QWidget* widget)
{
    add(control.key(), widget);
}

QWidget* ViewWidgets::widget(const Control& control) const
{
    return m_widgets.value(control.key().toLower());
}

namespace ViewFactory {

namespace {

QHash<QString, Builder>& builders()
{
    static QHash<QString, Builder> registered;
    return registered;
}

} // namespace

void add(const QString& formName, Builder builder)
{
    builders().insert(formName.toLower(), std::move(builder));
}

void remove(const QString& formName)
{
    builders().remove(formName.toLower());
}

Builder find(const QString& formName)
{
    return builders().value(formName.toLower());
}

} // namespace ViewFactory

} // namespace marlet
