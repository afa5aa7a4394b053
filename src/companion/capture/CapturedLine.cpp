#include "companion/capture/CapturedLine.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

bool breaksLine(QChar character) {
    const auto category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

} // namespace

std::optional<QString> thoughtLine(const QString& text) {
    QString line = text;
    line.replace(u"\r\n"_s, u" "_s);
    for (QChar& character : line) {
        if (breaksLine(character))
            character = u' ';
    }
    line = line.trimmed();
    return line.isEmpty() ? std::nullopt : std::optional(line);
}

QByteArray capturedLine(const QString& thought, CaptureFormat format, QDate day) {
    QByteArray text = thought.toUtf8() + '\n';
    switch (format) {
    case CaptureFormat::Markdown:
        return "- [ ] " + text;
    case CaptureFormat::TodoTxt:
        return day.toString(Qt::ISODate).toLatin1() + ' ' + text;
    case CaptureFormat::Org:
        return "* TODO " + text;
    case CaptureFormat::Plain:
        return text;
    }
    Q_UNREACHABLE();
}

} // namespace lumora::companion
