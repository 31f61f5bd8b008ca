#pragma once

#include "platform/Form.h"

namespace marlet {

class Session;
class Recordset;

// The recycle bin screen: the user names of the deleted tickets in a multiple-choice list, a
// report box for the ticket clicked or searched, and the tools that bring tickets back into
// Account or destroy them for good. Every store failure is passed over in silence, step by step.
class RecycleBin : public Form
{
public:
    explicit RecycleBin(Session& session);

protected:
    void build() override;

private:
    void buildUtilities();

    // Lists the bin's user names; the total comes from the row count.
    void loadList();
    void refreshList();
    void showClickedTicket();
    void search();

    void restore();
    void restoreSelected(int selectedCount);
    void restoreCurrent();
    void restoreAll();
    // What became of one entry of the list.
    enum class RestoreOutcome { NotInBin, Kept, Restored };
    // Copies the bin row of the list entry at `index` back into Account (asking before it
    // overwrites a ticket of that name), removes it from the bin and the list.
    RestoreOutcome restoreEntry(int index, Recordset& bin, Recordset& account);

    void deleteTickets();
    void deleteSelected(int selectedCount);
    void deleteCurrent();
    void emptyBin();

    // The entry that the single-entry tools act on: the current one, when it has text and is
    // selected. Otherwise they warn and do nothing.
    bool currentEntryChosen();
    long deleteFromBin(const QString& username);
    bool ask(const QString& question, int style);
    void inform(const QString& message);

    // The 16-bit total: an assignment or step that does not fit is passed over.
    void setTotal(long count);
    void lowerTotal();
    void showStatus(const QString& text);

    // The bar refuses a maximum not above its minimum and a value outside its range.
    void setBarMaximum(long maximum);
    void setBarValue(long value);
    // A value outside the bar's range leaves it as it is.
    static void setBarValue(Control& bar, long value);
    Control& bar() const;
    int barValue() const;

    Control& list() const;
    Control& report() const;

    Session& m_session;
    qint16 m_total = 0;
    // Cleared and tested by the emptying; nothing sets it, so the emptying never stops early.
    bool m_stopRequested = false;
};

} // namespace marlet
