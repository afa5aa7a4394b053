#include "linux/appearance/BarTheme.h"

#include "linux/files/WatchedPaths.h"
#include "platform/DesktopNames.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

BarTheme::BarTheme(const QString& desktop, XdgFolders folders, QObject* parent)
    : QObject(parent)
    , m_kind(
          namesDesktop(desktop, {"KDE"_L1})    ? Kind::Plasma
          : namesDesktop(desktop, {"LXQt"_L1}) ? Kind::Lxqt
                                               : Kind::None)
    , m_folders(std::move(folders)) {
    if (m_kind == Kind::None)
        return;
    const auto look = [this] {
        watch();
        Q_EMIT changed();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, look);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, look);
    watch();
}

std::optional<bool> BarTheme::isDark(bool windowsAreDark) const {
    switch (m_kind) {
    case Kind::Plasma:
        return plasmaBarIsDark(m_folders);
    case Kind::Lxqt:
        return lxqtBarIsDark(m_folders, windowsAreDark);
    case Kind::None:
        break;
    }
    return std::nullopt;
}

// A file that is replaced is another one, and one that is not there yet is seen by its folder
// alone. Folders are left alone otherwise: much happens there that does not matter here.
void BarTheme::watch() {
    QStringList wanted;
    const QStringList files =
        m_kind == Kind::Plasma ? plasmaBarFiles(m_folders) : lxqtBarFiles(m_folders);
    for (const QString& file : files) {
        const QString path = QFile::exists(file) ? file : QFileInfo(file).path();
        if (!wanted.contains(path) && QFile::exists(path))
            wanted += path;
    }
    watchOnly(m_watcher, wanted);
}

} // namespace lumora
