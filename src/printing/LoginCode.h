#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace marlet {

class Preferences;

// The text a ticket's QR code holds when the café set no login template: a phone or a hotspot
// page reads the user name and the password from it.
inline const QString DefaultLoginTemplate = QStringLiteral("{username} {password}");

// The login template the café set (LoginTemplate of section Option, under the product word), or
// empty when it set none.
QString loginTemplate(Preferences& preferences);

// The template with {username} and {password} replaced by the ticket's; an empty template counts
// as the default one.
QString loginText(const QString& loginTemplate, const QString& username, const QString& password);

// The modules of a QR code, row by row, true for dark; a square of width x width.
struct QrMatrix
{
    int width = 0;
    QList<bool> modules;

    bool dark(int x, int y) const { return modules.at(qsizetype(y) * width + x); }
};

// The QR code of a text in UTF-8 at error correction level M. Nothing when the text is too long
// for a QR code or the encoder fails.
std::optional<QrMatrix> encodeQr(const QString& text);

// An inline SVG picture of the code with its four-module quiet zone, `size` pixels square, for a
// web page. Empty when the text cannot be encoded.
QString qrSvg(const QString& text, int size);

} // namespace marlet
