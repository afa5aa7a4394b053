#pragma once

#include "companion/watching/FileStamp.h"
#include "companion/watching/PathWatch.h"

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
    void watch();
    void settle();

    const QString m_path;
    FileStamp m_known;
    PathWatch m_watch;
};

} // namespace lumora::companion
