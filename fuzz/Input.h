#pragma once

#include "briefing/Instant.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <cstring>

namespace lumora::fuzz {

/// Values made from an input's bytes, from front to back. Whatever it has no bytes for is empty,
/// zero or false.
class Input {
public:
    /// The bytes have to live as long as this.
    explicit Input(QByteArrayView bytes)
        : m_bytes(bytes) {}

    bool isAtEnd() const { return m_bytes.isEmpty(); }

    /// Any number, from its bytes in this machine's order.
    template <typename Number>
        requires std::integral<Number> || std::floating_point<Number>
    Number number() {
        Number value = 0;
        const QByteArrayView bytes = take(sizeof(Number));
        if (!bytes.isEmpty()) // whose address may be null
            std::memcpy(&value, bytes.data(), size_t(bytes.size()));
        return value;
    }

    /// A number from 0 to below `count`, from one byte.
    int below(int count) { return number<std::uint8_t>() % count; }

    bool flag() { return below(2) != 0; }

    /// A point in time of a year with four digits.
    Instant instant() {
        constexpr Instant first = std::chrono::sys_days(std::chrono::year(0) / 1 / 1);
        constexpr Instant end = std::chrono::sys_days(std::chrono::year(10'000) / 1 / 1);
        constexpr auto count = std::uint64_t((end - first).count());
        return first + Instant::duration(number<std::uint64_t>() % count);
    }

    /// What stands before the next byte 255, which no UTF-8 text has, or the end.
    QByteArray field() {
        const qsizetype end = m_bytes.indexOf(char(-1));
        if (end < 0)
            return rest();
        QByteArray field = take(end).toByteArray();
        take(1);
        return field;
    }

    /// The same as text: what is no UTF-8 in it becomes replacement characters.
    QString text() { return QString::fromUtf8(field()); }

    /// All that is left.
    QByteArray rest() { return take(m_bytes.size()).toByteArray(); }

private:
    QByteArrayView take(qsizetype count) {
        const QByteArrayView taken = m_bytes.first(std::min(count, m_bytes.size()));
        m_bytes = m_bytes.sliced(taken.size());
        return taken;
    }

    QByteArrayView m_bytes;
};

} // namespace lumora::fuzz
