#include "support/Fixtures.h"

#include <QFile>

namespace lumora::tests {

QByteArray fixture(const QString& name) {
    QFile file(QStringLiteral(LUMORA_FIXTURES) + u'/' + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No fixture %s", qUtf8Printable(file.fileName()));
    return file.readAll();
}

} // namespace lumora::tests
