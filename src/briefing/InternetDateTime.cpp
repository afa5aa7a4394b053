#include "briefing/InternetDateTime.h"

namespace lumora {

namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Reads a text from left to right. After the first mismatch everything it reads is worthless, so
/// that callers ask for `failed` once, in the end.
class Scanner {
public:
    explicit Scanner(std::string_view text)
        : m_next(text.data())
        , m_end(text.data() + text.size()) {}

    bool failed() const { return m_failed; }

    bool atEnd() const { return m_next == m_end; }

    /// The next character, which is consumed; 0 at the end.
    char take() { return atEnd() ? '\0' : *m_next++; }

    void expect(char c) { m_failed |= take() != c; }

    /// A number of exactly `digits` digits between `minimum` and `maximum`.
    int number(int digits, int minimum, int maximum) {
        if (m_end - m_next < digits) {
            m_failed = true;
            return minimum;
        }
        int value = 0;
        for (int i = 0; i < digits; ++i) {
            const char c = *m_next++;
            m_failed |= !isDigit(c);
            value = value * 10 + (c - '0');
        }
        m_failed |= value < minimum || value > maximum;
        return value;
    }

    /// An optional fraction: a point and at least one digit.
    std::chrono::microseconds fraction() {
        if (atEnd() || *m_next != '.')
            return {};
        ++m_next;
        m_failed |= atEnd() || !isDigit(*m_next);
        int value = 0;
        int weight = 100'000;
        for (; !atEnd() && isDigit(*m_next); ++m_next, weight /= 10)
            value += (*m_next - '0') * weight;
        return std::chrono::microseconds(value);
    }

    /// 'Z', or a signed offset from UTC in hours and minutes.
    std::chrono::minutes zone() {
        const char sign = take();
        if (sign == 'Z')
            return {};
        m_failed |= sign != '+' && sign != '-';
        const std::chrono::hours hours(number(2, 0, 23));
        expect(':');
        const std::chrono::minutes minutes(number(2, 0, 59));
        return sign == '-' ? -(hours + minutes) : hours + minutes;
    }

private:
    const char* m_next;
    const char* m_end;
    bool m_failed = false;
};

} // namespace

std::optional<Instant> parseInternetDateTime(std::string_view text) {
    Scanner scanner(text);
    const std::chrono::year year(scanner.number(4, 0, 9999));
    scanner.expect('-');
    const std::chrono::month month(static_cast<unsigned>(scanner.number(2, 1, 12)));
    scanner.expect('-');
    const std::chrono::day day(static_cast<unsigned>(scanner.number(2, 1, 31)));
    scanner.expect('T');
    const std::chrono::hours hours(scanner.number(2, 0, 23));
    scanner.expect(':');
    const std::chrono::minutes minutes(scanner.number(2, 0, 59));
    scanner.expect(':');
    const std::chrono::seconds seconds(scanner.number(2, 0, 59));
    const auto fraction = scanner.fraction();
    const auto offset = scanner.zone();

    const auto date = year / month / day;
    if (scanner.failed() || !scanner.atEnd() || !date.ok())
        return std::nullopt;
    return std::chrono::sys_days(date) + hours + minutes + seconds + fraction - offset;
}

} // namespace lumora
