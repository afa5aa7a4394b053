#pragma once

#include <QByteArray>
#include <QProcess>

namespace lumora::tests {

/// An X server of the test's own, without a screen to look at, that ends with this object.
class PrivateDisplay {
public:
    PrivateDisplay();
    ~PrivateDisplay();
    PrivateDisplay(const PrivateDisplay&) = delete;
    PrivateDisplay& operator=(const PrivateDisplay&) = delete;

    /// The server's name, as in DISPLAY.
    QByteArray name() const { return m_name; }

private:
    QProcess m_server;
    QByteArray m_name;
};

} // namespace lumora::tests
