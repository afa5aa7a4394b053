#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace lumora {

/// The body of an answer as it comes in, how much of head and body there was (neither grows past
/// its limit), and whether the body comes as it was asked for.
class ReceivedAnswer {
public:
    /// Limits in bytes.
    ReceivedAnswer(qint64 headLimit, qint64 bodyLimit)
        : m_headLimit(headLimit)
        , m_bodyLimit(bodyLimit) {}

    /// Takes the next line of the head, or of what may stand behind a body in chunks; interim
    /// answers' and a proxy's heads are included. False: nothing more is wanted.
    [[nodiscard]] bool takeHeadLine(QByteArrayView line);

    /// Takes the next piece of the body. False: that is too much, and nothing was taken.
    [[nodiscard]] bool takeBody(QByteArrayView bytes);

    /// Whether something was not taken.
    bool isTooLarge() const { return m_tooLarge; }

    /// Whether the body is announced in a transfer coding other than chunks. Nobody asked for one,
    /// and unpacking has no bounds.
    bool isPacked() const { return m_packed; }

    /// Whether the latest head that was begun has been ended by its empty line.
    bool isHeadComplete() const { return m_headComplete; }

    const QByteArray& body() const { return m_body; }

private:
    qint64 m_headLimit;
    qint64 m_bodyLimit;
    qint64 m_headBytes = 0;
    bool m_headComplete = false;
    QByteArray m_body;
    bool m_tooLarge = false;
    bool m_packed = false;
};

} // namespace lumora
