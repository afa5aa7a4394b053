#include "app/CommandLine.h"
#include "app/DemoServiceProcess.h"
#include "app/LumobarApp.h"
#include "linux/commands/CommandClient.h"
#include "linux/session/DesktopPlatform.h"
#include "linux/session/SpareMemory.h"
#include "linux/session/StartupEnvironment.h"
#include "linux/session/TerminationSignals.h"
#include "platform/ActivationToken.h"
#include "platform/AppStorageBacked.h"
#include "texts/PlainText.h"
#include "texts/StatusPresentation.h"

#include <QApplication>
#include <QTextStream>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

enum ExitCode { Success = 0, Failure = 1, WrongArguments = 2, NotRunning = 3 };

/// Says what is wrong, on one line that no terminal obeys, whatever the sentence quotes.
int complain(const QString& sentence, int code) {
    QTextStream(stderr) << "lumora: " << singleLine(sentence).simplified() << '\n';
    return code;
}

int complain(CommandClient::Failure failure) {
    if (failure == CommandClient::Failure::NotRunning)
        return complain(u"Lumora is not running"_s, NotRunning);
    return complain(u"Lumora does not answer"_s, Failure);
}

/// Writes an answer. One that is not there whole, as on a full disk, is a failure.
int print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return Success;
    const QString reason = QString::fromStdString(std::generic_category().message(errno));
    return complain(u"The answer could not be written: %1"_s.arg(reason), Failure);
}

int runStatus(CommandClient& client, const StatusCommand& command) {
    const auto status = client.status();
    if (!status)
        return complain(status.error());
    const auto report = StatusReport::fromJson(status->toUtf8());
    if (!report)
        return complain(CommandClient::Failure::NoAnswer);
    return print(statusLine(*report, command.format) + u'\n');
}

int runRefresh(CommandClient& client) {
    const auto failure = client.refresh();
    if (!failure)
        return complain(failure.error());
    return *failure ? complain(failureText(**failure), Failure) : int(Success);
}

int outcome(const tl::expected<void, CommandClient::Failure>& answer) {
    return answer ? int(Success) : complain(answer.error());
}

int runWindow(CommandClient& client, const WindowCommand& command) {
    switch (command.action) {
    case WindowCommand::Action::Toggle:
        return outcome(client.toggle(inheritedActivationToken()));
    case WindowCommand::Action::Show:
        return outcome(client.open(inheritedActivationToken()));
    case WindowCommand::Action::Hide:
        return outcome(client.hide());
    case WindowCommand::Action::Settings:
        return outcome(client.openSettings(inheritedActivationToken()));
    }
    Q_UNREACHABLE();
}

/// What a second start does instead of running.
int handOver(CommandClient& client, const RunCommand& run, const QByteArray& token) {
    if (run.demo)
        return complain(u"Lumora is already running; end it with \"lumora quit\" first"_s, Failure);
    return outcome(client.open(token));
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

int askRunningProgram(int& argc, char** argv, const Command& command) {
    const QCoreApplication application(argc, argv);
    CommandClient client;
    if (const auto* status = std::get_if<StatusCommand>(&command))
        return runStatus(client, *status);
    if (std::holds_alternative<RefreshCommand>(command))
        return runRefresh(client);
    if (const auto* window = std::get_if<WindowCommand>(&command))
        return runWindow(client, *window);
    return outcome(client.quit());
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
    leaveAtOnce(askRunningProgram(argc, argv, *command));
}
