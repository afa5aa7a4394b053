#include "app/DemoServiceProcess.h"
#include "app/LumobarApp.h"
#include "cli/Answers.h"
#include "cli/Check.h"
#include "cli/CommandLine.h"
#include "cli/Doctor.h"
#include "cli/RunningProgram.h"
#include "cli/Usage.h"
#include "linux/session/DesktopPlatform.h"
#include "linux/session/SpareMemory.h"
#include "linux/session/StartupEnvironment.h"
#include "linux/signals/TerminationSignals.h"
#include "platform/ActivationToken.h"
#include "platform/AppStorageBacked.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// What a second start does instead of running.
int handOver(CommandClient& client, const RunCommand& run, const QByteArray& token) {
    if (run.demo)
        return complain(u"Lumora is already running; end it with \"lumora quit\" first"_s, Failure);
    return openRunningProgram(client, token);
}

/// Ends without tearing down what is static. Qt's D-Bus thread lives on until then, and warns when
/// a message reaches it after the types it would be read into are gone.
[[noreturn]] void leaveAtOnce(int exitCode) {
    std::fflush(nullptr);
    std::_Exit(exitCode);
}

QtMessageHandler usualHandler = nullptr;

/// Platform plug-ins warn at every wish that they cannot fulfil, such as coming to the front. They
/// are asked all the same, because most can, and the user can do nothing about those that cannot.
void passOnUnlessUnsupported(
    QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type != QtWarningMsg || !message.contains(u" does not support "))
        usualHandler(type, context, message);
}

int runProgram(int& argc, char** argv, const RunCommand& run) {
    shareMemoryAmongThreads();
    const QByteArray token = inheritedActivationToken(); // as long as it is there
    usualHandler = qInstallMessageHandler(passOnUnlessUnsupported);
    std::optional<StartupEnvironment> startupEnvironment(std::in_place);
    QApplication application(argc, argv);
    startupEnvironment.reset();
    QApplication::setApplicationDisplayName(u"Lumora"_s);
    QApplication::setDesktopFileName(u"com.lumora.app"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    // The panel hangs at a bar that runs the way the desktop's language does.
    QApplication::setLayoutDirection(QLocale::system().textDirection());

    CommandClient other;
    if (other.isRunning())
        leaveAtOnce(handOver(other, run, token));

    DemoServiceProcess demoService;
    PlatformFamily family = run.demo ? makeForgetfulPlatform() : makeDesktopPlatform();
    if (run.demo) {
        const auto address = demoService.start(run.scenario);
        if (!address)
            return complain(address.error().sentence, address.error().exitCode);
        // Memory takes everything.
        std::ignore =
            storePreference(*family.preferences, PreferenceKeys::endpointURL, address->endpoint);
        std::ignore = KeychainService(*family.secrets).setToken(address->token);
    }

    LumobarApp program(family);
    QObject::connect(&program, &LumobarApp::superseded, &application, [&] {
        QCoreApplication::exit(handOver(other, run, token));
    });
    const TerminationSignals terminationSignals;
    QObject::connect(
        &terminationSignals, &TerminationSignals::requested, &application, &QCoreApplication::quit);
    program.start();
    return QApplication::exec();
}

int runCommand(int& argc, char** argv, const Command& command) {
    const QCoreApplication application(argc, argv);
    if (const auto* check = std::get_if<CheckCommand>(&command))
        return checkBriefing(*check);
    if (const auto* doctor = std::get_if<DoctorCommand>(&command))
        return runDoctor(*doctor);
    return askRunningProgram(command);
}

} // namespace

} // namespace lumora

int main(int argc, char** argv) {
    using namespace lumora;
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);

    const auto command = parseCommandLine(arguments);
    if (!command)
        return complain(command.error(), WrongArguments);
    if (std::holds_alternative<HelpCommand>(*command))
        return print(usageText());
    if (std::holds_alternative<VersionCommand>(*command))
        return print(u"lumora " LUMORA_VERSION "\n"_s);
    if (const auto* run = std::get_if<RunCommand>(&*command))
        return runProgram(argc, argv, *run);
    leaveAtOnce(runCommand(argc, argv, *command));
}
