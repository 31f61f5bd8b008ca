// libFuzzer entry for the statement tokenizer and translator. The input is the statement's pattern,
// optionally followed by a line feed and its values separated by the unit separator (0x1f). Every
// input must come back as a result, and an accepted statement must bind every value and leave no
// literal in the engine SQL.

#include "store/SqlTokenizer.h"
#include "store/SqlTranslator.h"

#include "FuzzCheck.h"

#include <QString>

#include <cstdint>

namespace {

using namespace Qt::StringLiterals;

using marlet::fuzz::require;

void checkSql(const QString& sql, qsizetype values)
{
    require(!sql.isEmpty());
    require(!QString(sql).remove(u" ESCAPE ''"_s).contains(u'\''));
    require(sql.count(u'?') == values);
}

void check(const marlet::Statement& statement, marlet::SqlDialect dialect)
{
    const marlet::TranslationResult result = marlet::SqlTranslator().translate(statement, dialect);
    if (!result.ok()) {
        require(result.sql.isEmpty() && result.steps.isEmpty());
        require(result.errorPosition >= -1 && result.errorPosition <= statement.pattern().size());
        return;
    }
    if (result.kind != marlet::StatementKind::MultiTableDelete)
        return checkSql(result.sql, result.values.size());
    require(!result.steps.isEmpty());
    for (const marlet::KeyedDeleteStep& step : result.steps) {
        checkSql(step.selectKeysSql, result.values.size());
        checkSql(step.deleteByKeySql, 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype split = input.indexOf(u'\n');
    const QString pattern = split < 0 ? input : input.left(split);
    QVariantList values;
    if (split >= 0) {
        for (const QString& value : input.mid(split + 1).split(QChar(0x1f)))
            values.append(value);
    }
    const marlet::SqlTokenizeResult tokens = marlet::tokenizeSql(pattern);
    require(tokens.ok() ? tokens.tokens.last().type == marlet::SqlTokenType::End : tokens.errorPosition >= 0);
    const marlet::Statement statement(pattern, values);
    check(statement, marlet::SqlDialect::Sqlite);
    check(statement, marlet::SqlDialect::Postgres);
    return 0;
}
