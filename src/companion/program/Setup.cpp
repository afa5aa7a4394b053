#include "companion/program/Setup.h"

#include "companion/fetching/Web.h"
#include "linux/files/WholeFile.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

using Calendar = tl::expected<CalendarSettings, QString>;

tl::unexpected<QString> notThere(const QString& path) {
    return tl::unexpected(u"%1 is not there"_s.arg(path));
}

bool isAddress(const QString& place) {
    return place.contains(u"://");
}

Calendar calendarAtAddress(const QString& place) {
    const QUrl url(place, QUrl::StrictMode);
    if (!fetchableUrl(url))
        return tl::unexpected(u"that is no https:// or webcal:// address"_s);
    return CalendarSettings{u"Calendar"_s, IcsAddress{url}, false};
}

Calendar calendarAt(const QString& place) {
    if (isAddress(place))
        return calendarAtAddress(place);
    const QFileInfo info(place);
    if (info.isDir())
        return CalendarSettings{
            QDir(place).dirName(), IcsFolder{QDir::cleanPath(info.absoluteFilePath())}, false};
    if (!info.isFile())
        return notThere(place);
    return CalendarSettings{
        info.completeBaseName(), IcsFile{QDir::cleanPath(info.absoluteFilePath())}, false};
}

/// Two calendars are told apart by their names.
void numberNames(std::vector<CalendarSettings>& calendars) {
    QStringList names;
    for (CalendarSettings& calendar : calendars) {
        const QString base = calendar.name.isEmpty() ? u"Calendar"_s : calendar.name;
        calendar.name = base;
        for (int count = 2; names.contains(calendar.name); ++count)
            calendar.name = u"%1 %2"_s.arg(base).arg(count);
        names += calendar.name;
    }
}

} // namespace

tl::expected<NewSettings, QString>
newSettingsFor(const InitCommand& init, const QByteArray& token) {
    NewSettings settings;
    settings.token = token;
    settings.port = init.port > 0 ? init.port : settings.port;
    for (const QString& place : init.calendars) {
        auto calendar = calendarAt(place);
        if (!calendar)
            return tl::unexpected(u"--calendar: "_s + calendar.error());
        settings.calendars.push_back(*std::move(calendar));
    }
    if (init.gnome)
        settings.calendars.push_back({u"GNOME"_s, GnomeCalendars{}, false});
    numberNames(settings.calendars);
    settings.habits = init.habits;
    for (const auto& [name, days] : init.chores)
        settings.chores.push_back({{}, name, {}, days});
    if (!init.inbox.isEmpty())
        settings.inbox = QDir::cleanPath(QFileInfo(init.inbox).absoluteFilePath());
    if (!init.journal.isEmpty()) {
        if (!QFileInfo(init.journal).isFile())
            return notThere(init.journal);
        settings.journal = QDir::cleanPath(QFileInfo(init.journal).absoluteFilePath());
    }
    return settings;
}

tl::expected<void, QString> writeNewSettings(const NewSettings& settings, const QString& path) {
    if (QFileInfo::exists(path) || QFileInfo(path).isSymLink())
        return tl::unexpected(
            u"%1 is there already; edit it, or move it away first"_s.arg(pathForPeople(path)));
    const QByteArray text = newSettingsText(settings);
    if (const auto read = readSettings(text, {}); !read)
        return tl::unexpected(read.error().first().message);
    const QString folder = QFileInfo(path).path();
    if (!QDir(folder).exists()) {
        QDir().mkpath(QFileInfo(folder).path());
        QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    return replaceFile(path, text, QFile::ReadOwner | QFile::WriteOwner);
}

tl::expected<ServiceSettings, QStringList> readSettingsFile(const Places& places) {
    const QString name = pathForPeople(places.settingsFile);
    const auto bytes = readFile(places.settingsFile);
    if (!bytes && bytes.error().isAbsent)
        return tl::unexpected(
            QStringList{u"there is no %1; \"lumora-service init\" writes one"_s.arg(name)});
    if (!bytes)
        return tl::unexpected(QStringList{bytes.error().message});
    auto settings = readSettings(*bytes, places.inSettings);
    if (settings)
        return *std::move(settings);
    QStringList lines;
    for (const SettingsFault& fault : settings.error())
        lines += name + u": "_s + fault.text();
    return tl::unexpected(lines);
}

QString endpointOf(quint16 port) {
    return u"http://127.0.0.1:%1/api/briefing"_s.arg(port);
}

QString nextSteps(bool hasSystemd, const QString& dataFolder) {
    if (hasSystemd)
        return u"Start it, now and with every login:\n"
               "  systemctl --user enable --now lumora-service\n"_s;
    return u"Start it now:\n"
           "  lumora-service run &\n"
           "and with every login:\n"
           "  cp %1/com.lumora.service.desktop ~/.config/autostart/\n"_s.arg(dataFolder);
}

} // namespace lumora::companion
