#include "desktop/QtSerialPort.h"

#include <QRegularExpression>

namespace marlet {

namespace {

// How long a write may take to leave the port before it counts as failed.
constexpr int writeTimeoutMs = 3000;

} // namespace

QString QtSerialPort::devicePath(const QString& portName)
{
    static const QRegularExpression screenName(
        QStringLiteral("^(COM|LPT)([1-9][0-9]*)$"), QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = screenName.match(portName);
    if (!match.hasMatch())
        return portName;
    const QString name = portName.toUpper();
    const QString set = qEnvironmentVariable(qPrintable(QStringLiteral("MARLET_PORT_") + name));
    if (!set.isEmpty())
        return set;
    const int number = match.captured(2).toInt();
    return (name.startsWith(QLatin1String("COM")) ? QStringLiteral("/dev/ttyS") : QStringLiteral("/dev/lp"))
        + QString::number(number - 1);
}

bool QtSerialPort::open(const QString& portName, int baud)
{
    if (m_port.isOpen())
        m_port.close();
    m_port.setPortName(devicePath(portName));
    if (!m_port.open(QIODevice::ReadWrite))
        return false;
    const bool configured = m_port.setBaudRate(baud) && m_port.setDataBits(QSerialPort::Data8)
        && m_port.setParity(QSerialPort::NoParity) && m_port.setStopBits(QSerialPort::OneStop)
        && m_port.setFlowControl(QSerialPort::NoFlowControl);
    if (!configured)
        m_port.close();
    return configured;
}

bool QtSerialPort::isOpen() const
{
    return m_port.isOpen();
}

bool QtSerialPort::write(const QByteArray& data)
{
    if (!m_port.isOpen() || m_port.write(data) != data.size())
        return false;
    while (m_port.bytesToWrite() > 0) {
        if (!m_port.waitForBytesWritten(writeTimeoutMs))
            return false;
    }
    return true;
}

void QtSerialPort::close()
{
    m_port.close();
}

} // namespace marlet
