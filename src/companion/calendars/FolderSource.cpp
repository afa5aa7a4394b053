#include "companion/calendars/FolderSource.h"

#include "companion/calendars/FileSource.h"
#include "linux/files/WholeFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr qsizetype mostFiles = 50'000;
const QStringList calendarFiles{u"*.ics"_s};
// Programs that synchronise calendars write many files at once.
constexpr std::chrono::milliseconds settlingTime{300};

QString displayName(const QString& folder) {
    const auto text = readFile(folder + u"/displayname"_s);
    const QString name = text ? QString::fromUtf8(*text).simplified() : QString();
    return name.isEmpty() ? QFileInfo(folder).fileName() : name;
}

bool holdsCalendarFiles(const QString& folder) {
    return !QDir(folder).entryList(calendarFiles, QDir::Files).isEmpty();
}

// Folders that programs hide are none of the user's.
QStringList foldersWithin(const QString& folder) {
    QStringList paths;
    const QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names)
        paths += folder + u'/' + name;
    return paths;
}

} // namespace

FolderSource::FolderSource(
    QString name, const QString& path, std::chrono::minutes refresh, ReaderSettings reader, Now now)
    : CalendarSource(std::move(now))
    , m_name(std::move(name))
    , m_path(fullPath(path))
    , m_refresh(refresh)
    , m_reader(std::move(reader))
    , m_watch(settlingTime) {
    connect(&m_watch, &PathWatch::happened, this, &FolderSource::read);
    read();
}

void FolderSource::refreshDue() {
    const auto since = now() - m_lookedAt;
    if (since < std::chrono::seconds(0) || since >= m_refresh)
        read();
}

void FolderSource::read() {
    m_lookedAt = now();
    const QStringList within = foldersWithin(m_path);
    const bool isOne = within.isEmpty() || holdsCalendarFiles(m_path);
    // First, so that nothing happens between watching and reading.
    m_watch.watch({}, isOne ? QStringList(m_path) : QStringList(m_path) + within);
    const QFileInfo folder(m_path);
    if (!folder.isDir() || !folder.isReadable())
        return fail(u"%1: There is no such folder"_s.arg(pathForPeople(m_path)));

    std::vector<NamedEvents> content;
    KnownFiles known;
    if (isOne)
        content.push_back(readFolder(m_path, m_name, known));
    for (const QString& path : isOne ? QStringList() : within) {
        if (holdsCalendarFiles(path))
            content.push_back(readFolder(path, displayName(path), known));
    }
    m_known = std::move(known);
    const auto unread = std::ranges::count_if(
        m_known, [](const auto& file) { return !file.second.events.has_value(); });
    take(std::move(content));
    if (unread > 0)
        complain(u"%1 of %2 files are no calendars"_s.arg(unread).arg(m_known.size()));
}

NamedEvents
FolderSource::readFolder(const QString& folder, const QString& name, KnownFiles& known) const {
    NamedEvents all{.name = name, .events = {}};
    const QStringList files = QDir(folder).entryList(calendarFiles, QDir::Files, QDir::Name);
    for (const QString& file : files.first(std::min(files.size(), mostFiles))) {
        const QString path = folder + u'/' + file;
        const FileStamp stamp = fileStamp(path); // first: what is written meanwhile differs from it
        const auto before = m_known.find(path);
        const bool isKnown = before != m_known.end() && before->second.stamp == stamp;
        KnownFile read = isKnown ? before->second : readCalendarFile(path);
        read.stamp = stamp;
        if (read.events)
            all.events.insert(all.events.end(), read.events->begin(), read.events->end());
        known.emplace(path, std::move(read));
    }
    return all;
}

FolderSource::KnownFile FolderSource::readCalendarFile(const QString& path) const {
    KnownFile file;
    if (const auto text = readFile(path, longestCalendarText))
        file.events = readCalendar(*text, m_reader);
    return file;
}

} // namespace lumora::companion
