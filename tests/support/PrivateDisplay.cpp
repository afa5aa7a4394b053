#include "support/PrivateDisplay.h"

#include "support/Patience.h"

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

PrivateDisplay::PrivateDisplay() {
    m_server.setStandardErrorFile(QProcess::nullDevice());
    // A test that is killed takes it along.
    m_server.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
    if (!m_server.waitForStarted(patience))
        throw std::runtime_error("Xvfb did not start");
    while (!m_server.canReadLine()) {
        if (!m_server.waitForReadyRead(patience))
            throw std::runtime_error("Xvfb did not become ready");
    }
    m_name = ':' + m_server.readLine().trimmed();
}

PrivateDisplay::~PrivateDisplay() {
    m_server.terminate();
    m_server.waitForFinished(patience);
}

} // namespace lumora::tests
