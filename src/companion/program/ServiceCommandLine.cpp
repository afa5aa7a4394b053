#include "companion/program/ServiceCommandLine.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

using Parsed = tl::expected<ServiceCommand, QString>;

tl::unexpected<QString> wrongUse(const QString& what) {
    return tl::unexpected<QString>(what + u"; see lumora-service --help"_s);
}

/// "Water the plants:7"
std::optional<std::pair<QString, qint64>> choreFrom(const QString& text) {
    const qsizetype colon = text.lastIndexOf(u':');
    bool isNumber = false;
    const qint64 days = text.mid(colon + 1).toLongLong(&isNumber);
    const QString name = text.left(std::max<qsizetype>(colon, 0)).trimmed();
    if (name.isEmpty() || !isNumber || days < 1 || days > 3660)
        return std::nullopt;
    return std::pair(name, days);
}

/// Takes an option with a value into `init`; what is wrong with it, or nothing.
std::optional<QString> takeValue(InitCommand& init, const QString& option, const QString& value) {
    if (value.trimmed().isEmpty())
        return u"%1 needs a value"_s.arg(option);
    if (option == u"--calendar")
        init.calendars += value;
    else if (option == u"--habit")
        init.habits += value.trimmed();
    else if (option == u"--inbox")
        init.inbox = value;
    else if (option == u"--hledger")
        init.journal = value;
    else if (option == u"--port")
        init.port = value.toUShort();
    if (option == u"--port" && init.port == 0)
        return u"--port needs a number from 1 to 65535"_s;
    if (option == u"--chore") {
        const auto chore = choreFrom(value);
        if (!chore)
            return u"--chore needs a name and days, such as \"Water the plants:7\""_s;
        init.chores += *chore;
    }
    return std::nullopt;
}

bool takesValue(const QString& option) {
    static const QStringList options{u"--calendar"_s, u"--habit"_s,   u"--chore"_s,
                                     u"--inbox"_s,    u"--hledger"_s, u"--port"_s};
    return options.contains(option);
}

Parsed parseInit(QStringList arguments) {
    InitCommand init;
    while (!arguments.isEmpty()) {
        QString option = arguments.takeFirst();
        if (option == u"--gnome") {
            init.gnome = true;
        } else if (option == u"--connect") {
            init.connect = true;
        } else {
            const qsizetype equals = option.indexOf(u'=');
            std::optional<QString> value;
            if (option.startsWith(u"--") && equals > 0) {
                value = option.mid(equals + 1);
                option.truncate(equals);
            }
            if (!takesValue(option))
                return wrongUse(u"unknown argument \"%1\""_s.arg(option));
            if (!value)
                value = arguments.isEmpty() ? QString() : arguments.takeFirst();
            if (const auto fault = takeValue(init, option, *value))
                return wrongUse(*fault);
        }
    }
    return init;
}

} // namespace

Parsed parseServiceCommand(const QStringList& arguments) {
    if (arguments.isEmpty())
        return wrongUse(u"what to do is missing"_s);
    const QString& word = arguments.first();
    if (word == u"init")
        return parseInit(arguments.mid(1));
    if (arguments.size() > 1)
        return wrongUse(u"unknown argument \"%1\""_s.arg(arguments[1]));
    if (word == u"connect")
        return ConnectCommand{};
    if (word == u"check")
        return CheckCommand{};
    if (word == u"run")
        return RunCommand{};
    if (word == u"--help" || word == u"-h")
        return HelpCommand{};
    if (word == u"--version")
        return VersionCommand{};
    return wrongUse(u"unknown argument \"%1\""_s.arg(word));
}

QString serviceUsage() {
    return uR"(Usage: lumora-service init [--calendar URL|FILE|FOLDER]... [--habit NAME]...
                           [--chore NAME:DAYS]... [--inbox FILE] [--hledger FILE]
                           [--gnome] [--port NUMBER] [--connect]
       lumora-service connect
       lumora-service check
       lumora-service run

Makes a briefing for Lumora of what you have: calendars, habits, chores, a journal, an inbox.

  init               write ~/.config/lumora/service.toml, which must not be there yet
    --calendar       an https:// or webcal:// address, an .ics file, or a folder of them
    --habit          something to do every day
    --chore          something to do every so many days, such as "Water the plants:7"
    --inbox          a file that captured thoughts are appended to (.md, .org, todo.txt or other)
    --hledger        an hledger journal, for what was spent this month
    --gnome          the calendars of GNOME and its online accounts
    --port           where to serve, 8764 unless told otherwise
    --connect        have Lumora fetch from this service, as "connect" does
  connect            store the address and the token where Lumora finds them
  check              say how each source stands; never tells a secret address
  run                serve on 127.0.0.1 until told to end
  --help             print this
  --version          print the version

Exit status: 0 success, 1 failure, 2 wrong arguments.
)"_s;
}

} // namespace lumora::companion
