#include "printing/LoginCode.h"

#include "store/Preferences.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

// What a ticket's QR code holds, and the code itself as a barcode reader sees it.
class TestLoginCode : public QObject
{
    Q_OBJECT

private slots:
    void testLoginText_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("expected");
        QTest::newRow("no template: name and password") << QString() << QStringLiteral("NVT0123456 98765");
        QTest::newRow("a hotspot's login address") << QStringLiteral("http://10.0.0.1/login?u={username}&p={password}")
                                                   << QStringLiteral("http://10.0.0.1/login?u=NVT0123456&p=98765");
        QTest::newRow("each placeholder as often as written")
            << QStringLiteral("{password}/{username}/{password}") << QStringLiteral("98765/NVT0123456/98765");
        QTest::newRow("other braces stay")
            << QStringLiteral("{user} {username}") << QStringLiteral("{user} NVT0123456");
    }

    void testLoginText()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, expected);
        QCOMPARE(loginText(pattern, QStringLiteral("NVT0123456"), QStringLiteral("98765")), expected);
    }

    void testAUserNameHoldingAPlaceholderIsNotReplacedAgain()
    {
        QCOMPARE(loginText(QStringLiteral("{username}:{password}"), QStringLiteral("{password}"), QStringLiteral("x")),
            QStringLiteral("{password}:x"));
    }

    void testTemplateIsAPreferenceUnderTheProductWord()
    {
        QTemporaryDir dir;
        Preferences preferences(dir.path());
        QCOMPARE(loginTemplate(preferences), QString());
        preferences.SaveSetting(QStringLiteral("Other Host"),
            QStringLiteral("Option"),
            QStringLiteral("LoginTemplate"),
            QStringLiteral("elsewhere"));
        QCOMPARE(loginTemplate(preferences), QString());
        preferences.SaveSetting(QStringLiteral("Norvantis"),
            QStringLiteral("Option"),
            QStringLiteral("LoginTemplate"),
            QStringLiteral("wifi:{username}"));
        QCOMPARE(loginTemplate(preferences), QStringLiteral("wifi:{username}"));
    }

    void testCodeSizeGrowsWithTheText()
    {
        const std::optional<QrMatrix> shortCode = encodeQr(QStringLiteral("NVT0123456 98765"));
        QVERIFY(shortCode);
        QCOMPARE(shortCode->width, 25); // version 2: 16 bytes are two more than version 1 holds at level M
        QCOMPARE(shortCode->modules.size(), 25 * 25);
        // The three finder patterns: a dark 7x7 frame in three corners.
        QVERIFY(shortCode->dark(0, 0) && shortCode->dark(6, 6) && shortCode->dark(24, 0) && shortCode->dark(0, 24));
        QVERIFY(!shortCode->dark(7, 7));
        const std::optional<QrMatrix> longer = encodeQr(QStringLiteral("http://10.0.0.1/login?u=NVT0123456&p=98765"));
        QVERIFY(longer);
        QVERIFY(longer->width > 25);
    }

    void testTooLongATextHasNoCode()
    {
        QVERIFY(!encodeQr(QString(4000, u'x')));
        QCOMPARE(qrSvg(QString(4000, u'x'), 96), QString());
    }

    // The SVG of a web page, drawn as a grey picture from its own path and read by zbarimg.
    void testSvgCodeIsReadByABarcodeReader()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("zbarimg")).isEmpty())
            QFAIL("zbarimg is missing: install the packages of scripts/packages.txt");
        const QString text = QStringLiteral("http://10.0.0.1/login?u=NVT0123456&p=98765");
        const QString svg = qrSvg(text, 96);
        static const QRegularExpression box(QStringLiteral("viewBox='0 0 (\\d+) (\\d+)'"));
        const int side = box.match(svg).captured(1).toInt();
        QVERIFY(side > 21);
        QVERIFY(svg.startsWith(QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' width='96' height='96' ")));
        constexpr int scale = 6;
        const int pixels = side * scale;
        QByteArray grey(qsizetype(pixels) * pixels, char(255));
        static const QRegularExpression module(QStringLiteral("M(\\d+),(\\d+)h1v1h-1z"));
        int dark = 0;
        for (auto match = module.globalMatch(svg); match.hasNext(); ++dark) {
            const QRegularExpressionMatch m = match.next();
            const int x = m.captured(1).toInt();
            const int y = m.captured(2).toInt();
            for (int dy = 0; dy < scale; ++dy) {
                for (int dx = 0; dx < scale; ++dx)
                    grey[qsizetype(y * scale + dy) * pixels + x * scale + dx] = char(0);
            }
        }
        QVERIFY(dark > 100);
        QTemporaryDir dir;
        QFile picture(dir.filePath(QStringLiteral("code.pgm")));
        QVERIFY(picture.open(QIODevice::WriteOnly));
        picture.write(QStringLiteral("P5\n%1 %1\n255\n").arg(pixels).toLatin1() + grey);
        picture.close();
        QProcess reader;
        reader.start(QStringLiteral("zbarimg"), {QStringLiteral("-q"), QStringLiteral("--raw"), picture.fileName()});
        QVERIFY(reader.waitForFinished(30000));
        QCOMPARE(QString::fromUtf8(reader.readAllStandardOutput()).trimmed(), text);
    }
};

QTEST_GUILESS_MAIN(TestLoginCode)
#include "TestLoginCode.moc"
