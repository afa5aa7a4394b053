#pragma once

#include <QCoroTask>
#include <QPointer>

#include <exception>
#include <functional>
#include <type_traits>
#include <utility>

namespace lumora {

// How tasks and objects get along. Everything happens on one thread.
//
// A task runs from the moment its coroutine is called, whether or not somebody waits for it, and
// nothing can stop it from outside: it ends by itself, even when everyone around it has gone.
// - A coroutine that belongs to an object and goes on with it after a `co_await` holds a
//   `const QPointer self(this)`, and returns when that is null. That is what makes its class a
//   QObject.
// - Whoever does not await a task hands it to `spawn`: alone, or with an owner and a continuation.
// - Values cross by copy: coroutines take parameters by value, and continuations keep copies of
//   what they need beside their owner.
// - An object is gone when its QObject part is: later than its members. So whatever completes tasks
//   in its end, as clocks and transports do, outlives the objects that wait and is never a member
//   of one.

namespace detail {

template <typename Value>
struct Continuation {
    using Call = std::function<void(Value)>;
};

template <>
struct Continuation<void> {
    using Call = std::function<void()>;
};

template <typename Value>
using Continue = typename Continuation<Value>::Call;

template <typename Value>
QCoro::Task<>
follow(QPointer<const QObject> owner, QCoro::Task<Value> task, Continue<Value> continuation) {
    try {
        if constexpr (std::is_void_v<Value>) {
            co_await task;
            if (owner)
                continuation();
        } else {
            Value value = co_await task;
            if (owner)
                continuation(std::move(value));
        }
    } catch (...) {
        std::terminate(); // says what it was
    }
}

} // namespace detail

/// Calls `continuation` with the task's result, if it has one, unless `owner` is null or gone by
/// then; before this returns, when the task has completed already. The owner's end does not end the
/// task. An exception, of the task or of the continuation, ends the program: errors leave a task as
/// values, and one that does not is a fault that must not go unnoticed.
template <typename Value>
void spawn(const QObject* owner, QCoro::Task<Value> task, detail::Continue<Value> continuation) {
    detail::follow(QPointer<const QObject>(owner), std::move(task), std::move(continuation));
}

/// Lets `task` run to its end with nobody waiting for it or for its result; it minds by itself
/// whose it is. An exception ends the program.
template <typename Value>
void spawn(QCoro::Task<Value> task) {
    spawn<Value>(nullptr, std::move(task), {});
}

} // namespace lumora
