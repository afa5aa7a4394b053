// lumora-bench-floor [--get URL]: what any program of this kind costs before it does anything.
//
// A bare application on the session bus that puts an item into the status area as early as it can,
// makes one request when a URL is given, and waits. Lumora's figures are compared with its.

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>

using namespace Qt::Literals::StringLiterals;

namespace {

QDBusPendingCall registerItem(const QDBusConnection& bus) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
        u"org.kde.StatusNotifierWatcher"_s, u"RegisterStatusNotifierItem"_s);
    call << bus.baseService();
    return bus.asyncCall(call);
}

// Certificates beyond the system's are trusted in the way that Lumora trusts them.
QSslConfiguration trust() {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    const QString file = qEnvironmentVariable("SSL_CERT_FILE");
    if (!file.isEmpty()) {
        configuration.setCaCertificates(
            QSslConfiguration::systemCaCertificates() + QSslCertificate::fromPath(file));
    }
    return configuration;
}

void get(QNetworkAccessManager& network, const QString& url) {
    QNetworkRequest request{QUrl(url)};
    request.setSslConfiguration(trust());
    QNetworkReply* const reply = network.get(request);
    QObject::connect(reply, &QNetworkReply::finished, reply, [reply] {
        reply->readAll();
        reply->deleteLater();
    });
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QDBusPendingCallWatcher registered(registerItem(QDBusConnection::sessionBus()));
    QNetworkAccessManager network;
    QObject::connect(
        &registered, &QDBusPendingCallWatcher::finished, &network, [&network, &arguments] {
            if (arguments.value(1) == u"--get")
                get(network, arguments.value(2));
        });
    return QApplication::exec();
}
