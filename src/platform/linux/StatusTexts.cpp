#include "platform/linux/StatusTexts.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

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

QString escapedForMarkup(const QString& text) {
    QStringList lines = text.split(u'\n');
    for (QString& line : lines) {
        // The ampersand first, or it would catch the entities of the others.
        line = singleLine(line).replace(u'&', "&amp;"_L1);
        line.replace(u'<', "&lt;"_L1).replace(u'>', "&gt;"_L1);
    }
    return lines.join(u'\n');
}

} // namespace lumora
