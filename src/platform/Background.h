#pragma once

#include "platform/Completion.h"

#include <QCoroTask>
#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace lumora {

/// Does work beside the event loop that would hold it up: one piece after another, on a thread that
/// is there while there is work. The work itself is a pure function of values that it owns.
///
/// Whoever waits for work goes on in the event loop, at the latest in this object's end.
class Background final {
public:
    Background();
    ~Background();

    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    /// What `work` returns. It must not throw.
    template <typename Result>
    [[nodiscard]] QCoro::Task<Result> run(std::function<Result()> work) {
        const auto piece = std::make_shared<Piece<Result>>();
        begin(
            [piece, work = std::move(work)] { piece->result.emplace(work()); },
            [piece] { piece->done.complete(*std::move(piece->result)); });
        co_return co_await piece->done.value();
    }

private:
    template <typename Result>
    struct Piece {
        std::optional<Result> result;
        Completion<Result> done;
    };

    /// Calls `work` on the thread, and then `tell` in the event loop.
    void begin(std::function<void()> work, std::function<void()> tell);

    QObject m_loop; ///< the thread it lives on is the event loop's
    QThreadPool m_threads;
    int m_open = 0; ///< pieces that nobody has been told of
};

} // namespace lumora
