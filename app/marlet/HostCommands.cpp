#include "HostCommands.h"

#include "GenerateCommand.h"
#include "HostOptions.h"

#include "component/Component.h"
#include "platform/TerminalPlatform.h"
#include "script/EntryOperations.h"
#include "script/ScenarioRunner.h"
#include "store/DatabaseInit.h"
#include "values/HostFlags.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <memory>

#ifdef MARLET_WITH_DESKTOP
#include "desktop/QtPlatform.h"
#include "desktop/ReportComponent.h"
#include "desktop/TidyRegistration.h"

#include <QApplication>
#endif

namespace marlet::host {

namespace {

const QString defaultAppTitle = QStringLiteral("Norvantis");

// The application object and the platform the screens show on: the desktop when a display is
// there and --headless was not given, the terminal otherwise.
struct Surface
{
    std::unique_ptr<QCoreApplication> application;
    std::unique_ptr<QTextStream> input;
    std::unique_ptr<Platform> platform;
};

#ifdef MARLET_WITH_DESKTOP
bool displayPresent()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
           || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}
#endif

Surface makeSurface(int& argc, char** argv, bool headless, QTextStream& out)
{
    Surface surface;
#ifdef MARLET_WITH_DESKTOP
    if (!headless && displayPresent()) {
        surface.application = std::make_unique<QApplication>(argc, argv);
        surface.platform = std::make_unique<QtPlatform>();
        return surface;
    }
#else
    Q_UNUSED(headless);
#endif
    surface.application = std::make_unique<QCoreApplication>(argc, argv);
    surface.input = std::make_unique<QTextStream>(stdin);
    surface.platform = std::make_unique<TerminalPlatform>(*surface.input, out);
    return surface;
}

int runEntryOperation(const QString& command, const HostOptions& options, Component& component)
{
    TimerDll& dll = component.timerDll();
    const QVariant cn1 = options.value(QStringLiteral("db"));
    const QString app = options.value(QStringLiteral("app"), defaultAppTitle);
    const QString user = options.value(QStringLiteral("user"));
    const QString path = options.value(QStringLiteral("path"));
    const qint16 power = flag(options.flag(QStringLiteral("power")));
    if (command == QLatin1String("load-account-info")) {
        dll.LoadAccountInfo(cn1, app, options.value(QStringLiteral("ticket")));
    } else if (command == QLatin1String("load-options")) {
        qint16 tPower = power;
        qint16 clientUp = 0;
        dll.LoadOptions(cn1,
            app,
            user,
            tPower,
            clientUp,
            qint16(options.value(QStringLiteral("max"), QStringLiteral("5")).toInt()),
            options.value(QStringLiteral("ports")),
            options.value(QStringLiteral("port-name")),
            flag(options.flag(QStringLiteral("hide-account"))));
        QTextStream(stdout) << "tPower=" << tPower << " ClientUp=" << clientUp << Qt::endl;
    } else if (command == QLatin1String("load-gen-ac")) {
        dll.LoadGenAc(cn1, app, user, power, path);
    } else if (command == QLatin1String("load-gen-acc")) {
        dll.LoadGenAcc(cn1, app, user, power, path);
    } else if (command == QLatin1String("load-auto-gen")) {
        dll.LoadAutoGen(cn1, app, user, power, path);
    } else if (command == QLatin1String("load-recycle-bin")) {
        dll.LoadRecycleBin(cn1, app);
    }
    return 0;
}

int runInit(const HostOptions& options, QTextStream& out, QTextStream& err)
{
    const QString db = options.value(QStringLiteral("db"));
    if (db.isEmpty()) {
        err << "marlet init: --db is required" << Qt::endl;
        return 2;
    }
    DatabaseInit init;
    init.connectionString = db;
    init.password = options.value(QStringLiteral("admin-password"));
    init.force = options.flag(QStringLiteral("force"));
    const InitResult result = init.run();
    if (!result.ok()) {
        err << "marlet init: " << result.error << Qt::endl;
        return 1;
    }
    out << "Database ready: " << db << Qt::endl;
    const QString appFolder = options.value(QStringLiteral("app-dir"), Component::defaultApplicationFolder());
    if (QDir().mkpath(appFolder))
        out << "Application folder ready: " << appFolder << Qt::endl;
    if (init.password.isEmpty())
        out << "ADMINISTRATOR password (shown once): " << result.administratorPassword << Qt::endl;
    return 0;
}

} // namespace

void printUsage(QTextStream& out)
{
    out << "usage: marlet <command> [options]\n"
           "\n"
           "Entry operations (each shows one modal screen):\n"
           "  load-gen-acc      --db CN --user NAME [--power] [--path PATH] [--app TITLE]\n"
           "  load-auto-gen     same as load-gen-acc\n"
           "  load-gen-ac       same, without the password gate; the connection stays open\n"
           "  load-options      --db CN --user NAME [--power] [--max N] [--ports P] [--port-name N]\n"
           "                    [--hide-account]\n"
           "  load-account-info --db CN [--ticket NAME]\n"
           "  load-recycle-bin  --db CN\n"
           "Other commands:\n"
           "  init              --db PATH [--admin-password PW] [--force]\n"
           "  script            FILE          run a scenario script (see docs/scenarios.md)\n"
           "  generate          --db CN [--user NAME] [--password PW] [--number N] [--hours H]\n"
           "                    [--minutes M] [--cost C] [--expiry fixed|flexible|never] [--days D]\n"
           "                    [--time-frame HH:mm-HH:mm] [--once] [--vip] [--yes] [--print yes|no]\n"
           "                    [--second-user NAME --second-password PW]\n"
           "                    make one batch of tickets and print it; questions not answered by\n"
           "                    the options are asked on the terminal\n"
           "Common options:\n"
           "  --prefs DIR       folder of the preference file (else $MARLET_PREFS, else ~/.config/marlet)\n"
           "  --app-dir DIR     the component's data folder (else $MARLET_APP_DIR, else ~/.local/share/marlet)\n"
           "  --headless        use the terminal even when a display is present\n"
           "CN is a connection string: sqlite:PATH, a bare PATH, or Data Source=PATH.\n"
        << Qt::flush;
}

int run(int& argc, char** argv, const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    const QString command = arguments.first();
    HostOptions options;
    if (!options.parse(arguments.mid(1))) {
        err << "marlet " << command << ": " << options.error() << Qt::endl;
        return 2;
    }
    if (command == QLatin1String("init")) {
        QCoreApplication application(argc, argv);
        return runInit(options, out, err);
    }
    if (command == QLatin1String("generate")) {
        QCoreApplication application(argc, argv);
        return runGenerate(options, out, err);
    }
    if (command == QLatin1String("script")) {
        QCoreApplication application(argc, argv);
        if (options.positional().size() != 1) {
            err << "marlet script: give one scenario file" << Qt::endl;
            return 2;
        }
        return runScenarioFile(options.positional().first(), out, entryOperations());
    }
    if (!isEntryOperation(command)) {
        err << "marlet: unknown command " << command << Qt::endl;
        printUsage(err);
        return 2;
    }
    Surface surface = makeSurface(argc, argv, options.flag(QStringLiteral("headless")), out);
    Component component(*surface.platform,
                        options.value(QStringLiteral("prefs")),
                        options.value(QStringLiteral("app-dir")));
#ifdef MARLET_WITH_DESKTOP
    registerReportComponent(component.preferences());
    registerTidyComponent(component.preferences(), component.session().applicationFolder());
#endif
    return runEntryOperation(command, options, component);
}

} // namespace marlet::host
