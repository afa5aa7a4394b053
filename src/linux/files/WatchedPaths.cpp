#include "linux/files/WatchedPaths.h"

namespace lumora {

void watchOnly(QFileSystemWatcher& watcher, const QStringList& paths) {
    const QStringList watched = watcher.files() + watcher.directories();
    for (const QString& path : watched) {
        if (!paths.contains(path))
            watcher.removePath(path);
    }
    for (const QString& path : paths) {
        if (!watched.contains(path))
            watcher.addPath(path);
    }
}

} // namespace lumora
