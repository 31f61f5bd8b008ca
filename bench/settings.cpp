// The settings screen: opening it as the host does (the General tab loads from the preference
// store), and "&Apply" after one change (the General tab's keys and the two columns of the Options
// row). The plain program opens the database as the host does, and does the same reads and writes
// with Qt's own settings file, each value written to disk as it is set, and the row's update with
// SQLite.
//
//   bench_settings [--rows N]     N tickets stored, 100,000 unless given; the screen reads none of
//                                 them, they only make the database the usual size

#include "support/BenchSupport.h"

#include "component/TimerDll.h"
#include "platform/Control.h"
#include "platform/Form.h"
#include "platform/Operator.h"
#include "script/ScriptedPlatform.h"
#include "store/Preferences.h"

#include <QCoreApplication>
#include <QSettings>

#include <sqlite3.h>

#include <memory>
#include <vector>

using namespace marlet;
using namespace marlet::bench;

namespace {

constexpr int Openings = 50;
// The openings are timed three times, Marlet's and the plain program's in turns, and the fastest of
// each counts: the first run also loads Qt's SQL driver, and a run of 20 ms is easily stretched by a
// neighbour on the machine.
constexpr int OpeningRuns = 3;
constexpr int Applies = 50;
// What the operator feels as instant.
constexpr double InstantMilliseconds = 100;

// The General tab's keys in section "Option", with the values a café has set.
const std::vector<std::pair<const char*, const char*>> GeneralKeys = {
    {"STR", "CAF"},
    {"Currency", "USD"},
    {"SetTime", "1"},
    {"ShutDownClients", "0"},
    {"CheckConnection", "1"},
    {"SameIP", "1"},
    {"BindType", "AUTOMATIC"},
    {"CUSTOMBIND", "192.168.0.10"},
    {"PassGenType", "3"},
    {"ServerUse", "1"},
    {"ServerPort", "1006"},
    {"LoadStart", "False"},
    {"FrontDesk", "1"},
    {"SiteDate", "1"},
    {"LogLimit", "1"},
    {"VLogLimit", "20"},
    {"SimComp", "5"},
};

void storeGeneralKeys(const QString& folder)
{
    Preferences preferences(folder);
    for (const auto& [key, value] : GeneralKeys)
        preferences.SaveSetting(
            QStringLiteral("Norvantis"), QStringLiteral("Option"), QLatin1String(key), QLatin1String(value));
}

void openOptions(const Database& data, ScriptedPlatform& platform, const std::function<void(Form&)>& work)
{
    const auto open = [&](TimerDll& host) {
        qint16 power = 1;
        qint16 clientUp = 0;
        host.LoadOptions(data.connectionString(),
            QStringLiteral("Norvantis"),
            QStringLiteral("ADMINISTRATOR"),
            power,
            clientUp,
            50,
            QStringLiteral("192.168.0.10"),
            QStringLiteral("CAFE-SERVER"),
            0);
    };
    onScreen(data, platform, open, [&](Form& screen) {
        if (screen.name() != QLatin1String("Options"))
            fail(QStringLiteral("the settings screen did not open, ") + screen.name() + QStringLiteral(" did"));
        work(screen);
    });
}

Figure applying(const Database& data, ScriptedPlatform& platform)
{
    Figure figure {QStringLiteral("&Apply after one change")};
    figure.target = Target::below(InstantMilliseconds);
    openOptions(data, platform, [&](Form& screen) {
        Control& currency = screen[QStringLiteral("txtCurrency")];
        Control& apply = screen[QStringLiteral("cmdApply")];
        figure.timeMarlet(
            [&] {
                for (int i = 0; i < Applies; ++i) {
                    Operator::setText(currency, i % 2 ? QStringLiteral("USD") : QStringLiteral("EUR"));
                    if (!apply.enabled())
                        fail(QStringLiteral("a change did not enable Apply"));
                    Operator::click(apply);
                }
            },
            1,
            Applies);
        if (apply.enabled())
            fail(QStringLiteral("Apply is still enabled after applying"));
    });
    figure.note = QStringLiteral("average of %1; %2 keys and one row").arg(Applies).arg(GeneralKeys.size());
    return figure;
}

void checkApplied(const Database& data)
{
    Preferences preferences(data.folder() + QStringLiteral("/prefs"));
    const QString stored = preferences.GetSetting(
        QStringLiteral("Norvantis"), QStringLiteral("Option"), QStringLiteral("Currency"), QString());
    PlainDatabase db(data.path());
    PlainStatement row(db, "SELECT \"Currency\" FROM \"Options\"");
    const bool found = sqlite3_step(row.get()) == SQLITE_ROW;
    const QString column = found ? QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(row.get(), 0)))
                                 : QString();
    if (stored != QLatin1String("USD") || column != QLatin1String("USD"))
        fail(QStringLiteral("Apply left the currency \"%1\" and the column \"%2\"").arg(stored, column));
}

// ---- the plain program ---------------------------------------------------------------------------

class PlainSettings
{
public:
    explicit PlainSettings(const QString& folder)
        : m_file(folder + QStringLiteral("/plain.ini"))
    {
        QSettings settings(m_file, QSettings::IniFormat);
        for (const auto& [key, value] : GeneralKeys)
            settings.setValue(QStringLiteral("Norvantis/Option/") + QLatin1String(key), QLatin1String(value));
    }

    // The host opens the store for each opening of the screen, and the tab reads its keys. No other
    // connection is open meanwhile, as in Marlet's run, so each close is the last one and clears
    // away the write-ahead log as Marlet's does.
    void load(const QString& path)
    {
        PlainDatabase opened(path);
        QSettings settings(m_file, QSettings::IniFormat);
        for (const auto& [key, value] : GeneralKeys)
            m_checksum += settings.value(QStringLiteral("Norvantis/Option/") + QLatin1String(key)).toString().size();
    }

    // The connection that Apply writes through, open from here on.
    void openForApply(const QString& path)
    {
        m_db = std::make_unique<PlainDatabase>(path);
        m_update
            = std::make_unique<PlainStatement>(*m_db, "UPDATE \"Options\" SET \"TicketIniName\" = ?, \"Currency\" = ?");
    }

    void apply(const char* currency)
    {
        QSettings settings(m_file, QSettings::IniFormat);
        for (const auto& [key, value] : GeneralKeys) {
            settings.setValue(QStringLiteral("Norvantis/Option/") + QLatin1String(key),
                QLatin1String(qstrcmp(key, "Currency") == 0 ? currency : value));
            settings.sync();
        }
        m_update->bindText(1, "CAF");
        m_update->bindText(2, currency);
        m_update->run();
    }

private:
    QString m_file;
    std::unique_ptr<PlainDatabase> m_db;
    std::unique_ptr<PlainStatement> m_update;
    qint64 m_checksum = 0;
};

// The openings, Marlet's and the plain program's in turns, so that a neighbour on the machine that
// comes and goes weighs on both alike.
Figure opening(const Database& data, ScriptedPlatform& platform, PlainSettings& plain)
{
    Figure figure {QStringLiteral("open the screen, General tab loaded")};
    figure.target = Target::below(InstantMilliseconds);
    QString currency;
    figure.timeInTurns(
        [&] {
            for (int i = 0; i < Openings; ++i)
                openOptions(
                    data, platform, [&](Form& screen) { currency = screen[QStringLiteral("txtCurrency")].text(); });
        },
        [&] {
            for (int i = 0; i < Openings; ++i)
                plain.load(data.path());
        },
        OpeningRuns,
        Openings);
    if (currency != QLatin1String("USD"))
        fail(QStringLiteral("the General tab shows the currency \"%1\"").arg(currency));
    figure.note = QStringLiteral("average of %1, opening to closing, fastest of %2 runs in turns")
                      .arg(Openings)
                      .arg(OpeningRuns);
    return figure;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int rows = rowsArgument(argc, argv);
    printHeader("Settings benchmark: the settings screen's load and Apply", rows);
    Database data;
    makeDataSet(data, rows);
    storeGeneralKeys(data.folder() + QStringLiteral("/prefs"));

    ScriptedPlatform platform;
    PlainSettings plain(data.folder());
    std::vector<Figure> figures;
    figures.push_back(opening(data, platform, plain));
    figures.push_back(applying(data, platform));
    checkApplied(data);

    plain.openForApply(data.path());
    figures[1].timePlain(
        [&] {
            for (int i = 0; i < Applies; ++i)
                plain.apply(i % 2 ? "USD" : "EUR");
        },
        1,
        Applies);
    printFigures(figures);
    return 0;
}
