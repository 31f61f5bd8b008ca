#include "printing/PrintDispatch.h"

#include "platform/Platform.h"
#include "session/Session.h"

namespace marlet {

namespace {

QString printQuestion(const QString& word)
{
    return QStringLiteral("And Print Preview Ticket(s) with ") + word + QStringLiteral("? ");
}

QString printTypeWord(int printType)
{
    switch (printType) {
    case 1:
        return QStringLiteral("Small Print");
    case 2:
        return QStringLiteral("Medium Print");
    case 4:
        return QStringLiteral("Export Print");
    default:
        return QStringLiteral("Large Print");
    }
}

// The print type a quick-ticket size list text stands for.
QString printTypeOfSize(const QString& size)
{
    if (size == QLatin1String("Small Size"))
        return QStringLiteral("1");
    if (size == QLatin1String("Medium Size"))
        return QStringLiteral("2");
    return QStringLiteral("3");
}

} // namespace

PrintAnswer askPrintQuestion(Session& session, PrintCreator creator, const QString& size)
{
    Platform& platform = session.platform();
    SessionPreferences settings = session.settings();
    const double quickTicket = settings.number(keys::QuickTicket);
    MsgResult answer = MsgResult::Cancel;
    if (quickTicket != 0) {
        answer = platform.messageBox(QStringLiteral("And Print Preview Ticket(s) with ") + size + u'?',
                                     MsgStyle::YesNoCancelQuestion);
    } else {
        // Read under the host's title: only the settings tab and the settings menu use the product word.
        const int printType = int(settings.number(keys::PrintType.underTitle()));
        if (creator != PrintCreator::Batch && printType == 4) {
            // The export type has no preview: Yes counts as Yes, No as Cancel.
            const MsgResult go = platform.messageBox(
                QStringLiteral("The Default Print Type has no Print preview, Continue? "), MsgStyle::YesNoQuestion);
            answer = go == MsgResult::Yes ? MsgResult::Yes : MsgResult::Cancel;
        } else {
            answer = platform.messageBox(printQuestion(printTypeWord(printType)), MsgStyle::YesNoCancelQuestion);
        }
    }
    if (answer == MsgResult::No)
        return PrintAnswer::NoPrint;
    if (answer != MsgResult::Yes)
        return PrintAnswer::Cancel;
    if (quickTicket == 1)
        settings.save(keys::PrintType.underTitle(), printTypeOfSize(size));
    if (platform.defaultPrinter().isEmpty()
        && platform.messageBox(QStringLiteral("No Printer Installed, Continue?"), MsgStyle::YesNoQuestion) == MsgResult::No)
        return PrintAnswer::Cancel;
    return PrintAnswer::Print;
}

} // namespace marlet
