#include "Secrets.h"

#include "HostOptions.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>
#include <termios.h>
#include <unistd.h>

namespace marlet::host {

namespace {

QString firstLine(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes).section(u'\n', 0, 0).remove(u'\r');
}

QString readLine(FILE* stream)
{
    QByteArray line;
    for (int c = std::fgetc(stream); c != EOF && c != '\n'; c = std::fgetc(stream))
        line += char(c);
    return firstLine(line);
}

} // namespace

bool readSecret(const HostOptions& options, SecretSource source, QString& secret, QString& error)
{
    const QString name = QLatin1String(source.option);
    if (const QString given = options.value(name); !given.isEmpty()) {
        secret = given;
        return true;
    }
    if (const QString path = options.value(name + QStringLiteral("-file")); !path.isEmpty()) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            error = QStringLiteral("--%1-file %2 cannot be read: %3").arg(name, path, file.errorString());
            return false;
        }
        secret = firstLine(file.readAll());
        return true;
    }
    if (options.flag(name + QStringLiteral("-stdin"))) {
        secret = readLine(stdin);
        return true;
    }
    secret = qEnvironmentVariable(source.environment);
    return true;
}

QString promptSecret(const QString& prompt)
{
    if (isatty(STDIN_FILENO) != 1)
        return {};
    termios saved {};
    tcgetattr(STDIN_FILENO, &saved);
    termios hidden = saved;
    hidden.c_lflag &= ~tcflag_t(ECHO);
    // The echo goes off before the prompt shows, so nothing typed after the prompt is echoed or lost.
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
    QTextStream err(stderr);
    err << prompt << Qt::flush;
    const QString secret = readLine(stdin);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &saved);
    err << Qt::endl;
    return secret;
}

} // namespace marlet::host
