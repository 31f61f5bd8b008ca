#include "issuing/Expiry.h"
#include "store/PreferenceKeys.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace marlet;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(marlet::ExpiryKind)
Q_DECLARE_METATYPE(marlet::TicketPath)

namespace {

const QDate today(2024, 3, 15);

} // namespace

class TestExpiry : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void testListPositions_data();
    void testListPositions();
    void testExpiryColumns_data();
    void testExpiryColumns();
    void testListText_data();
    void testListText();
    void testConfirmationText_data();
    void testConfirmationText();
    void testDaysField_data();
    void testDaysField();

private:
    SessionPreferences prefs() const { return SessionPreferences(*m_store, u"Cyber Hut"_s); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<Preferences> m_store;
};

void TestExpiry::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_store = std::make_unique<Preferences>(m_dir->path());
}

void TestExpiry::testListPositions_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<ExpiryKind>("kind");
    QTest::newRow("first entry is a fixed date") << 0 << ExpiryKind::Fixed;
    QTest::newRow("second entry is flexible") << 1 << ExpiryKind::Flexible;
    QTest::newRow("third entry never expires") << 2 << ExpiryKind::Never;
    QTest::newRow("no selection never expires") << -1 << ExpiryKind::Never;
}

void TestExpiry::testListPositions()
{
    QFETCH(int, index);
    QFETCH(ExpiryKind, kind);
    QCOMPARE(expiryKind(index), kind);
}

void TestExpiry::testExpiryColumns_data()
{
    QTest::addColumn<ExpiryKind>("kind");
    QTest::addColumn<double>("fieldDays");
    QTest::addColumn<TicketPath>("path");
    QTest::addColumn<bool>("writesExpire");
    QTest::addColumn<QVariant>("expire");
    QTest::addColumn<double>("days");

    const QVariant null;
    QTest::newRow("fixed: today plus the field's days, across February of a leap year")
        << ExpiryKind::Fixed << 20.0 << TicketPath::Batch << true << QVariant(QDateTime(QDate(2024, 4, 4), QTime(0, 0)))
        << 0.0;
    QTest::newRow("fixed on a custom ticket") << ExpiryKind::Fixed << 365.0 << TicketPath::Custom << true
                                              << QVariant(QDateTime(QDate(2025, 3, 15), QTime(0, 0))) << 0.0;
    QTest::newRow("fixed with half a day lands at noon")
        << ExpiryKind::Fixed << 2.5 << TicketPath::Custom << true
        << QVariant(QDateTime(QDate(2024, 3, 17), QTime(12, 0))) << 0.0;
    QTest::newRow("fixed with 0 days is today")
        << ExpiryKind::Fixed << 0.0 << TicketPath::Membership << true << QVariant(QDateTime(today, QTime(0, 0))) << 0.0;
    QTest::newRow("flexible batch leaves Expire unwritten")
        << ExpiryKind::Flexible << 5.0 << TicketPath::Batch << false << null << 5.0;
    QTest::newRow("flexible custom writes a null Expire")
        << ExpiryKind::Flexible << 5.0 << TicketPath::Custom << true << null << 5.0;
    QTest::newRow("flexible membership writes a null Expire")
        << ExpiryKind::Flexible << 30.0 << TicketPath::Membership << true << null << 30.0;
    QTest::newRow("flexible with field 0 stores 1 day")
        << ExpiryKind::Flexible << 0.0 << TicketPath::Custom << true << null << 1.0;
    QTest::newRow("flexible batch with field 0 stores 1 day")
        << ExpiryKind::Flexible << 0.0 << TicketPath::Batch << false << null << 1.0;
    QTest::newRow("never expire leaves Days 0 and Expire null")
        << ExpiryKind::Never << 20.0 << TicketPath::Batch << true << null << 0.0;
    QTest::newRow("never expire on a member ticket")
        << ExpiryKind::Never << 20.0 << TicketPath::Membership << true << null << 0.0;
}

void TestExpiry::testExpiryColumns()
{
    QFETCH(ExpiryKind, kind);
    QFETCH(double, fieldDays);
    QFETCH(TicketPath, path);
    QFETCH(bool, writesExpire);
    QFETCH(QVariant, expire);
    QFETCH(double, days);
    const ExpiryColumns columns = expiryColumns(kind, fieldDays, today, path);
    QCOMPARE(columns.writesExpire, writesExpire);
    QCOMPARE(columns.Expire.isNull(), expire.isNull());
    if (!expire.isNull())
        QCOMPARE(columns.Expire.toDateTime(), expire.toDateTime());
    QCOMPARE(columns.Days, days);
}

void TestExpiry::testListText_data()
{
    QTest::addColumn<QVariant>("days");
    QTest::addColumn<QVariant>("expire");
    QTest::addColumn<QString>("expected");
    const QVariant jan5(QDateTime(QDate(2009, 1, 5), QTime(0, 0)));
    QTest::newRow("Days 0 shows the date") << QVariant(qint64(0)) << jan5 << u"05/Jan/09"_s;
    QTest::newRow("Days 0 as a double shows the date") << QVariant(0.0) << jan5 << u"05/Jan/09"_s;
    QTest::newRow("Days 3 shows days without a blank") << QVariant(qint64(3)) << QVariant() << u"3day(s)"_s;
    QTest::newRow("Days beside a date still shows days") << QVariant(qint64(3)) << jan5 << u"3day(s)"_s;
    QTest::newRow("a fraction of days") << QVariant(2.5) << QVariant() << u"2.5day(s)"_s;
    QTest::newRow("Days 0 without a date shows nothing") << QVariant(qint64(0)) << QVariant() << QString();
    QTest::newRow("a null Days shows the unit alone") << QVariant() << jan5 << u"day(s)"_s;
}

void TestExpiry::testListText()
{
    QFETCH(QVariant, days);
    QFETCH(QVariant, expire);
    QFETCH(QString, expected);
    QCOMPARE(expiryListText(days, expire), expected);
}

void TestExpiry::testConfirmationText_data()
{
    QTest::addColumn<QString>("expirePreference"); // null: absent
    QTest::addColumn<ExpiryKind>("kind");
    QTest::addColumn<QString>("daysField");
    QTest::addColumn<QString>("expected");
    QTest::newRow("never expire") << QString() << ExpiryKind::Never << u"20"_s << u"NONE"_s;
    QTest::newRow("fixed uses the preference's 20 days, not the field")
        << QString() << ExpiryKind::Fixed << u"3"_s << u"04, Apr 2024"_s;
    QTest::newRow("fixed with a preference of 30") << u"30"_s << ExpiryKind::Fixed << u"3"_s << u"14, Apr 2024"_s;
    QTest::newRow("flexible shows the field") << u"30"_s << ExpiryKind::Flexible << u"7"_s << u"7 days"_s;
}

void TestExpiry::testConfirmationText()
{
    QFETCH(QString, expirePreference);
    QFETCH(ExpiryKind, kind);
    QFETCH(QString, daysField);
    QFETCH(QString, expected);
    SessionPreferences session = prefs();
    if (!expirePreference.isNull())
        session.save(keys::Expire, expirePreference);
    QCOMPARE(expiryConfirmationText(session, kind, daysField, today), expected);
}

void TestExpiry::testDaysField_data()
{
    QTest::addColumn<int>("listIndex");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text"); // the field afterwards
    QTest::addColumn<QString>("message"); // empty: none
    QTest::addColumn<QString>("expire"); // the Expire preference afterwards
    QTest::addColumn<QString>("exLog"); // the ExLog preference afterwards

    const QString limit = u"Value should not be greater than 365 days!"_s;
    const QString notNumeric = u"Non numeric entry!"_s;
    QTest::newRow("365 fixed days are kept under Expire")
        << 0 << u"365"_s << u"365"_s << QString() << u"365"_s << u"5"_s;
    QTest::newRow("12 flexible days are kept under ExLog")
        << 1 << u"12"_s << u"12"_s << QString() << u"20"_s << u"12"_s;
    QTest::newRow("the third entry also saves under ExLog") << 2 << u"9"_s << u"9"_s << QString() << u"20"_s << u"9"_s;
    QTest::newRow("366 days are refused") << 0 << u"366"_s << u"20"_s << limit << u"20"_s << u"5"_s;
    QTest::newRow("365.5 days are refused") << 1 << u"365.5"_s << u"20"_s << limit << u"20"_s << u"5"_s;
    QTest::newRow("letters are refused") << 0 << u"abc"_s << u"20"_s << notNumeric << u"20"_s << u"5"_s;
    QTest::newRow("an empty field is refused") << 1 << u""_s << u"20"_s << notNumeric << u"20"_s << u"5"_s;
    QTest::newRow("a large number with letters is not numeric")
        << 0 << u"400d"_s << u"20"_s << notNumeric << u"20"_s << u"5"_s;
}

void TestExpiry::testDaysField()
{
    QFETCH(int, listIndex);
    QFETCH(QString, typed);
    QFETCH(QString, text);
    QFETCH(QString, message);
    QFETCH(QString, expire);
    QFETCH(QString, exLog);
    SessionPreferences session = prefs();
    const DaysFieldResult result = leaveDaysField(session, listIndex, typed);
    QCOMPARE(result.text, text);
    QCOMPARE(result.message.value_or(QString()), message);
    QCOMPARE(session.text(keys::Expire), expire);
    QCOMPARE(session.text(keys::ExLog), exLog);
    // Both keys live in section Option under the host's title.
    QCOMPARE(m_store->GetSetting(u"Cyber Hut"_s, u"Option"_s, u"ExLog"_s, u"absent"_s),
        exLog == u"5"_s ? u"absent"_s : exLog);
}

QTEST_GUILESS_MAIN(TestExpiry)
#include "TestExpiry.moc"
