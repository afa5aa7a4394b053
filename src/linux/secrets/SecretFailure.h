#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace lumora {

/// Why the Secret Service did not do as asked.
struct SecretFailure {
    bool locked = false; ///< it is there, but wants a person to unlock something first
    bool silent = false; ///< nobody answered: there is no service, or it hangs
    QString reason;      ///< for people; never holds any part of a secret
};

template <typename Value>
using SecretOutcome = tl::expected<Value, SecretFailure>;

} // namespace lumora
