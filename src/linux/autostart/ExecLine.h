#pragma once

#include <QString>

namespace lumora {

/// The value of a desktop entry's "Exec" that starts `program`, quoted so that every character of
/// its path arrives.
QString execLineFor(const QString& program);

/// The program that a desktop entry's "Exec" starts, as it is named there; empty when the line
/// names none or its quotes do not match.
QString programOf(const QString& execLine);

/// A value of type string as it stands in a desktop entry, and back.
QString escapeEntryValue(const QString& text);
QString unescapeEntryValue(const QString& value);

} // namespace lumora
