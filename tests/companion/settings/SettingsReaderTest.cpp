#include "companion/settings/SettingsReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora::companion;
using testing::ElementsAre;

namespace {

const SettingsPlaces places{u"/home/ada"_s, u"/home/ada/data"_s, u"/home/ada/cache"_s};

constexpr auto tokenLine = "token = \"0123456789abcdef\"\n";

ServiceSettings read(const QByteArray& toml) {
    const auto settings = readSettings(tokenLine + toml, places);
    if (!settings) {
        for (const SettingsFault& fault : settings.error())
            ADD_FAILURE() << qPrintable(fault.text());
        return {};
    }
    return *settings;
}

/// Every fault, of which the lines count from the one below the token.
QStringList faultsIn(const QByteArray& toml) {
    const auto settings = readSettings(tokenLine + toml, places);
    QStringList texts;
    if (!settings) {
        for (SettingsFault fault : settings.error()) {
            --fault.line;
            texts += fault.text();
        }
    }
    return texts;
}

} // namespace

TEST(SettingsReader, NeedsNoMoreThanAToken) {
    const ServiceSettings settings = read("");
    EXPECT_EQ(settings.token, "0123456789abcdef");
    EXPECT_EQ(settings.port, 8764);
    EXPECT_EQ(settings.logPath, u"/home/ada/data/service.log"_s);
    EXPECT_EQ(settings.agenda.cacheFolder, u"/home/ada/cache"_s);
    EXPECT_EQ(settings.agenda.refresh, std::chrono::minutes(15));
    EXPECT_TRUE(settings.habits.empty());
    EXPECT_TRUE(std::holds_alternative<std::monostate>(settings.spending));
}

TEST(SettingsReader, TakesWhatIsGeneral) {
    const ServiceSettings settings = read(R"(port = 9000
day_ends = 3
log = "~/notes/log.tsv"
my_addresses = ["ada@example.org"]
meeting_hosts = ["talk.example.org"]
refresh_minutes = 5)");
    EXPECT_EQ(settings.port, 9000);
    EXPECT_EQ(settings.dayEnds, std::chrono::hours(3));
    EXPECT_EQ(settings.logPath, u"/home/ada/notes/log.tsv"_s);
    EXPECT_THAT(settings.agenda.myAddresses, ElementsAre(u"ada@example.org"_s));
    EXPECT_THAT(settings.agenda.meetingHosts, ElementsAre(u"talk.example.org"_s));
    EXPECT_EQ(settings.agenda.refresh, std::chrono::minutes(5));
}

TEST(SettingsReader, TakesEveryKindOfCalendar) {
    const ServiceSettings settings = read(R"([[calendar]]
name = "Work"
url = "https://example.org/a,b;c/basic.ics?x=1&y=%20"
transparent = true
[[calendar]]
name = "Müller, \"Home\""
file = "~/home.ics"
[[calendar]]
name = "Phone"
dir = "/var/calendars//phone/"
[[calendar]]
gnome = true)");
    const QUrl url(u"https://example.org/a,b;c/basic.ics?x=1&y=%20"_s);
    EXPECT_THAT(
        settings.agenda.calendars,
        ElementsAre(
            CalendarSettings{u"Work"_s, IcsAddress{url}, true},
            CalendarSettings{u"Müller, \"Home\""_s, IcsFile{u"/home/ada/home.ics"_s}, false},
            CalendarSettings{u"Phone"_s, IcsFolder{u"/var/calendars/phone"_s}, false},
            CalendarSettings{u"GNOME"_s, GnomeCalendars{}, false}));
}

TEST(SettingsReader, TakesHabitsAndChores) {
    const ServiceSettings settings = read(R"([[habit]]
id = "water"
name = "Drink water"
target = 8
[[habit]]
id = "read"
[[chore]]
id = "plants"
name = "Water the plants"
room = "Living room"
days = 7)");
    EXPECT_THAT(
        settings.habits, ElementsAre(
                             HabitSettings{u"water"_s, u"Drink water"_s, 8},
                             HabitSettings{u"read"_s, u"read"_s, 1}));
    EXPECT_THAT(
        settings.chores,
        ElementsAre(ChoreSettings{u"plants"_s, u"Water the plants"_s, u"Living room"_s, 7}));
}

TEST(SettingsReader, TakesCommandsForEverything) {
    const ServiceSettings settings = read(R"([habits]
command = ["~/bin/habits", "--json"]
act = ["habits-toggle"]
[chores]
command = ["chores"]
[capture]
command = ["note", "add"]
[spending]
command = ["spent"]
[focus]
command = ["focus"])");
    EXPECT_EQ(
        settings.habitsCommand,
        (ListCommand{{u"/home/ada/bin/habits"_s, u"--json"_s}, {u"habits-toggle"_s}}));
    EXPECT_EQ(settings.choresCommand, (ListCommand{{u"chores"_s}, {}}));
    EXPECT_EQ(settings.capture, CaptureSettings(CommandLine{u"note"_s, u"add"_s}));
    EXPECT_EQ(settings.spending, SpendingSettings(CommandLine{u"spent"_s}));
    EXPECT_EQ(settings.focus, FocusSettings(CommandLine{u"focus"_s}));
}

TEST(SettingsReader, GuessesTheFormatOfAnInboxByItsName) {
    const auto formatOf = [](const QByteArray& lines) {
        return std::get<CaptureFile>(read("[capture]\n" + lines).capture).format;
    };
    EXPECT_EQ(formatOf("file = \"~/inbox.md\""), CaptureFormat::Markdown);
    EXPECT_EQ(formatOf("file = \"~/inbox.org\""), CaptureFormat::Org);
    EXPECT_EQ(formatOf("file = \"~/todo.txt\""), CaptureFormat::TodoTxt);
    EXPECT_EQ(formatOf("file = \"~/inbox\""), CaptureFormat::Plain);
    EXPECT_EQ(formatOf("file = \"~/inbox.md\"\nformat = \"plain\""), CaptureFormat::Plain);
}

TEST(SettingsReader, TakesAJournalAndActivity) {
    const ServiceSettings settings = read(R"([spending]
hledger = "~/books/2025.journal"
currency = "EUR"
[[spending.bucket]]
account = "expenses:food"
label = "Groceries"
icon = "🛒"
color = "#1E90ff"
[focus]
activitywatch = "http://localhost:5600"
productive = ["Work", "Media > Reading"])");
    const JournalSettings journal{
        u"/home/ada/books/2025.journal"_s,
        u"EUR"_s,
        {{u"expenses:food"_s, u"Groceries"_s, u"🛒"_s, u"#1E90ff"_s}}};
    EXPECT_EQ(settings.spending, SpendingSettings(journal));
    const ActivitySettings activity{
        QUrl(u"http://localhost:5600"_s), {u"Work"_s, u"Media > Reading"_s}};
    EXPECT_EQ(settings.focus, FocusSettings(activity));
}

TEST(SettingsReader, NamesEveryFaultWithItsLine) {
    EXPECT_THAT(
        faultsIn(R"(port = 70000
colour = "red"
[[calendar]]
name = 7
url = "ftp://example.org/x.ics"
[[habit]]
id = "a"
target = 0
goal = 3
[[habit]]
id = "a"
[[chore]]
id = "plants")"),
        ElementsAre(
            u"line 1: port: must be a whole number from 1 to 65535"_s,
            u"line 2: colour: is not known here"_s,
            u"line 4: [[calendar]] name: must be a text in quotation marks"_s,
            u"line 5: [[calendar]] url: must be an address that begins with https:// or webcal://"_s,
            u"line 8: [[habit]] target: must be a whole number from 1 to 1000"_s,
            u"line 9: [[habit]] goal: is not known here"_s,
            u"line 11: [[habit]] id: is the id of another one too"_s,
            u"line 12: [[chore]] days: is missing"_s));
}

TEST(SettingsReader, RefusesWhatCannotBothBeMeant) {
    EXPECT_THAT(
        faultsIn("[[calendar]]\nname = \"a\"\nfile = \"/a\"\ndir = \"/b\"\n"),
        ElementsAre(u"line 1: [[calendar]]: needs exactly one of url, file, dir and gnome"_s));
    EXPECT_THAT(
        faultsIn("[[calendar]]\nname = \"a\"\n"),
        ElementsAre(u"line 1: [[calendar]]: needs exactly one of url, file, dir and gnome"_s));
    EXPECT_THAT(
        faultsIn("[capture]\n"),
        ElementsAre(u"line 1: [capture]: needs exactly one of file and command"_s));
    EXPECT_THAT(
        faultsIn("[[habit]]\nid = \"a\"\n[habits]\ncommand = [\"b\"]\n"),
        ElementsAre(u"line 3: habits: cannot stand beside [[habit]]"_s));
}

TEST(SettingsReader, RefusesValuesOfTheWrongKind) {
    const QList<std::pair<QByteArray, QString>> cases{
        {"log = \"notes/log\"", u"log: must be a path that begins with / or ~/"_s},
        {"log = \"  \"", u"log: must not be empty"_s},
        {"log = \"/a\\u0000b\"", u"log: must be one line without control characters"_s},
        {"day_ends = 24", u"day_ends: must be a whole number from 0 to 23"_s},
        {"day_ends = 3.0", u"day_ends: must be a whole number from 0 to 23"_s},
        {"my_addresses = \"a\"",
         u"my_addresses: must be a list of texts, such as [\"a\", \"b\"]"_s},
        {"habit = 3", u"habit: must be tables, each written [[habit]]"_s},
        {"capture = 3", u"capture: must be a table, written [capture]"_s},
        {"[[calendar]]\nname = \"a\"\nurl = \"http://example.org/a.ics\"",
         u"[[calendar]] url: must be an address that begins with https:// or webcal://"_s},
        {"[[calendar]]\nname = \"a\"\nfile = \"/a\"\n[[calendar]]\nname = \"a\"\nfile = \"/b\"",
         u"[[calendar]] name: is the name of another one too"_s},
        {"[[calendar]]\ngnome = false", u"[[calendar]] gnome: must be true, or not be there"_s},
        {"[[calendar]]\ngnome = 1", u"[[calendar]] gnome: must be true or false"_s},
        {"[habits]\ncommand = []",
         u"[habits] command: must be a list of texts, such as [\"a\", \"b\"]"_s},
        {"[capture]\nfile = \"/a\"\nformat = \"rtf\"",
         u"[capture] format: must be \"markdown\", \"todo.txt\", \"org\" or \"plain\""_s},
        {"[spending]\nhledger = \"/a\"\n[[spending.bucket]]\naccount = \"a\"\ncolor = \"#12345\"",
         u"[[spending.bucket]] color: must be a colour such as \"#1E90FF\""_s},
        {"[focus]\nactivitywatch = \"localhost\"",
         u"[focus] activitywatch: must be an address such as \"http://localhost:5600\""_s},
    };
    for (const auto& [toml, fault] : cases) {
        const QStringList faults = faultsIn(toml);
        ASSERT_EQ(faults.size(), 1) << toml.constData() << faults.join(u'\n').toStdString();
        EXPECT_TRUE(faults.first().endsWith(u": "_s + fault)) << qPrintable(faults.first());
    }
}

TEST(SettingsReader, NeedsATokenThatIsHardToGuess) {
    const QString wanted = u"token: must be 16 or more letters and digits without blanks"_s;
    for (const QByteArray toml :
         {"token = \"short\"", "token = \"has blanks in it, many\"",
          "token = \"äöüäöüäöüäöüäöü\""}) {
        const auto settings = readSettings(toml, places);
        ASSERT_FALSE(settings) << toml.constData();
        EXPECT_EQ(settings.error().first().message, wanted);
    }
    EXPECT_EQ(readSettings("", places).error().first().message, u"token: is missing"_s);
}

TEST(SettingsReader, SaysWhereTheTextIsNoToml) {
    const QStringList faults = faultsIn("[[habit]]\nname = \n");
    ASSERT_EQ(faults.size(), 1);
    EXPECT_TRUE(faults.first().startsWith(u"line 2: is no TOML: "_s)) << qPrintable(faults.first());
    for (const char* const text : {"[[habit]]\n[\1", "\n[", "\n[[ \n", "\n[]", "\r\n[\rx"}) {
        ASSERT_EQ(faultsIn(text).size(), 1) << text;
        EXPECT_TRUE(faultsIn(text).first().contains(u"is no TOML: "_s)) << text;
    }
    EXPECT_EQ(
        faultsIn("[[habit]]\nname = \"\xff\xfe\""),
        QStringList{u"line 2: has bytes that are no text"_s});
    for (const char* const text : {"# é\nnamé = 1", "x = \"é\" # é\nx = \"\\\"\" é", "\n [ é ]"})
        EXPECT_EQ(
            faultsIn(text), QStringList{u"line 2: has letters that belong into quotation marks"_s});
}

// Each of these leaves the library without an answer of its own, if it is given them as they are.
TEST(SettingsReader, RefusesWhatTheLibraryDoesNotExpect) {
    for (const char* const text :
         {"x = [[}\n{y = \"a", "x = 0[\"a/bќ", "\"\"= \"\\ﻟ", "x = 32\"6Ǟ[[h'", "[\n0=\"é"}) {
        ASSERT_EQ(faultsIn(text).size(), 1) << text;
        EXPECT_TRUE(faultsIn(text).first().contains(u"is no TOML: "_s)) << text;
    }
}

TEST(SettingsReader, KeepsEveryLetterOfATextAndAName) {
    for (const char* const text : {"Müll ~20 ~ %20", "日程 🔥", "~é~"}) {
        const QByteArray toml =
            QByteArray("token = \"0123456789abcdef\"\n[[habit]]\nid = \"a\"\nname = '") + text +
            "'\n";
        const auto settings = readSettings(toml, places);
        ASSERT_TRUE(settings);
        EXPECT_EQ(settings->habits.front().name, QString::fromUtf8(text));
    }
    EXPECT_EQ(faultsIn("\"größe ~\" = 1"), QStringList{u"line 1: größe ~: is not known here"_s});
}
