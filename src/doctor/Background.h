#pragma once

#include <QThread>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <type_traits>

namespace lumora {

/// Something that may never end, tried beside everything else. Whoever does not wait for it any
/// more leaves it behind, for as long as the process lives.
template <typename Value>
class Background {
public:
    using Moment = std::chrono::steady_clock::time_point;

    template <typename Try>
    explicit Background(Try attempt)
        : m_result(std::make_shared<Result>()) {
        QThread* const thread = QThread::create([result = m_result, attempt = std::move(attempt)] {
            Value value = attempt();
            const std::lock_guard lock(result->guard);
            result->value.emplace(std::move(value));
            result->there.notify_all();
        });
        QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
        thread->start();
    }

    /// What came of it; absent where it has not ended by then.
    [[nodiscard]] std::optional<Value> by(Moment end) const {
        std::unique_lock lock(m_result->guard);
        m_result->there.wait_until(lock, end, [this] { return m_result->value.has_value(); });
        return m_result->value;
    }

private:
    struct Result {
        std::mutex guard;
        std::condition_variable there;
        std::optional<Value> value;
    };

    std::shared_ptr<Result> m_result;
};

template <typename Try>
Background(Try) -> Background<std::invoke_result_t<Try>>;

} // namespace lumora
