#include "linux/http/ReceivedAnswer.h"

#include <algorithm>

namespace lumora {

namespace {

bool startsWith(QByteArrayView line, QByteArrayView start) {
    return line.first(std::min(line.size(), start.size())).compare(start, Qt::CaseInsensitive) == 0;
}

bool announcesPacking(QByteArrayView line) {
    const QByteArrayView name = "Transfer-Encoding:";
    if (!startsWith(line, name))
        return false;
    const QByteArrayView coding = line.sliced(name.size()).trimmed();
    return coding.compare("chunked", Qt::CaseInsensitive) != 0 &&
           coding.compare("identity", Qt::CaseInsensitive) != 0;
}

} // namespace

bool ReceivedAnswer::takeHeadLine(QByteArrayView line) {
    if (startsWith(line, "HTTP/"))
        m_headComplete = false;
    else if (line.trimmed().isEmpty())
        m_headComplete = true;
    m_headBytes += line.size();
    m_tooLarge = m_tooLarge || m_headBytes > m_headLimit;
    m_packed = m_packed || announcesPacking(line);
    return !m_tooLarge && !m_packed;
}

bool ReceivedAnswer::takeBody(QByteArrayView bytes) {
    m_tooLarge = m_tooLarge || m_body.size() + bytes.size() > m_bodyLimit;
    if (!m_tooLarge)
        m_body.append(bytes);
    return !m_tooLarge;
}

} // namespace lumora
