#include "companion/watching/FileWatch.h"

#include <QFileInfo>

#include <utility>

namespace lumora::companion {

FileWatch::FileWatch(QString path)
    : m_path(std::move(path))
    , m_known(fileStamp(m_path))
    , m_watch(settlingTime) {
    connect(&m_watch, &PathWatch::happened, this, &FileWatch::settle);
    watch();
}

void FileWatch::acknowledge() {
    // First, so that nothing happens between looking and watching.
    watch();
    m_known = fileStamp(m_path);
}

bool FileWatch::hasChanged() const {
    return fileStamp(m_path) != m_known;
}

void FileWatch::watch() {
    // With the folder, because most programs put a new file in the place of the old one.
    const QFileInfo file(m_path);
    QStringList paths{m_path, file.path()};
    if (file.isSymLink())
        paths += QFileInfo(file.symLinkTarget()).path();
    m_watch.watch(paths);
}

void FileWatch::settle() {
    watch();
    if (hasChanged())
        Q_EMIT changed();
}

} // namespace lumora::companion
