#include "companion/calendars/FileSource.h"

#include "linux/files/WholeFile.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

FileSource::FileSource(QString name, const QString& path, ReaderSettings reader, Now now)
    : CalendarSource(std::move(now))
    , m_name(std::move(name))
    , m_path(fullPath(path))
    , m_reader(std::move(reader))
    , m_watch(m_path) {
    connect(&m_watch, &FileWatch::changed, this, &FileSource::read);
    read();
}

void FileSource::refreshDue() {
    if (m_watch.hasChanged())
        read();
}

void FileSource::read() {
    m_watch.acknowledge();
    const auto text = readFile(m_path, longestCalendarText);
    if (!text)
        return fail(text.error().message);
    auto events = readCalendar(*text, m_reader);
    if (!events)
        return fail(u"%1: The file is no calendar"_s.arg(pathForPeople(m_path)));
    take({{.name = m_name, .events = std::move(*events)}});
}

QString fullPath(const QString& path) {
    const QString full = path.startsWith(u"~/"_s) ? QDir::homePath() + path.sliced(1) : path;
    return QDir::cleanPath(QFileInfo(full).absoluteFilePath());
}

} // namespace lumora::companion
