#include "linux/autostart/AutostartRegistry.h"

#include "linux/autostart/DesktopEntry.h"
#include "linux/files/WholeFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString fileName = u"com.lumora.app.desktop"_s;

const QString hidden = u"Hidden"_s;
// Set where Lumora itself has hidden an entry of the system's: that is no switch of the desktop's.
const QString unregistered = u"X-Lumora-Unregistered"_s;
// The switches of the desktops that have one of their own.
const QStringList switches{u"X-GNOME-Autostart-enabled"_s, u"X-MATE-Autostart-enabled"_s};

constexpr auto readableByAll =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;

bool isSwitchedOff(const DesktopEntry& entry) {
    return entry.isTrue(hidden) || std::ranges::any_of(switches, [&entry](const QString& key) {
               return entry.isFalse(key);
           });
}

bool programExists(const QString& program) {
    if (program.isEmpty())
        return false;
    if (!program.contains(u'/'))
        return !QStandardPaths::findExecutable(program).isEmpty();
    const QFileInfo file(program);
    return file.isFile() && file.isExecutable();
}

LoginItemStatus statusOf(const QByteArray& bytes) {
    const auto entry = DesktopEntry::parse(bytes);
    if (!entry)
        return LoginItemStatus::NotFound; // no desktop could start anything by this
    if (entry->isTrue(hidden) && entry->isTrue(unregistered))
        return LoginItemStatus::NotRegistered;
    if (isSwitchedOff(*entry))
        return LoginItemStatus::RequiresApproval;
    const auto tryExec = entry->value(u"TryExec"_s);
    const bool isThere = programExists(programOf(entry->value(u"Exec"_s).value_or(QString()))) &&
                         (!tryExec || programExists(*tryExec));
    return isThere ? LoginItemStatus::Enabled : LoginItemStatus::NotFound;
}

QByteArray contentOf(const QString& path) {
    return readFile(path).value_or(QByteArray());
}

/// There is something at `path`, be it a link that leads nowhere.
bool isTaken(const QString& path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

tl::unexpected<QString> failure(const QString& path, const QString& message) {
    return tl::unexpected<QString>(path + u": "_s + message);
}

std::filesystem::path nativePath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString absoluteOr(const QString& folder, const QString& otherwise) {
    return QDir::isAbsolutePath(folder) ? QDir::cleanPath(folder) : otherwise;
}

} // namespace

AutostartRegistry::Places AutostartRegistry::defaultPlaces() {
    const QString user =
        absoluteOr(qEnvironmentVariable("XDG_CONFIG_HOME"), QDir::homePath() + u"/.config"_s);
    QStringList system;
    const auto folders = qEnvironmentVariable("XDG_CONFIG_DIRS").split(u':');
    for (const QString& folder : folders) {
        if (QDir::isAbsolutePath(folder))
            system += QDir::cleanPath(folder) + u"/autostart"_s;
    }
    if (system.isEmpty())
        system += u"/etc/xdg/autostart"_s;
    return {user + u"/autostart"_s, system, QCoreApplication::applicationFilePath()};
}

AutostartRegistry::AutostartRegistry(Places places)
    : m_places(std::move(places)) {}

QString AutostartRegistry::userFile() const {
    return m_places.userFolder + u'/' + fileName;
}

std::optional<QString> AutostartRegistry::effectiveFile() const {
    const QStringList folders = QStringList(m_places.userFolder) + m_places.systemFolders;
    for (const QString& folder : folders) {
        QString path = folder + u'/' + fileName;
        if (isTaken(path))
            return path;
    }
    return std::nullopt;
}

bool AutostartRegistry::hasSystemEntry() const {
    return std::ranges::any_of(m_places.systemFolders, [](const QString& folder) {
        return QFileInfo::exists(folder + u'/' + fileName);
    });
}

LoginItemStatus AutostartRegistry::status() const {
    const auto file = effectiveFile();
    return file ? statusOf(contentOf(*file)) : LoginItemStatus::NotRegistered;
}

QString AutostartRegistry::place() const {
    return pathForPeople(effectiveFile().value_or(userFile()));
}

tl::expected<void, QString> AutostartRegistry::registerProgram() {
    DesktopEntry entry = DesktopEntry::parse(contentOf(userFile())).value_or(DesktopEntry());
    const auto setUnlessThere = [&entry](const QString& key, const QString& text) {
        if (!entry.value(key))
            entry.setValue(key, text);
    };
    entry.setValue(u"Type"_s, u"Application"_s);
    setUnlessThere(u"Name"_s, u"Lumora"_s);
    setUnlessThere(u"Comment"_s, u"Your next meeting, habits and chores in the status area"_s);
    entry.setValue(u"Exec"_s, execLineFor(m_places.program));
    setUnlessThere(u"Icon"_s, u"com.lumora.app"_s);
    setUnlessThere(u"Terminal"_s, u"false"_s);

    entry.remove(hidden);
    entry.remove(unregistered);
    entry.remove(u"TryExec"_s);
    for (const QString& key : switches) {
        if (entry.value(key))
            entry.setValue(key, u"true"_s);
    }
    return write(entry);
}

tl::expected<void, QString> AutostartRegistry::unregisterProgram() {
    if (hasSystemEntry()) {
        DesktopEntry entry = DesktopEntry::parse(contentOf(userFile())).value_or(DesktopEntry());
        entry.setValue(hidden, u"true"_s);
        entry.setValue(unregistered, u"true"_s);
        return write(entry);
    }
    std::error_code error;
    std::filesystem::remove(nativePath(userFile()), error);
    if (error)
        return failure(userFile(), QString::fromLocal8Bit(error.message()));
    return {};
}

tl::expected<void, QString> AutostartRegistry::write(const DesktopEntry& entry) const {
    std::error_code error;
    std::filesystem::create_directories(nativePath(m_places.userFolder), error);
    if (error)
        return failure(m_places.userFolder, QString::fromLocal8Bit(error.message()));

    return replaceFile(userFile(), entry.bytes(), readableByAll);
}

} // namespace lumora
