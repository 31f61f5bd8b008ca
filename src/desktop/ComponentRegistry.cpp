#include "desktop/ComponentRegistry.h"

#include <QHash>

namespace marlet::ComponentRegistry {

namespace {

QHash<QString, Factory>& factories()
{
    static QHash<QString, Factory> registered;
    return registered;
}

} // namespace

void add(const QString& progId, Factory factory)
{
    factories().insert(progId.toLower(), std::move(factory));
}

void remove(const QString& progId)
{
    factories().remove(progId.toLower());
}

std::unique_ptr<NamedComponent> create(const QString& progId)
{
    const auto found = factories().constFind(progId.toLower());
    if (found == factories().constEnd() || !*found)
        return nullptr;
    return (*found)();
}

} // namespace marlet::ComponentRegistry
