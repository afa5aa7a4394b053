#include "support/Fixtures.h"

#include <QFile>

namespace lumora::tests {

QByteArray fixture(const QString& name) {
    QFile file(QStringLiteral(LUMORA_FIXTURES) + u'/' + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No fixture %s", qUtf8Printable(file.fileName()));
    return file.readAll();
}

QByteArray briefingBody(double generatedAt) {
    return R"({"date":"2025-03-04","generatedAt":)" + QByteArray::number(generatedAt) +
           R"(,"eventsToday":[],"chores":{"count":0,"top":[]},)"
           R"("habits":{"done":1,"total":2,"items":[]},"focus":{}})";
}

} // namespace lumora::tests
