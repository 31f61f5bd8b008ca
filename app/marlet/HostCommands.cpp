#include "HostCommands.h"

#include "CommandCatalogue.h"
#include "DatabaseOption.h"
#include "GenerateCommand.h"
#include "HostOptions.h"
#include "OutputCommands.h"
#include "Secrets.h"

#include "component/Component.h"
#include "platform/TerminalPlatform.h"
#include "script/EntryOperations.h"
#include "script/ScenarioRunner.h"
#include "store/Connection.h"
#include "store/DatabaseCheck.h"
#include "store/DatabaseInit.h"
#include "values/HostFlags.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <memory>

#ifdef MARLET_WITH_DESKTOP
#include "SalesChart.h"
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
    const QVariant cn1 = databaseOf(options);
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
    const QString db = databaseOf(options);
    const ConnectionTarget target = parseConnectionString(db);
    const bool file = target.ok() && target.dialect == SqlDialect::Sqlite;
    if (file && !options.value(QStringLiteral("db")).contains(u':'))
        QDir().mkpath(QFileInfo(db).absolutePath());
    DatabaseInit init;
    init.connectionString = db;
    QString error;
    if (!readSecret(options, AdminPassword, init.password, error)) {
        err << "marlet init: " << error << Qt::endl;
        return 2;
    }
    init.force = options.flag(QStringLiteral("force"));
    const InitResult result = init.run();
    if (!result.ok()) {
        err << "marlet init: " << result.error;
        if (file && QFileInfo::exists(target.location) && !init.force)
            err << " Add --force to replace it, or give another --db.";
        err << Qt::endl;
        return 1;
    }
    out << "Database ready: " << shownConnection(db) << Qt::endl;
    const QString appFolder = options.value(QStringLiteral("app-dir"), Component::defaultApplicationFolder());
    if (QDir().mkpath(appFolder))
        out << "Application folder ready: " << appFolder << Qt::endl;
    if (init.password.isEmpty())
        out << "ADMINISTRATOR password (shown once): " << result.administratorPassword << Qt::endl;
    return 0;
}

} // namespace

int run(int& argc, char** argv, const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    const QString command = arguments.first();
    const CommandSpec* known = findCommand(command);
    if (!known) {
        err << "marlet: unknown command " << command << "; `marlet --help` lists the commands" << Qt::endl;
        return 2;
    }
    HostOptions options;
    if (!options.parse(arguments.mid(1), *known)) {
        err << "marlet " << command << ": " << options.error() << Qt::endl;
        return 2;
    }
    if (options.helpRequested()) {
        printCommandHelp(*known, out);
        return 0;
    }
    if (known->positional.isEmpty() && !options.positional().isEmpty()) {
        err << "marlet " << command << ": unexpected word \"" << options.positional().first()
            << "\"; options start with --, and `marlet " << command << " --help` lists them" << Qt::endl;
        return 2;
    }
    if (command == QLatin1String("init")) {
        QCoreApplication application(argc, argv);
        return runInit(options, out, err);
    }
    if (command == QLatin1String("login-template")) {
        QCoreApplication application(argc, argv);
        return runLoginTemplate(options, out, err);
    }
    if (command != QLatin1String("script")) {
        // A database the screens cannot work on is named with its reason before any screen opens.
        if (const QString problem = databaseProblem(databaseOf(options)); !problem.isEmpty()) {
            err << "marlet " << command << ": " << problem
                << " Give the café's database with --db; `marlet init --db FILE` creates a new one." << Qt::endl;
            return 1;
        }
    }
    if (command == QLatin1String("generate")) {
        QCoreApplication application(argc, argv);
        return runGenerate(options, out, err);
    }
    if (command == QLatin1String("export")) {
        QCoreApplication application(argc, argv);
        return runExport(options, out, err);
    }
    if (command == QLatin1String("receipt")) {
#ifdef MARLET_WITH_DESKTOP
        const std::unique_ptr<QCoreApplication> application = pictureApplication(argc, argv);
#else
        QCoreApplication application(argc, argv);
#endif
        return runReceipt(options, out, err);
    }
    if (command == QLatin1String("report")) {
#ifdef MARLET_WITH_DESKTOP
        const auto application = options.value(QStringLiteral("chart")).isEmpty()
            ? std::make_unique<QCoreApplication>(argc, argv)
            : pictureApplication(argc, argv);
#else
        QCoreApplication application(argc, argv);
#endif
        return runReport(options, out, err);
    }
    if (command == QLatin1String("script")) {
        QCoreApplication application(argc, argv);
        if (options.positional().size() != 1) {
            err << "marlet script: give one scenario file, e.g. marlet script tests/screens/gates.scenario" << Qt::endl;
            return 2;
        }
        return runScenarioFile(options.positional().first(), out, entryOperations());
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
