#pragma once

#include <QIODevice>

namespace lumora {

/// A request body that can be sent once only, also when it is empty. QNetworkAccessManager repeats
/// a request by itself when the server closes the connection without answering; it has to rewind
/// the body for that, and gives up when it cannot. (It would not ask a QBuffer, but its array.)
///
/// It rewinds the body also on reading some redirects, whoever follows them, and takes them for
/// failures when it cannot. Once there is an answer, rewinding is therefore allowed.
class OneShotUpload final : public QIODevice {
public:
    /// Open for reading at once.
    explicit OneShotUpload(QByteArray body);

    qint64 size() const override { return m_body.size(); }

    /// Tells that the head of an answer has come.
    void setAnswered() { m_answered = true; }

    bool reset() override { return m_answered && QIODevice::reset(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    QByteArray m_body;
    bool m_answered = false;
};

} // namespace lumora
