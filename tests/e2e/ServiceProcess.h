#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QProcess>

namespace lumora::tests {

/// The demo's service as a process of the test's own.
class ServiceProcess {
public:
    /// Starts it on a free port with a busy day; throws when that fails.
    ServiceProcess();
    ~ServiceProcess();
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;

    QString endpoint() const;

    QByteArray token() const { return "a-token-nobody-else-has"; }

    /// Moves its clock or its day, or changes its scenario; its `--help` lists the members.
    void control(const QJsonObject& change);

    /// The briefing that it gives now.
    QJsonObject briefing();

    /// The thoughts that it has been sent, the oldest first.
    QStringList inbox();

    /// Ends it at once, as a crash would.
    void stop();

    /// Starts it again where it was.
    void restart();

private:
    void start();
    QNetworkRequest request(const QString& path) const;
    QJsonDocument complete(QNetworkReply* reply);

    QProcess m_process;
    QNetworkAccessManager m_network;
    quint16 m_port = 0;
};

} // namespace lumora::tests
