#include "demo/DemoOptions.h"

#include "demo/DemoInstant.h"

#include <QCommandLineParser>

#include <algorithm>

namespace lumora {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kHelp = R"(Usage: lumora-demo-service [options]

Serves a made-up briefing on 127.0.0.1 for Lumora's demo, for tests, and for people who write a
service of their own. Prints two lines once it listens:
  endpoint http://127.0.0.1:PORT/api/briefing
  token TOKEN

Options:
  --scenario NAME        What it pretends to be (default: busy):
                           busy          a full day
                           empty         nothing in it, no spending
                           quiet         nothing near, everything done
                           unauthorized  rejects every token
                           flaky         of every three requests the first gets 503, the second a
                                         closed connection, the third its answer
                           slow          answers after three seconds
                           malformed     a briefing with a bad date
                           html          a login page instead of everything
  --port N               Listen on this port (default: 0, a free one).
  --token T              The token asked for in the X-Api-Key header (default: a random one).
  --now TIME             The service's time at start, in ISO 8601 (default: the real time). Its
                         clock runs on from there, and the day is laid out from there.
  --until-stdin-closes   End when standard input closes.
  --help                 Print this.
  --version              Print the version.

Requests (all with the token):
  GET  /api/briefing          the briefing
  POST /api/briefing/action   {"type":"habit.toggle","id":ID}, {"type":"chore.done","id":ID},
                              {"type":"capture","text":TEXT} or {"type":"spending.refresh"}
  GET  /api/inbox             what was captured, as a JSON list
  GET  /control               the service's clock, day and scenario
  POST /control               changes them, in every scenario; any of these members:
                                "scenario": NAME
                                "now": TIME or "advanceSeconds": N    moves the service's clock;
                                                                      the events stay in place
                                "dayFrom": TIME or "shiftDaySeconds": N
                                                                      moves the whole day's events
                              {"shiftDaySeconds": -1200} moves every event 20 minutes earlier: the
                              meeting that was in 12 minutes began 8 minutes ago.

The day is laid out once, from the time of the start: moving the clock does not move the events.
)"_L1;

tl::unexpected<QString>
badValue(const QString& option, const QString& value, const QString& wanted) {
    return tl::unexpected(u"--%1 takes %2, not \"%3\""_s.arg(option, wanted, value));
}

/// Whether `token` can travel in a header as it stands: visible ASCII, no blanks.
bool isToken(const QString& token) {
    return !token.isEmpty() &&
           std::ranges::all_of(token, [](QChar c) { return c > u' ' && c < u'\x7f'; });
}

/// Takes over what the options' values say.
tl::expected<DemoOptions, QString>
optionsFrom(const QCommandLineParser& parser, const QTimeZone& zone) {
    DemoOptions options;
    if (const auto name = u"scenario"_s; parser.isSet(name)) {
        const auto scenario = demoScenarioNamed(parser.value(name));
        if (!scenario)
            return badValue(
                name, parser.value(name), u"one of "_s + demoScenarioNames().join(u", "_s));
        options.scenario = *scenario;
    }
    if (const auto name = u"port"_s; parser.isSet(name)) {
        bool isPort = false;
        options.port = parser.value(name).toUShort(&isPort);
        if (!isPort)
            return badValue(name, parser.value(name), u"a number from 0 to 65535"_s);
    }
    if (const auto name = u"token"_s; parser.isSet(name)) {
        if (!isToken(parser.value(name)))
            return badValue(name, parser.value(name), u"visible ASCII characters without blanks"_s);
        options.token = parser.value(name).toLatin1();
    }
    if (const auto name = u"now"_s; parser.isSet(name)) {
        options.now = demoInstantFrom(parser.value(name), zone);
        if (!options.now)
            return badValue(
                name, parser.value(name), u"a time such as 2025-03-04T09:30:00+01:00"_s);
    }
    options.untilStdinCloses = parser.isSet(u"until-stdin-closes"_s);
    options.help = parser.isSet(u"help"_s);
    options.version = parser.isSet(u"version"_s);
    return options;
}

} // namespace

tl::expected<DemoOptions, QString>
parseDemoOptions(const QStringList& arguments, const QTimeZone& zone) {
    QCommandLineParser parser;
    for (const auto& name : {u"scenario"_s, u"port"_s, u"token"_s, u"now"_s})
        parser.addOption(QCommandLineOption(name, QString(), name));
    for (const auto& name : {u"until-stdin-closes"_s, u"help"_s, u"version"_s})
        parser.addOption(QCommandLineOption(name));
    if (!parser.parse(QStringList(u"lumora-demo-service"_s) + arguments))
        return tl::unexpected(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return tl::unexpected(
            u"Unknown argument '%1'."_s.arg(parser.positionalArguments().first()));
    return optionsFrom(parser, zone);
}

QString demoHelp() {
    return kHelp;
}

QString demoVersion() {
    return u"lumora-demo-service " LUMORA_VERSION "\n"_s;
}

} // namespace lumora
