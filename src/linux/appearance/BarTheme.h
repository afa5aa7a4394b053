#pragma once

#include "linux/appearance/BarThemes.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

#include <optional>

namespace lumora {

/// What the theme of the desktop's bar says of its colour, on desktops whose bar has one of its
/// own, and when the user chooses another.
class BarTheme final : public QObject {
    Q_OBJECT

public:
    /// `desktop` is the session's XDG_CURRENT_DESKTOP.
    explicit BarTheme(
        const QString& desktop, XdgFolders folders = XdgFolders::ofSession(),
        QObject* parent = nullptr);

    /// Whether the bar is dark now; absent when no theme says so. `windowsAreDark` is for themes
    /// that take the windows' colours.
    [[nodiscard]] std::optional<bool> isDark(bool windowsAreDark) const;

Q_SIGNALS:
    /// It may be another colour from now on.
    void changed();

private:
    enum class Kind { None, Plasma, Lxqt };

    void watch();

    Kind m_kind;
    XdgFolders m_folders;
    QFileSystemWatcher m_watcher;
};

} // namespace lumora
