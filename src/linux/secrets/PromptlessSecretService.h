#pragma once

#include <libsecret/secret.h>

namespace lumora {

/// The type of a `SecretService` that talks through the connection in its property "g-connection"
/// and dismisses every prompt at once instead of showing it, so that no call ever waits for a
/// person; the call fails with SECRET_ERROR_IS_LOCKED.
GType promptlessSecretServiceType();

} // namespace lumora
