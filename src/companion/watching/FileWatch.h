#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

namespace lumora::companion {

/// Tells when the file at a path, or the one that a link there leads to, comes, goes or changes, by
/// the system's own notices.
class FileWatch final : public QObject {
    Q_OBJECT

public:
    /// How long it lets changes gather before it tells of them.
    static constexpr std::chrono::milliseconds settlingTime{50};

    /// The file need not exist, nor its folder.
    explicit FileWatch(QString path);

    /// What stands there now is known, and only what differs from it is a change. To be called
    /// before the file is read.
    void acknowledge();

    /// Whether what stands there differs from what is known.
    [[nodiscard]] bool hasChanged() const;

Q_SIGNALS:
    /// What stands there differs from what is known.
    void changed();

private:
    /// By what two contents of a file are told apart.
    struct State {
        quint64 device = 0;
        quint64 node = 0;
        qint64 size = -1; ///< negative: there is no file
        qint64 seconds = 0;
        qint64 nanoseconds = 0;

        bool operator==(const State&) const = default;
    };

    State look() const;
    void watch();
    void settle();

    const QString m_path;
    State m_known;
    QFileSystemWatcher m_watcher;
    QTimer m_settling;
};

} // namespace lumora::companion
