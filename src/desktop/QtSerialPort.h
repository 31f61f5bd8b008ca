#pragma once

#include "platform/Platform.h"

#include <QSerialPort>

namespace marlet {

// A serial line on a real port: 8 data bits, no parity, one stop bit, no flow control.
//
// The screens name ports as COM1, COM2 ... and LPT1 ...; each such name stands for a device that the
// environment variable MARLET_PORT_<NAME> gives (MARLET_PORT_COM1=/dev/ttyUSB0), and without it for
// /dev/ttyS<n-1> (COMn) or /dev/lp<n-1> (LPTn). Any other name is a device path or a system port name
// as it stands.
class QtSerialPort : public SerialPort
{
public:
    static QString devicePath(const QString& portName);

    bool open(const QString& portName, int baud) override;
    bool isOpen() const override;
    bool write(const QByteArray& data) override;
    void close() override;

private:
    QSerialPort m_port;
};

} // namespace marlet
