#pragma once

#include <QStringList>

#include <optional>

namespace lumora {

/// Where the session's configuration and data are, most important first.
struct XdgFolders {
    QStringList config;
    QStringList data;

    /// As the environment has them.
    [[nodiscard]] static XdgFolders ofSession();
};

/// The files of the user's that Plasma's bar depends on, whether they are there or not.
[[nodiscard]] QStringList plasmaBarFiles(const XdgFolders& folders);

/// Whether Plasma's bar is dark, by its own theme, which may differ from the windows' colours;
/// absent when nothing says so.
[[nodiscard]] std::optional<bool> plasmaBarIsDark(const XdgFolders& folders);

/// The files of the user's that LXQt's bar depends on, whether they are there or not.
[[nodiscard]] QStringList lxqtBarFiles(const XdgFolders& folders);

/// Whether LXQt's bar is dark, by its theme, which may take the windows' colours; absent when
/// nothing says so.
[[nodiscard]] std::optional<bool> lxqtBarIsDark(const XdgFolders& folders, bool windowsAreDark);

} // namespace lumora
