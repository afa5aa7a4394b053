#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace lumora::companion {

/// Tells when something happens to files and folders, once for all that happens within a moment.
class PathWatch final : public QObject {
    Q_OBJECT

public:
    PathWatch();

    /// Watches `paths` from now on, and nothing else. For one that is not there the nearest folder
    /// above it is watched in which it may appear.
    void watch(const QStringList& paths);

Q_SIGNALS:
    void happened();

private:
    QFileSystemWatcher m_watcher;
    QTimer m_settling;
};

} // namespace lumora::companion
