// Whatever stands in the service's configuration is taken whole or refused with words, and what is
// taken is what the service can go by.

#include "Expectations.h"
#include "Targets.h"
#include "companion/settings/SettingsReader.h"

#include <QDir>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

using namespace companion;

const SettingsPlaces& somewhere() {
    static const SettingsPlaces places{u"/home/a"_s, u"/home/a/data"_s, u"/home/a/cache"_s};
    return places;
}

/// Something that goes on one line of a text file.
void expectWord(const QString& text) {
    expectWhole(text);
    expect(!text.trimmed().isEmpty(), "something to call it by");
    expect(
        std::ranges::none_of(text, [](QChar c) { return c.category() == QChar::Other_Control; }),
        "no control character");
}

template <typename Item>
void expectDistinct(const std::vector<Item>& items) {
    QStringList ids;
    for (const Item& item : items) {
        expectWord(item.id);
        expectWord(item.name);
        ids += item.id;
    }
    expect(ids.removeDuplicates() == 0, "no id twice");
}

void expectPath(const QString& path) {
    expectWord(path);
    expect(QDir::isAbsolutePath(path), "an absolute path");
}

void expectPlace(const CalendarPlace& place) {
    if (const auto* address = std::get_if<IcsAddress>(&place))
        expect(address->url.isValid() && !address->url.host().isEmpty(), "an address");
    else if (const auto* file = std::get_if<IcsFile>(&place))
        expectPath(file->path);
    else if (const auto* folder = std::get_if<IcsFolder>(&place))
        expectPath(folder->path);
}

void expectUsable(const ServiceSettings& settings) {
    expect(settings.token.size() >= 16, "a token that is hard to guess");
    expectGraphic(settings.token);
    expect(settings.port > 0, "a port");
    expect(settings.dayEnds.count() >= 0 && settings.dayEnds.count() < 24, "an hour of the day");
    expectPath(settings.logPath);
    expectDistinct(settings.habits);
    expectDistinct(settings.chores);
    expect(settings.habits.empty() || !settings.habitsCommand, "one list of habits");
    expect(settings.chores.empty() || !settings.choresCommand, "one list of chores");
    for (const CalendarSettings& calendar : settings.agenda.calendars) {
        expectWord(calendar.name);
        expectPlace(calendar.place);
    }
    if (const auto* command = std::get_if<CommandLine>(&settings.spending))
        expect(!command->isEmpty(), "a command");
    if (const auto* file = std::get_if<CaptureFile>(&settings.capture))
        expectPath(file->path);
}

} // namespace

void configuration(QByteArrayView input) {
    const auto settings = readSettings(input, somewhere());
    if (settings)
        return expectUsable(*settings);
    expect(!settings.error().isEmpty(), "a reason");
    int line = 0;
    for (const SettingsFault& fault : settings.error()) {
        expectWhole(fault.message);
        expect(!fault.message.isEmpty(), "words to be read");
        expect(fault.line >= line, "faults in the order of their lines");
        line = fault.line;
    }
}

} // namespace lumora::fuzz
