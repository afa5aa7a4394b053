#pragma once

#include <gio/gio.h>

#include <chrono>
#include <memory>

namespace lumora {

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference to a GObject.
template <typename Object>
using GioPointer = std::unique_ptr<Object, GObjectUnref>;

/// Runs GIO's asynchronous functions to their end in the calling thread, in an event context of
/// its own, so that nothing else of the program runs meanwhile. All that is run through one object
/// shares one deadline; what is under way then is cancelled.
class GioDeadline {
public:
    /// Starts counting now. One object at a time, and none from inside a function that runs here.
    explicit GioDeadline(std::chrono::milliseconds timeout);
    ~GioDeadline();
    GioDeadline(const GioDeadline&) = delete;
    GioDeadline& operator=(const GioDeadline&) = delete;

    /// Calls `start(cancellable, callback, data)`, which must pass all three on to one
    /// asynchronous function, and returns that function's result.
    template <typename Start>
    GioPointer<GAsyncResult> await(Start start) {
        GioPointer<GAsyncResult> result;
        start(m_cancellable.get(), GAsyncReadyCallback(&keepResult), &result);
        while (!result)
            g_main_context_iteration(m_context, true);
        return result;
    }

    /// Whether the time is up.
    bool hasPassed() const { return g_cancellable_is_cancelled(m_cancellable.get()); }

private:
    static void keepResult(GObject*, GAsyncResult* result, gpointer kept);

    GMainContext* const m_context;
    GSource* const m_timer;
    GioPointer<GCancellable> m_cancellable;
};

} // namespace lumora
