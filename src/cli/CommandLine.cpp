#include "cli/CommandLine.h"

#include <QHash>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using Parsed = tl::expected<Command, QString>;

tl::unexpected<QString> unknownArgument(const QString& argument) {
    return tl::unexpected(u"unknown argument \"%1\"; see lumora --help"_s.arg(argument));
}

/// Complains of `argument`, which is either `option` without its value or nothing known.
tl::unexpected<QString> notTheOption(const QString& argument, const QString& option) {
    if (argument == option)
        return tl::unexpected(u"%1 needs a value; see lumora --help"_s.arg(option));
    return unknownArgument(argument);
}

/// Takes `--name VALUE` or `--name=VALUE` from the front of `arguments`; absent when something
/// else stands there or the value is missing.
std::optional<QString> takeOption(QStringList& arguments, const QString& name) {
    if (arguments.first().startsWith(name + u'='))
        return arguments.takeFirst().mid(name.size() + 1);
    if (arguments.first() != name || arguments.size() < 2)
        return std::nullopt;
    arguments.removeFirst();
    return arguments.takeFirst();
}

tl::unexpected<QString> unknownFormat(const QString& name) {
    QStringList names = statusFormatNames();
    const QString last = names.takeLast();
    return tl::unexpected(
        u"unknown format \"%1\"; there are %2 and %3"_s.arg(name, names.join(u", "_s), last));
}

Parsed parseRun(QStringList arguments) {
    RunCommand run;
    while (!arguments.isEmpty()) {
        if (arguments.first() == u"--demo") {
            run.demo = true;
            arguments.removeFirst();
        } else if (const auto scenario = takeOption(arguments, u"--scenario"_s)) {
            run.scenario = *scenario;
        } else {
            return notTheOption(arguments.first(), u"--scenario"_s);
        }
    }
    if (!run.scenario.isEmpty() && !run.demo)
        return tl::unexpected(u"--scenario goes with --demo"_s);
    return run;
}

Parsed parseStatus(QStringList arguments) {
    StatusCommand status;
    while (!arguments.isEmpty()) {
        const QString argument = arguments.first();
        if (argument == u"--follow") {
            status.follow = true;
            arguments.removeFirst();
            continue;
        }
        const auto name = takeOption(arguments, u"--format"_s);
        if (!name)
            return notTheOption(argument, u"--format"_s);
        const auto format = statusFormat(*name);
        if (!format)
            return unknownFormat(*name);
        status.format = *format;
    }
    return status;
}

/// `command`, which takes no further arguments.
Parsed plain(Command command, const QStringList& arguments) {
    if (!arguments.isEmpty())
        return unknownArgument(arguments.first());
    return command;
}

/// The commands that are one word.
std::optional<Command> plainCommand(const QString& word) {
    using Action = WindowCommand::Action;
    static const QHash<QString, Command> commands{
        {u"--help"_s, HelpCommand{}},
        {u"-h"_s, HelpCommand{}},
        {u"--version"_s, VersionCommand{}},
        {u"toggle"_s, WindowCommand{Action::Toggle}},
        {u"show"_s, WindowCommand{Action::Show}},
        {u"hide"_s, WindowCommand{Action::Hide}},
        {u"settings"_s, WindowCommand{Action::Settings}},
        {u"refresh"_s, RefreshCommand{}},
        {u"quit"_s, QuitCommand{}},
    };
    const auto found = commands.constFind(word);
    return found == commands.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

Parsed parseCommandLine(const QStringList& arguments) {
    if (arguments.isEmpty())
        return RunCommand{};
    const QString& first = arguments.first();
    const QStringList rest = arguments.mid(1);
    if (first == u"status")
        return parseStatus(rest);
    if (const auto command = plainCommand(first))
        return plain(*command, rest);
    return parseRun(arguments);
}

QString usageText() {
    return uR"(Usage: lumora [--demo [--scenario NAME]]
       lumora status [--follow] [--format FORMAT]
       lumora toggle|show|hide
       lumora settings
       lumora refresh
       lumora quit

Keeps your day in view: a live label in the status area, fed by your own dashboard service.
Started a second time, it opens the panel of the program that already runs.

  --demo            show an invented day from a service of its own; touches no settings
  --scenario NAME   which day: busy, empty, quiet, unauthorized, flaky, slow, malformed or html
  status            print the label of the running program
  --follow          print it again whenever it changes, until nobody reads it
  --format FORMAT   for whom: text, json, waybar, polybar, i3blocks or i3status-rust
  toggle            open the panel of the running program, or close it
  show, hide        open the panel, or close it; fine when it is already so
  settings          open the settings of the running program
  refresh           fetch the briefing now and wait for it
  quit              end the running program
  --help            print this
  --version         print the version

Exit status: 0 success, 1 failure, 2 wrong arguments, 3 Lumora is not running.
)"_s;
}

} // namespace lumora
