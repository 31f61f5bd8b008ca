#include "store/Schema.h"

namespace marlet {

namespace {

using T = ColumnType;

TableDef makeTable(const char* name, std::initializer_list<std::pair<const char*, ColumnType>> columns)
{
    TableDef def {QString::fromLatin1(name), {}};
    for (const auto& [column, type] : columns)
        def.columns.append({QString::fromLatin1(column), type});
    return def;
}

TableDef accountTable()
{
    return makeTable("Account",
        {{"TicketGrp", T::Text},
            {"TicketNo", T::Text},
            {"Username", T::Text},
            {"Password", T::Text},
            {"Time", T::Single},
            {"BackTime", T::Single},
            {"ByWhom", T::Text},
            {"Expire", T::Date},
            {"Days", T::Number},
            {"DateCreated", T::Date},
            {"Amount", T::Text},
            {"OrgTime", T::Single},
            {"LastUsed", T::Date},
            {"NEW", T::Boolean},
            {"StartTime", T::Date},
            {"EndTime", T::Date},
            {"ComputerUsed", T::Text},
            {"AccountAdded", T::Text},
            {"NoAdded", T::Integer},
            {"POS", T::Boolean},
            {"Member", T::Boolean},
            {"Flexy", T::Boolean},
            {"Autorecharge", T::Text},
            {"Reday", T::Text},
            {"Redate", T::Date},
            {"Retime", T::Text},
            {"Quota", T::Number},
            {"Night", T::Boolean},
            {"Once", T::Boolean},
            {"TotalTimeUsed", T::Number},
            {"TimeLastUsed", T::Text},
            {"NoLogIn", T::Integer},
            {"Print", T::Integer}});
}

// Deleted tickets: every column of Account in the same order, then the bin's own two.
TableDef recycleBinTable()
{
    TableDef def = accountTable();
    def.name = QStringLiteral("RecycleBin");
    def.columns.append({QStringLiteral("DateTimeDeleted"), T::Text});
    def.columns.append({QStringLiteral("Reason"), T::Text});
    return def;
}

TableDef printTable(const char* name, int slotCount)
{
    TableDef def {QString::fromLatin1(name), {}};
    for (int slot = 1; slot <= slotCount; ++slot) {
        for (int field = 0; field < PrintSlotColumns; ++field)
            def.columns.append(printSlotColumn(slot, field));
    }
    return def;
}

} // namespace

ColumnDef printSlotColumn(int slot, int field)
{
    static const std::pair<const char*, ColumnType> fields[PrintSlotColumns] = {{"TicketGrpNo", T::Text},
        {"Username", T::Text},
        {"Password", T::Text},
        {"Time", T::Number},
        {"Amount", T::Text},
        {"Expire", T::Date},
        {"Nightinfo", T::Text},
        {"Quota", T::Number},
        {"Days", T::Number}};
    // Print staging names a column for every value it writes: the names of the slots the scratch
    // tables have are made once.
    constexpr int keptSlots = 8;
    static const QList<ColumnDef> kept = [] {
        QList<ColumnDef> columns;
        for (int s = 1; s <= keptSlots; ++s) {
            for (const auto& [name, type] : fields)
                columns.append({QString::fromLatin1(name) + QString::number(s), type});
        }
        return columns;
    }();
    if (slot >= 1 && slot <= keptSlots && field >= 0 && field < PrintSlotColumns)
        return kept.at((slot - 1) * PrintSlotColumns + field);
    const auto& [name, type] = fields[field];
    return {QString::fromLatin1(name) + QString::number(slot), type};
}

qsizetype TableDef::columnIndex(QStringView name) const
{
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (columns.at(i).name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

const ColumnDef* TableDef::column(QStringView name) const
{
    const qsizetype index = columnIndex(name);
    return index < 0 ? nullptr : &columns.at(index);
}

Schema::Schema()
{
    m_tables = {
        accountTable(),
        recycleBinTable(),
        makeTable("TicketInfo",
            {{"TicketGrp", T::Text},
                {"Number", T::Number},
                {"Time", T::Single},
                {"Amount", T::Text},
                {"TotalCost", T::Double},
                {"GeneratedBy", T::Text},
                {"TimeGenerated", T::Text}}),
        makeTable("Members",
            {{"Member_ID", T::Text},
                {"Surname", T::Text},
                {"Firstname", T::Text},
                {"title", T::Text},
                {"Othername", T::Text},
                {"DateofBirth", T::Date},
                {"Company", T::Text},
                {"Occupation", T::Text},
                {"Address", T::Text},
                {"State", T::Text},
                {"Country", T::Text},
                {"Telephone", T::Text},
                {"Identification_item", T::Text},
                {"Identication_no", T::Text},
                {"SpecifyOrder", T::Text},
                {"Email", T::Text},
                {"Sex", T::Text},
                {"Picture", T::Text}}),
        makeTable("Users",
            {{"Username", T::Text},
                {"Password", T::Text},
                {"Type", T::Text},
                {"Solotime", T::Double},
                {"Expire", T::Text},
                {"Allocate", T::Boolean},
                {"Shutrest", T::Boolean},
                {"XView", T::Boolean},
                {"Pass", T::Boolean},
                {"Generate", T::Boolean},
                {"enabled", T::Boolean},
                {"Print", T::Boolean},
                {"Pause", T::Boolean},
                {"Option", T::Boolean},
                {"POS", T::Boolean},
                {"ActBox", T::Boolean}}),
        makeTable("Options",
            {{"TicketIniName", T::Text},
                {"Currency", T::Text},
                {"AdministratorPower", T::Boolean},
                {"NoUser", T::Boolean},
                {"NightTimeStart", T::Text},
                {"NightTimeEnd", T::Text},
                {"Title", T::Text},
                {"Address", T::Text},
                {"Information", T::Text},
                {"LogIn", T::Boolean},
                {"EnableBackUp", T::Boolean},
                {"EnableCleanUp", T::Boolean},
                {"RecycleBinSize", T::Number},
                {"SMSAccount", T::Text},
                {"SMSPassword", T::Text},
                {"SMScost", T::Text}}),
        makeTable("QuickT", {{"TicketType", T::Text}}),
        makeTable("Cafe", {{"Cafename", T::Number}, {"SystemName", T::Text}}),
        makeTable("Restriction", {{"ComputerName", T::Text}, {"Times", T::Date}, {"User", T::Text}}),
        makeTable("RClient", {{"ComputerName", T::Text}, {"Times", T::Date}, {"User", T::Text}}),
        makeTable("RestrictDisallow", {{"Name", T::Text}, {"Type", T::Boolean}}),
        makeTable("Capt", {{"Caption", T::Text}}),
        makeTable("SysUsage", {{"SystemUsage", T::Text}, {"Times", T::Text}, {"Dates", T::Text}}),
        makeTable("Activated",
            {{"TicketGrp", T::Text},
                {"Times", T::Number},
                {"Amount", T::Text},
                {"Staff", T::Text},
                {"Status", T::Boolean},
                {"Activator", T::Text},
                {"numbers", T::Number}}),
        makeTable("Register", {{"TotGenerated", T::Number}, {"TotCost", T::Number}}),
        makeTable("POS", {{"Username", T::Text}, {"ByWhom", T::Text}}),
        makeTable("Rechargeinfo",
            {{"ReChargeType", T::Text},
                {"Rechargetime", T::Number},
                {"Rechargeduser", T::Text},
                {"timedate", T::Date},
                {"member", T::Text},
                {"Username", T::Text}}),
        printTable("Row6PrintTemp", 6),
        printTable("Row3PrintTemp", 3),
        printTable("RowPrintTemp", 2),
    };
    for (const TableDef& table : std::as_const(m_tables)) {
        for (const ColumnDef& column : table.columns)
            m_columnIndex.insert(table.name.toLower() + u'.' + column.name.toLower(), &column);
    }
    // The lookups that every ticket operation makes: by name, by group, and the member join. A
    // ticket group is one row of TicketInfo: two operators who start a batch in the same second
    // must not share one, or one's discard would delete the other's tickets.
    m_indexes = {
        {QStringLiteral("account_username"), QStringLiteral("Account"), QStringLiteral("Username")},
        {QStringLiteral("account_ticketgrp"), QStringLiteral("Account"), QStringLiteral("TicketGrp")},
        {QStringLiteral("recyclebin_username"), QStringLiteral("RecycleBin"), QStringLiteral("Username")},
        {QStringLiteral("ticketinfo_ticketgrp"), QStringLiteral("TicketInfo"), QStringLiteral("TicketGrp"), true},
        {QStringLiteral("members_member_id"), QStringLiteral("Members"), QStringLiteral("Member_ID")},
        {QStringLiteral("users_username"), QStringLiteral("Users"), QStringLiteral("Username")},
        {QStringLiteral("pos_username"), QStringLiteral("POS"), QStringLiteral("Username")},
        {QStringLiteral("rechargeinfo_username"), QStringLiteral("Rechargeinfo"), QStringLiteral("Username")},
    };
}

const Schema& Schema::standard()
{
    static const Schema schema;
    return schema;
}

const TableDef* Schema::table(QStringView name) const
{
    for (const TableDef& def : m_tables) {
        if (def.name.compare(name, Qt::CaseInsensitive) == 0)
            return &def;
    }
    return nullptr;
}

const ColumnDef* Schema::column(QStringView tableName, QStringView columnName) const
{
    return m_columnIndex.value(tableName.toString().toLower() + u'.' + columnName.toString().toLower());
}

} // namespace marlet
