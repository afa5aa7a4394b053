#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace lumora {

/// Tells when nobody is left to read what is written to a pipe, a socket or a terminal. Does
/// nothing until then.
class ReaderWatch : public QObject {
    Q_OBJECT

public:
    /// `file` is the open descriptor that is written to. Of one that has no reader, such as a file
    /// on disk, nothing is ever heard.
    explicit ReaderWatch(int file);
    ~ReaderWatch() override;

Q_SIGNALS:
    /// The last reader has gone. Said once.
    void gone();

private:
    int m_poll; ///< -1 where there is nothing to watch
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace lumora
