#include "briefing/JsonNumbers.h"

#include <algorithm>
#include <charconv>

namespace lumora {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isNumberPart(char c) {
    return isDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

template <typename Integer>
bool fits(const char* begin, const char* end) {
    Integer value;
    return std::from_chars(begin, end, value).ec == std::errc();
}

bool isHugeInteger(const char* begin, const char* end) {
    const char* digits = *begin == '-' ? begin + 1 : begin;
    return digits != end && std::all_of(digits, end, isDigit) && !fits<qint64>(begin, end) &&
           !fits<quint64>(begin, end);
}

/// The position behind the text that opens at `quote`.
const char* skipString(const char* quote, const char* end) {
    for (const char* next = quote + 1; next < end; ++next) {
        if (*next == '"')
            return next + 1;
        if (*next == '\\' && next + 1 < end)
            ++next;
    }
    return end;
}

} // namespace

QByteArray withHugeIntegersAsFloats(QByteArrayView json) {
    QByteArray result;
    result.reserve(json.size() + 16);
    const char* const end = json.data() + json.size();
    for (const char* next = json.data(); next < end;) {
        const char* const token = next;
        bool huge = false;
        if (*token == '"') {
            next = skipString(token, end);
        } else if (isDigit(*token) || *token == '-') {
            next = std::find_if_not(token + 1, end, isNumberPart);
            huge = isHugeInteger(token, next);
        } else {
            next = std::find_if(
                token + 1, end, [](char c) { return c == '"' || c == '-' || isDigit(c); });
        }
        result.append(token, next - token);
        if (huge)
            result.append("e0");
    }
    return result;
}

} // namespace lumora
