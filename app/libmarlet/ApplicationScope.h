#pragma once

namespace marlet::library {

// Keeps a Qt application object alive while components of the library exist.
//
// A host that has its own application object (QCoreApplication::instance() is set when the first
// component is made) keeps it: the library never destroys an object it did not create. Otherwise
// the first scope creates one, a QApplication when desktop screens are wanted and possible, else a
// QCoreApplication, and the last scope to end destroys it again. Scopes live on the host's thread.
class ApplicationScope
{
public:
    explicit ApplicationScope(bool wantDesktop);
    ~ApplicationScope();
    ApplicationScope(const ApplicationScope&) = delete;
    ApplicationScope& operator=(const ApplicationScope&) = delete;

    // The application object can show widgets, whoever created it.
    static bool hasWidgets();
};

} // namespace marlet::library
