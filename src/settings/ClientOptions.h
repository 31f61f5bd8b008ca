#pragma once

#include "store/PreferenceKeys.h"

#include <QString>

#include <array>
#include <span>

namespace marlet {

// How a switch of the client settings list is written to the store: the first text when ticked,
// the second when not.
enum class StoredForm {
    TrueFalse, // "True" / "False"
    OneZero, // "1" / "0"
    OneAlways, // "1" whether ticked or not, so an untick does not outlast the next load
    ZeroOne, // "0" / "1": ticked writes "0"
};

// How the stored text ticks the switch when the list is filled.
enum class TickRule {
    Truth, // "True", "False", or a number other than 0
    NotZero, // a number other than 0
    One, // the number 1 only
    TextZero, // the text "0" only
    NumberZero, // the number 0 only
};

// One switch of the client settings list. Its position in the list is what loading, saving and the
// explanation use, so the order of the catalogue binds.
struct ClientOption
{
    const char* caption;
    const PreferenceKey* key;
    StoredForm stored;
    TickRule rule;
    bool firstRun; // the state when the key does not exist yet
    bool restore; // the state after "Restore to Default Setting"
    const char* explanation;

    QString captionText() const { return QLatin1String(caption); }
    QString explanationText() const { return QLatin1String(explanation); }
};

namespace clientoptions {

inline constexpr int Count = 62;
// The switch after which CloseListen is written, and the one whose list of browser numbers shows.
inline constexpr int NoAutoSearchPosition = 7;
inline constexpr int LimitBrowserPosition = 49;
// The drive bits: A to D one each, E to Z together.
inline constexpr int AllDrivesEToZ = 67108848;

// Every switch, in list order.
std::span<const ClientOption, Count> catalogue();

// Whether a stored text ticks the switch. A text that the rule cannot read as a number leaves the
// switch unticked.
bool ticked(const ClientOption& option, const QString& stored);
// The text written for the switch's state.
QString storedText(const ClientOption& option, bool ticked);

// CloseListen, written beside NoAutoSearch: the opposite of it.
QString closeListenText(bool noAutoSearchTicked);
// NoDrives from the five drive switches as the store holds them: E to Z together, and A to D.
int noDrives(bool driveA, bool driveB, bool driveC, bool driveD, bool allDrives);
// NoDrives as the five keys read back from the store, in the format "#0".
QString noDrivesText(const SessionPreferences& stored);
// INo: the browser number as typed if it is numeric, else "3".
QString browserNumberText(const QString& typed);
// The colour a stored Colour text gives: its numeric value, 0 when it has none.
int colourOf(const QString& stored);

} // namespace clientoptions

} // namespace marlet
