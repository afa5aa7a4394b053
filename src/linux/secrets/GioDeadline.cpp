#include "linux/secrets/GioDeadline.h"

namespace lumora {

GioDeadline::GioDeadline(std::chrono::milliseconds timeout)
    : m_context(g_main_context_new())
    , m_timer(g_timeout_source_new(static_cast<guint>(timeout.count())))
    , m_cancellable(g_cancellable_new()) {
    g_main_context_push_thread_default(m_context);
    const auto cancel = [](gpointer cancellable) -> gboolean {
        g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
        return G_SOURCE_REMOVE;
    };
    g_source_set_callback(m_timer, cancel, m_cancellable.get(), nullptr);
    g_source_attach(m_timer, m_context);
}

GioDeadline::~GioDeadline() {
    g_source_destroy(m_timer);
    g_source_unref(m_timer);
    // What was released leaves its last cleaning up to the context it was used in.
    while (g_main_context_iteration(m_context, false))
        ;
    g_main_context_pop_thread_default(m_context);
    g_main_context_unref(m_context);
}

void GioDeadline::keepResult(GObject*, GAsyncResult* result, gpointer kept) {
    static_cast<GioPointer<GAsyncResult>*>(kept)->reset(
        static_cast<GAsyncResult*>(g_object_ref(result)));
}

} // namespace lumora
