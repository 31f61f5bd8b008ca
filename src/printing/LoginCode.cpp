#include "printing/LoginCode.h"

#include "store/PreferenceKeys.h"

#include <qrencode.h>

#include <memory>

namespace marlet {

namespace {

constexpr int QuietZone = 4;

} // namespace

QString loginTemplate(Preferences& preferences)
{
    return SessionPreferences(preferences, QString(ProductWord)).text(keys::LoginTemplate);
}

QString loginText(const QString& loginTemplate, const QString& username, const QString& password)
{
    QString text = loginTemplate.isEmpty() ? DefaultLoginTemplate : loginTemplate;
    // One pass, so that a user name holding "{password}" stays as it is.
    QString result;
    for (qsizetype i = 0; i < text.size();) {
        if (QStringView(text).mid(i).startsWith(u"{username}")) {
            result += username;
            i += 10;
        } else if (QStringView(text).mid(i).startsWith(u"{password}")) {
            result += password;
            i += 10;
        } else {
            result += text.at(i++);
        }
    }
    return result;
}

std::optional<QrMatrix> encodeQr(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const std::unique_ptr<QRcode, void (*)(QRcode*)> code(
        QRcode_encodeData(
            int(bytes.size()), reinterpret_cast<const unsigned char*>(bytes.constData()), 0, QR_ECLEVEL_M),
        QRcode_free);
    if (!code)
        return std::nullopt;
    QrMatrix matrix;
    matrix.width = code->width;
    matrix.modules.reserve(qsizetype(code->width) * code->width);
    for (int i = 0; i < code->width * code->width; ++i)
        matrix.modules.append((code->data[i] & 1) != 0);
    return matrix;
}

QString qrSvg(const QString& text, int size)
{
    const std::optional<QrMatrix> matrix = encodeQr(text);
    if (!matrix)
        return {};
    const int side = matrix->width + 2 * QuietZone;
    QString path;
    for (int y = 0; y < matrix->width; ++y) {
        for (int x = 0; x < matrix->width; ++x) {
            if (matrix->dark(x, y))
                path += QStringLiteral("M%1,%2h1v1h-1z").arg(x + QuietZone).arg(y + QuietZone);
        }
    }
    return QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' width='%1' height='%1' viewBox='0 0 %2 %2' "
                          "shape-rendering='crispEdges'><rect width='%2' height='%2' fill='#FFFFFF'/>"
                          "<path d='%3' fill='#000000'/></svg>")
        .arg(size)
        .arg(side)
        .arg(path);
}

} // namespace marlet
