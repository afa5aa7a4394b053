#include "platform/AppStorageBacked.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString trueText = u"true"_s;
const QString falseText = u"false"_s;

} // namespace

std::optional<bool> parsePreference(const QString& text, std::type_identity<bool>) {
    if (text == trueText || text == u"1")
        return true;
    if (text == falseText || text == u"0")
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

QString preferenceText(bool value) {
    return value ? trueText : falseText;
}

QString preferenceText(qint64 value) {
    return QString::number(value);
}

QString preferenceText(const QString& value) {
    return value;
}

} // namespace lumora
