#pragma once

#include <QString>

#include <array>

// The control names of the member record screen. The member page of the generate screen, on which
// a new member is registered, holds the same fields under the same names, so that the rules of a
// member record read either of them.
namespace marlet::memberinfo {

// The screen's own name, by which the front end finds its view.
inline const QString FormName = QStringLiteral("Memberinfo");

// The text fields, one control array addressed by index (see MemberField).
inline const QString Text7 = QStringLiteral("Text7");
// The identification item list, the date of birth, the two gender options and the hint.
inline const QString Combo7 = QStringLiteral("Combo7");
inline const QString DateofBirth = QStringLiteral("DateofBirth");
inline const QString Option6 = QStringLiteral("Option6");
inline const QString Label8 = QStringLiteral("Label8");
// "Skip Membership Information" on the member page.
inline const QString Check16 = QStringLiteral("Check16");
// Two hidden captions: the user name the row is looked up under (0) and the password to write (1).
inline const QString Label44 = QStringLiteral("Label44");

// The picture and its commands: "Add Picture" shows the method frame in place of the picture's.
inline const QString mPicture = QStringLiteral("mPicture");
inline const QString Frame26 = QStringLiteral("Frame26");
inline const QString Frame27 = QStringLiteral("Frame27");
inline const QString Command13 = QStringLiteral("Command13");
inline const QString Command14 = QStringLiteral("Command14");
inline const QString Command15 = QStringLiteral("Command15");
inline const QString Command16 = QStringLiteral("Command16");
inline const QString Command17 = QStringLiteral("Command17");
inline const QString Command18 = QStringLiteral("Command18");

// The record's panels: personal data, ticket information, the member's settings ("Member's Settings").
inline const QString Frame22 = QStringLiteral("Frame22");
inline const QString Frame28 = QStringLiteral("Frame28");
inline const QString Frame21 = QStringLiteral("Frame21");
// "Add Expiration day(s):", "This Day of the Week:", "Use ticket within Time Period", the pickers.
inline const QString Combo22 = QStringLiteral("Combo22");
inline const QString Combo21 = QStringLiteral("Combo21");
inline const QString Check18 = QStringLiteral("Check18");
inline const QString DT7 = QStringLiteral("DT7");
inline const QString DT8 = QStringLiteral("DT8");

// "<< Back", "Set Ticket Option ...", "Save", "Print" and the four member commands.
inline const QString Command25 = QStringLiteral("Command25");
inline const QString Command26 = QStringLiteral("Command26");
inline const QString Command27 = QStringLiteral("Command27");
inline const QString Command28 = QStringLiteral("Command28");
inline const QString Command29 = QStringLiteral("Command29");
inline const QString Command30 = QStringLiteral("Command30");
inline const QString Command31 = QStringLiteral("Command31");
inline const QString Command32 = QStringLiteral("Command32");

// The entries of the identification item list, "[Select ID Type]" first.
inline const std::array<QString, 4> IdentificationItems {QStringLiteral("[Select ID Type]"),
    QStringLiteral("Passport No."),
    QStringLiteral("National ID Number"),
    QStringLiteral("Other!")};

} // namespace marlet::memberinfo
