#include "script/ControlProperties.h"

#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/GridData.h"

#include <QRegularExpression>

#include <functional>
#include <vector>

namespace marlet {

namespace {

using Reader = std::function<PropertyValue(const Control&, const QList<int>& numbers)>;

struct PropertyReader
{
    const char* name;
    int numbers; // how many numbers the property takes in brackets
    bool gridOnly;
    Reader read;
};

PropertyValue ok(const QString& value)
{
    return {value, QString()};
}

PropertyValue number(int value)
{
    return ok(QString::number(value));
}

PropertyValue boolean(bool value)
{
    return ok(value ? QStringLiteral("true") : QStringLiteral("false"));
}

PropertyValue outOfRange(const QString& what, int index, int count)
{
    return {QString(),
        what + u' ' + QString::number(index) + QStringLiteral(" does not exist (there are ") + QString::number(count)
            + u')'};
}

PropertyValue gridCell(const Control& c, int row, int col)
{
    const GridData& g = c.grid();
    if (row < 0 || row >= g.rows())
        return outOfRange(QStringLiteral("row"), row, g.rows());
    if (col < 0 || col >= g.cols())
        return outOfRange(QStringLiteral("column"), col, g.cols());
    return ok(g.textMatrix(row, col));
}

PropertyValue gridLine(const Control& c, int row)
{
    const GridData& g = c.grid();
    if (row < 0 || row >= g.rows())
        return outOfRange(QStringLiteral("row"), row, g.rows());
    return ok(g.rowCells(row).join(QStringLiteral(" | ")));
}

PropertyValue listItem(const Control& c, int index)
{
    if (index < 0 || index >= c.listCount())
        return outOfRange(QStringLiteral("entry"), index, c.listCount());
    return ok(c.item(index));
}

PropertyValue listItemTip(const Control& c, int index)
{
    if (index < 0 || index >= c.listCount())
        return outOfRange(QStringLiteral("entry"), index, c.listCount());
    return ok(c.itemTip(index));
}

const std::vector<PropertyReader>& controlReaders()
{
    using N = const QList<int>&;
    static const std::vector<PropertyReader> readers = {
        {"text", 0, false, [](const Control& c, N) { return ok(c.text()); }},
        {"caption", 0, false, [](const Control& c, N) { return ok(c.caption()); }},
        {"value", 0, false, [](const Control& c, N) { return number(c.value()); }},
        {"enabled", 0, false, [](const Control& c, N) { return boolean(c.enabled()); }},
        {"visible", 0, false, [](const Control& c, N) { return boolean(c.visible()); }},
        {"locked", 0, false, [](const Control& c, N) { return boolean(c.locked()); }},
        {"tooltip", 0, false, [](const Control& c, N) { return ok(c.toolTip()); }},
        {"forecolor", 0, false, [](const Control& c, N) { return number(c.foreColor()); }},
        {"backcolor", 0, false, [](const Control& c, N) { return number(c.backColor()); }},
        {"bold", 0, false, [](const Control& c, N) { return boolean(c.fontBold()); }},
        {"fontsize", 0, false, [](const Control& c, N) { return number(c.fontSize()); }},
        {"maxlength", 0, false, [](const Control& c, N) { return number(c.maxLength()); }},
        {"seltext", 0, false, [](const Control& c, N) { return ok(c.text().mid(c.selStart(), c.selLength())); }},
        {"selstart", 0, false, [](const Control& c, N) { return number(c.selStart()); }},
        {"sellength", 0, false, [](const Control& c, N) { return number(c.selLength()); }},
        {"listindex", 0, false, [](const Control& c, N) { return number(c.listIndex()); }},
        {"listcount", 0, false, [](const Control& c, N) { return number(c.listCount()); }},
        {"item", 1, false, [](const Control& c, N n) { return listItem(c, n[0]); }},
        {"selected", 1, false, [](const Control& c, N n) { return boolean(c.selected(n[0])); }},
        {"tip", 1, false, [](const Control& c, N n) { return listItemTip(c, n[0]); }},
        {"tab", 0, false, [](const Control& c, N) { return number(c.selectedTab()); }},
        {"min", 0, false, [](const Control& c, N) { return number(c.minimum()); }},
        {"max", 0, false, [](const Control& c, N) { return number(c.maximum()); }},
        {"left", 0, false, [](const Control& c, N) { return number(c.left()); }},
        {"top", 0, false, [](const Control& c, N) { return number(c.top()); }},
        {"width", 0, false, [](const Control& c, N) { return number(c.width()); }},
        {"height", 0, false, [](const Control& c, N) { return number(c.height()); }},
        {"datetime",
            0,
            false,
            [](const Control& c, N) { return ok(c.dateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))); }},
        {"picture",
            0,
            false,
            [](const Control& c, N) {
                return ok(c.picture().isEmpty() ? QStringLiteral("none")
                                                : QString::number(c.picture().size()) + QStringLiteral(" bytes"));
            }},
        {"rows", 0, true, [](const Control& c, N) { return number(c.grid().rows()); }},
        {"cols", 0, true, [](const Control& c, N) { return number(c.grid().cols()); }},
        {"row", 0, true, [](const Control& c, N) { return number(c.grid().row()); }},
        {"col", 0, true, [](const Control& c, N) { return number(c.grid().col()); }},
        {"cell", 2, true, [](const Control& c, N n) { return gridCell(c, n[0], n[1]); }},
        {"line", 1, true, [](const Control& c, N n) { return gridLine(c, n[0]); }},
    };
    return readers;
}

struct ParsedProperty
{
    QString name;
    QList<int> numbers;
    bool valid = false;
};

// "cell(2, 3)" -> name "cell", numbers {2, 3}.
ParsedProperty parseProperty(const QString& property)
{
    static const QRegularExpression pattern(QStringLiteral(R"(^\s*([A-Za-z]+)\s*(?:\(([-\d\s,]*)\))?\s*$)"));
    const QRegularExpressionMatch match = pattern.match(property);
    if (!match.hasMatch())
        return {};
    ParsedProperty parsed {match.captured(1).toLower(), {}, true};
    if (match.hasCaptured(2)) {
        for (const QString& part : match.captured(2).split(u',')) {
            bool isNumber = false;
            parsed.numbers.append(part.trimmed().toInt(&isNumber));
            parsed.valid = parsed.valid && isNumber;
        }
    }
    return parsed;
}

const PropertyReader* findReader(const ParsedProperty& parsed)
{
    if (!parsed.valid)
        return nullptr;
    for (const PropertyReader& reader : controlReaders()) {
        if (parsed.name == QLatin1String(reader.name) && parsed.numbers.size() == reader.numbers)
            return &reader;
    }
    return nullptr;
}

} // namespace

bool isControlProperty(const QString& property)
{
    return findReader(parseProperty(property)) != nullptr;
}

PropertyValue readControlProperty(const Control& control, const QString& property)
{
    const ParsedProperty parsed = parseProperty(property);
    const PropertyReader* reader = findReader(parsed);
    if (!reader)
        return {QString(), QStringLiteral("unknown property ") + property};
    if (reader->gridOnly && control.kind() != ControlKind::Grid)
        return {QString(),
            control.key() + QStringLiteral(" is a ") + controlKindName(control.kind())
                + QStringLiteral(", not a grid")};
    return reader->read(control, parsed.numbers);
}

QStringList controlPropertyNames()
{
    QStringList names;
    for (const PropertyReader& reader : controlReaders()) {
        static const char* const suffixes[] = {"", "(N)", "(R,C)"};
        names << QLatin1String(reader.name) + QLatin1String(suffixes[reader.numbers]);
    }
    return names;
}

bool isFormProperty(const QString& property)
{
    return formPropertyNames().contains(property.toLower());
}

PropertyValue readFormProperty(const Form& form, const QString& property)
{
    const QString name = property.toLower();
    if (name == QLatin1String("caption"))
        return ok(form.caption());
    if (name == QLatin1String("name"))
        return ok(form.name());
    if (name == QLatin1String("width"))
        return number(form.width());
    if (name == QLatin1String("height"))
        return number(form.height());
    return {QString(), QStringLiteral("unknown form property ") + property};
}

QStringList formPropertyNames()
{
    return {QStringLiteral("caption"), QStringLiteral("name"), QStringLiteral("width"), QStringLiteral("height")};
}

} // namespace marlet
