#pragma once

#include "issuing/RandomText.h"
#include "issuing/TicketRules.h"
#include "store/Recordset.h"

#include <QLatin1StringView>
#include <QString>

#include <optional>

namespace marlet {

class Connection;
class SessionPreferences;

// ---- Names and passwords of a batch -------------------------------------------------------------

// The front of every name of a batch: the SelPrefix preference as it stands for a VIP batch,
// otherwise the first three characters of STR.
QString batchPrefix(const SessionPreferences& preferences, bool vip);
// The prefix and seven random characters: ten characters with a three-letter prefix.
QString batchUsername(const SessionPreferences& preferences, const QString& prefix, const UniformSource& source);
// How many characters a batch password has: TPlen under the product word. A value that is no number
// counts as 5; 0 or less gives an empty password, which is stored all the same. A number too large
// for a 16-bit integer fails its conversion, and the password stays empty as that skipped step left
// it.
int batchPasswordLength(const SessionPreferences& preferences);
QString batchPassword(const SessionPreferences& preferences, const UniformSource& source);

// ---- Looking a name up --------------------------------------------------------------------------

enum class NameLookup {
    Free, // no row of Account has the name
    Taken, // a row has it, member ticket or not; the record set stands on that row
    Failed, // the lookup could not run (a closed connection, a quote in the name): nothing is known
};

// Looks a name up in all of Account, members included, with
// "Select * from Account where Username = '<name>'" on the given record set, closing it first if it
// is open. The RecycleBin is not looked at, so a deleted ticket's name can come back. The record set
// stays open: on Free the caller adds the new ticket on it (hence optimistic by default), on Taken it
// can read the row that holds the name.
NameLookup lookUpUsername(
    Recordset& recordset, Connection& connection, const QString& name, LockType lock = LockType::Optimistic);

// How many names a batch draws for one ticket before it gives up.
inline constexpr int UsernameDrawAttempts = 100;

// Draws batch names (prefix and Random of 7) until one is free, and leaves the record set open on
// its empty result for the new row. A lookup that fails counts as a taken name, so that a failing
// store can never make a duplicate; after UsernameDrawAttempts names in a row that were taken or
// could not be looked up the draw gives up and returns nothing, and the caller reports the failure.
// With ten million names per prefix a busy store needs more than a few tries only by a miracle, so
// the bound ends the draw only when the store cannot be reached.
std::optional<QString> drawFreeUsername(Recordset& recordset,
    Connection& connection,
    const SessionPreferences& preferences,
    const QString& prefix,
    const UniformSource& source);

// ---- Typed names and passwords ------------------------------------------------------------------
//
// The rules for names and passwords that the operator types return the message to show, or nothing
// when the entry passes. The caller shows the message with the exclamation icon (style 48) and ends
// the operation. A typed name goes through usernameProblem (rules 1 to 4), typedUsername (rule 5)
// and lookUpUsername with existingNameMessage (rule 6), in this order; a typed password through
// passwordProblem.
//
// Messages that span two lines hold MessageLineBreak between them. It is "\n": the message box of
// every front end of this system breaks lines there, while a carriage return in front of it would
// show as a stray character on some of them.
inline constexpr QLatin1StringView MessageLineBreak {"\n"};

// The eight command words of the client, refused as names in any case.
bool isReservedName(const QString& typed);

// Upper case as the screens convert a typed entry: character by character, so that no character
// turns into two ("ß" stays as it is) and the length rules see what was typed.
QString typedUpperCase(const QString& typed);

// User name rules 1 to 4 on the name as typed: empty, length (1 to 7 with `vipLength`, the VIP box
// that cuts the field to seven characters, else 1 to 10), characters A-Z and 0-9 after conversion
// to upper case, reserved words. A change of a member's name knows no VIP and words its length
// message of its own.
std::optional<QString> usernameProblem(const QString& typed, TicketPath path, bool vipLength);

// Rule 5: the name to store and to look up, in upper case; with `vipPrefix` the SelPrefix
// preference in upper case in front of it. The check of rule 4 is on the name without it.
QString typedUsername(const SessionPreferences& preferences, const QString& typed, bool vipPrefix);

// Rule 6: what a path says when the name is already in Account. `member` tells whether the row
// found is a member ticket: the first step of a membership ticket then asks a question instead
// (MemberExistsQuestion).
QString existingNameMessage(TicketPath path, bool member = false);
inline constexpr QLatin1StringView MemberExistsQuestion {
    "Member Ticket ID already exist, do you want to view the member's information?"};

// Password rules 1 to 3: empty, length 1 to 10, characters as for the user name with the same
// message. A member's password change also refuses the reserved words, with the user name message.
std::optional<QString> passwordProblem(const QString& typed, TicketPath path);
// The password as it is stored: upper case.
QString typedPassword(const QString& typed);

} // namespace marlet
