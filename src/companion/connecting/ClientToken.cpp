#include "companion/connecting/ClientSettings.h"

// Before any header of Qt's would have its own meaning of "signals".
#include <libsecret/secret.h>

namespace lumora::companion {

namespace {

/// Found by these two attributes, whatever schema an item carries.
const SecretSchema tokenSchema = {
    "com.lumora.app",
    SECRET_SCHEMA_DONT_MATCH_NAME,
    {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
     {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
     {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
    0,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr};

constexpr auto service = "com.lumora.app";
constexpr auto account = "briefingToken";

tl::unexpected<QString> keyringFailure(GError* error) {
    const QString reason = QString::fromUtf8(error->message).simplified();
    g_clear_error(&error);
    return tl::unexpected(reason);
}

} // namespace

tl::expected<void, QString> storeToken(const QByteArray& token) {
    GError* error = nullptr;
    // An old one that stays behind might be found in its place.
    secret_password_clear_sync(
        &tokenSchema, nullptr, &error, "service", service, "account", account, nullptr);
    if (error)
        return keyringFailure(error);
    secret_password_store_sync(
        &tokenSchema, SECRET_COLLECTION_DEFAULT, "Lumora briefing token", token.constData(),
        nullptr, &error, "service", service, "account", account, nullptr);
    if (error)
        return keyringFailure(error);
    return {};
}

} // namespace lumora::companion
