#include "linux/appearance/XSettings.h"

#include "linux/appearance/FontDescription.h"

#include <QtEndian>

namespace lumora {

namespace {

enum class Kind : std::uint8_t { Number = 0, Text = 1, Color = 2 };

/// Reads the property from front to back; once something is missing, everything is.
class Reader {
public:
    explicit Reader(const QByteArray& bytes)
        : m_bytes(bytes) {}

    bool failed() const { return m_failed; }

    void setBigEndian(bool bigEndian) { m_bigEndian = bigEndian; }

    QByteArray take(qsizetype length) {
        if (m_failed || length > m_bytes.size() - m_position) {
            m_failed = true;
            return {};
        }
        m_position += length;
        return m_bytes.mid(m_position - length, length);
    }

    /// Bytes that are filled up to a multiple of four.
    QByteArray takePadded(qsizetype length) {
        QByteArray bytes = take(length);
        take((4 - length % 4) % 4);
        return bytes;
    }

    template <typename Number>
    Number takeNumber() {
        const QByteArray bytes = take(sizeof(Number));
        if (m_failed)
            return {};
        return m_bigEndian ? qFromBigEndian<Number>(bytes.constData())
                           : qFromLittleEndian<Number>(bytes.constData());
    }

private:
    QByteArray m_bytes;
    qsizetype m_position = 0;
    bool m_bigEndian = false;
    bool m_failed = false;
};

/// Reads one setting; false when there is none any more that can be made sense of.
bool takeSetting(Reader& reader, XSettings& settings) {
    const auto kind = Kind(reader.takeNumber<std::uint8_t>());
    reader.take(1);
    const QByteArray name = reader.takePadded(reader.takeNumber<std::uint16_t>());
    reader.takeNumber<std::uint32_t>(); // when it changed last
    switch (kind) {
    case Kind::Number:
        if (const auto number = reader.takeNumber<std::int32_t>(); !reader.failed())
            settings.numbers.insert(name, number);
        break;
    case Kind::Text:
        if (const auto text = reader.takePadded(reader.takeNumber<std::uint32_t>());
            !reader.failed())
            settings.texts.insert(name, text);
        break;
    case Kind::Color:
        reader.take(8);
        break;
    default:
        return false;
    }
    return !reader.failed();
}

template <typename Value>
std::optional<Value> find(const QHash<QByteArray, Value>& settings, const QByteArray& name) {
    const auto found = settings.constFind(name);
    return found == settings.cend() ? std::nullopt : std::optional(found.value());
}

} // namespace

XSettings parseXSettings(const QByteArray& property) {
    XSettings settings;
    Reader reader(property);
    reader.setBigEndian(reader.takeNumber<std::uint8_t>() == 1);
    reader.take(3);
    reader.takeNumber<std::uint32_t>(); // the number of changes so far
    for (auto left = reader.takeNumber<std::uint32_t>(); left > 0; --left) {
        if (!takeSetting(reader, settings))
            break;
    }
    return settings;
}

DesktopAppearance::Wishes wishesIn(const XSettings& settings) {
    DesktopAppearance::Wishes wishes;
    if (const auto font = find(settings.texts, "Gtk/FontName"))
        wishes.font = parseFontDescription(QString::fromUtf8(*font));
    if (const auto animations = find(settings.numbers, "Gtk/EnableAnimations"))
        wishes.animations = *animations != 0;
    // The names of themes are all there is to tell a dark desktop by, and only the dark ones say.
    if (const auto theme = find(settings.texts, "Net/ThemeName");
        theme && theme->toLower().endsWith("-dark"))
        wishes.colorScheme = DesktopAppearance::Preference::Dark;
    return wishes;
}

} // namespace lumora
