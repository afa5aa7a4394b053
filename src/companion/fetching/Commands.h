#pragma once

#include <QByteArray>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <tl/expected.hpp>

#include <chrono>
#include <functional>

namespace lumora::companion {

/// What is started, and what ends it.
struct CommandRequest {
    QStringList words;     ///< the program and its arguments; no shell sees them
    QByteArray input = {}; ///< for its standard input, which then closes
    std::chrono::milliseconds longest{30'000};
    qint64 largest = qint64{1024} * 1024; ///< of what it prints
};

/// What the program printed, or why it did not end well, in one line for people.
using CommandOutcome = tl::expected<QByteArray, QString>;

/// Starts programs. Lives in a thread with an event loop.
class Commands final : public QObject {
    Q_OBJECT

public:
    Commands() = default;

    /// Ends what still runs, with all that it started.
    ~Commands() override;

    /// Starts the program. `done` is called once, from the event loop and never from within the
    /// call; not if this object is gone before.
    void run(CommandRequest request, std::function<void(CommandOutcome)> done);

private:
    class Run;
    QSet<Run*> m_runs;
    QSet<Run*> m_over; ///< to be deleted
};

} // namespace lumora::companion
