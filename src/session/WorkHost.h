#pragma once

#include <QString>

namespace marlet {

class Control;
class Form;
class Platform;
class Session;

// A screen on which long work runs. The ticket operations take this instead of the screen itself,
// so that they reach only what they share with it: the session, the screen's controls, the
// progress panel with its "Stop", and the grid that tickets are listed in.
class WorkHost
{
public:
    virtual ~WorkHost() = default;

    virtual Session& session() const = 0;
    Platform& platform() const;
    // The screen, whose controls the work reads by the names of the screen's names header.
    virtual Form& form() = 0;

    // The progress panel. StartProgress shows it over the screen's frames, clears StopRequested and
    // turns the close button into "Stop"; EndProgress puts everything back; ProgressAdjust places
    // the bar just after the panel's text.
    virtual void StartProgress() = 0;
    virtual void EndProgress() = 0;
    virtual void ProgressAdjust() = 0;
    // The panel's text; the bar keeps its place until the next ProgressAdjust.
    virtual void setProgressText(const QString& text) = 0;
    virtual Control& progressBar() = 0;
    // Moves the bar one step on.
    void stepProgress();

    // Set by "Stop" while the panel is up; work that has answered it clears it.
    bool StopRequested = false;

    // The grid in which the work lists tickets.
    virtual Control& ticketGrid() = 0;
    // Empties the grid down to its header row.
    void resetTicketGrid();
};

} // namespace marlet
