#pragma once

#include "store/PreferenceKeys.h"

#include <QDateTime>
#include <QString>

namespace marlet {

class Connection;

// The clean-up of the maintenance component: tickets that have been used and have no time left
// leave Account through the recycle routing, as a deletion by the staff does (RecycleBinSize
// decides whether the bin keeps them, and purges a full bin). Member tickets stay.
struct TicketCleanUp
{
    SessionPreferences preferences; // RecycleBinSize, read by the routing

    struct Result
    {
        long removed = 0;
        QString error; // empty when every ticket went
    };

    Result run(Connection& connection, const QDateTime& now) const;
};

} // namespace marlet
