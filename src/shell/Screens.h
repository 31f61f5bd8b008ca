#pragma once

#include <QString>

#include <memory>

namespace marlet {

class Form;
struct General;

// Creates a screen of the component by its name ("GenAcc", "ContPass", "Options", ...); nullptr for
// a name that is no screen of the component.
std::unique_ptr<Form> createScreen(const QString& name, General& session);

// The caption a screen shows in its title bar.
QString screenCaption(const QString& name);

} // namespace marlet
