// The C entry points of libmarlet: each turns C arguments into the component's own types and calls
// the public class. No C++ exception may reach the host, so each entry point catches everything.

#include "marlet/marlet.h"

#include "LoadedComponent.h"

#include <QVariant>

#include <cstdio>
#include <exception>

namespace {

QString text(const char* utf8)
{
    return utf8 ? QString::fromUtf8(utf8) : QString();
}

// The connection string goes to the component as a variant holding text.
QVariant connectionString(const char* utf8)
{
    return QVariant(text(utf8));
}

// Runs one entry point; a failure inside is reported on standard error and goes no further, in
// the way the component's own routines carry on past a failing step.
template<typename Body>
void guarded(const char* entryPoint, Body&& body) noexcept
{
    try {
        body();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "marlet: %s failed: %s\n", entryPoint, error.what());
    } catch (...) {
        std::fprintf(stderr, "marlet: %s failed\n", entryPoint);
    }
}

// Calls an operation of the component's public class when the handle is there.
template<typename Operation>
void withTimerDll(marlet_component* component, const char* entryPoint, Operation&& operation) noexcept
{
    if (!component)
        return;
    guarded(entryPoint, [&] { operation(component->component.timerDll()); });
}

} // namespace

extern "C" {

marlet_component* marlet_create(const char* preferences_folder, const char* application_folder, int flags)
{
    const bool headless = (flags & MARLET_HEADLESS) != 0;
    marlet_component* created = nullptr;
    guarded("marlet_create", [&] {
        created = new marlet_component(text(preferences_folder), text(application_folder), headless);
    });
    return created;
}

void marlet_destroy(marlet_component* component)
{
    delete component;
}

void marlet_LoadAccountInfo(marlet_component* component, const char* Cn1, const char* App, const char* TName)
{
    withTimerDll(component, "marlet_LoadAccountInfo", [&](marlet::TimerDll& dll) {
        dll.LoadAccountInfo(connectionString(Cn1), text(App), text(TName));
    });
}

void marlet_LoadOptions(marlet_component* component,
                        const char* Cn1,
                        const char* App,
                        const char* User,
                        int16_t* tPower,
                        int16_t* ClientUp,
                        int16_t TMax,
                        const char* Ports,
                        const char* TPortName,
                        int16_t HideAccount)
{
    withTimerDll(component, "marlet_LoadOptions", [&](marlet::TimerDll& dll) {
        qint16 power = tPower ? *tPower : qint16(0);
        qint16 clientUp = 0;
        dll.LoadOptions(connectionString(Cn1),
                        text(App),
                        text(User),
                        power,
                        clientUp,
                        TMax,
                        text(Ports),
                        text(TPortName),
                        HideAccount);
        if (tPower)
            *tPower = power;
        if (ClientUp)
            *ClientUp = clientUp;
    });
}

void marlet_LoadGenAc(marlet_component* component,
                      const char* Cn1,
                      const char* App,
                      const char* User,
                      int16_t tPower,
                      const char* Path)
{
    withTimerDll(component, "marlet_LoadGenAc", [&](marlet::TimerDll& dll) {
        dll.LoadGenAc(connectionString(Cn1), text(App), text(User), tPower, text(Path));
    });
}

void marlet_LoadGenAcc(marlet_component* component,
                       const char* Cn1,
                       const char* App,
                       const char* User,
                       int16_t tPower,
                       const char* Path)
{
    withTimerDll(component, "marlet_LoadGenAcc", [&](marlet::TimerDll& dll) {
        dll.LoadGenAcc(connectionString(Cn1), text(App), text(User), tPower, text(Path));
    });
}

void marlet_LoadRecycleBin(marlet_component* component, const char* Cn1, const char* App)
{
    withTimerDll(component, "marlet_LoadRecycleBin", [&](marlet::TimerDll& dll) {
        dll.LoadRecycleBin(connectionString(Cn1), text(App));
    });
}

void marlet_LoadAutoGen(marlet_component* component,
                        const char* Cn1,
                        const char* App,
                        const char* User,
                        int16_t tPower,
                        const char* Path)
{
    withTimerDll(component, "marlet_LoadAutoGen", [&](marlet::TimerDll& dll) {
        dll.LoadAutoGen(connectionString(Cn1), text(App), text(User), tPower, text(Path));
    });
}

const char* marlet_version(void)
{
    // The project's version, handed in by the build as text.
    return MARLET_VERSION_TEXT;
}

} // extern "C"
