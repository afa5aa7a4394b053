#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <set>

namespace lumora::companion {

/// Tells when something happens to files and folders, by the system's own notices, once for all
/// that happens within a moment.
class PathWatch final : public QObject {
    Q_OBJECT

public:
    /// It waits for `settlingTime` after the first notice, for what comes with it.
    explicit PathWatch(std::chrono::milliseconds settlingTime);
    ~PathWatch() override;

    /// Watches from now on the files and folders at `paths`, and the `folders` with whatever is
    /// written into the files in them; nothing else. Links are followed. For what is not there the
    /// nearest folder above it is watched, in which it may appear. To be called anew after each
    /// notice, since other files may stand there by then.
    void watch(const QStringList& paths, const QStringList& folders = {});

Q_SIGNALS:
    void happened();

private:
    void receive();

    const int m_notices; ///< the descriptor they come from; negative: there is none to be had
    QSocketNotifier m_readable;
    std::set<int> m_watches;
    QTimer m_settling;
};

} // namespace lumora::companion
