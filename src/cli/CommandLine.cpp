#include "cli/CommandLine.h"

#include "briefing/InternetDateTime.h"

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

tl::unexpected<QString> unknownFormat(const QString& name, QStringList names) {
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
            return unknownFormat(*name, statusFormatNames());
        status.format = *format;
    }
    return status;
}

Parsed parseAgenda(QStringList arguments) {
    AgendaCommand agenda;
    while (!arguments.isEmpty()) {
        const QString argument = arguments.first();
        const auto name = takeOption(arguments, u"--format"_s);
        if (!name)
            return notTheOption(argument, u"--format"_s);
        if (name != u"text" && name != u"json")
            return unknownFormat(*name, {u"text"_s, u"json"_s});
        agenda.asJson = name == u"json";
    }
    return agenda;
}

/// The words of a text that needs no quotes; absent without any. Behind "--" they may look like
/// options.
tl::expected<std::optional<QString>, QString> parseWords(QStringList arguments) {
    if (arguments.isEmpty())
        return std::nullopt;
    if (arguments.first() == u"--")
        arguments.removeFirst();
    else if (arguments.first().startsWith(u'-'))
        return unknownArgument(arguments.first());
    return arguments.join(u' ');
}

Parsed parseCapture(const QStringList& arguments) {
    return parseWords(arguments).map(
        [](const std::optional<QString>& text) -> Command { return CaptureCommand{text}; });
}

Parsed parseItem(ItemCommand::Kind kind, const QStringList& arguments) {
    if (arguments == QStringList(u"--list"_s))
        return ItemCommand{kind, std::nullopt};
    const auto words = parseWords(arguments);
    if (!words)
        return tl::unexpected(words.error());
    if (!*words || (*words)->isEmpty())
        return tl::unexpected(u"which one? Its id or its name is missing; --list lists them"_s);
    return ItemCommand{kind, *words};
}

Parsed parseCheck(QStringList arguments) {
    CheckCommand check;
    while (!arguments.isEmpty()) {
        const QString argument = arguments.first();
        if (const auto time = takeOption(arguments, u"--now"_s)) {
            check.now = parseInternetDateTime(time->toStdString());
            if (!check.now)
                return tl::unexpected(
                    u"\"%1\" is no time such as 2025-03-04T09:30:00Z"_s.arg(*time));
        } else if (check.source.isEmpty() && (argument == u"-" || !argument.startsWith(u'-'))) {
            check.source = arguments.takeFirst();
        } else {
            return notTheOption(argument, u"--now"_s);
        }
    }
    if (check.source.isEmpty())
        return tl::unexpected(u"what is to be checked? A file, an address or - is missing"_s);
    return check;
}

Parsed parseDoctor(const QStringList& arguments) {
    if (arguments.isEmpty() || arguments == QStringList(u"--json"_s))
        return DoctorCommand{.asJson = !arguments.isEmpty()};
    return unknownArgument(arguments.first() == u"--json" ? arguments.at(1) : arguments.first());
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
        {u"join"_s, JoinCommand{}},
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
    if (first == u"agenda")
        return parseAgenda(rest);
    if (first == u"check")
        return parseCheck(rest);
    if (first == u"doctor")
        return parseDoctor(rest);
    if (first == u"capture")
        return parseCapture(rest);
    if (first == u"habit")
        return parseItem(ItemCommand::Kind::Habit, rest);
    if (first == u"chore")
        return parseItem(ItemCommand::Kind::Chore, rest);
    if (const auto command = plainCommand(first))
        return plain(*command, rest);
    return parseRun(arguments);
}

} // namespace lumora
