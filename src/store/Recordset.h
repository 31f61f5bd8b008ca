#pragma once

#include "store/RowStore.h"
#include "store/SqlTranslator.h"
#include "store/Statement.h"
#include "store/StoreEngine.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace marlet {

class Connection;

enum class CursorType { Static = 3 };
enum class LockType { ReadOnly = 1, Optimistic = 3 };
enum class EditMode { None, Editing, Adding };

// A result set in the manner of the desktop store's record set, the model the screens are written
// against. The rows are a snapshot taken at Open: other programs' changes show after Requery.
//
// An optimistic result set over one table writes back: field assignments followed by Update change
// the current row in the table, AddNew adds a row (also when the select had a WHERE), Delete removes
// the current row; each by the row's key, each at once, in no transaction. Moving to another row
// with changes pending saves them first, as the desktop store does. Selects over several tables, and
// read-only result sets, refuse every change.
//
// Nothing throws. A failing call returns false (or a null value with *ok false) and keeps its reason
// in lastError(); the caller's continue-on-error mode decides what happens next. Values come back
// typed by the schema: bool, QDateTime, float for single, double, qint64, QString, and a null
// QVariant for Null. Eof and Bof stand for the desktop store's EOF and BOF (EOF is a C macro).
class Recordset
{
public:
    Recordset() = default;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // A statement that is not a select runs and leaves the result set closed, as in the desktop store.
    bool Open(const Statement& source,
        Connection& connection,
        CursorType cursor = CursorType::Static,
        LockType lock = LockType::ReadOnly);
    void Close();
    int State() const { return m_open ? 1 : 0; }
    // The RecordCount that Open would give the select, counted by the store without handing the rows
    // over: for a rule that needs the count alone of a large result. -1 where Open would fail, and
    // for a statement that is no select, which is not run.
    static long countRows(const Statement& source, Connection& connection);
    bool Requery();

    long RecordCount() const; // -1 while closed
    bool Eof() const; // also true while closed, so that a reading loop ends
    bool Bof() const;
    bool MoveFirst();
    bool MoveNext();
    bool MovePrevious();
    bool MoveLast();

    bool AddNew();
    bool Update();
    bool CancelUpdate();
    bool Delete();
    EditMode editMode() const { return m_editMode; }

    int fieldCount() const { return int(m_columns.size()); }
    QString fieldName(int index) const;
    int fieldIndex(const QString& name) const; // any case; -1 when there is no such field
    QVariant value(int index, bool* ok = nullptr) const;
    QVariant value(const QString& name, bool* ok = nullptr) const;
    bool setValue(int index, const QVariant& value);
    bool setValue(const QString& name, const QVariant& value);
    // Sets a field to another result set's field, as setValue(index, from.value(fromIndex)) does; a
    // text or a Null is copied as the store holds it, without making a value of it on the way.
    bool copyValue(int index, const Recordset& from, int fromIndex);
    // The current row's fields as the store holds them, in field order, with the column types that
    // value() reads them by: for a reader that prints many fields of a row and can print some
    // straight from their stored form. Empty wherever value() gives anything but the stored row:
    // closed, no current record, a change pending, a row being added.
    std::span<const Cell> storedRow() const;
    std::optional<ColumnType> fieldType(int index) const;
    // What the fields are, one object for the result sets of a select whose fields are described
    // alike, alive as long as anyone holds it: a reader can keep positions it found by name
    // against it. Null while closed. fieldLayoutAddress() tells it apart without holding it.
    std::shared_ptr<const void> fieldLayout() const { return m_fields; }
    const void* fieldLayoutAddress() const { return m_fields.get(); }

    QString lastError() const { return m_lastError; }
    // True when the last Update was refused for a value that a unique index holds already.
    bool lastFailureWasDuplicate() const { return m_duplicate; }

private:
    bool fail(const QString& message) const;
    std::nullopt_t failRead(const QString& message) const;
    std::optional<QVariant> readField(int index) const;
    bool load(const TranslationResult& translation);
    struct Fields;
    static std::shared_ptr<const Fields> fieldsOf(
        const QList<ResultColumn>& described, bool keyed, const QString& table);
    bool hasCurrentRecord() const;
    bool checkWritable() const;
    bool checkSettable(int index) const;
    void putPending(int index, const QVariant& stored);
    bool leaveEdit();
    const std::vector<Cell>& currentCells() const;
    QVariant typed(int index, const Cell& cell) const;
    bool updateCurrent();
    bool insertNew();
    void forgetDecodedRow() const { m_decodedRow = -1; }

    Connection* m_connection = nullptr;
    Statement m_source {QString()};
    LockType m_lock = LockType::ReadOnly;
    bool m_open = false;

    // What the fields are, shared by the result sets of one select.
    std::shared_ptr<const Fields> m_fields;
    QList<ResultColumn> m_columns; // the visible fields, m_fields' list
    int m_keyColumns = 0; // 1 when the rows carry their key in front, 0 when not writable
    QString m_table; // the table that changes go to
    RowStore m_rows;
    qsizetype m_position = 0; // -1 before the first row, rowCount() after the last
    bool m_currentDeleted = false;

    EditMode m_editMode = EditMode::None;
    // The fields changed since the last Update, each with its value as it will be stored; by field,
    // so that a row's copy sets and reads them without hashing.
    class PendingValues
    {
    public:
        bool isEmpty() const { return m_count == 0; }
        qsizetype size() const { return m_count; }
        void clear();
        const QVariant* find(int field) const;
        void insert(int field, const QVariant& value, int fieldCount);
        // Field and value of each change, in field order.
        template<typename Visit>
        void forEach(Visit visit) const
        {
            for (std::size_t field = 0; field < m_values.size(); ++field) {
                if (m_values[field])
                    visit(int(field), *m_values[field]);
            }
        }

    private:
        std::vector<std::optional<QVariant>> m_values;
        qsizetype m_count = 0;
    };
    PendingValues m_pending;
    qsizetype m_positionBeforeAdd = 0;

    mutable std::vector<Cell> m_cells;
    mutable qsizetype m_decodedRow = -1;
    mutable QString m_lastError;
    bool m_duplicate = false;
};

} // namespace marlet
