#include "support/PrivateMemory.h"

#include <QFile>

#include <stdexcept>

namespace lumora::tests {

qint64 privateMemory(qint64 process) {
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(process));
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QByteArray name = "Private_Dirty:";
    const qsizetype at = text.indexOf(name);
    if (at < 0)
        throw std::runtime_error("no smaps_rollup");
    return text.mid(at + name.size()).trimmed().split(' ').value(0).toLongLong();
}

} // namespace lumora::tests
