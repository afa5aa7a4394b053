#pragma once

#include "briefing/DecodeError.h"

#include <QByteArrayView>
#include <QString>

#include <tl/expected.hpp>

#include <map>
#include <optional>
#include <variant>

namespace lumora {

/// The members of a small JSON object whose values of interest are truth values and texts, such as
/// a service's reply. Members may be missing; of members with the same name the last one counts.
class FlatJsonObject {
public:
    /// Reads the object that `bytes` hold; an error when they hold anything else.
    static tl::expected<FlatJsonObject, DecodeError> parse(QByteArrayView bytes);

    /// The truth value `key`: absent when missing or null, an error when of another type.
    tl::expected<std::optional<bool>, DecodeError> boolean(QLatin1StringView key) const;

    /// The text `key`: absent when missing or null, an error when of another type.
    tl::expected<std::optional<QString>, DecodeError> string(QLatin1StringView key) const;

private:
    struct Other {}; ///< a number, an array or an object

    using Value = std::variant<std::nullptr_t, bool, QString, Other>;

    template <typename T>
    tl::expected<std::optional<T>, DecodeError>
    member(QLatin1StringView key, QLatin1StringView wanted) const;

    std::map<QString, Value> m_members;
};

} // namespace lumora
