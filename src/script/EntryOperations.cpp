#include "script/EntryOperations.h"

#include "component/Component.h"
#include "script/ScriptedPlatform.h"
#include "values/HostFlags.h"

#include <QFileInfo>

#include <memory>

namespace marlet {

namespace {

// The component of the run in progress.
struct RunComponent
{
    ScriptedPlatform* platform = nullptr;
    QString preferencesFile;
    std::unique_ptr<Component> component;

    // Made anew for another run, and for another machine of the run (another preference store).
    Component& of(ScenarioContext& context)
    {
        if (!component || platform != &context.platform || preferencesFile != context.preferences.filePath()) {
            component.reset();
            platform = &context.platform;
            preferencesFile = context.preferences.filePath();
            component = std::make_unique<Component>(context.platform,
                                                    QFileInfo(context.preferences.filePath()).absolutePath(),
                                                    context.workFolder + QStringLiteral("/app"));
        }
        return *component;
    }
};

qint16 flagArgument(const ScenarioArguments& arguments, const QString& name)
{
    const QString value = arguments.value(name, QStringLiteral("0")).toLower();
    return flag(value != QLatin1String("0") && value != QLatin1String("false"));
}

struct Common
{
    QVariant cn1;
    QString app;
    QString user;
    QString path;
    qint16 power = 0;
};

Common commonArguments(const ScenarioContext& context, const ScenarioArguments& arguments)
{
    return {arguments.value(QStringLiteral("db"), context.connectionString),
            arguments.value(QStringLiteral("app"), QStringLiteral("Norvantis")),
            arguments.value(QStringLiteral("user")),
            arguments.value(QStringLiteral("path"), QStringLiteral("C:\\Norvantis\\Server.exe")),
            flagArgument(arguments, QStringLiteral("power"))};
}

} // namespace

ScenarioOperations entryOperations()
{
    ScenarioOperations operations = ScenarioOperations::builtin();
    auto run = std::make_shared<RunComponent>();
    operations.add(QStringLiteral("load-gen-acc"), [run](ScenarioContext& context, const ScenarioArguments& arguments) {
        const Common c = commonArguments(context, arguments);
        run->of(context).timerDll().LoadGenAcc(c.cn1, c.app, c.user, c.power, c.path);
    });
    operations.add(QStringLiteral("load-auto-gen"), [run](ScenarioContext& context, const ScenarioArguments& arguments) {
        const Common c = commonArguments(context, arguments);
        run->of(context).timerDll().LoadAutoGen(c.cn1, c.app, c.user, c.power, c.path);
    });
    operations.add(QStringLiteral("load-gen-ac"), [run](ScenarioContext& context, const ScenarioArguments& arguments) {
        const Common c = commonArguments(context, arguments);
        run->of(context).timerDll().LoadGenAc(c.cn1, c.app, c.user, c.power, c.path);
    });
    operations.add(QStringLiteral("load-options"), [run](ScenarioContext& context, const ScenarioArguments& arguments) {
        const Common c = commonArguments(context, arguments);
        qint16 tPower = c.power;
        qint16 clientUp = 0;
        run->of(context).timerDll().LoadOptions(c.cn1,
                                                c.app,
                                                c.user,
                                                tPower,
                                                clientUp,
                                                qint16(arguments.value(QStringLiteral("max"), QStringLiteral("5")).toInt()),
                                                arguments.value(QStringLiteral("ports")),
                                                arguments.value(QStringLiteral("port-name")),
                                                flagArgument(arguments, QStringLiteral("hide-account")));
    });
    operations.add(QStringLiteral("load-account-info"),
                   [run](ScenarioContext& context, const ScenarioArguments& arguments) {
                       const Common c = commonArguments(context, arguments);
                       run->of(context).timerDll().LoadAccountInfo(c.cn1, c.app, arguments.value(QStringLiteral("ticket")));
                   });
    operations.add(QStringLiteral("load-recycle-bin"),
                   [run](ScenarioContext& context, const ScenarioArguments& arguments) {
                       const Common c = commonArguments(context, arguments);
                       run->of(context).timerDll().LoadRecycleBin(c.cn1, c.app);
                   });
    return operations;
}

} // namespace marlet
