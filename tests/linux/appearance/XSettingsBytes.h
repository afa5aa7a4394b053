#pragma once

#include <QByteArray>
#include <QtEndian>

#include <cstdint>

namespace lumora::tests {

/// Builds the property in which an X11 desktop shares its settings.
class XSettingsBytes {
public:
    explicit XSettingsBytes(bool bigEndian = false)
        : m_bigEndian(bigEndian) {}

    XSettingsBytes& number(const QByteArray& name, std::int32_t value) {
        begin(0, name);
        append(value);
        return *this;
    }

    XSettingsBytes& text(const QByteArray& name, const QByteArray& value) {
        begin(1, name);
        append(std::uint32_t(value.size()));
        appendPadded(value);
        return *this;
    }

    XSettingsBytes& color(const QByteArray& name) {
        begin(2, name);
        m_settings += QByteArray(8, '\x7f');
        return *this;
    }

    XSettingsBytes& unknown(const QByteArray& name) {
        begin(9, name);
        return *this;
    }

    /// The whole property.
    QByteArray bytes() const {
        XSettingsBytes head(m_bigEndian);
        head.m_settings = QByteArray(1, m_bigEndian ? '\1' : '\0') + QByteArray(3, '\0');
        head.append(std::uint32_t(7));
        head.append(m_count);
        return head.m_settings + m_settings;
    }

private:
    void begin(char kind, const QByteArray& name) {
        ++m_count;
        m_settings += kind;
        m_settings += '\0';
        append(std::uint16_t(name.size()));
        appendPadded(name);
        append(std::uint32_t(3));
    }

    template <typename Number>
    void append(Number number) {
        char bytes[sizeof(Number)];
        if (m_bigEndian)
            qToBigEndian(number, bytes);
        else
            qToLittleEndian(number, bytes);
        m_settings.append(bytes, sizeof(Number));
    }

    void appendPadded(const QByteArray& value) {
        m_settings += value + QByteArray((4 - value.size() % 4) % 4, '\0');
    }

    bool m_bigEndian;
    std::uint32_t m_count = 0;
    QByteArray m_settings;
};

} // namespace lumora::tests
