#include "linux/secrets/SecretConversation.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using Attributes = std::unique_ptr<GHashTable, decltype(&g_hash_table_unref)>;

Attributes attributes(const SecretKey& key) {
    Attributes table(
        g_hash_table_new_full(g_str_hash, g_str_equal, g_free, g_free), &g_hash_table_unref);
    const auto insert = [&table](const char* name, const QString& value) {
        g_hash_table_insert(table.get(), g_strdup(name), g_strdup(value.toUtf8().constData()));
    };
    insert("service", key.service);
    insert("account", key.account);
    return table;
}

// No schema anywhere: items are found, and carry, the attributes alone.
constexpr const SecretSchema* noSchema = nullptr;

constexpr auto connectionFlags = GDBusConnectionFlags(
    G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

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

/// The type of a `SecretService` that talks through the connection in its property "g-connection"
/// and dismisses every prompt at once instead of showing it, so that no call ever waits for a
/// person; the call fails with SECRET_ERROR_IS_LOCKED.
GType promptlessSecretServiceType() {
    static const GType type = g_type_register_static_simple(
        SECRET_TYPE_SERVICE, "LumoraPromptlessSecretService", sizeof(SecretServiceClass), initClass,
        sizeof(SecretService), nullptr, GTypeFlags(0));
    return type;
}

} // namespace

SecretConversation::SecretConversation(QString busAddress, std::chrono::milliseconds timeout)
    : m_busAddress(std::move(busAddress))
    , m_deadline(timeout) {}

SecretOutcome<void> SecretConversation::open() {
    const QByteArray address = m_busAddress.toUtf8();
    // An address like "autolaunch:" would start a bus.
    if (!address.startsWith("unix:") && !address.startsWith("tcp:"))
        return tl::unexpected(
            SecretFailure{.silent = true, .reason = u"There is no session bus"_s});

    GError* error = nullptr;
    const auto connected = m_deadline.await([&](auto* cancellable, auto callback, gpointer data) {
        g_dbus_connection_new_for_address(
            address.constData(), connectionFlags, nullptr, cancellable, callback, data);
    });
    m_connection.reset(g_dbus_connection_new_for_address_finish(connected.get(), &error));
    if (!m_connection)
        return failure(error);

    const auto opened = m_deadline.await([&](auto* cancellable, auto callback, gpointer data) {
        g_async_initable_new_async(
            promptlessSecretServiceType(), G_PRIORITY_DEFAULT, cancellable, callback, data,
            "g-connection", m_connection.get(), nullptr);
    });
    m_service.reset(secret_service_open_finish(opened.get(), &error));
    if (!m_service)
        return failure(error);
    return {};
}

SecretOutcome<std::vector<GioPointer<SecretItem>>>
SecretConversation::search(const SecretKey& key, SecretSearchFlags flags) {
    const Attributes wanted = attributes(key);
    const auto searched = m_deadline.await([&](auto* cancellable, auto callback, gpointer data) {
        secret_service_search(
            m_service.get(), noSchema, wanted.get(), SecretSearchFlags(SECRET_SEARCH_ALL | flags),
            cancellable, callback, data);
    });
    GError* error = nullptr;
    GList* const found = secret_service_search_finish(m_service.get(), searched.get(), &error);
    if (error)
        return failure(error);

    std::vector<GioPointer<SecretItem>> items;
    for (const GList* node = found; node; node = node->next)
        items.emplace_back(SECRET_ITEM(node->data));
    g_list_free(found);
    return items;
}

SecretOutcome<GioPointer<SecretCollection>> SecretConversation::collection(const char* alias) {
    const auto asked = m_deadline.await([&](auto* cancellable, auto callback, gpointer data) {
        secret_collection_for_alias(
            m_service.get(), alias, SECRET_COLLECTION_NONE, cancellable, callback, data);
    });
    GError* error = nullptr;
    GioPointer<SecretCollection> collection(
        secret_collection_for_alias_finish(asked.get(), &error));
    if (error)
        return failure(error);
    return collection;
}

SecretOutcome<void> SecretConversation::createItem(
    SecretCollection& collection, const SecretKey& key, const QString& label,
    const QByteArray& secret) {
    const Attributes wanted = attributes(key);
    const QByteArray labelText = label.toUtf8();
    SecretValue* const value = secret_value_new(secret.constData(), secret.size(), "text/plain");
    const auto created = m_deadline.await([&](auto* cancellable, auto callback, gpointer data) {
        secret_item_create(
            &collection, noSchema, wanted.get(), labelText.constData(), value,
            SECRET_ITEM_CREATE_REPLACE, cancellable, callback, data);
    });
    secret_value_unref(value);
    GError* error = nullptr;
    const GioPointer<SecretItem> item(secret_item_create_finish(created.get(), &error));
    if (!item)
        return failure(error);
    return {};
}

SecretOutcome<void> SecretConversation::removeItem(SecretItem& item) {
    const auto removed = m_deadline.await([&](auto* cancellable, auto callback, gpointer data) {
        secret_item_delete(&item, cancellable, callback, data);
    });
    GError* error = nullptr;
    if (!secret_item_delete_finish(&item, removed.get(), &error))
        return failure(error);
    return {};
}

tl::unexpected<SecretFailure> SecretConversation::failure(GError* error) const {
    SecretFailure result{.reason = u"The keyring service refused"_s};
    if (m_deadline.hasPassed())
        result = {.silent = true, .reason = u"The keyring service did not answer in time"_s};
    else if (!m_connection)
        result = {.silent = true, .reason = u"There is no session bus"_s};
    else if (
        g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
        g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER))
        result = {.silent = true, .reason = u"There is no keyring service"_s};
    else if (g_error_matches(error, SECRET_ERROR, SECRET_ERROR_IS_LOCKED))
        result = {.locked = true, .reason = u"The keyring is locked"_s};
    g_clear_error(&error);
    return tl::unexpected(result);
}

} // namespace lumora
