#include "texts/SingleLine.h"

#include <algorithm>

namespace lumora {

QString singleLine(const QString& text) {
    QString line = text;
    std::replace_if(
        line.begin(), line.end(),
        [](QChar c) {
            return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                   c == QChar::ParagraphSeparator;
        },
        u' ');
    return line;
}

} // namespace lumora
