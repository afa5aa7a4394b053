#include "platform/AppStorageBacked.h"

namespace lumora {

std::optional<bool> parsePreference(const QString& text, std::type_identity<bool>) {
    if (text == u"true" || text == u"1")
        return true;
    if (text == u"false" || text == u"0")
        return false;
    return std::nullopt;
}

std::optional<qint64> parsePreference(const QString& text, std::type_identity<qint64>) {
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<QString> parsePreference(const QString& text, std::type_identity<QString>) {
    return text;
}

} // namespace lumora
