#pragma once

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

namespace lumora::companion {

/// The text of Lumora's preferences with this address as the endpoint, and every other line as it
/// was. `endpoint` holds nothing that an INI file would have to escape.
[[nodiscard]] QByteArray withEndpoint(const QByteArray& preferences, const QByteArray& endpoint);

/// Writes the endpoint to Lumora's preferences at `path`, which need not exist. A running Lumora
/// takes it up. The error is one line for people.
[[nodiscard]] tl::expected<void, QString>
storeEndpoint(const QString& path, const QByteArray& endpoint);

/// Puts the token into the user's keyring where Lumora looks for it, in place of one that is there.
/// May have the user asked to unlock the keyring, and wait for that. The error is one line for
/// people.
[[nodiscard]] tl::expected<void, QString> storeToken(const QByteArray& token);

/// Has a running Lumora fetch now, by the command that it has for that, and waits for nothing. One
/// that fetched in vain, because the service was not there yet, need not wait for its next time.
void askToRefresh();

} // namespace lumora::companion
