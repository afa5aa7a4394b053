#include "linux/secrets/PromptlessSecretService.h"

namespace lumora {

namespace {

void refusePrompt(
    SecretService* self, SecretPrompt* prompt, const GVariantType*, GCancellable* cancellable,
    GAsyncReadyCallback callback, gpointer data) {
    g_dbus_proxy_call(
        G_DBUS_PROXY(prompt), "Dismiss", nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr,
        nullptr, nullptr);
    GTask* task = g_task_new(self, cancellable, callback, data);
    g_task_return_new_error(
        task, SECRET_ERROR, SECRET_ERROR_IS_LOCKED, "The keyring wants to ask the user first");
    g_object_unref(task);
}

GVariant* refusedPromptResult(SecretService*, GAsyncResult* result, GError** error) {
    return static_cast<GVariant*>(g_task_propagate_pointer(G_TASK(result), error));
}

GObject* construct(GType type, guint count, GObjectConstructParam* properties) {
    GObject* const object = G_OBJECT_CLASS(g_type_class_peek(SECRET_TYPE_SERVICE))
                                ->constructor(type, count, properties);
    // The library's constructor asks for the shared session bus, which outranks "g-connection".
    g_object_set(object, "g-bus-type", G_BUS_TYPE_NONE, nullptr);
    return object;
}

void initClass(gpointer classPointer, gpointer) {
    G_OBJECT_CLASS(classPointer)->constructor = construct;
    auto* const serviceClass = static_cast<SecretServiceClass*>(classPointer);
    serviceClass->prompt_async = refusePrompt;
    serviceClass->prompt_finish = refusedPromptResult;
}

} // namespace

GType promptlessSecretServiceType() {
    static const GType type = g_type_register_static_simple(
        SECRET_TYPE_SERVICE, "LumoraPromptlessSecretService", sizeof(SecretServiceClass), initClass,
        sizeof(SecretService), nullptr, GTypeFlags(0));
    return type;
}

} // namespace lumora
