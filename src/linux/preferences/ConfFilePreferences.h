#pragma once

#include "linux/files/WholeFile.h"
#include "linux/preferences/IniDocument.h"
#include "platform/Preferences.h"

#include <QFileSystemWatcher>
#include <QMap>
#include <QTimer>

#include <chrono>

namespace lumora {

/// The preferences in an INI file that people and other programs may edit. A file that cannot be
/// read, is larger than `largestWholeFile`, or is no INI file, acts as empty; reading never writes.
/// Why a file cannot be read is told once on the standard error.
class ConfFilePreferences final : public Preferences {
    Q_OBJECT

public:
    /// How long it lets other programs' changes gather before it tells of them: one change is a
    /// burst of events.
    static constexpr std::chrono::milliseconds settlingTime{30};

    /// The file's place in the user's configuration folder: $XDG_CONFIG_HOME, or ~/.config where
    /// that is unset, empty or relative.
    static QString defaultPath();

    /// Uses the file at `path`, which need not exist. Its folder is made (for the user alone) so
    /// that it can be watched.
    explicit ConfFilePreferences(const QString& path = defaultPath());

    [[nodiscard]] std::optional<QString> value(const QString& key) const override;

    /// Replaces the file in one step, readable by the user alone, through a symbolic link where
    /// the path is one. A file that is no INI file is first copied to "<file>.corrupt". One that is
    /// there but cannot be read stays as it is, and nothing is stored.
    [[nodiscard]] tl::expected<void, QString>
    setValue(const QString& key, const QString& text) override;

    [[nodiscard]] bool isStored(const QString& key) const override;

private:
    /// What the file said when it was last read.
    struct Content {
        /// None where there is no file.
        tl::expected<QByteArray, ReadFailure> bytes;
        /// Absent where there are no bytes, or not those of an INI file.
        std::optional<IniDocument> document = IniDocument();
    };

    const Content& read() const;
    void tellOfTrouble();
    QString target() const;
    [[nodiscard]] tl::expected<void, QString> setAside(const QByteArray& bytes) const;
    [[nodiscard]] tl::expected<void, QString> store();
    [[nodiscard]] tl::expected<void, QString> write(const QByteArray& bytes) const;
    void watch();
    void lookForChanges();

    const QString m_path;
    mutable Content m_content;
    Content m_known;                   ///< what listeners know the file to say
    QMap<QString, QString> m_unstored; ///< what holds although the file does not say it
    QString m_trouble;                 ///< why the file cannot be read, as it was last told
    QFileSystemWatcher m_watcher;
    QTimer m_settling;
};

} // namespace lumora
