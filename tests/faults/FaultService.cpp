#include "faults/FaultService.h"

#include "faults/FaultTable.h"
#include "support/Patience.h"

#include <QTest>

#include <sys/prctl.h>

#include <algorithm>
#include <csignal>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

FaultService::FaultService() {
    // A test that is killed takes it along.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(LUMORA_FAULT_SERVER), QStringList());
    if (!m_process.waitForStarted(patience))
        throw std::runtime_error("the service did not start");
}

FaultService::~FaultService() {
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(patience))
        m_process.kill();
}

FaultService::Way FaultService::begin(const FaultRow& row) {
    const auto& table = faultTable();
    const auto number = std::ranges::find(
                            table, std::string_view(row.name),
                            [](const FaultRow& other) { return std::string_view(other.name); }) -
                        table.begin();
    const auto answer = ask("serve " + QByteArray::number(qint64(number)));
    const QString port = QString::fromUtf8(answer.value(0));
    m_goodEndpoint = u"http://127.0.0.1:%1/good"_s.arg(QString::fromUtf8(answer.value(1)));
    const auto at = [&](const QString& address) {
        return address.contains(u"%1"_s) ? address.arg(port) : address;
    };
    const Fault& fault = row.fault;
    return {
        .endpoint = at(fault.address),
        .proxy = at(fault.proxy).toUtf8(),
        .authority = fault.isTrusted ? answer.value(2) : QByteArray(),
    };
}

FaultService::Count FaultService::count() {
    const auto answer = ask("count");
    return {answer.value(0).toInt(), answer.value(1).toInt(), answer.value(2).toInt()};
}

void FaultService::recover() {
    ask("recover");
}

bool FaultService::comesToCount(int connections, int requests) {
    return QTest::qWaitFor(
        [&] {
            const Count now = count();
            return now.connections >= connections && now.requests >= requests;
        },
        patience);
}

QList<QByteArray> FaultService::ask(const QByteArray& question) {
    m_process.write(question + '\n');
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(patience))
            throw std::runtime_error("the service does not answer");
    }
    return m_process.readLine().chopped(1).split('\t');
}

} // namespace lumora::tests
