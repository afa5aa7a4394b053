#include "app/DemoServiceProcess.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds startLimit = 5s;
constexpr std::chrono::milliseconds endLimit = 1s;

QString servicePath() {
    return QCoreApplication::applicationDirPath() + u"/lumora-demo-service"_s;
}

} // namespace

std::optional<DemoServiceProcess::Address> parseDemoAddress(const QByteArray& output) {
    DemoServiceProcess::Address address;
    for (const QByteArray& line : output.split('\n')) {
        if (line.startsWith("endpoint "))
            address.endpoint = QString::fromUtf8(line.mid(9)).trimmed();
        else if (line.startsWith("token "))
            address.token = QString::fromUtf8(line.mid(6)).trimmed();
    }
    if (address.endpoint.isEmpty() || address.token.isEmpty() || !output.endsWith('\n'))
        return std::nullopt;
    return address;
}

DemoServiceProcess::~DemoServiceProcess() {
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(int(endLimit.count())))
        m_process.kill();
}

tl::expected<DemoServiceProcess::Address, DemoServiceProcess::Failure>
DemoServiceProcess::start(const QString& scenario) {
    QStringList arguments{u"--until-stdin-closes"_s};
    if (!scenario.isEmpty())
        arguments += {u"--scenario"_s, scenario};
    m_process.start(servicePath(), arguments);

    QByteArray output;
    const QDeadlineTimer deadline(startLimit);
    while (m_process.waitForReadyRead(int(deadline.remainingTime()))) {
        output += m_process.readAllStandardOutput();
        if (const auto address = parseDemoAddress(output))
            return *address;
    }
    return tl::unexpected(failure());
}

DemoServiceProcess::Failure DemoServiceProcess::failure() {
    QString complaint = QString::fromUtf8(m_process.readAllStandardError()).trimmed();
    if (complaint.isEmpty())
        return {.sentence = m_process.errorString()};
    // People started another program than the one that complains.
    const QString speaker = u"lumora-demo-service: "_s;
    if (complaint.startsWith(speaker))
        complaint.remove(0, speaker.size());
    m_process.waitForFinished(int(endLimit.count()));
    const bool ended =
        m_process.state() == QProcess::NotRunning && m_process.exitStatus() == QProcess::NormalExit;
    return {.sentence = complaint, .exitCode = ended ? std::max(1, m_process.exitCode()) : 1};
}

} // namespace lumora
