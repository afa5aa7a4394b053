#include "e2e/ServiceProcess.h"

#include "support/Patience.h"

#include <QJsonArray>
#include <QNetworkReply>
#include <QTest>
#include <QUrl>

#include <sys/prctl.h>

#include <csignal>
#include <memory>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

ServiceProcess::ServiceProcess() {
    // A test that is killed takes it along.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.setStandardInputFile(QProcess::nullDevice());
    start();
}

ServiceProcess::~ServiceProcess() {
    stop();
}

QString ServiceProcess::endpoint() const {
    return u"http://127.0.0.1:%1/api/briefing"_s.arg(m_port);
}

void ServiceProcess::control(const QJsonObject& change) {
    QNetworkRequest post = request(u"/control"_s);
    post.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    complete(m_network.post(post, QJsonDocument(change).toJson()));
}

QJsonObject ServiceProcess::briefing() {
    return complete(m_network.get(request(u"/api/briefing"_s))).object();
}

QStringList ServiceProcess::inbox() {
    QStringList texts;
    const QJsonArray entries = complete(m_network.get(request(u"/api/inbox"_s))).array();
    for (const auto& entry : entries)
        texts += entry[u"text"_s].toString();
    return texts;
}

void ServiceProcess::stop() {
    m_process.kill();
    m_process.waitForFinished(patience);
}

void ServiceProcess::restart() {
    stop();
    start();
}

void ServiceProcess::start() {
    m_process.start(
        QStringLiteral(LUMORA_DEMO_SERVICE),
        {u"--port"_s, QString::number(m_port), u"--token"_s, QString::fromLatin1(token())});
    const bool listens = QTest::qWaitFor([this] { return m_process.canReadLine(); }, patience);
    const QUrl address(QString::fromUtf8(m_process.readLine()).section(u' ', 1).trimmed());
    if (!listens || address.port() <= 0)
        throw std::runtime_error("the demo's service did not start");
    m_port = quint16(address.port());
}

QNetworkRequest ServiceProcess::request(const QString& path) const {
    QNetworkRequest request(QUrl(u"http://127.0.0.1:%1%2"_s.arg(m_port).arg(path)));
    request.setRawHeader("X-Api-Key", token());
    return request;
}

QJsonDocument ServiceProcess::complete(QNetworkReply* reply) {
    const std::unique_ptr<QNetworkReply> owner(reply);
    if (!QTest::qWaitFor([reply] { return reply->isFinished(); }, patience) ||
        reply->error() != QNetworkReply::NoError)
        throw std::runtime_error(reply->errorString().toStdString());
    return QJsonDocument::fromJson(reply->readAll());
}

} // namespace lumora::tests
