#pragma once

#include <QString>

namespace marlet {

class Session;

// Which creator asks the print question: the batch creator asks by print type in the order
// 1, 2, 4, other; the custom and member creators test 4 first and ask a question of their own.
enum class PrintCreator { Batch, Custom, Member };

enum class PrintAnswer {
    Print,   // Yes: make the tickets, then preview them
    NoPrint, // No: make the tickets without a preview
    Cancel,  // the creation ends; nothing has been written
};

// The print question asked before anything is written, with the quick-ticket size rule and the
// printer test. quickTicketSize is the size chosen for quick tickets ("Small Size", ...).
PrintAnswer askPrintQuestion(Session& session, PrintCreator creator, const QString& quickTicketSize);

} // namespace marlet
