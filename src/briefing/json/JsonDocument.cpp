#include "briefing/json/JsonDocument.h"

#include <algorithm>
#include <charconv>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// The largest text whose buffers, about 15 bytes for each of its own, are worth keeping.
constexpr size_t keptCapacity = size_t{64} * 1024;

simdjson::dom::parser& parser() {
    static thread_local simdjson::dom::parser instance;
    return instance;
}

/// Whether the parser gave up over a number that it cannot hold, for which newer versions have a
/// code of its own.
template <typename Code>
bool isOverNumber(Code code) {
    if constexpr (requires { Code::BIGINT_ERROR; }) {
        if (code == Code::BIGINT_ERROR)
            return true;
    }
    return code == Code::NUMBER_ERROR;
}

QString describe(simdjson::error_code code) {
    switch (code) {
    case simdjson::EMPTY:
        return u"Empty document"_s;
    case simdjson::UTF8_ERROR:
        return u"Not valid UTF-8"_s;
    case simdjson::DEPTH_ERROR:
        return u"Nested too deeply"_s;
    case simdjson::CAPACITY:
    case simdjson::MEMALLOC:
        return u"Document too large"_s;
    default:
        return u"Not valid JSON: "_s + QString::fromLatin1(simdjson::error_message(code)).trimmed();
    }
}

simdjson::error_code parse(QByteArrayView bytes, simdjson::dom::element& root) {
    if (bytes.isEmpty()) // whose address may be null, which the parser does not expect
        return simdjson::EMPTY;
    return parser().parse(bytes.data(), static_cast<size_t>(bytes.size())).get(root);
}

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

JsonDocument::JsonDocument(QByteArrayView bytes) {
    // JSON that is exchanged between programs has no byte order mark; not every version of the
    // parser says so.
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        m_root = tl::unexpected(DecodeError{{}, u"Starts with a byte order mark"_s});
        return;
    }
    simdjson::dom::element root;
    auto code = parse(bytes, root);
    // The parser refuses a whole text for one integer beyond 64 bits, even where nobody asks for
    // an integer.
    if (isOverNumber(code)) {
        const QByteArray mended = withHugeIntegersAsFloats(bytes);
        code = parse(mended, root);
    }
    if (code == simdjson::SUCCESS)
        m_root = root;
    else
        m_root = tl::unexpected(DecodeError{{}, describe(code)});
}

JsonDocument::~JsonDocument() {
    if (parser().capacity() > keptCapacity)
        parser() = simdjson::dom::parser();
}

} // namespace lumora
