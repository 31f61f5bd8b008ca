#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace marlet::test {

// The element structure of a page as a browser's tolerant parser sees it, with every place where
// the page leans on that tolerance. Start and end tags are read with their attributes; script and
// style contents are raw text; an end tag closes the nearest open element of its name and every
// element opened inside it (those count as implied closes); an end tag without an open element of
// its name is ignored (a stray end tag).
struct HtmlOutline
{
    QStringList syntaxErrors; // a tag that does not end, an attribute quote that does not close
    QStringList strayEndTags; // names, in page order
    QStringList impliedCloses; // names of the elements closed by an outer end tag
    QStringList leftOpen; // elements still open after the last tag, outermost first
    int boxes = 0; // tables with border='1'
    int boxesInGridCells = 0; // of those, the ones that stand directly in a cell of a grid table

    static HtmlOutline of(const QString& page)
    {
        HtmlOutline outline;
        outline.read(page);
        return outline;
    }

    // How often each name occurs in a list, for comparing without regard to order.
    static QHash<QString, int> tally(const QStringList& names)
    {
        QHash<QString, int> counts;
        for (const QString& name : names)
            ++counts[name];
        return counts;
    }

private:
    struct Element
    {
        QString name;
        QHash<QString, QString> attributes;
    };

    QList<Element> m_open;

    void read(const QString& page)
    {
        qsizetype at = 0;
        while ((at = page.indexOf(u'<', at)) >= 0) {
            if (page.mid(at, 4) == QLatin1String("<!--")) {
                const qsizetype end = page.indexOf(QLatin1String("-->"), at);
                if (end < 0)
                    return fail(QStringLiteral("comment without end"), at);
                at = end + 3;
                continue;
            }
            const bool closing = page.mid(at + 1, 1) == QLatin1String("/");
            const qsizetype nameStart = at + (closing ? 2 : 1);
            if (nameStart >= page.size() || !page.at(nameStart).isLetter()) {
                ++at; // a "<" in text
                continue;
            }
            at = closing ? readEndTag(page, nameStart) : readStartTag(page, nameStart);
            if (at < 0)
                return;
        }
        for (const Element& element : m_open)
            leftOpen << element.name;
    }

    void fail(const QString& what, qsizetype at)
    {
        syntaxErrors << what + QStringLiteral(" at ") + QString::number(at);
    }

    static qsizetype nameEnd(const QString& page, qsizetype from)
    {
        while (
            from < page.size() && (page.at(from).isLetterOrNumber() || page.at(from) == u'-' || page.at(from) == u'_'))
            ++from;
        return from;
    }

    qsizetype readEndTag(const QString& page, qsizetype nameStart)
    {
        const qsizetype end = nameEnd(page, nameStart);
        const QString name = page.mid(nameStart, end - nameStart).toLower();
        const qsizetype tagEnd = page.indexOf(u'>', end);
        if (tagEnd < 0 || !page.mid(end, tagEnd - end).trimmed().isEmpty()) {
            fail(QStringLiteral("bad end tag ") + name, nameStart);
            return -1;
        }
        close(name);
        return tagEnd + 1;
    }

    qsizetype readStartTag(const QString& page, qsizetype nameStart)
    {
        qsizetype at = nameEnd(page, nameStart);
        Element element {page.mid(nameStart, at - nameStart).toLower(), {}};
        while (true) {
            while (at < page.size() && page.at(at).isSpace())
                ++at;
            if (at >= page.size()) {
                fail(QStringLiteral("tag without end ") + element.name, nameStart);
                return -1;
            }
            if (page.at(at) == u'>')
                break;
            at = readAttribute(page, at, element);
            if (at < 0)
                return -1;
        }
        ++at;
        open(element);
        if (element.name == QLatin1String("script") || element.name == QLatin1String("style")) {
            const qsizetype end = page.indexOf(QStringLiteral("</") + element.name, at, Qt::CaseInsensitive);
            if (end < 0) {
                fail(element.name + QStringLiteral(" without end"), at);
                return -1;
            }
            return end;
        }
        return at;
    }

    qsizetype readAttribute(const QString& page, qsizetype at, Element& element)
    {
        const qsizetype end = nameEnd(page, at);
        if (end == at) {
            fail(QStringLiteral("unexpected character in tag ") + element.name, at);
            return -1;
        }
        const QString name = page.mid(at, end - at).toLower();
        at = end;
        if (at >= page.size() || page.at(at) != u'=') {
            element.attributes.insert(name, QString());
            return at;
        }
        ++at;
        const QChar quote = at < page.size() ? page.at(at) : QChar();
        if (quote == u'\'' || quote == u'"') {
            const qsizetype closeQuote = page.indexOf(quote, at + 1);
            if (closeQuote < 0) {
                fail(QStringLiteral("attribute quote not closed in ") + element.name, at);
                return -1;
            }
            element.attributes.insert(name, page.mid(at + 1, closeQuote - at - 1));
            return closeQuote + 1;
        }
        const qsizetype valueStart = at;
        while (at < page.size() && !page.at(at).isSpace() && page.at(at) != u'>')
            ++at;
        element.attributes.insert(name, page.mid(valueStart, at - valueStart));
        return at;
    }

    void open(const Element& element)
    {
        static const QStringList voidElements = {QStringLiteral("br"),
            QStringLiteral("meta"),
            QStringLiteral("hr"),
            QStringLiteral("img"),
            QStringLiteral("input"),
            QStringLiteral("link")};
        if (element.name == QLatin1String("table")
            && element.attributes.value(QStringLiteral("border")) == QLatin1String("1")) {
            ++boxes;
            const qsizetype depth = m_open.size();
            if (depth >= 3 && m_open.at(depth - 1).name == QLatin1String("td")
                && m_open.at(depth - 2).name == QLatin1String("tr")
                && m_open.at(depth - 3).name == QLatin1String("table")
                && m_open.at(depth - 3).attributes.value(QStringLiteral("border")) == QLatin1String("0"))
                ++boxesInGridCells;
        }
        if (!voidElements.contains(element.name))
            m_open << element;
    }

    void close(const QString& name)
    {
        for (qsizetype i = m_open.size() - 1; i >= 0; --i) {
            if (m_open.at(i).name != name)
                continue;
            for (qsizetype inner = m_open.size() - 1; inner > i; --inner)
                impliedCloses << m_open.at(inner).name;
            m_open.resize(i);
            return;
        }
        strayEndTags << name;
    }
};

} // namespace marlet::test
