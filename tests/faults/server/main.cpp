#include "faults/Behaviours.h"
#include "faults/FaultTable.h"
#include "faults/server/FaultServer.h"
#include "support/WeakTls.h"

#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <QTextStream>

#include <unistd.h>

#include <cstdio>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Does what it is told on standard input, a line each, and answers each with a line.
class Service {
public:
    QString obey(const QStringList& words) {
        if (words.value(0) == u"serve"_s)
            return serve(faultTable().at(words.value(1).toUInt()).fault);
        if (words.value(0) == u"recover"_s)
            m_server->recover();
        return u"%1\t%2\t%3"_s.arg(m_server->connectionCount())
            .arg(m_server->requestCount())
            .arg(m_good.requestCount());
    }

private:
    QString serve(const Fault& fault) {
        m_server = std::make_unique<FaultServer>(fault);
        return u"%1\t%2\t%3"_s.arg(m_server->port())
            .arg(m_good.port())
            .arg(m_server->authorityFile());
    }

    FaultServer m_good{isWell()};
    std::unique_ptr<FaultServer> m_server;
};

} // namespace

// A process of its own, so that what it does neither slows down nor swells the client.
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    allowWeakTls();
    Service service;
    QFile input;
    if (!input.open(stdin, QFile::ReadOnly | QFile::Unbuffered))
        return EXIT_FAILURE;
    QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &application, [&] {
        const QByteArray line = input.readLine();
        if (line.isEmpty())
            return QCoreApplication::quit();
        const QString answer = service.obey(QString::fromUtf8(line).trimmed().split(u' '));
        QTextStream(stdout) << answer << Qt::endl;
    });
    return QCoreApplication::exec();
}
