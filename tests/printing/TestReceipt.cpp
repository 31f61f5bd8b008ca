#include "printing/Receipt.h"

#include "printing/TicketSheet.h"
#include "store/Preferences.h"

#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

namespace {

SheetTicket cafeTicket()
{
    SheetTicket ticket;
    ticket.title = QStringLiteral("The Corner Cybercafe of Quay Street");
    ticket.address = QStringLiteral("12 Quay Street");
    ticket.number = QStringLiteral("261124100000-001");
    ticket.userName = QStringLiteral("NVT0123456");
    ticket.password = QStringLiteral("98765");
    ticket.timeText = QStringLiteral("2 hr(s)");
    ticket.price = QStringLiteral("N200");
    ticket.expiryText = QStringLiteral("Never expires");
    ticket.timeRule = QStringLiteral("Any Time");
    ticket.loginCode = QStringLiteral("NVT0123456 98765");
    return ticket;
}

QStringList texts(const QList<ReceiptLine>& lines)
{
    QStringList out;
    for (const ReceiptLine& line : lines)
        out.append(line.text);
    return out;
}

} // namespace

// The receipt of one ticket: which lines it has on which paper, and how the POS tab's display
// choices change it.
class TestReceipt : public QObject
{
    Q_OBJECT

private slots:
    void testNarrowPaperCutsLinesToThirtyTwoColumns()
    {
        const QList<ReceiptLine> lines = receiptLines(cafeTicket(), ReceiptPaper::narrow(), ReceiptContent());
        QCOMPARE(texts(lines),
            QStringList({QStringLiteral("The Corner Cybercafe of Quay Str"),
                QStringLiteral("12 Quay Street"),
                QString(32, u'-'),
                QStringLiteral("User: NVT0123456"),
                QStringLiteral("Password: 98765"),
                QStringLiteral("Time: 2 hr(s)               N200"),
                QStringLiteral("Never expires"),
                QStringLiteral("Any Time"),
                QStringLiteral("261124100000-001")}));
        QVERIFY(lines[0].centred && lines[0].bold && !lines[0].large);
        QVERIFY(!lines[3].centred && lines[3].bold);
    }

    void testWidePaperHasFortyEightColumns()
    {
        const QList<ReceiptLine> lines = receiptLines(cafeTicket(), ReceiptPaper::wide(), ReceiptContent());
        QCOMPARE(lines[0].text, QStringLiteral("The Corner Cybercafe of Quay Street"));
        QCOMPARE(lines[2].text, QString(48, u'-'));
        QCOMPARE(lines[5].text.size(), 48);
        QVERIFY(lines[5].text.endsWith(QStringLiteral(" N200")));
    }

    void testDisplayChoicesComeFromThePosSection()
    {
        QTemporaryDir dir;
        Preferences preferences(dir.path());
        ReceiptContent content = ReceiptContent::fromPreferences(preferences);
        QVERIFY(content.title && content.type && content.group && content.address);
        QVERIFY(!content.largeUser && !content.largePassword);
        for (const char* key : {"Stitle", "Type", "SGroup", "SAddr"})
            preferences.SaveSetting(
                QStringLiteral("Norvantis"), QStringLiteral("POS"), QLatin1String(key), QStringLiteral("0"));
        preferences.SaveSetting(
            QStringLiteral("Norvantis"), QStringLiteral("POS"), QStringLiteral("SPassL"), QStringLiteral("1"));
        content = ReceiptContent::fromPreferences(preferences);
        const QList<ReceiptLine> lines = receiptLines(cafeTicket(), ReceiptPaper::narrow(), content);
        QCOMPARE(texts(lines),
            QStringList({QString(32, u'-'),
                QStringLiteral("User: NVT0123456"),
                QStringLiteral("Password: 98765"),
                QStringLiteral("Time: 2 hr(s)               N200"),
                QStringLiteral("Never expires")}));
        QVERIFY(lines[2].large && !lines[1].large);
    }

    void testALargeLineHasHalfTheColumns()
    {
        ReceiptContent content;
        content.largeUser = true;
        SheetTicket ticket = cafeTicket();
        ticket.userName = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
        const QList<ReceiptLine> lines = receiptLines(ticket, ReceiptPaper::narrow(), content);
        QCOMPARE(lines[3].text, QStringLiteral("User: ABCDEFGHIJ"));
    }

    void testBytesEndWithTheCodeAFeedAndACut()
    {
        const QByteArray bytes = escposReceipt(cafeTicket(), ReceiptPaper::wide(), ReceiptContent());
        QVERIFY(bytes.startsWith(QByteArray("\x1b@\x1bt\x10", 5)));
        QVERIFY(bytes.contains(QByteArray("\x1d(k\x13\x00\x31\x50\x30NVT0123456 98765", 24)));
        QVERIFY(bytes.contains(QByteArray("\x1d(k\x03\x00\x31\x43\x06", 8))); // six dots a module on 80 mm
        QVERIFY(bytes.endsWith(QByteArray("\x1d(k\x03\x00\x31\x51\x30\n\x1b"
                                          "a\x00\x1b"
                                          "d\x04\x1dVB\x00",
            19)));
        SheetTicket accented = cafeTicket();
        accented.title = QStringLiteral("Caf\u00e9 \u20ac");
        const QByteArray latin = escposReceipt(accented, ReceiptPaper::wide(), ReceiptContent());
        QVERIFY(latin.contains(QByteArray("Caf\xe9 ?\n")));
    }
};

QTEST_GUILESS_MAIN(TestReceipt)
#include "TestReceipt.moc"
