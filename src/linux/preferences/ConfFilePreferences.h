#pragma once

#include "linux/preferences/IniDocument.h"
#include "platform/Preferences.h"

#include <QFileSystemWatcher>
#include <QTimer>

namespace lumora {

/// The preferences in an INI file that people and other programs may edit. A file that cannot be
/// read, or is no INI file, acts as empty; reading never writes.
class ConfFilePreferences final : public Preferences {
    Q_OBJECT

public:
    /// The file's place in the user's configuration folder: $XDG_CONFIG_HOME, or ~/.config where
    /// that is unset, empty or relative.
    static QString defaultPath();

    /// Uses the file at `path`, which need not exist. Its folder is made (for the user alone) so
    /// that it can be watched.
    explicit ConfFilePreferences(const QString& path = defaultPath());

    [[nodiscard]] std::optional<QString> value(const QString& key) const override;

    /// Replaces the file in one step, readable by the user alone, through a symbolic link where
    /// the path is one. A file that is no INI file is first copied to "<file>.corrupt". False,
    /// with nothing changed, when the file is there but cannot be read, or cannot be written.
    [[nodiscard]] bool setValue(const QString& key, const QString& text) override;

private:
    struct Content {
        bool readable = true;
        QByteArray bytes; ///< empty when there is no file
    };

    Content read() const;
    QString target() const;
    [[nodiscard]] bool setAside(const QByteArray& bytes) const;
    [[nodiscard]] bool write(const QByteArray& bytes);
    void watch();

    /// Tells listeners, unless `bytes` are what they know; whether it did.
    bool announce(const QByteArray& bytes);

    const QString m_path;
    QByteArray m_announced; ///< the bytes that listeners were last told about
    QFileSystemWatcher m_watcher;
    QTimer m_settling;
};

} // namespace lumora
