#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace lumora {

/// The body of an answer as it comes in, and how much of head and body there was: neither grows
/// past its limit.
class ReceivedAnswer {
public:
    /// Limits in bytes.
    ReceivedAnswer(qint64 headLimit, qint64 bodyLimit)
        : m_headLimit(headLimit)
        , m_bodyLimit(bodyLimit) {}

    /// Takes the next line of the head, interim answers' included. False: that is too much.
    [[nodiscard]] bool takeHeadLine(QByteArrayView line);

    /// Takes the next piece of the body. False: that is too much, and nothing was taken.
    [[nodiscard]] bool takeBody(QByteArrayView bytes);

    /// Whether something was not taken.
    bool isTooLarge() const { return m_tooLarge; }

    /// Whether the empty line that ends a head was the last that came of it.
    bool isHeadComplete() const { return m_headComplete; }

    const QByteArray& body() const { return m_body; }

private:
    qint64 m_headLimit;
    qint64 m_bodyLimit;
    qint64 m_headBytes = 0;
    bool m_headComplete = false;
    QByteArray m_body;
    bool m_tooLarge = false;
};

} // namespace lumora
