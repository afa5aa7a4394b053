#include "briefing/FlatJsonObject.h"

#include "briefing/JsonDocument.h"
#include "briefing/JsonValues.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

tl::expected<FlatJsonObject, DecodeError> FlatJsonObject::parse(QByteArrayView bytes) {
    const JsonDocument document(bytes);
    if (!document.root())
        return tl::unexpected(document.root().error());
    simdjson::dom::object object;
    if (document.root()->get(object) != simdjson::SUCCESS) {
        DecodeError error;
        wrongKind(*document.root(), "an object"_L1, error);
        return tl::unexpected(std::move(error));
    }
    const auto text = [](std::string_view utf8) {
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    };
    FlatJsonObject result;
    for (const auto [key, value] : object) {
        Value member = Other{};
        if (value.is_null())
            member = nullptr;
        else if (value.is_bool())
            member = value.get<bool>().value_unsafe();
        else if (value.is_string())
            member = text(value.get_string().value_unsafe());
        result.m_members.insert_or_assign(text(key), std::move(member));
    }
    return result;
}

template <typename T>
tl::expected<std::optional<T>, DecodeError>
FlatJsonObject::member(QLatin1StringView key, QLatin1StringView wanted) const {
    const auto found = m_members.find(QString(key));
    if (found == m_members.end() || std::holds_alternative<std::nullptr_t>(found->second))
        return std::nullopt;
    if (const T* value = std::get_if<T>(&found->second))
        return *value;
    return tl::unexpected(DecodeError{key, "Expected "_L1 + wanted});
}

tl::expected<std::optional<bool>, DecodeError>
FlatJsonObject::boolean(QLatin1StringView key) const {
    return member<bool>(key, "a boolean"_L1);
}

tl::expected<std::optional<QString>, DecodeError>
FlatJsonObject::string(QLatin1StringView key) const {
    return member<QString>(key, "a string"_L1);
}

} // namespace lumora
