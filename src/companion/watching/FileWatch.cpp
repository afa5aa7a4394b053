#include "companion/watching/FileWatch.h"

#include "linux/files/WatchedPaths.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <utility>

namespace lumora::companion {

namespace {

QString nearestFolderOf(QString path) {
    do
        path = QFileInfo(path).path();
    while (!QFileInfo(path).isDir() && QFileInfo(path).path() != path);
    return path;
}

} // namespace

FileWatch::FileWatch(QString path)
    : m_path(std::move(path))
    , m_known(look()) {
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &FileWatch::settle);
    // Started once per burst, not anew by each event, so that constant traffic cannot hold it off.
    const auto gather = [this] {
        if (!m_settling.isActive())
            m_settling.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, gather);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, gather);
    watch();
}

void FileWatch::acknowledge() {
    m_known = look();
    watch();
}

bool FileWatch::hasChanged() const {
    return look() != m_known;
}

FileWatch::State FileWatch::look() const {
    struct stat status{};

    if (stat(QFile::encodeName(m_path).constData(), &status) != 0)
        return {};
    return {
        status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
        status.st_mtim.tv_nsec};
}

void FileWatch::watch() {
    const QFileInfo info(m_path);
    QStringList wanted{nearestFolderOf(m_path)};
    if (info.isSymLink())
        wanted += nearestFolderOf(info.symLinkTarget());
    wanted.removeDuplicates();
    // What the path names may be another file by now: it is watched anew each time.
    m_watcher.removePath(m_path);
    if (info.exists())
        wanted += m_path;
    watchOnly(m_watcher, wanted);
}

void FileWatch::settle() {
    watch();
    if (hasChanged())
        Q_EMIT changed();
}

} // namespace lumora::companion
