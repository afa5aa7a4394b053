#pragma once

#include "companion/program/Sources.h"
#include "companion/server/HttpAnswer.h"
#include "companion/server/ServiceAction.h"

#include <QThread>
#include <QTimer>

#include <memory>
#include <mutex>

namespace lumora::companion {

/// Keeps a briefing ready that was made ahead, in a thread of its own, in which all sources live.
/// Its functions are for the thread that made it.
class Worker final : public QObject {
    Q_OBJECT

public:
    explicit Worker(ServiceSettings settings);

    /// Ends what the sources have under way.
    ~Worker() override;

    /// Hands over the briefing: at once where it is of the last minutes, otherwise as soon as it
    /// has been made anew. That is so after the machine has slept.
    void withBriefing(std::function<void(std::shared_ptr<const QByteArray>)> then);

    /// Does what an action wants, makes the briefing anew, and then answers.
    void act(ServiceAction action, std::function<void(HttpAnswer)> answer);

private:
    /// What lives in the other thread.
    class Inside;

    struct Made {
        std::shared_ptr<const QByteArray> briefing; ///< null: not yet
        std::chrono::sys_seconds at;
    };

    Made made();

    std::mutex m_mutex;
    Made m_made; ///< written by the other thread
    QThread m_thread;
    Inside* m_inside = nullptr; ///< goes with the thread
};

} // namespace lumora::companion
