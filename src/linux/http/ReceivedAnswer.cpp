#include "linux/http/ReceivedAnswer.h"

namespace lumora {

bool ReceivedAnswer::takeHeadLine(QByteArrayView line) {
    m_headComplete = line.trimmed().isEmpty();
    m_headBytes += line.size();
    m_tooLarge = m_tooLarge || m_headBytes > m_headLimit;
    return !m_tooLarge;
}

bool ReceivedAnswer::takeBody(QByteArrayView bytes) {
    m_tooLarge = m_tooLarge || m_body.size() + bytes.size() > m_bodyLimit;
    if (!m_tooLarge)
        m_body.append(bytes);
    return !m_tooLarge;
}

} // namespace lumora
