#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>

namespace marlet::test {

// A pair of pseudo-terminals joined by socat: what a program writes to the near end (a serial
// printer's port, as MARLET_PORT_COMn names it) is read at the far end, byte for byte.
class SerialLinePair
{
public:
    SerialLinePair()
    {
        m_socat.start(QStringLiteral("socat"),
            {QStringLiteral("pty,raw,echo=0,link=") + nearEnd(), QStringLiteral("pty,raw,echo=0,link=") + farEnd()});
        if (!m_socat.waitForStarted())
            return;
        QElapsedTimer waited;
        waited.start();
        while (!(QFile::exists(nearEnd()) && QFile::exists(farEnd())) && waited.elapsed() < 5000)
            QThread::msleep(10);
        m_far = ::open(QFile::encodeName(farEnd()).constData(), O_RDONLY | O_NOCTTY | O_NONBLOCK);
    }

    ~SerialLinePair()
    {
        if (m_far >= 0)
            ::close(m_far);
        m_socat.terminate();
        m_socat.waitForFinished(3000);
    }

    SerialLinePair(const SerialLinePair&) = delete;
    SerialLinePair& operator=(const SerialLinePair&) = delete;

    // False when socat is missing (scripts/packages.txt) or the ends did not appear.
    bool isValid() const { return m_far >= 0; }
    QString nearEnd() const { return m_dir.filePath(QStringLiteral("near")); }

    // What arrived at the far end: at least `expected` bytes unless 5 s pass first, and whatever
    // follows them within a tenth of a second, so that a surplus shows.
    QByteArray read(qsizetype expected)
    {
        QByteArray received;
        QElapsedTimer waited;
        waited.start();
        while (received.size() < expected && waited.elapsed() < 5000) {
            if (!readSome(received))
                QThread::msleep(5);
        }
        QThread::msleep(100);
        readSome(received);
        return received;
    }

private:
    QString farEnd() const { return m_dir.filePath(QStringLiteral("far")); }

    bool readSome(QByteArray& received)
    {
        char buffer[512];
        const ssize_t count = ::read(m_far, buffer, sizeof buffer);
        if (count <= 0)
            return false;
        received.append(buffer, count);
        return true;
    }

    QTemporaryDir m_dir;
    QProcess m_socat;
    int m_far = -1;
};

} // namespace marlet::test
