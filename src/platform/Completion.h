#pragma once

#include <coroutine>
#include <optional>
#include <utility>

namespace lumora {

/// A value that one coroutine waits for (`co_await completion.value()`) and somebody else delivers,
/// on one thread. It has to stay alive while it is waited for; delivering the value resumes the
/// waiting coroutine at once.
template <typename Value>
class Completion {
    struct Awaiter {
        Completion* completion;

        bool await_ready() const noexcept { return completion->isComplete(); }

        void await_suspend(std::coroutine_handle<> waiter) noexcept {
            completion->m_waiter = waiter;
        }

        Value await_resume() { return std::move(*completion->m_value); }
    };

public:
    Completion() = default;
    Completion(const Completion&) = delete;
    Completion& operator=(const Completion&) = delete;

    bool isComplete() const noexcept { return m_value.has_value(); }

    /// Delivers `value`; only the first delivery counts. The object may be gone on return.
    void complete(Value value) {
        if (isComplete())
            return;
        m_value.emplace(std::move(value));
        if (const auto waiter = std::exchange(m_waiter, nullptr))
            waiter.resume();
    }

    /// What to await; at most one coroutine may.
    Awaiter value() noexcept { return {this}; }

private:
    std::optional<Value> m_value;
    std::coroutine_handle<> m_waiter;
};

} // namespace lumora
