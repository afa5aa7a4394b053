#include "texts/StatusTexts.h"

#include "texts/SingleLine.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

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
