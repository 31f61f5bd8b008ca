#include "issuing/Quota.h"
#include "script/ScriptedPlatform.h"
#include "store/PreferenceKeys.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace marlet;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(marlet::TicketPath)
Q_DECLARE_METATYPE(marlet::QuotaAnswer::Outcome)

namespace {

const QString notCreated = u"Custom ticket not Created!"_s;
const QString outOfRange = u"Quota too small or large!"_s;

} // namespace

class TestQuota : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testQuotasAreOn_data();
    void testQuotasAreOn();
    void testPromptPerPath_data();
    void testPromptPerPath();
    void testAnswers_data();
    void testAnswers();
    void testAskingShowsThePromptAndTheMessage_data();
    void testAskingShowsThePromptAndTheMessage();
    void testConfirmationText_data();
    void testConfirmationText();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Preferences> m_store;
};

void TestQuota::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_store = std::make_unique<Preferences>(m_dir->path());
}

void TestQuota::testQuotasAreOn_data()
{
    QTest::addColumn<QString>("download"); // null: absent
    QTest::addColumn<QString>("downType"); // null: absent
    QTest::addColumn<bool>("on");
    QTest::newRow("a fresh machine has no quotas") << QString() << QString() << false;
    QTest::newRow("Download True with the default type 2") << u"True"_s << QString() << true;
    QTest::newRow("Download True and type 2") << u"True"_s << u"2"_s << true;
    QTest::newRow("Download as a number flag") << u"-1"_s << u"2"_s << true;
    QTest::newRow("type 1 has no quotas") << u"True"_s << u"1"_s << false;
    QTest::newRow("type 2.0 is not the text 2") << u"True"_s << u"2.0"_s << false;
    QTest::newRow("Download False") << u"False"_s << u"2"_s << false;
    QTest::newRow("Download 0") << u"0"_s << u"2"_s << false;
}

void TestQuota::testQuotasAreOn()
{
    QFETCH(QString, download);
    QFETCH(QString, downType);
    QFETCH(bool, on);
    SessionPreferences session(*m_store, u"Cyber Hut"_s);
    if (!download.isNull())
        session.save(keys::Download, download);
    if (!downType.isNull())
        session.save(keys::DownType, downType);
    QCOMPARE(quotasOn(session), on);
}

void TestQuota::testPromptPerPath_data()
{
    QTest::addColumn<TicketPath>("path");
    QTest::addColumn<QString>("prompt");
    QTest::newRow("batch") << TicketPath::Batch
                           << u"Enter the Quota (in MB) for this Ticket Group (Enter -9999 for Unlimited)?"_s;
    QTest::newRow("custom")
        << TicketPath::Custom
        << u"Enter the Quota (in MB) for this Ticket Group (Enter -9999 for unlimited data usage)?"_s;
    QTest::newRow("first member step") << TicketPath::Membership << u"Enter the Quota (in MB) for this Ticket Group?"_s;
    QTest::newRow("finishing member step")
        << TicketPath::MembershipFinish << u"Enter the Quota (in MB) for this Ticket Group?"_s;
}

void TestQuota::testPromptPerPath()
{
    QFETCH(TicketPath, path);
    QFETCH(QString, prompt);
    QCOMPARE(quotaPromptText(path), prompt);
}

void TestQuota::testAnswers_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<TicketPath>("path");
    QTest::addColumn<QuotaAnswer::Outcome>("outcome");
    QTest::addColumn<int>("quota");
    QTest::addColumn<QString>("message");

    using O = QuotaAnswer::Outcome;
    QTest::newRow("batch: 0 ends without a message") << u"0"_s << TicketPath::Batch << O::Ended << 0 << QString();
    QTest::newRow("batch: nothing ends without a message") << u""_s << TicketPath::Batch << O::Ended << 0 << QString();
    QTest::newRow("batch: -1 is refused") << u"-1"_s << TicketPath::Batch << O::Refused << 0 << outOfRange;
    QTest::newRow("batch: -9999 passes") << u"-9999"_s << TicketPath::Batch << O::Accepted << -9999 << QString();
    QTest::newRow("batch: 1 passes") << u"1"_s << TicketPath::Batch << O::Accepted << 1 << QString();
    QTest::newRow("batch: 1000000 passes") << u"1000000"_s << TicketPath::Batch << O::Accepted << 1000000 << QString();
    QTest::newRow("batch: 1000001 is refused") << u"1000001"_s << TicketPath::Batch << O::Refused << 0 << outOfRange;
    QTest::newRow("batch: -9998 is refused") << u"-9998"_s << TicketPath::Batch << O::Refused << 0 << outOfRange;
    QTest::newRow("batch: letters read as 0") << u"lots"_s << TicketPath::Batch << O::Ended << 0 << QString();
    QTest::newRow("batch: the numeric prefix counts")
        << u"250MB"_s << TicketPath::Batch << O::Accepted << 250 << QString();
    QTest::newRow("custom: 0 ends with a message") << u"0"_s << TicketPath::Custom << O::Ended << 0 << notCreated;
    QTest::newRow("custom: nothing ends with a message") << u""_s << TicketPath::Custom << O::Ended << 0 << notCreated;
    QTest::newRow("custom: -9999 passes") << u"-9999"_s << TicketPath::Custom << O::Accepted << -9999 << QString();
    QTest::newRow("custom: 2000000 is refused") << u"2000000"_s << TicketPath::Custom << O::Refused << 0 << outOfRange;
    QTest::newRow("membership: 0 ends with the custom message")
        << u"0"_s << TicketPath::Membership << O::Ended << 0 << notCreated;
    QTest::newRow("membership: -9999 is refused")
        << u"-9999"_s << TicketPath::Membership << O::Refused << 0 << outOfRange;
    QTest::newRow("membership: 100 passes") << u"100"_s << TicketPath::Membership << O::Accepted << 100 << QString();
    QTest::newRow("finishing membership: -9999 is refused")
        << u"-9999"_s << TicketPath::MembershipFinish << O::Refused << 0 << outOfRange;
}

void TestQuota::testAnswers()
{
    QFETCH(QString, answer);
    QFETCH(TicketPath, path);
    QFETCH(QuotaAnswer::Outcome, outcome);
    QFETCH(int, quota);
    QFETCH(QString, message);
    const QuotaAnswer result = quotaAnswer(answer, path);
    QCOMPARE(result.outcome, outcome);
    QCOMPARE(result.quota, quota);
    QCOMPARE(result.message, message);
}

void TestQuota::testAskingShowsThePromptAndTheMessage_data()
{
    QTest::addColumn<TicketPath>("path");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("message"); // empty: none shown
    QTest::addColumn<int>("quota"); // 0: the operation ends
    QTest::newRow("batch answered with 500") << TicketPath::Batch << u"500"_s << QString() << 500;
    QTest::newRow("batch cancelled ends silently") << TicketPath::Batch << u""_s << QString() << 0;
    QTest::newRow("batch answered with -1") << TicketPath::Batch << u"-1"_s << outOfRange << 0;
    QTest::newRow("custom answered with 0") << TicketPath::Custom << u"0"_s << notCreated << 0;
    QTest::newRow("membership answered with -9999") << TicketPath::Membership << u"-9999"_s << outOfRange << 0;
}

void TestQuota::testAskingShowsThePromptAndTheMessage()
{
    QFETCH(TicketPath, path);
    QFETCH(QString, answer);
    QFETCH(QString, message);
    QFETCH(int, quota);
    ScriptedPlatform platform;
    platform.expectInput({answer, quotaPromptText(path), u"Norvantis"_s, u"100"_s, {}});
    if (!message.isEmpty())
        platform.expectMessage(message, MsgStyle::Warning);
    const std::optional<qint32> result = askQuota(platform, path);
    platform.finish();
    QVERIFY2(platform.failures().isEmpty(), qPrintable(platform.failures().join(u'\n')));
    QCOMPARE(result.value_or(0), quota);
    QCOMPARE(int(platform.messages().size()), message.isEmpty() ? 0 : 1);
}

void TestQuota::testConfirmationText_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<int>("quota");
    QTest::addColumn<QString>("expected");
    QTest::newRow("quotas off") << false << -9999 << QString();
    QTest::newRow("unlimited") << true << -9999 << u" with Quota of Unlimited Data Usage"_s;
    QTest::newRow("a number of megabytes") << true << 250 << u" with Quota of 250MB"_s;
}

void TestQuota::testConfirmationText()
{
    QFETCH(bool, on);
    QFETCH(int, quota);
    QFETCH(QString, expected);
    QCOMPARE(quotaConfirmationText(on, quota), expected);
}

QTEST_GUILESS_MAIN(TestQuota)
#include "TestQuota.moc"
