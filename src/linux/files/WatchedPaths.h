#pragma once

#include <QFileSystemWatcher>
#include <QStringList>

namespace lumora {

/// Has `watcher` watch `paths`, which are there, and nothing else. Those that it watches already
/// are left alone.
void watchOnly(QFileSystemWatcher& watcher, const QStringList& paths);

} // namespace lumora
