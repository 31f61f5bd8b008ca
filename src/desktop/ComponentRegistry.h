#pragma once

#include "platform/Platform.h"

#include <QString>

#include <functional>
#include <memory>

namespace marlet {

// Outside components the desktop build can reach by name. Whoever provides one registers a
// factory at start-up; each use creates a fresh instance, as the screens expect.
namespace ComponentRegistry {

using Factory = std::function<std::unique_ptr<NamedComponent>()>;

// Names match without regard to case. A second factory for a name replaces the first.
void add(const QString& progId, Factory factory);
void remove(const QString& progId);
// A new instance, or nullptr when nothing is registered under the name.
std::unique_ptr<NamedComponent> create(const QString& progId);

} // namespace ComponentRegistry

} // namespace marlet
