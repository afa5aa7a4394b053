#include "demo/DemoLifetime.h"
#include "demo/DemoOptions.h"
#include "demo/DemoServer.h"
#include "demo/DemoService.h"

#include <QRandomGenerator>
#include <QTimeZone>

#include <array>
#include <cstdio>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;
using namespace lumora;

namespace {

constexpr int kCannotServe = 1;
constexpr int kBadArguments = 2;

void print(std::FILE* stream, const QString& text) {
    std::fputs(text.toUtf8().constData(), stream);
    std::fflush(stream);
}

int fail(int code, const QString& message) {
    print(stderr, u"lumora-demo-service: %1\n"_s.arg(message.simplified()));
    return code;
}

QByteArray randomToken() {
    std::array<quint32, 4> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    return QByteArray(reinterpret_cast<const char*>(words.data()), sizeof words).toHex();
}

int serve(const DemoOptions& options, const QTimeZone& zone) {
    DemoLifetime lifetime;
    DemoClock clock;
    if (options.now)
        clock.set(*options.now);
    const auto token = options.token.value_or(randomToken());
    DemoService service(options.scenario, token, clock, zone);
    DemoServer server(service);
    const auto port = server.start(options.port);
    if (!port)
        return fail(kCannotServe, port.error());
    print(
        stdout, u"endpoint http://127.0.0.1:%1/api/briefing\ntoken %2\n"_s.arg(*port).arg(
                    QString::fromLatin1(token)));
    lifetime.wait(options.untilStdinCloses);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv) {
    const auto zone = QTimeZone::systemTimeZone();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const auto options = parseDemoOptions(arguments, zone);
    if (!options)
        return fail(kBadArguments, options.error());
    if (options->help)
        print(stdout, demoHelp());
    else if (options->version)
        print(stdout, demoVersion());
    else
        return serve(*options, zone);
    return EXIT_SUCCESS;
}
