#include "members/MemberPicture.h"
#include "members/MemberRecord.h"
#include "session/General.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace marlet;

class TestMemberRecord : public QObject
{
    Q_OBJECT

private slots:
    void testCompleteRecordPasses();
    void testBlankSurnameSkipsEveryCheck();
    void testChecksInTheirOrder_data();
    void testChecksInTheirOrder();
    void testAgeByCalendarYearsAlone_data();
    void testAgeByCalendarYearsAlone();
    void testEmailPositions_data();
    void testEmailPositions();
    void testSpecifyOrderOnlyWhenEnabled();
    void testPictureFileName();
    void testPictureFolderBelowTheServerFolder();
    void testPictureNamesThatLeaveTheFolderAreRefused_data();
    void testPictureNamesThatLeaveTheFolderAreRefused();
    void testPictureWrittenAndRead();
    void testScannerProgramPath_data();
    void testScannerProgramPath();
};

namespace {

const QDate Today(2026, 11, 21);

MemberDetails complete()
{
    MemberDetails d;
    d.text[Surname] = QStringLiteral("Smith");
    d.text[Firstname] = QStringLiteral("Ada");
    d.text[Address] = QStringLiteral("12 Long Road");
    d.text[State] = QStringLiteral("Lagos");
    d.text[Telephone] = QStringLiteral("0801234567");
    d.text[Country] = QStringLiteral("Nigeria");
    d.text[Email] = QStringLiteral("ada@example.com");
    d.text[IdentificationNumber] = QStringLiteral("A12345");
    d.sex = Sex::Female;
    d.DateofBirth = QDate(1990, 5, 1);
    d.identificationIndex = 1;
    d.Identification_item = QStringLiteral("Passport No.");
    d.specifyOrderEnabled = false;
    return d;
}

QString messageOf(const MemberDetails& d)
{
    const std::optional<MemberProblem> problem = memberProblem(d, Today);
    return problem ? problem->message : QString();
}

} // namespace

void TestMemberRecord::testCompleteRecordPasses()
{
    QVERIFY(!memberProblem(complete(), Today));
}

void TestMemberRecord::testBlankSurnameSkipsEveryCheck()
{
    MemberDetails d;
    d.text[Surname] = QStringLiteral("   ");
    QVERIFY(!memberProblem(d, Today));
}

void TestMemberRecord::testChecksInTheirOrder_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("focus");
    QTest::newRow("one-letter surname") << int(Surname) << "S"
                                        << "Surname is too short or blank!" << int(Surname);
    QTest::newRow("one-letter first name") << int(Firstname) << "A"
                                           << "Firstname is too short or blank!" << int(Firstname);
    QTest::newRow("one-letter address") << int(Address) << "X"
                                        << "Address is too short or blank!" << int(Address);
    QTest::newRow("two-letter state") << int(State) << "LA"
                                      << "State is too short or blank!" << int(State);
    QTest::newRow("five-digit telephone") << int(Telephone) << "12345"
                                          << "Telephone number is too short or blank!" << int(Telephone);
    QTest::newRow("one-letter country") << int(Country) << "N"
                                        << "Country is too short or blank!" << int(Country);
    QTest::newRow("four-character email") << int(Email) << "a@b."
                                          << "Email Address is too short or blank!" << int(Email);
    QTest::newRow("four-character id") << int(IdentificationNumber) << "A123"
                                       << "Identication Item is too short or blank!" << int(IdentificationNumber);
}

void TestMemberRecord::testChecksInTheirOrder()
{
    QFETCH(int, field);
    QFETCH(QString, value);
    QFETCH(QString, message);
    QFETCH(int, focus);
    MemberDetails d = complete();
    d.text[field] = value;
    const std::optional<MemberProblem> problem = memberProblem(d, Today);
    QVERIFY(problem);
    QCOMPARE(problem->message, message);
    QCOMPARE(problem->focusControl, QStringLiteral("Text7"));
    QCOMPARE(problem->focusIndex, focus);
}

void TestMemberRecord::testAgeByCalendarYearsAlone_data()
{
    QTest::addColumn<QDate>("born");
    QTest::addColumn<bool>("passes");
    // 2026 less 2020 is 6: passes although the member is five years and a day old.
    QTest::newRow("31 Dec 2020") << QDate(2020, 12, 31) << true;
    QTest::newRow("1 Jan 2021") << QDate(2021, 1, 1) << false;
    QTest::newRow("today five years ago") << QDate(2021, 11, 21) << false;
}

void TestMemberRecord::testAgeByCalendarYearsAlone()
{
    QFETCH(QDate, born);
    QFETCH(bool, passes);
    MemberDetails d = complete();
    d.DateofBirth = born;
    QCOMPARE(messageOf(d), passes ? QString() : QStringLiteral("Member must be older than 5 years!"));
}

void TestMemberRecord::testEmailPositions_data()
{
    QTest::addColumn<QString>("email");
    QTest::addColumn<bool>("passes");
    QTest::newRow("well formed") << "ada@example.com" << true;
    QTest::newRow("no @") << "adaexample.com" << false;
    QTest::newRow("@ first") << "@adaexample.com" << false;
    QTest::newRow("point at position 2") << "a.da@example.com" << false;
    QTest::newRow("point at position 3, none after @") << "ad.a@examplecom" << true;
    QTest::newRow("no point") << "ada@examplecom" << false;
}

void TestMemberRecord::testEmailPositions()
{
    QFETCH(QString, email);
    QFETCH(bool, passes);
    MemberDetails d = complete();
    d.text[Email] = email;
    QCOMPARE(messageOf(d), passes ? QString() : QStringLiteral("Email Address is not correct!"));
}

void TestMemberRecord::testSpecifyOrderOnlyWhenEnabled()
{
    MemberDetails d = complete();
    d.text[SpecifyOrder] = QStringLiteral("abc");
    QCOMPARE(messageOf(d), QString());
    d.specifyOrderEnabled = true;
    QCOMPARE(messageOf(d), QStringLiteral("Specify Identication item's name is too short or blank!"));
    d.identificationIndex = 0;
    QCOMPARE(messageOf(d), QStringLiteral("Identication Item is not selected!"));
    d.sex = Sex::Neither;
    QCOMPARE(messageOf(d), QStringLiteral("Gender (Male or Female) must be selected!"));
}

void TestMemberRecord::testPictureFileName()
{
    QCOMPARE(
        pictureFileName(QStringLiteral("240315090703"), QStringLiteral("smith")), QStringLiteral("240315090703SM"));
    QCOMPARE(pictureFileName(QStringLiteral("240315090703"), QString()), QStringLiteral("240315090703"));
}

void TestMemberRecord::testPictureFolderBelowTheServerFolder()
{
    General general;
    general.ServerPath = QStringLiteral("C:\\Norvantis\\Server.exe");
    // Not a path of this system: no folder, so nothing is read or written.
    QCOMPARE(pictureFolder(general), QString());
    QVERIFY(!ensurePictureFolder(general));
    QTemporaryDir dir;
    general.ServerPath = dir.filePath(QStringLiteral("server/Server.exe"));
    QCOMPARE(pictureFolder(general), dir.filePath(QStringLiteral("server/pic")));
    QVERIFY(ensurePictureFolder(general));
    QVERIFY(QDir(dir.filePath(QStringLiteral("server/pic"))).exists());
}

void TestMemberRecord::testPictureNamesThatLeaveTheFolderAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("slash") << "../evil";
    QTest::newRow("backslash") << "a\\b";
    QTest::newRow("dots") << "..";
    QTest::newRow("quote") << "O'BR";
    QTest::newRow("absolute") << "/etc/passwd";
    QTest::newRow("empty") << "";
}

void TestMemberRecord::testPictureNamesThatLeaveTheFolderAreRefused()
{
    QFETCH(QString, name);
    QTemporaryDir dir;
    General general;
    general.ServerPath = dir.filePath(QStringLiteral("Server.exe"));
    QCOMPARE(picturePath(general, name), QString());
    QVERIFY(!writePicture(general, name, QByteArrayLiteral("x")));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::NoDotAndDotDot), QStringList());
}

void TestMemberRecord::testPictureWrittenAndRead()
{
    QTemporaryDir dir;
    General general;
    general.ServerPath = dir.filePath(QStringLiteral("Server.exe"));
    QVERIFY(ensurePictureFolder(general));
    QVERIFY(writePicture(general, QStringLiteral("261121100000SM"), QByteArrayLiteral("PNGDATA")));
    QCOMPARE(readPicture(general, QStringLiteral("261121100000SM")), QByteArrayLiteral("PNGDATA"));
    QCOMPARE(readPicture(general, QStringLiteral("missing")), QByteArray());
}

void TestMemberRecord::testScannerProgramPath_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("program");
    QTest::newRow("windows folder") << "C:\\Norvantis"
                                    << "C:\\Norvantis\\pelcap.exe";
    QTest::newRow("windows folder with separator") << "C:\\Norvantis\\"
                                                   << "C:\\Norvantis\\pelcap.exe";
    QTest::newRow("posix folder") << "/opt/norvantis"
                                  << "/opt/norvantis/pelcap.exe";
}

void TestMemberRecord::testScannerProgramPath()
{
    QFETCH(QString, folder);
    QFETCH(QString, program);
    QCOMPARE(MemberPicture::scannerProgram(folder), program);
}

QTEST_GUILESS_MAIN(TestMemberRecord)
#include "TestMemberRecord.moc"
