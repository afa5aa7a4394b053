#include "linux/http/OneShotUpload.h"

#include <algorithm>
#include <utility>

namespace lumora {

OneShotUpload::OneShotUpload(QByteArray body)
    : m_body(std::move(body)) {
    // Unbuffered, so that pos() is where the next read starts.
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 OneShotUpload::readData(char* data, qint64 maxSize) {
    const qint64 count = std::min(maxSize, m_body.size() - pos());
    std::copy_n(m_body.constData() + pos(), count, data);
    return count;
}

qint64 OneShotUpload::writeData(const char*, qint64) {
    return -1;
}

} // namespace lumora
