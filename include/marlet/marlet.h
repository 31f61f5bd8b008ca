/*
 * Marlet, the ticketing and administration component, as a shared library with a plain C interface.
 *
 * A host loads libmarlet.so, creates one component and calls the six entry operations on it. Each
 * operation is one complete administrative session: it takes the arguments, opens the database
 * named by the connection string, shows one modal screen and returns when that screen closes.
 *
 * Threading: everything runs on the host's thread, the one that created the first component.
 * Call one operation at a time; the library starts no thread of its own.
 *
 * Strings are UTF-8 and NUL-terminated; a NULL string counts as an empty one. Flags are 16-bit:
 * -1 true, 0 false (any other non-zero value also counts as true).
 *
 * No error crosses this interface: an operation that fails inside returns normally, as the
 * component's screens do with failures of their own. See docs/host-interface.md.
 */
#pragma once

#include <stdint.h>

#if defined(__GNUC__) || defined(__clang__)
#define MARLET_API __attribute__((visibility("default")))
#else
#define MARLET_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* One loaded instance of the component: this machine's preference store and the session that
 * lives from one operation to the next. */
typedef struct marlet_component marlet_component;

/* Flags of marlet_create. */
#define MARLET_HEADLESS 0x1 /* screens on the terminal (standard input and output) even with a display */

/* Creates a component. preferences_folder holds preferences.ini (NULL or "": $MARLET_PREFS, else
 * ~/.config/marlet); application_folder receives the ticket page and the settings export (NULL or
 * "": $MARLET_APP_DIR, else ~/.local/share/marlet). Creates the Qt application object when the
 * host has none. Returns NULL when the component cannot be created. */
MARLET_API marlet_component* marlet_create(const char* preferences_folder, const char* application_folder, int flags);

/* Destroys a component; NULL is ignored. The last component destroyed also destroys the Qt
 * application object if the library created it. */
MARLET_API void marlet_destroy(marlet_component* component);

/* Ticket information screen, opened on the ticket TName (empty: blank). */
MARLET_API void marlet_LoadAccountInfo(marlet_component* component,
                                       const char* Cn1,
                                       const char* App,
                                       const char* TName);

/* Settings screen. tPower goes in and comes back (the screen may switch Administrator-powered
 * mode); ClientUp comes back -1 when clients must reload their settings, else 0. Either pointer
 * may be NULL: tPower then goes in as 0, and nothing is written back through it. */
MARLET_API void marlet_LoadOptions(marlet_component* component,
                                   const char* Cn1,
                                   const char* App,
                                   const char* User,
                                   int16_t* tPower,
                                   int16_t* ClientUp,
                                   int16_t TMax,
                                   const char* Ports,
                                   const char* TPortName,
                                   int16_t HideAccount);

/* Generate screen at once, without the password gate. Leaves the database connection open on
 * return; the next operation on this component goes on with it as it stands. */
MARLET_API void marlet_LoadGenAc(marlet_component* component,
                                 const char* Cn1,
                                 const char* App,
                                 const char* User,
                                 int16_t tPower,
                                 const char* Path);

/* Password gate, then the generate screen when the gate lets the staff member through. */
MARLET_API void marlet_LoadGenAcc(marlet_component* component,
                                  const char* Cn1,
                                  const char* App,
                                  const char* User,
                                  int16_t tPower,
                                  const char* Path);

/* Recycle bin screen. */
MARLET_API void marlet_LoadRecycleBin(marlet_component* component, const char* Cn1, const char* App);

/* A second name of marlet_LoadGenAcc, step for step. */
MARLET_API void marlet_LoadAutoGen(marlet_component* component,
                                   const char* Cn1,
                                   const char* App,
                                   const char* User,
                                   int16_t tPower,
                                   const char* Path);

/* The component's version, "major.minor.revision". The text is static. */
MARLET_API const char* marlet_version(void);

#ifdef __cplusplus
}
#endif
