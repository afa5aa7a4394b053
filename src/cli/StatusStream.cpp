#include "cli/StatusStream.h"

#include "cli/Answers.h"
#include "linux/commands/ReaderWatch.h"
#include "linux/commands/StatusSubscription.h"

#include <QCoreApplication>

#include <unistd.h>

#include <csignal>

namespace lumora {

namespace {

/// The line for what the running program said; of what it says nobody knows how to read, none.
QString lineFor(const std::optional<QString>& status, StatusFormat format) {
    const auto report = status ? StatusReport::fromJson(status->toUtf8()) : std::nullopt;
    return statusLine(report.value_or(StatusReport::stopped()), format) + u'\n';
}

StatusSubscription::Extent extentOf(StatusFormat format) {
    return hasDetails(format) ? StatusSubscription::Extent::Everything
                              : StatusSubscription::Extent::Label;
}

/// The exit code after a line that could not be written: that nobody reads any more is the end that
/// every bar makes.
int endOfWriting(const std::error_code& error) {
    return error == std::errc::broken_pipe ? int(Success) : complainOfWriting(error);
}

} // namespace

int followStatus(StatusFormat format) {
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return complain(CommandClient::Failure::NotRunning);
    std::signal(SIGPIPE, SIG_IGN); // writing tells of it, too

    const ReaderWatch reader(STDOUT_FILENO);
    const StatusSubscription subscription(bus, extentOf(format));
    QObject::connect(&reader, &ReaderWatch::gone, [] { QCoreApplication::exit(Success); });
    QObject::connect(&subscription, &StatusSubscription::lost, [] {
        QCoreApplication::exit(complain(CommandClient::Failure::NotRunning));
    });
    QString last;
    QObject::connect(&subscription, &StatusSubscription::changed, [&](const auto& status) {
        const QString line = lineFor(status, format);
        if (line == last)
            return;
        last = line;
        if (const auto written = write(line); !written)
            QCoreApplication::exit(endOfWriting(written.error()));
    });
    return QCoreApplication::exec();
}

} // namespace lumora
