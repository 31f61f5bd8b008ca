#pragma once

#include <QString>

#include <optional>

// The number rules of the form language that the screens were written in. The screens test, read
// and print numbers through these rules, and several messages and stored values depend on their
// quirks (numeric prefixes, banker's rounding, 16-bit overflow), so they are kept exactly here.
//
// Run-time failures of the form language (overflow, type mismatch) come back as an empty optional:
// the caller decides whether the step is skipped, as it is in continue-on-error mode.
namespace marlet::values {

// The numeric test. After leading and trailing blanks and tabs are set aside the text must be one of:
//  - an optional sign "+" or "-" directly followed by digits with at most one decimal point, where at
//    least one digit stands before or after the point (".5" and "5." are numeric, "." is not), and
//    then optionally an exponent: "e", "E", "d" or "D", an optional sign and at least one digit;
//  - "&H" and hexadecimal digits, or "&O" and octal digits (either case, no sign), at most 32 bits.
// Blanks inside ("1 2"), thousands separators, currency signs and anything else make it non-numeric;
// so does an empty or blank text and a number beyond the range of a double ("1e400").
bool isNumeric(const QString& text);

// The numeric prefix of a text, never failing. Blanks, tabs and line feeds are skipped wherever they
// stand (" 1 2 3" is 123); then an optional sign, digits, one decimal point and an exponent are read
// up to the first other character ("12abc" is 12, "5.7min" is 5.7, "abc" and "" are 0). "&H" and
// "&O" read hexadecimal and octal digits; a value up to &HFFFF is a signed 16-bit value and one up to
// &HFFFFFFFF a signed 32-bit one, so "&HFFFF" is -1 and "&H10000" is 65536. A value that the
// form language could not hold gives an infinite value, which every integer conversion refuses.
double leadingNumber(const QString& text);

// Conversions to 16- and 32-bit integers: round half to even (2.5 -> 2, 3.5 -> 4, -2.5 -> -2), then an
// overflow outside the range (32767.5 rounds to 32768 and overflows; -32768.5 rounds to -32768).
std::optional<qint16> toInt16(double value);
std::optional<qint32> toInt32(double value);
// The text overloads first require isNumeric: any other text is a type mismatch.
std::optional<qint16> toInt16(const QString& text);
std::optional<qint32> toInt32(const QString& text);

// Single precision; beyond its range the result is infinite.
float toSingle(double value);

double floorToWhole(double value); // largest whole number not above the value: -2.5 gives -3
double truncateToWhole(double value); // whole part, towards zero: -2.5 gives -2

// Round to `digits` decimal places, half to even, on the value as it reads with 15 significant digits
// (so roundHalfEven(2.675, 2) = 2.68 although the binary value lies just below the tie). A negative
// digit count counts as 0.
double roundHalfEven(double value, int digits = 0);

// Significant digits with which the form language prints and rounds a double and a single.
constexpr int DoubleDigits = 15;
constexpr int SingleDigits = 7;

// Number to text as the form language prints it: up to 15 significant digits for a double and 7 for a
// single, no trailing zeros and no trailing point, a leading "0" before the point of a fraction
// ("0.5", "-0.25"). Fixed notation is used while the digits fit into 15 (7) positions on either side
// of the point; otherwise the exponent form with a sign and at least two digits: "1E+16",
// "1.42857142857143E-02". Negative zero prints as "0". Infinite and undefined values cannot occur in
// the form language and print as "inf", "-inf" and "nan".
QString numberText(double value);
QString singleText(float value);
// The printing function: as numberText with a blank in place of the sign for values that are not
// negative, and without the "0" before the point of a fraction: 5 gives " 5", 0.5 gives " .5" and
// -0.25 gives "-.25".
QString signSpacedText(double value);

// Rounding of decimal digits that both the rounding function and the number formats share.
enum class Tie { ToEven, AwayFromZero };
struct DecimalDigits
{
    QString whole; // integer digits without leading zeros, empty for a value below 1
    QString fraction; // exactly the requested number of digits
};
// |value| with `decimals` fraction digits, rounded as the value reads with `significant` digits.
// Not finite values give empty parts.
DecimalDigits roundedDigits(double value, int decimals, Tie tie, int significant = DoubleDigits);

} // namespace marlet::values
