#include "store/Recordset.h"

#include "store/Connection.h"
#include "store/StoreValue.h"

namespace marlet {

namespace {

// The desktop store's own wording, which the screens' users know.
const QString objectOpen = QStringLiteral("Operation is not allowed when the object is open.");
const QString objectClosed = QStringLiteral("Operation is not allowed when the object is closed.");
const QString noCurrentRecord = QStringLiteral("Either BOF or EOF is True, or the current record has been deleted. "
                                               "Requested operation requires a current record.");
const QString readOnlyLock = QStringLiteral("Current Recordset does not support updating. This may be a limitation "
                                            "of the provider, or of the selected locktype.");
const QString readOnlySource = QStringLiteral("Cannot update. Database or object is read-only.");
QString noSuchField(const QString& field)
{
    return QStringLiteral("Item cannot be found in the collection corresponding to the requested name or ordinal: %1.")
        .arg(field);
}

const QString rowGone = QStringLiteral("Row cannot be located for updating. Some values may have been changed "
                                       "since it was last read.");

} // namespace

bool Recordset::fail(const QString& message) const
{
    m_lastError = message;
    return false;
}

bool Recordset::Open(const Statement& source, Connection& connection, CursorType /*cursor*/, LockType lock)
{
    // Static is the one cursor there is: every result set is a snapshot.
    if (m_open)
        return fail(objectOpen);
    if (connection.State() != 1)
        return fail(objectClosed);
    const TranslationResult translation = connection.translate(source);
    if (!translation.ok())
        return fail(translation.error);
    if (translation.kind != StatementKind::Select)
        return connection.Execute(source) || fail(connection.lastError());
    m_connection = &connection;
    m_source = source;
    m_lock = lock;
    return load(translation);
}

// The fields of a select as a result set sees them. A statement the engine keeps describes its
// columns the same each time, so the fields are worked out once per description rather than at
// every Open: which are writable, and the spellings the screens ask for.
struct Recordset::Fields
{
    QList<ResultColumn> described; // as the engine gave them, key included
    bool keyed = false;
    QString table;
    QList<ResultColumn> columns;
    std::vector<bool> updatable; // per field: a column of table
    mutable QHash<QString, int> names; // spelling asked for -> field
};

std::shared_ptr<const Recordset::Fields> Recordset::fieldsOf(
    const QList<ResultColumn>& described, bool keyed, const QString& table)
{
    // By the description's storage, which the entry keeps alive so that no other list can take
    // its place. An engine that describes anew each time only misses the cache.
    static thread_local QHash<const void*, std::shared_ptr<const Fields>> known;
    const auto found = known.constFind(described.constData());
    if (found != known.constEnd() && (*found)->keyed == keyed && (*found)->table == table)
        return *found;
    auto fields = std::make_shared<Fields>();
    fields->described = described;
    fields->keyed = keyed;
    fields->table = table;
    fields->columns = described;
    if (keyed)
        fields->columns.removeFirst();
    // Which fields are columns of the table that changes go to. Only a keyed result set writes back.
    fields->updatable.assign(std::size_t(fields->columns.size()), false);
    for (qsizetype i = 0; keyed && i < fields->columns.size(); ++i) {
        const ResultColumn& column = fields->columns.at(i);
        fields->updatable[std::size_t(i)] = !column.column.isEmpty()
            && (column.table == table || column.table.compare(table, Qt::CaseInsensitive) == 0);
    }
    if (known.size() >= 256)
        known.clear();
    known.insert(described.constData(), fields);
    return fields;
}

bool Recordset::load(const TranslationResult& translation)
{
    const bool keyed = m_lock == LockType::Optimistic && !translation.keyedSql.isEmpty();
    StoreEngine* engine = m_connection->engine();
    QList<ResultColumn> columns;
    RowStore rows;
    if (!engine->select(keyed ? translation.keyedSql : translation.sql, translation.values, columns, rows))
        return fail(engine->lastError());
    m_fields = fieldsOf(columns, keyed, keyed ? translation.tables.value(0) : QString());
    m_columns = m_fields->columns;
    m_rows = std::move(rows);
    m_keyColumns = keyed ? 1 : 0;
    m_table = m_fields->table;
    m_open = true;
    m_position = 0;
    m_currentDeleted = false;
    m_editMode = EditMode::None;
    m_pending.clear();
    forgetDecodedRow();
    return true;
}

void Recordset::Close()
{
    m_open = false;
    m_connection = nullptr;
    m_fields.reset();
    m_columns.clear();
    m_rows.clear(0);
    m_pending.clear();
    m_editMode = EditMode::None;
    forgetDecodedRow();
}

bool Recordset::Requery()
{
    if (!m_open)
        return fail(objectClosed);
    if (m_editMode != EditMode::None)
        return fail(QStringLiteral("Operation is not allowed in this context."));
    if (m_connection->State() != 1)
        return fail(objectClosed);
    const TranslationResult translation = m_connection->translate(m_source);
    if (!translation.ok())
        return fail(translation.error);
    return load(translation);
}

long Recordset::countRows(const Statement& source, Connection& connection)
{
    if (connection.State() != 1)
        return -1;
    const TranslationResult translation = connection.translate(source);
    if (!translation.ok() || translation.kind != StatementKind::Select)
        return -1;
    QList<ResultColumn> columns;
    RowStore counted;
    const QString sql = QStringLiteral("SELECT count(*) FROM (") + translation.sql + QStringLiteral(") AS counted");
    if (!connection.engine()->select(sql, translation.values, columns, counted) || counted.rowCount() != 1)
        return -1;
    std::vector<Cell> cells;
    counted.decodeRow(0, cells);
    return long(cells.front().integer);
}

long Recordset::RecordCount() const
{
    return m_open ? long(m_rows.rowCount()) : -1;
}

bool Recordset::Eof() const
{
    return !m_open || m_position >= m_rows.rowCount();
}

bool Recordset::Bof() const
{
    return !m_open || m_position < 0 || m_rows.rowCount() == 0;
}

bool Recordset::hasCurrentRecord() const
{
    return m_open && !m_currentDeleted && m_position >= 0 && m_position < m_rows.rowCount();
}

bool Recordset::leaveEdit()
{
    if (!m_open)
        return fail(objectClosed);
    return m_editMode == EditMode::None || Update();
}

bool Recordset::MoveFirst()
{
    if (!leaveEdit())
        return false;
    m_position = 0;
    m_currentDeleted = false;
    return true;
}

bool Recordset::MoveLast()
{
    if (!leaveEdit())
        return false;
    m_position = std::max<qsizetype>(0, m_rows.rowCount() - 1);
    m_currentDeleted = false;
    return true;
}

bool Recordset::MoveNext()
{
    if (!leaveEdit())
        return false;
    // After a Delete the position already holds the row that followed the deleted one.
    if (m_currentDeleted) {
        m_currentDeleted = false;
        return true;
    }
    if (Eof())
        return fail(noCurrentRecord);
    ++m_position;
    return true;
}

bool Recordset::MovePrevious()
{
    if (!leaveEdit())
        return false;
    if (!m_currentDeleted && (m_position < 0 || m_rows.rowCount() == 0))
        return fail(noCurrentRecord);
    m_currentDeleted = false;
    --m_position;
    return true;
}

QString Recordset::fieldName(int index) const
{
    return index >= 0 && index < m_columns.size() ? m_columns.at(index).name : QString();
}

int Recordset::fieldIndex(const QString& name) const
{
    if (!m_fields)
        return -1;
    // Screens ask for the same few names on every row; the spelling they use is remembered.
    const auto known = m_fields->names.constFind(name);
    if (known != m_fields->names.constEnd())
        return *known;
    for (int i = 0; i < m_columns.size(); ++i) {
        const QString& field = m_columns.at(i).name;
        // Names of another length cannot match; most fields are passed over on that alone.
        if (field.size() == name.size() && field.compare(name, Qt::CaseInsensitive) == 0) {
            m_fields->names.insert(name, i);
            return i;
        }
    }
    return -1;
}

const std::vector<Cell>& Recordset::currentCells() const
{
    if (m_decodedRow != m_position) {
        m_rows.decodeRow(m_position, m_cells);
        m_decodedRow = m_position;
    }
    return m_cells;
}

QVariant Recordset::typed(int index, const Cell& cell) const
{
    const std::optional<ColumnType> type = m_columns.at(index).type;
    switch (cell.kind) {
    case Cell::Kind::Integer:
        return type ? storevalue::fromInteger(*type, cell.integer) : QVariant(cell.integer);
    case Cell::Kind::Real:
        return type ? storevalue::fromReal(*type, cell.real) : QVariant(cell.real);
    case Cell::Kind::Text:
        return storevalue::fromUtf8(type.value_or(ColumnType::Text), cell.bytes());
    case Cell::Kind::Blob:
    case Cell::Kind::Null:
        break;
    }
    return cell.toVariant();
}

QVariant Recordset::value(int index, bool* ok) const
{
    const std::optional<QVariant> result = readField(index);
    if (ok)
        *ok = result.has_value();
    return result.value_or(QVariant());
}

QVariant Recordset::value(const QString& name, bool* ok) const
{
    const int index = fieldIndex(name);
    if (index < 0 && m_open) {
        if (ok)
            *ok = false;
        fail(noSuchField(name));
        return QVariant();
    }
    return value(index, ok);
}

std::optional<QVariant> Recordset::readField(int index) const
{
    if (!m_open)
        return failRead(objectClosed);
    if (index < 0 || index >= m_columns.size())
        return failRead(noSuchField(QString::number(index)));
    if (const QVariant* pending = m_pending.find(index)) {
        const std::optional<ColumnType> type = m_columns.at(index).type;
        return type ? storevalue::fromStored(*type, *pending) : *pending;
    }
    if (m_editMode == EditMode::Adding)
        return QVariant();
    if (!hasCurrentRecord())
        return failRead(noCurrentRecord);
    return typed(index, currentCells().at(std::size_t(index + m_keyColumns)));
}

std::span<const Cell> Recordset::storedRow() const
{
    if (m_editMode != EditMode::None || !m_pending.isEmpty() || !hasCurrentRecord())
        return {};
    return std::span<const Cell>(currentCells()).subspan(std::size_t(m_keyColumns));
}

std::optional<ColumnType> Recordset::fieldType(int index) const
{
    return index >= 0 && index < m_columns.size() ? m_columns.at(index).type : std::nullopt;
}

std::nullopt_t Recordset::failRead(const QString& message) const
{
    m_lastError = message;
    return std::nullopt;
}

bool Recordset::checkWritable() const
{
    if (!m_open)
        return fail(objectClosed);
    if (m_lock != LockType::Optimistic)
        return fail(readOnlyLock);
    if (m_keyColumns == 0)
        return fail(readOnlySource);
    if (m_connection->State() != 1)
        return fail(objectClosed);
    return true;
}

bool Recordset::checkSettable(int index) const
{
    if (!checkWritable())
        return false;
    if (index < 0 || index >= m_columns.size())
        return fail(noSuchField(QString::number(index)));
    if (!m_fields->updatable[std::size_t(index)])
        return fail(QStringLiteral("Field '%1' cannot be updated.").arg(m_columns.at(index).name));
    if (m_editMode == EditMode::None && !hasCurrentRecord())
        return fail(noCurrentRecord);
    return true;
}

void Recordset::putPending(int index, const QVariant& stored)
{
    if (m_editMode == EditMode::None)
        m_editMode = EditMode::Editing;
    m_pending.insert(index, stored, fieldCount());
}

bool Recordset::setValue(int index, const QVariant& value)
{
    if (!checkSettable(index))
        return false;
    const ResultColumn& column = m_columns.at(index);
    const auto stored = storevalue::toStored(column.type.value_or(ColumnType::Text), value);
    if (!stored)
        return fail(QStringLiteral("Type mismatch: the value does not fit field '%1'.").arg(column.name));
    putPending(index, *stored);
    return true;
}

bool Recordset::copyValue(int index, const Recordset& from, int fromIndex)
{
    const std::span<const Cell> row = from.storedRow();
    if (fromIndex >= 0 && std::size_t(fromIndex) < row.size() && index >= 0 && index < m_columns.size()) {
        const Cell& cell = row[std::size_t(fromIndex)];
        const bool textToText = cell.kind == Cell::Kind::Text && from.fieldType(fromIndex) == ColumnType::Text
            && m_columns.at(index).type == ColumnType::Text;
        if (cell.kind == Cell::Kind::Null || textToText) {
            if (!checkSettable(index))
                return false;
            putPending(index, cell.toVariant());
            return true;
        }
    }
    bool read = false;
    const QVariant value = from.value(fromIndex, &read);
    return read && setValue(index, value);
}

bool Recordset::setValue(const QString& name, const QVariant& value)
{
    const int index = fieldIndex(name);
    if (index < 0 && m_open)
        return fail(noSuchField(name));
    return setValue(index, value);
}

bool Recordset::AddNew()
{
    if (!checkWritable())
        return false;
    if (m_editMode != EditMode::None && !Update())
        return false;
    m_positionBeforeAdd = m_position;
    m_editMode = EditMode::Adding;
    m_pending.clear();
    return true;
}

bool Recordset::Update()
{
    if (!m_open)
        return fail(objectClosed);
    if (m_editMode == EditMode::None)
        return true;
    if (!checkWritable())
        return false;
    m_duplicate = false;
    if (!(m_editMode == EditMode::Adding ? insertNew() : updateCurrent())) {
        m_duplicate = m_connection->engine()->lastFailureWasDuplicate();
        return false;
    }
    m_editMode = EditMode::None;
    m_pending.clear();
    forgetDecodedRow();
    return true;
}

bool Recordset::updateCurrent()
{
    QStringList names;
    QVariantList values;
    names.reserve(m_pending.size());
    values.reserve(m_pending.size());
    m_pending.forEach([&](int field, const QVariant& value) {
        names.append(m_columns.at(field).column);
        values.append(value);
    });
    const std::vector<Cell>& cells = currentCells();
    long changes = 0;
    StoreEngine* engine = m_connection->engine();
    QVariant key = cells.front().toVariant();
    if (!engine->updateRow(m_table, names, values, key, &changes))
        return fail(engine->lastError());
    if (changes == 0)
        return fail(rowGone);
    m_rows.beginRow();
    m_rows.addVariant(key);
    for (std::size_t i = 1; i < cells.size(); ++i) {
        const int field = int(i) - m_keyColumns;
        const QVariant* pending = m_pending.find(field);
        m_rows.addVariant(pending ? *pending : cells.at(i).toVariant());
    }
    m_rows.endRow(m_position);
    return true;
}

bool Recordset::insertNew()
{
    QStringList names;
    QVariantList values;
    names.reserve(m_pending.size());
    values.reserve(m_pending.size());
    m_pending.forEach([&](int field, const QVariant& value) {
        names.append(m_columns.at(field).column);
        values.append(value);
    });
    QVariant key;
    StoreEngine* engine = m_connection->engine();
    if (!engine->insertRow(m_table, names, values, &key))
        return fail(engine->lastError());
    // The new row joins the snapshot at its end and becomes the current row.
    m_rows.beginRow();
    m_rows.addVariant(key);
    for (int field = 0; field < m_columns.size(); ++field) {
        const QVariant* pending = m_pending.find(field);
        m_rows.addVariant(pending ? *pending : QVariant());
    }
    m_rows.endRow();
    m_position = m_rows.rowCount() - 1;
    m_currentDeleted = false;
    return true;
}

bool Recordset::CancelUpdate()
{
    if (!m_open)
        return fail(objectClosed);
    if (m_editMode == EditMode::Adding)
        m_position = m_positionBeforeAdd;
    m_editMode = EditMode::None;
    m_pending.clear();
    return true;
}

bool Recordset::Delete()
{
    if (!checkWritable())
        return false;
    if (m_editMode == EditMode::Adding)
        return CancelUpdate();
    if (!hasCurrentRecord())
        return fail(noCurrentRecord);
    m_editMode = EditMode::None;
    m_pending.clear();
    long changes = 0;
    StoreEngine* engine = m_connection->engine();
    if (!engine->deleteRow(m_table, currentCells().front().toVariant(), &changes))
        return fail(engine->lastError());
    if (changes == 0)
        return fail(rowGone);
    m_rows.removeRow(m_position);
    m_currentDeleted = true;
    forgetDecodedRow();
    return true;
}

void Recordset::PendingValues::clear()
{
    if (m_count == 0)
        return;
    for (std::optional<QVariant>& value : m_values)
        value.reset();
    m_count = 0;
}

const QVariant* Recordset::PendingValues::find(int field) const
{
    if (m_count == 0 || field < 0 || std::size_t(field) >= m_values.size() || !m_values[std::size_t(field)])
        return nullptr;
    return &*m_values[std::size_t(field)];
}

void Recordset::PendingValues::insert(int field, const QVariant& value, int fieldCount)
{
    if (m_values.size() < std::size_t(fieldCount))
        m_values.resize(std::size_t(fieldCount));
    std::optional<QVariant>& slot = m_values[std::size_t(field)];
    if (!slot)
        ++m_count;
    slot = value;
}

} // namespace marlet
