#pragma once

// The TOML library, to be included by this header only. It may read nothing but ASCII: beyond that
// some of its ways of telling white space have no defined outcome.

#include <QByteArrayView>
#include <QString>

#include <string_view>

namespace lumora::companion {

/// What the library throws, in every kind of build, where a text is not what it takes for granted.
/// Such a text is no TOML.
struct TomlSurprise {};

[[noreturn]] inline void throwTomlSurprise() {
    throw TomlSurprise();
}

/// A TOML file in UTF-8 as the library reads it.
[[nodiscard]] QByteArray asciiFromToml(QByteArrayView toml);

/// What a text or a name from such a file says.
[[nodiscard]] QString textFromAscii(std::string_view ascii);

} // namespace lumora::companion

// By itself the library ends the program there, or in a release build goes on as if it were not so.
#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(expression)                                                                    \
    (static_cast<bool>(expression) ? void() : ::lumora::companion::throwTomlSurprise())
#include <toml++/toml.h>
#pragma pop_macro("NDEBUG")
