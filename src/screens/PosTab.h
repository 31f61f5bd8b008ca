#pragma once

#include "screens/OptionsTab.h"

#include <QString>

#include <memory>

namespace marlet {

class Options;
class SerialPort;

// The POS tab of the settings screen: which lines a point-of-sale ticket shows, the kind of POS,
// the port with its test, and the print speed. The tab reads its keys under the host's title
// (but POSType under the product word) and writes them all under the product word.
class PosTab : public OptionsTab
{
public:
    explicit PosTab(Options& screen);
    ~PosTab() override;

    void build(Control& panel) override;
    void load() override;
    void apply(Recordset& options) override;

    // The serial port a port name of the list tests: its last character when that is a digit, else
    // 1, so that LPT2 tests port 2.
    static int portNumber(const QString& listText);

private:
    void buildDisplay(Control& panel);
    void buildKind(Control& panel);
    void buildPort(Control& panel);

    void pickKind();
    void testPort();
    // One test on the open port; false when a step of it failed.
    bool askAndWrite(const QString& portText);

    Options& m_screen;
    // Left open after a test; the next test closes it first.
    std::unique_ptr<SerialPort> m_port;
};

// The SMS panel, which no tab shows: the account that sends the clients' messages, whether clients
// may send them, and their cost. Its flag is never set, so it is never loaded or saved.
class SmsPanel : public OptionsTab
{
public:
    explicit SmsPanel(Options& screen);

    void build(Control& panel) override;
    void load() override { }
    void apply(Recordset& options) override;

private:
    void checkAccount();

    Options& m_screen;
};

} // namespace marlet
