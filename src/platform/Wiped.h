#pragma once

#include <cstring>
#include <utility>

namespace lumora {

/// Overwrites the characters of `text` with zeros, unless somebody else shares them: then whoever
/// is the last has to. For QString and QByteArray; afterwards it has its length, but no content.
template <typename Text>
void wipe(Text& text) {
    if (text.isDetached())
        explicit_bzero(text.data(), static_cast<size_t>(text.size()) * sizeof(*text.data()));
}

/// Holds a secret, and wipes it from memory when it goes as its last holder. Copies share it.
template <typename Text>
class Wiped {
public:
    explicit Wiped(Text text)
        : m_text(std::move(text)) {}

    ~Wiped() { wipe(m_text); }

    Wiped(const Wiped&) = default;
    Wiped& operator=(const Wiped&) = delete;

    const Text& text() const { return m_text; }

    bool operator==(const Text& text) const { return m_text == text; }

private:
    Text m_text;
};

} // namespace lumora
