#pragma once

#include "platform/Platform.h"

#include <QSerialPort>

namespace marlet {

// A serial line on a real port: 8 data bits, no parity, one stop bit, no flow control.
class QtSerialPort : public SerialPort
{
public:
    bool open(const QString& portName, int baud) override;
    bool isOpen() const override;
    bool write(const QByteArray& data) override;
    void close() override;

private:
    QSerialPort m_port;
};

} // namespace marlet
