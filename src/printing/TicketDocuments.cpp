#include "printing/TicketDocuments.h"

#include "platform/Platform.h"
#include "printing/LoginCode.h"
#include "session/Session.h"
#include "session/WorkHost.h"
#include "store/PreferenceKeys.h"
#include "store/PrivateFiles.h"
#include "store/Recordset.h"
#include "values/Formats.h"
#include "values/Numbers.h"

#include <QDir>
#include <QFile>
#include <QStringList>

#include <optional>

namespace marlet {

namespace {

const QString PageFileName = QStringLiteral("temp.htm");
const QString LineBreak = QStringLiteral("\r\n");
const QString GridTable = QStringLiteral("<table width='670' border='0' cellpadding='2'>");
const QString BoxTable
    = QStringLiteral("<table width='100%'  border='1' cellpadding='1' cellspacing='0' bordercolor='#000000'>");
const QString RowEnd = QStringLiteral("      </tr>");
const QString RowStart = QStringLiteral("      <tr bordercolor='#000000'>");
const QString StopQuestion = QStringLiteral("Ticket already generated, Cancel Preview?");

// Longer titles and addresses are cut to this and get "..."; the Small design's title is shorter.
constexpr int HeadingLimit = 20;
constexpr int SmallTitleLimit = 17;
// At a block counter that is a multiple of this, the page so far goes to the file. The counter steps
// never reach one on the Small and Medium designs; on the Large design the first is block 300.
constexpr long FlushingBlock = 60;
// The side of a ticket's QR code on a page that carries them.
constexpr int QrPixels = 96;

// How a design's page reaches the browser. The two ways of opening are not interchangeable: they
// differ in who starts the browser and which program is named.
enum class PageOpening {
    None, // the page is only written
    ShellOpen, // the shell's verb "open" on "iexplore.exe" with the page as its parameter, maximised
    ProgramStart, // a plain program start of the command line "iexplorer.exe <page>", maximised
};

// Every text of one ticket box, ready to print.
struct TicketFace
{
    QString title;
    QString address;
    QString username;
    QString password;
    QString amount;
    QString timeText; // "60min(s)"
    QString expiry;
    QString status; // Medium and Large: "All Day", "Time Ticket [...]", with "/ReCharge" and "/Flexy"
    QString number; // group and running number; Small: the group's last four digits
    QString printed; // the date of printing
    QString byWhom;
    bool night = false; // Small: a star in front of the title
};

using BoxWriter = QStringList (*)(const TicketFace&);

// What differs between the three page designs.
struct PageDesign
{
    QString titleLine;
    QString sizeLine;
    QStringList styles;
    int rowsPerBlock = 0;
    int boxesPerRow = 0;
    QString cell;
    long blockStep = 0;
    bool tablePerBlock = false; // else one grid table for the whole page
    QStringList separator; // after a block that is not the last
    int titleLimit = HeadingLimit;
    QString noExpiry; // expiry text of a ticket with neither days nor a date
    bool shortNumber = false; // "last four digits of the group-number"
    BoxWriter box = nullptr;
    bool stopQuestionFirst = false; // the stop question before the test for the end of the tickets
    bool rowsEndOnStop = false; // a "Stop" also ends the rows of a block
    bool writesAtEnd = false; // else only the flushed parts of the page reach the file
    PageOpening opening = PageOpening::None;
    bool opensWhenStopped = false;
};

// A fixed sample page in a design: one box repeated over the grid.
struct SampleDesign
{
    const PageDesign& design;
    QStringList styles; // the sample's own style lines
    int rows = 0;
    TicketFace face;
    PageOpening opening = PageOpening::None;
};

QString cut(const QString& text, int limit)
{
    return text.size() > limit ? text.left(limit) + QStringLiteral("...") : text;
}

QStringList smallBox(const TicketFace& t)
{
    return {QStringLiteral("      ") + BoxTable + QStringLiteral("<tr align='center' bordercolor='#000000'>"),
        QStringLiteral("        <td colspan='4'><div align='center'><span class='style10'>")
            + (t.night ? QStringLiteral("*") : QString()) + t.title + QStringLiteral("</span><em> (") + t.address
            + QStringLiteral(")</em><br>"),
        QStringLiteral("          </div>"),
        QStringLiteral("          <div align='right' class='style5'></div>          <div align='left' "
                       "class='style7'></div></td>"),
        RowEnd,
        RowStart,
        QStringLiteral("        <td colspan='2'><p align='center'><strong>User: ") + t.username
            + QStringLiteral("<br>"),
        QStringLiteral("  </strong></p>          </td>"),
        QStringLiteral("        <td colspan='2'><div align='center'><strong>Pwd: ") + t.password
            + QStringLiteral("</strong></div></td>"),
        RowEnd,
        RowStart,
        QStringLiteral("        <td> <div align='center'>") + t.amount + QStringLiteral("</div></td>"),
        QStringLiteral("        <td><div align='center'>") + t.timeText + QStringLiteral("</div></td>"),
        QStringLiteral("        <td width='25%'><div align='center'>") + t.expiry + QStringLiteral("</div></td>"),
        QStringLiteral("        <td width='25%'><div align='center'>+") + t.number + QStringLiteral("</div></td>"),
        QStringLiteral("      </tr></table>"),
        QStringLiteral("    </td>")};
}

QStringList mediumBox(const TicketFace& t)
{
    return {QStringLiteral("    ") + BoxTable,
        QStringLiteral("      <tr align='center' bordercolor='#000000' bgcolor='#FFFFFF'>"),
        QStringLiteral("        <td><span class='style4'>") + t.title + QStringLiteral("</span><em><br>"),
        QStringLiteral("          <div align='right' class='style5'>") + t.address + QStringLiteral("</em><br>"),
        QStringLiteral("          </div></td>"),
        QStringLiteral("        <td bgcolor='#FFFFFF'><div align='left' class='style7'> ") + t.status + u' ',
        QStringLiteral("          (Printed:") + t.printed + QStringLiteral(")</div></td>"),
        RowEnd,
        RowStart,
        QStringLiteral("        <td colspan='2'><p align='center'><strong>Username: ") + t.username
            + QStringLiteral("<br>"),
        QStringLiteral("  Password: ") + t.password + QStringLiteral("</strong></p>          </td>"),
        QStringLiteral("        </tr>"),
        RowStart,
        QStringLiteral("        <td><strong>Cost:</strong> ") + t.amount + QStringLiteral("</td>"),
        QStringLiteral("        <td width='50%'><strong>Time:</strong> ") + t.timeText + QStringLiteral("</td>"),
        RowEnd,
        RowStart,
        QStringLiteral("        <td><div align='left'><strong>Expire:</strong> ") + t.expiry
            + QStringLiteral("</div></td>"),
        QStringLiteral("        <td><div align='left'><strong>") + t.number + QStringLiteral("</strong></div></td>"),
        RowEnd,
        QStringLiteral("    </table></td>")};
}

QStringList largeBox(const TicketFace& t)
{
    return {QStringLiteral("    ") + BoxTable,
        QStringLiteral("      <tr align='center' bordercolor='#000000'>"),
        QStringLiteral("        <td colspan='4'><span class='style4'>") + t.title
            + QStringLiteral(" </span>           (") + t.status + u')',
        QStringLiteral("          <div align='right' class='style5'></div></td>"),
        RowEnd,
        RowStart,
        QStringLiteral("        <td colspan='2'><p><strong>Username:</strong> ") + t.username + QStringLiteral("<br>"),
        QStringLiteral("          </p>          </td>"),
        QStringLiteral("        <td colspan='2'><strong>Password:</strong> ") + t.password + QStringLiteral("</td>"),
        RowEnd,
        RowStart,
        // This design closes the time with a second parenthesis.
        QStringLiteral("        <td width='30%'><strong>Time:</strong> ") + t.timeText + QStringLiteral(")</td>"),
        QStringLiteral("        <td colspan='2'><strong>Expire:</strong> ") + t.expiry + QStringLiteral("</td>"),
        QStringLiteral("        <td width='30%'><strong>Cost:</strong> ") + t.amount + QStringLiteral(" </td>"),
        RowEnd,
        RowStart,
        QStringLiteral("        <td colspan='2'><em>") + t.address + QStringLiteral("</em><br>"),
        QStringLiteral("            <span class='style6'>(Printed: ") + t.printed + QStringLiteral(") </span></td>"),
        QStringLiteral("        <td colspan='2'><strong>Grp-No:</strong> ") + t.number + QStringLiteral("<br>"),
        QStringLiteral("            <strong>Printed by:</strong> ") + t.byWhom + QStringLiteral("</td>"),
        RowEnd,
        QStringLiteral("    </table></td>")};
}

const PageDesign& smallDesign()
{
    static const PageDesign design {
        .titleLine = QStringLiteral("<title>Norvantis - Small Ticket</title>"),
        .sizeLine = QStringLiteral("    font-size: 9px;"),
        .styles = {QStringLiteral(".style5 {color: #000000}"),
            QStringLiteral(".style7 {font-size: 9}"),
            QStringLiteral(".style10 {font-size: 11px; font-weight: bold; color: #000000; }")},
        .rowsPerBlock = 17,
        .boxesPerRow = 3,
        .cell = QStringLiteral("    <td width='33%'>"),
        .blockStep = 52,
        .tablePerBlock = false,
        .separator = {QStringLiteral("<tr height=5><td></td></tr>")},
        .titleLimit = SmallTitleLimit,
        .noExpiry = QStringLiteral("No Expire"),
        .shortNumber = true,
        .box = smallBox,
        .stopQuestionFirst = true,
        .rowsEndOnStop = false,
        .writesAtEnd = true,
        .opening = PageOpening::None,
        .opensWhenStopped = false,
    };
    return design;
}

const PageDesign& mediumDesign()
{
    static const PageDesign design {
        .titleLine = QStringLiteral("<title>Norvantis - Medium Ticket</title>"),
        .sizeLine = QStringLiteral("    font-size: 10px;"),
        .styles = {QStringLiteral(".style4 {font-size: 10px; font-weight: bold; color: #000000; }"),
            QStringLiteral(".style5 {font-size: 7; color: #000000}"),
            QStringLiteral(".style7 {font-size: 8}")},
        .rowsPerBlock = 10,
        .boxesPerRow = 3,
        .cell = QStringLiteral("    <td width='33%'>"),
        .blockStep = 25,
        .tablePerBlock = true,
        .separator = {QStringLiteral("<tr height=25><td></td></tr>"), QStringLiteral("</table>")},
        .titleLimit = HeadingLimit,
        .noExpiry = QStringLiteral("None"),
        .shortNumber = false,
        .box = mediumBox,
        .stopQuestionFirst = false,
        .rowsEndOnStop = false,
        .writesAtEnd = true,
        .opening = PageOpening::ShellOpen,
        .opensWhenStopped = false,
    };
    return design;
}

const PageDesign& largeDesign()
{
    static const PageDesign design {
        .titleLine = QStringLiteral("<title>Norvantis - Large Ticket</title>"),
        .sizeLine = QStringLiteral("    font-size: 10px;"),
        .styles = {QStringLiteral(".style4 {font-size: 12px; font-weight: bold; color: #000000; }"),
            QStringLiteral(".style5 {color: #000000}"),
            QStringLiteral(".style6 {font-size: 9px}")},
        .rowsPerBlock = 11,
        .boxesPerRow = 2,
        .cell = QStringLiteral("    <td width='50%'>"),
        .blockStep = 23,
        .tablePerBlock = true,
        .separator = {QStringLiteral("</table>")},
        .titleLimit = HeadingLimit,
        .noExpiry = QStringLiteral("None"),
        .shortNumber = false,
        .box = largeBox,
        .stopQuestionFirst = false,
        .rowsEndOnStop = true,
        .writesAtEnd = false,
        .opening = PageOpening::ProgramStart,
        .opensWhenStopped = true,
    };
    return design;
}

// The fixed box of the sample pages; the Medium sample differs in a few values.
TicketFace sampleFace()
{
    TicketFace face;
    face.title = QStringLiteral("Norvantis Cybercafe");
    face.address = QStringLiteral("36 Norvantis Office");
    face.username = QStringLiteral("ABCDEFGHOO");
    face.password = QStringLiteral("ABCDEFGHOO");
    face.amount = QStringLiteral("N10000");
    face.timeText = QStringLiteral("9999min(s)");
    face.expiry = QStringLiteral("01/Jan/2005");
    face.status = QStringLiteral("(24hrs of the day)");
    face.number = QStringLiteral("123456789012-0000");
    return face;
}

// The page text: every piece goes on a line of its own, so the text starts with a line break.
class PageText
{
public:
    void add(const QString& piece) { m_text += LineBreak + piece; }
    void add(const QStringList& pieces)
    {
        for (const QString& piece : pieces)
            add(piece);
    }
    const QString& text() const { return m_text; }
    void clear() { m_text.clear(); }

private:
    QString m_text;
};

void addHead(PageText& page, const PageDesign& design, const QStringList& styles)
{
    page.add({QStringLiteral("<html>"),
        QStringLiteral("<head>"),
        design.titleLine,
        QStringLiteral("<meta http-equiv='Content-Type' content='text/html; charset=iso-8859-1'>"),
        QStringLiteral("<script language=javascript>function Nomouse(){if (event.button==2){"),
        QStringLiteral("alert('You cannot right click!')}}"),
        QStringLiteral("document.onmousedown=Nomouse</script>"),
        QStringLiteral("<style type='text/css'>"),
        QStringLiteral("<!--"),
        QStringLiteral("body,td,th {"),
        QStringLiteral("    font-family: Arial, Helvetica, sans-serif;"),
        design.sizeLine,
        QStringLiteral("}")});
    page.add(styles);
    page.add({QStringLiteral("-->"), QStringLiteral("</style></head>"), QStringLiteral("<body>")});
}

void addEnd(PageText& page)
{
    page.add({QStringLiteral("</body>"), QStringLiteral("</html>")});
}

// temp.htm as the writers use it: replaced, never created from nothing; plain text in the character
// set that the page declares.
class PageFile
{
public:
    explicit PageFile(const QString& path)
        : m_file(path)
    {
    }

    QString path() const { return m_file.fileName(); }
    // Deletes the old page and opens an empty one. A missing page is a failure.
    bool replace()
    {
        return QFile::remove(m_file.fileName()) && openPrivate(m_file, QIODevice::WriteOnly | QIODevice::Truncate);
    }
    bool write(const QString& text)
    {
        const QByteArray bytes = text.toLatin1();
        return m_file.write(bytes) == bytes.size() && m_file.flush();
    }
    // Writes what the page holds so far and goes on at the end of the file.
    bool flush(PageText& page)
    {
        if (!write(page.text()))
            return false;
        page.clear();
        m_file.close();
        return m_file.open(QIODevice::WriteOnly | QIODevice::Append);
    }
    void close() { m_file.close(); }

private:
    QFile m_file;
};

void openPage(Platform& platform, PageOpening opening, const QString& path)
{
    switch (opening) {
    case PageOpening::None:
        return;
    case PageOpening::ShellOpen:
    case PageOpening::ProgramStart:
        // Neither browser program of the two command lines exists on this platform: the desktop's
        // default browser stands in for both ways of opening.
        platform.openDocument(path);
        return;
    }
}

// The writers' work on one screen and one page.
class PageWriter
{
public:
    explicit PageWriter(WorkHost& host)
        : m_host(host)
        , m_platform(host.platform())
        , m_path(ticketPagePath(host.session().applicationFolder()))
    {
    }

    bool writeTickets(Recordset& tickets, const PageDesign& design);
    bool writeSample(const SampleDesign& sample);

private:
    bool writeBlock(Recordset& tickets, const PageDesign& design, long block, PageText& page, PageFile& file);
    std::optional<TicketFace> readFace(const Recordset& tickets, const PageDesign& design) const;
    bool stopConfirmed();

    WorkHost& m_host;
    Platform& m_platform;
    QString m_path;
    QString m_title;
    QString m_address;
    QString m_loginTemplate; // empty: the page carries no QR codes
};

bool PageWriter::writeTickets(Recordset& tickets, const PageDesign& design)
{
    PageFile file(m_path);
    if (!file.replace())
        return false;
    const SessionPreferences settings = m_host.session().settings();
    m_title = settings.text(keys::Title);
    m_address = settings.text(keys::Address);
    m_loginTemplate = settings.text(keys::LoginTemplate);
    PageText page;
    addHead(page, design, design.styles);
    m_host.StopRequested = false;
    if (!design.tablePerBlock)
        page.add(GridTable);
    const long count = tickets.RecordCount();
    for (long block = 1; block <= count; block += design.blockStep) {
        if (design.tablePerBlock)
            page.add(GridTable);
        if (!writeBlock(tickets, design, block, page, file))
            return false;
        if (design.stopQuestionFirst && stopConfirmed())
            break;
        if (tickets.Eof())
            break; // the Medium page then leaves its last grid table open
        page.add(design.separator);
        if (!design.stopQuestionFirst && stopConfirmed())
            break;
    }
    m_platform.yield();
    if (!design.tablePerBlock)
        page.add(QStringLiteral("</table>"));
    addEnd(page);
    m_host.EndProgress();
    const bool stopped = m_host.StopRequested;
    if (design.writesAtEnd && !stopped && !file.write(page.text()))
        return false;
    // The browser gets the page before the file is closed.
    if (!stopped || design.opensWhenStopped)
        openPage(m_platform, design.opening, file.path());
    file.close();
    return true;
}

bool PageWriter::writeBlock(Recordset& tickets, const PageDesign& design, long block, PageText& page, PageFile& file)
{
    for (int row = 0; row < design.rowsPerBlock; ++row) {
        page.add(QStringLiteral("  <tr>"));
        for (int cell = 0; cell < design.boxesPerRow; ++cell) {
            page.add(design.cell);
            if (!tickets.Eof()) {
                const std::optional<TicketFace> face = readFace(tickets, design);
                if (!face || !tickets.MoveNext())
                    return false;
                page.add(design.box(*face));
                if (!m_loginTemplate.isEmpty())
                    page.add(QStringLiteral("    <div align='center'>")
                        + qrSvg(loginText(m_loginTemplate, face->username, face->password), QrPixels)
                        + QStringLiteral("</div>"));
            }
            page.add(QStringLiteral("  </td>"));
        }
        page.add(QStringLiteral("  </tr>"));
        if (tickets.Eof() || (design.rowsEndOnStop && m_host.StopRequested))
            break;
        if (block % FlushingBlock == 0 && !file.flush(page))
            return false;
        m_platform.yield();
    }
    return true;
}

std::optional<TicketFace> PageWriter::readFace(const Recordset& tickets, const PageDesign& design) const
{
    FieldReader field(tickets);
    TicketFace face;
    face.title = cut(m_title, design.titleLimit);
    face.address = cut(m_address, HeadingLimit);
    face.username = field("Username").toString();
    face.password = field("Password").toString();
    face.amount = field("Amount").toString();
    face.timeText = values::numberText(values::floorToWhole(field("Time").toDouble() / 60)) + QStringLiteral("min(s)");

    const double days = field("Days").toDouble();
    const QVariant expire = field("Expire");
    if (days > 0)
        face.expiry = values::numberText(days) + QStringLiteral("day(s)");
    else if (expire.isNull())
        face.expiry = design.noExpiry;
    else
        face.expiry = values::format(expire, QStringLiteral("dd-MMM-yy"));

    face.night = field("Night").toBool();
    const QVariant start = field("StartTime");
    const QVariant end = field("EndTime");
    face.status = face.night ? QStringLiteral("Time Ticket [") + values::format(start, QStringLiteral("hh:mmAMPM"))
            + u'-' + values::format(end, QStringLiteral("hh:mmAMPM")) + u']'
                             : QStringLiteral("All Day");
    const QVariant recharge = field("Autorecharge");
    if (!recharge.isNull() && recharge.toString() != QLatin1String("NONE"))
        face.status += QStringLiteral("/ReCharge");
    if (field("Flexy").toBool())
        face.status += QStringLiteral("/Flexy");

    const QString group = field("TicketGrp").toString();
    const QString number = values::format(field("TicketNo"), QStringLiteral("0000"));
    face.number = (design.shortNumber ? group.right(4) : group) + u'-' + number;
    face.printed = values::format(m_platform.today(), QStringLiteral("dd-MMM-yy"));
    face.byWhom = field("ByWhom").toString();
    if (!field.ok())
        return std::nullopt;
    return face;
}

// "Stop" was pressed: true when the operator cancels the page, else the request is forgotten.
bool PageWriter::stopConfirmed()
{
    if (!m_host.StopRequested)
        return false;
    if (m_platform.messageBox(StopQuestion, MsgStyle::YesNoQuestionNoDefault) == MsgResult::Yes)
        return true;
    m_host.StopRequested = false;
    return false;
}

bool PageWriter::writeSample(const SampleDesign& sample)
{
    const PageDesign& design = sample.design;
    PageText page;
    addHead(page, design, sample.styles);
    page.add(GridTable);
    for (int row = 0; row < sample.rows; ++row) {
        page.add(QStringLiteral("  <tr>"));
        for (int cell = 0; cell < design.boxesPerRow; ++cell) {
            page.add(design.cell);
            page.add(design.box(sample.face));
            page.add(QStringLiteral("  </td>"));
        }
        page.add(QStringLiteral("  </tr>"));
    }
    page.add(QStringLiteral("</table>"));
    addEnd(page);
    PageFile file(m_path);
    if (!file.replace() || !file.write(page.text()))
        return false;
    openPage(m_platform, sample.opening, file.path());
    file.close();
    return true;
}

} // namespace

QVariant FieldReader::operator()(const char* name)
{
    bool found = false;
    const QVariant value = m_row.value(QLatin1String(name), &found);
    m_ok = m_ok && found;
    return value;
}

QString ticketPagePath(const QString& applicationFolder)
{
    return QDir(applicationFolder).filePath(PageFileName);
}

void provideTicketPage(const QString& applicationFolder)
{
    QFile page(ticketPagePath(applicationFolder));
    if (!page.exists())
        openPrivate(page, QIODevice::WriteOnly);
}

TicketDocuments::TicketDocuments(WorkHost& host)
    : m_host(host)
{
}

QString TicketDocuments::pagePath() const
{
    return ticketPagePath(m_host.session().applicationFolder());
}

bool TicketDocuments::WriteSmallTickets(Recordset& tickets)
{
    return PageWriter(m_host).writeTickets(tickets, smallDesign());
}

bool TicketDocuments::WriteMediumTickets(Recordset& tickets)
{
    return PageWriter(m_host).writeTickets(tickets, mediumDesign());
}

bool TicketDocuments::WriteLargeTickets(Recordset& tickets)
{
    return PageWriter(m_host).writeTickets(tickets, largeDesign());
}

bool TicketDocuments::WriteSmallSample()
{
    TicketFace face = sampleFace();
    face.number = QStringLiteral("0000-0000"); // the box's cell supplies the "+"
    return PageWriter(m_host).writeSample({smallDesign(), smallDesign().styles, 17, face, PageOpening::None});
}

bool TicketDocuments::WriteMediumSample()
{
    TicketFace face = sampleFace();
    face.title = QStringLiteral("Norvantis");
    face.expiry = QStringLiteral("1/Jan/2005");
    face.printed = QStringLiteral("12/12/2005");
    const QStringList styles = {QStringLiteral(".style4 {font-size: 12px; font-weight: bold; color: #000000; }"),
        QStringLiteral(".style5 {color: #000000}"),
        QStringLiteral(".style7 {font-size: 9}")};
    return PageWriter(m_host).writeSample({mediumDesign(), styles, 8, face, PageOpening::ProgramStart});
}

bool TicketDocuments::WriteLargeSample()
{
    TicketFace face = sampleFace();
    face.status = QStringLiteral("24hrs of the day"); // the box puts the status between parentheses
    face.printed = QStringLiteral("01/01/2005");
    face.byWhom = QStringLiteral("Adminstrator");
    return PageWriter(m_host).writeSample({largeDesign(), largeDesign().styles, 11, face, PageOpening::ProgramStart});
}

} // namespace marlet
