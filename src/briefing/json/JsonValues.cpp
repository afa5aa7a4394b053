#include "briefing/json/JsonValues.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;
using simdjson::dom::element;
using simdjson::dom::element_type;

namespace lumora {

namespace {

QLatin1StringView kindOf(element value) {
    switch (value.type()) {
    case element_type::ARRAY:
        return "an array"_L1;
    case element_type::OBJECT:
        return "an object"_L1;
    case element_type::STRING:
        return "a string"_L1;
    case element_type::BOOL:
        return "a boolean"_L1;
    case element_type::NULL_VALUE:
        return "null"_L1;
    case element_type::INT64:
    case element_type::UINT64:
    case element_type::DOUBLE:
        return "a number"_L1;
    }
    return "something else"_L1;
}

bool notAnInteger(double number, DecodeError& error) {
    error.description = std::trunc(number) == number
                            ? u"Integer beyond 64 bits"_s
                            : u"Expected an integer, found %1"_s.arg(number, 0, 'g', 17);
    return false;
}

} // namespace

QString toQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

bool readValue(element value, QString& out, DecodeError& error) {
    std::string_view text;
    if (value.get(text) != simdjson::SUCCESS)
        return wrongKind(value, "a string"_L1, error);
    out = toQString(text);
    return true;
}

bool readValue(element value, bool& out, DecodeError& error) {
    return value.get(out) == simdjson::SUCCESS || wrongKind(value, "a boolean"_L1, error);
}

bool readValue(element value, qint64& out, DecodeError& error) {
    if (value.is<int64_t>()) {
        out = value.get<int64_t>().value_unsafe();
        return true;
    }
    double number = 0;
    if (value.get(number) != simdjson::SUCCESS)
        return wrongKind(value, "an integer"_L1, error);
    // The least 64-bit integer is left out: as a float it may stand for an integer below it.
    constexpr double limit = 0x1p63;
    if (std::trunc(number) != number || std::abs(number) >= limit)
        return notAnInteger(number, error);
    out = static_cast<qint64>(number);
    return true;
}

bool readValue(element value, double& out, DecodeError& error) {
    return value.get(out) == simdjson::SUCCESS || wrongKind(value, "a number"_L1, error);
}

bool wrongKind(element value, QLatin1StringView wanted, DecodeError& error) {
    error.description = u"Expected %1, found %2"_s.arg(wanted, kindOf(value));
    return false;
}

void prependKey(DecodeError& error, std::string_view key) {
    const bool joined = error.path.isEmpty() || error.path.startsWith(u'[');
    error.path = toQString(key) + (joined ? ""_L1 : "."_L1) + error.path;
}

void prependIndex(DecodeError& error, size_t index) {
    const bool joined = error.path.isEmpty() || error.path.startsWith(u'[');
    error.path = u"[%1]"_s.arg(index) + (joined ? ""_L1 : "."_L1) + error.path;
}

} // namespace lumora
