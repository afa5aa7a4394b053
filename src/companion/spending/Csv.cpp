#include "companion/spending/Csv.h"

namespace lumora::companion {

std::optional<QList<QStringList>> csvRows(QByteArrayView csv) {
    const QString text = QString::fromUtf8(csv);
    QList<QStringList> rows;
    QStringList row;
    QString field;
    bool isQuoted = false;
    const auto endField = [&] { row += std::exchange(field, {}); };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = text[i];
        if (isQuoted && next == u'"' && text.mid(i + 1, 1) == u"\"") {
            field += next;
            ++i;
        } else if (next == u'"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && next == u',') {
            endField();
        } else if (!isQuoted && next == u'\n') {
            endField();
            rows += std::exchange(row, {});
        } else if (isQuoted || next != u'\r') {
            field += next;
        }
    }
    if (isQuoted)
        return std::nullopt;
    if (!field.isEmpty() || !row.isEmpty()) {
        endField();
        rows += row;
    }
    return rows;
}

} // namespace lumora::companion
