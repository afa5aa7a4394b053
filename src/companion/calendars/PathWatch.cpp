#include "companion/calendars/PathWatch.h"

#include "linux/files/WatchedPaths.h"

#include <QFileInfo>

namespace lumora::companion {

namespace {

// Programs that synchronise calendars write many files at once.
constexpr std::chrono::milliseconds settlingTime{300};

QString nearestPath(QString path) {
    while (!QFileInfo::exists(path) && QFileInfo(path).path() != path)
        path = QFileInfo(path).path();
    return path;
}

} // namespace

PathWatch::PathWatch() {
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &PathWatch::happened);
    // Started once per burst, not anew by each event, so that constant traffic cannot hold it off.
    const auto settle = [this] {
        if (!m_settling.isActive())
            m_settling.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, settle);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, settle);
}

void PathWatch::watch(const QStringList& paths) {
    QStringList there;
    for (const QString& path : paths)
        there += nearestPath(path);
    there.removeDuplicates();
    watchOnly(m_watcher, there);
}

} // namespace lumora::companion
