#pragma once

#include <QString>

#include <memory>

namespace marlet {

class Form;
struct General;

// Creates a screen of the component by its name ("GenAcc", "ContPass", "Options", ...). A screen
// that this build does not have yet comes as an empty modal form with the screen's caption.
std::unique_ptr<Form> createScreen(const QString& name, General& session);

// The caption a screen shows in its title bar.
QString screenCaption(const QString& name);

} // namespace marlet
