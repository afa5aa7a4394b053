#pragma once

#include <QString>

namespace lumora {

/// The text that an INI value stands for. Surrounding double quotes are dropped; \\ \" \n \r \t \s
/// (a space) and \x with hexadecimal digits are resolved, any other backslash stands for itself.
QString unescapeIniValue(const QString& value);

/// The value, on one line, that `unescapeIniValue` reads as `text`.
QString escapeIniValue(const QString& text);

} // namespace lumora
