#include "companion/connecting/ClientSettings.h"
#include "companion/program/CheckReport.h"
#include "companion/program/RunningService.h"
#include "companion/program/ServiceCommandLine.h"
#include "companion/program/Setup.h"
#include "linux/files/WholeFile.h"
#include "linux/signals/TerminationSignals.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

enum ExitCode { Success = 0, Failure = 1, WrongArguments = 2 };

/// How long `check` waits for sources to answer.
constexpr std::chrono::seconds longestCheck{45};

/// A line for people that no terminal obeys, whatever it quotes.
void complain(const QString& sentence) {
    QString line = sentence;
    line.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    std::fputs(qUtf8Printable(u"lumora-service: "_s + line + u'\n'), stderr);
}

int fail(const QStringList& sentences, ExitCode code = Failure) {
    for (const QString& sentence : sentences)
        complain(sentence);
    return code;
}

int print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return Success;
    return fail({u"the answer could not be written"_s});
}

/// Whether the user's session is kept by systemd, which can then start the service.
bool hasSystemd() {
    return QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/systemd"_s);
}

/// Where the program's files are, wherever it is installed.
QString dataFolder() {
    return QDir::cleanPath(
        QCoreApplication::applicationDirPath() + QStringLiteral("/../" LUMORA_DATA_FOLDER));
}

int connectClient(const Places& places, quint16 port, const QByteArray& token) {
    const auto endpoint = storeEndpoint(places.preferencesFile, endpointOf(port).toUtf8());
    if (!endpoint)
        return fail({endpoint.error()});
    if (const auto stored = storeToken(token); !stored)
        return fail(
            {u"the token could not be put into a keyring: "_s + stored.error(),
             u"paste it into Lumora's settings, or try \"lumora-service connect\" again"_s});
    return print(u"Lumora knows the address now, and its token is in your keyring.\n"_s);
}

int runInit(const InitCommand& init) {
    const Places places = placesOfUser();
    const auto settings = newSettingsFor(init, newToken());
    if (!settings)
        return fail({settings.error()});
    if (const auto written = writeNewSettings(*settings, places.settingsFile); !written)
        return fail({written.error()});
    const QString token = QString::fromLatin1(settings->token);
    int code = print(u"Wrote %1\n\nAddress: %2\nToken:   %3\n\n"_s.arg(
        pathForPeople(places.settingsFile), endpointOf(settings->port), token));
    if (init.connect)
        code = std::max(code, connectClient(places, settings->port, settings->token));
    else
        code = std::max(
            code, print(u"Paste both into Lumora's settings, or have it done with\n"
                        "  lumora-service connect\n"_s));
    return std::max(code, print(nextSteps(hasSystemd(), dataFolder())));
}

int runConnect() {
    const Places places = placesOfUser();
    const auto settings = readSettingsFile(places);
    if (!settings)
        return fail(settings.error());
    return connectClient(places, settings->port, settings->token);
}

int runCheck() {
    const auto settings = readSettingsFile(placesOfUser());
    if (!settings)
        return fail(settings.error());
    const auto now = [] {
        return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    };
    Sources sources(*settings, {now, &QTimeZone::systemTimeZone, QDBusConnection::sessionBus()});
    sources.refreshDue();
    const QDeadlineTimer deadline{longestCheck};
    while (sources.isAsking() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    const CheckReport report = checkReport(sources);
    const int printed = print(report.text);
    return report.isFine ? printed : int(Failure);
}

int runService() {
    const TerminationSignals terminationSignals;
    QObject::connect(&terminationSignals, &TerminationSignals::requested, &QCoreApplication::quit);
    RunningService service(placesOfUser(), &complain);
    QObject::connect(&service, &RunningService::failed, [] { QCoreApplication::exit(Failure); });
    const auto port = service.start();
    if (!port)
        return fail(port.error());
    print(u"Serving %1\n"_s.arg(endpointOf(*port)));
    return QCoreApplication::exec();
}

int runCommand(const ServiceCommand& command) {
    if (const auto* init = std::get_if<InitCommand>(&command))
        return runInit(*init);
    if (std::holds_alternative<ConnectCommand>(command))
        return runConnect();
    if (std::holds_alternative<CheckCommand>(command))
        return runCheck();
    if (std::holds_alternative<RunCommand>(command))
        return runService();
    if (std::holds_alternative<HelpCommand>(command))
        return print(serviceUsage());
    return print(u"lumora-service " LUMORA_VERSION "\n"_s);
}

} // namespace

} // namespace lumora::companion

int main(int argc, char** argv) {
    using namespace lumora::companion;
    const QCoreApplication application(argc, argv);
    const auto command = parseServiceCommand(QCoreApplication::arguments().mid(1));
    if (!command)
        return fail({command.error()}, WrongArguments);
    return runCommand(*command);
}
