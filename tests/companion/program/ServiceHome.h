#pragma once

#include "support/Patience.h"
#include "support/ProgramHarness.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QProcess>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace lumora::tests {

/// The built service as one user runs it, with a home of the test's own. One that still runs at the
/// end must end cleanly when it is asked to.
class ServiceHome {
public:
    struct Answer {
        int status = 0; ///< 0: none
        QJsonObject body;
    };

    ServiceHome() {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), m_folder.path());
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
        for (const auto* name :
             {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "DBUS_SESSION_BUS_ADDRESS"})
            environment.remove(QString::fromLatin1(name));
        m_program.setProcessEnvironment(environment);
        m_environment = environment;
    }

    ~ServiceHome() {
        if (m_program.state() == QProcess::NotRunning)
            return;
        m_program.terminate();
        EXPECT_TRUE(m_program.waitForFinished(patience));
        EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_program.exitCode(), 0);
    }

    ServiceHome(const ServiceHome&) = delete;
    ServiceHome& operator=(const ServiceHome&) = delete;

    QString path(const QString& name) const { return m_folder.filePath(name); }

    QProcessEnvironment& environment() { return m_environment; }

    void write(const QString& name, const QByteArray& bytes) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name) + QStringLiteral(".new"));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
        file.close();
        ASSERT_EQ(std::rename(qPrintable(file.fileName()), qPrintable(path(name))), 0);
    }

    QByteArray contents(const QString& name) const {
        QFile file(path(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Writes the configuration, with a token and a port beside `toml`.
    void configure(const QByteArray& toml) {
        write(
            QStringLiteral(".config/lumora/service.toml"),
            "token = \"" + m_token + "\"\nport = " + QByteArray::number(m_port) + '\n' + toml);
    }

    /// Runs the program to its end.
    ProgramHarness::Outcome run(const QStringList& arguments) const {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.setWorkingDirectory(m_folder.path());
        process.start(QStringLiteral(LUMORA_SERVICE), arguments);
        return ProgramHarness::finish(process);
    }

    /// Starts the service and waits until it serves.
    void serve() {
        m_program.setProcessEnvironment(m_environment);
        m_program.start(QStringLiteral(LUMORA_SERVICE), {QStringLiteral("run")});
        QByteArray said;
        while (!said.contains('\n') && m_program.waitForReadyRead(patience))
            said += m_program.readAllStandardOutput();
        ASSERT_TRUE(said.startsWith("Serving http://127.0.0.1:"))
            << said.constData() << m_program.readAllStandardError().constData();
    }

    QProcess& program() { return m_program; }

    QUrl endpoint() const {
        return QUrl(QStringLiteral("http://127.0.0.1:%1/api/briefing").arg(m_port));
    }

    QNetworkRequest request(const QString& below = {}) const {
        QUrl url = endpoint();
        url.setPath(url.path() + below);
        QNetworkRequest request(url);
        request.setRawHeader("X-Api-Key", m_token);
        request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
        return request;
    }

    Answer complete(QNetworkReply* reply) const {
        if (!reply->isFinished())
            QSignalSpy(reply, &QNetworkReply::finished).wait(patience);
        const auto status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const Answer answer{status, QJsonDocument::fromJson(reply->readAll()).object()};
        reply->deleteLater();
        return answer;
    }

    QJsonObject briefing() { return complete(m_network.get(request())).body; }

    Answer act(const QJsonObject& action) {
        return complete(
            m_network.post(request(QStringLiteral("/action")), QJsonDocument(action).toJson()));
    }

    /// Waits until the briefing is as wanted.
    testing::AssertionResult comesToHave(const std::function<bool(const QJsonObject&)>& wanted) {
        QJsonObject last;
        const bool came = QTest::qWaitFor([&] { return wanted(last = briefing()); }, patience);
        return came ? testing::AssertionSuccess()
                    : testing::AssertionFailure() << QJsonDocument(last).toJson().constData();
    }

    QNetworkAccessManager& network() { return m_network; }

    /// The port that configure() writes, which nobody else has.
    quint16 port() const { return m_port; }

private:
    static quint16 freePort() {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return server.serverPort();
    }

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    QNetworkAccessManager m_network;
    QByteArray m_token = "0123456789abcdef";
    quint16 m_port = freePort();
    QProcess m_program;
};

} // namespace lumora::tests
