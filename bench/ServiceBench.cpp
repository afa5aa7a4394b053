// lumora-bench-service [--quick]: what lumora-service costs with a calendar of 10,000 events,
// beside the same program with an empty one. The figures go to standard output, see ResultTable.h.

#include "ManyEvents.h"
#include "MeasuredProgram.h"
#include "Measuring.h"
#include "ResultTable.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora {

namespace {

constexpr auto token = "0123456789abcdef";
constexpr double mebi = 1024; // KiB
// What was fetched ahead ends its threads meanwhile.
constexpr auto settling = 40s;

void put(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("could not write " + path.toStdString());
}

quint16 freePort() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

/// All that a service on `port` answers to a request for the briefing; empty: nobody is there.
QByteArray ask(quint16 port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    QByteArray answer;
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
        const QByteArray request =
            QByteArray("GET /api/briefing HTTP/1.1\r\nHost: localhost\r\nX-Api-Key: ") + token +
            "\r\n\r\n";
        ::send(socket, request.constData(), size_t(request.size()), MSG_NOSIGNAL);
        std::array<char, 65'536> piece;
        for (ssize_t size = 0; (size = ::recv(socket, piece.data(), piece.size(), 0)) > 0;)
            answer.append(piece.data(), size);
    }
    ::close(socket);
    return answer;
}

/// The service with a home of its own and one calendar.
class RunningOne {
public:
    explicit RunningOne(const QByteArray& calendar) {
        put(m_home.filePath(u"my.ics"_s), calendar);
        put(m_home.filePath(u"config/lumora/service.toml"_s),
            QByteArray("token = \"") + token + "\"\nport = " + QByteArray::number(m_port) +
                "\n[[calendar]]\nname = \"Work\"\nfile = \"" + m_home.path().toUtf8() +
                "/my.ics\"\n");
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto& [name, folder] :
             {std::pair(u"XDG_CONFIG_HOME"_s, u"config"_s),
              {u"XDG_DATA_HOME"_s, u"data"_s},
              {u"XDG_CACHE_HOME"_s, u"cache"_s},
              {u"XDG_RUNTIME_DIR"_s, u"."_s}})
            environment.insert(name, m_home.filePath(folder));
        environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
        QElapsedTimer timer;
        timer.start();
        m_program = std::make_unique<MeasuredProgram>(
            QStringList{QCoreApplication::applicationDirPath() + u"/lumora-service"_s, u"run"_s},
            environment);
        while (!ask(m_port).startsWith("HTTP/1.1 200 ")) {
            if (timer.elapsed() > 20'000)
                throw std::runtime_error("the service does not answer");
            QThread::usleep(200);
        }
        m_readyAfter = double(timer.nsecsElapsed()) / 1e6;
    }

    /// From its start to its first briefing, in milliseconds.
    double readyAfter() const { return m_readyAfter; }

    /// What each of many requests takes, in microseconds.
    std::vector<double> requests() const {
        std::vector<double> times;
        for (int i = 0; i < 1'000; ++i) {
            QElapsedTimer timer;
            timer.start();
            if (!ask(m_port).startsWith("HTTP/1.1 200 "))
                throw std::runtime_error("a request without an answer");
            times.push_back(double(timer.nsecsElapsed()) / 1e3);
        }
        return times;
    }

    const MeasuredProgram& program() const { return *m_program; }

private:
    QTemporaryDir m_home;
    quint16 m_port = freePort();
    std::unique_ptr<MeasuredProgram> m_program;
    double m_readyAfter = 0;
};

void compareStarts(int starts) {
    say(u"Starting the service %1 times"_s.arg(starts));
    const QByteArray many = manyEvents(10'000, QDate::currentDate());
    std::vector<double> ours;
    std::vector<double> empty;
    for (int i = 0; i < starts; ++i) {
        ours.push_back(RunningOne(many).readyAfter());
        empty.push_back(RunningOne(manyEvents(0, {})).readyAfter());
    }
    ResultTable::addFigure(
        u"Service with 10,000 events ready, beside none"_s, u"ms"_s, median(ours), median(empty),
        1'000);
}

void compareRunning(std::chrono::seconds idle) {
    const RunningOne ours(manyEvents(10'000, QDate::currentDate()));
    const RunningOne empty(manyEvents(0, {}));
    const auto times = ours.requests();
    const auto bare = empty.requests();
    ResultTable::addFigure(u"Its request, median"_s, u"µs"_s, median(times), median(bare), 1'000);
    ResultTable::addFigure(
        u"Its request, 95th percentile"_s, u"µs"_s, percentile(times, 95), percentile(bare, 95),
        1'000);
    say(u"Leaving the service alone"_s);
    pass(settling);
    const auto before = ours.program().activity();
    const auto emptyBefore = empty.program().activity();
    pass(idle);
    const double minutes = double(idle.count()) / 60;
    ResultTable::addFigure(
        u"Its wake-ups when idle"_s, u"a minute"_s,
        (ours.program().activity().wakeups - before.wakeups) / minutes,
        (empty.program().activity().wakeups - emptyBefore.wakeups) / minutes);
    const auto memory = ours.program().memory();
    const auto least = empty.program().memory();
    ResultTable::addFigure(
        u"Its memory of its own (private dirty)"_s, u"MiB"_s, memory.privateDirty / mebi,
        least.privateDirty / mebi);
    ResultTable::addFigure(
        u"Its memory with its share of what is shared (PSS)"_s, u"MiB"_s,
        memory.proportional / mebi, least.proportional / mebi);
    ResultTable::addFigure(
        u"The most memory it ever had"_s, u"MiB"_s, ours.program().peakMemory() / mebi,
        empty.program().peakMemory() / mebi, 60);
}

} // namespace

} // namespace lumora

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const bool isQuick = QCoreApplication::arguments().contains(u"--quick"_s);
    try {
        lumora::compareStarts(isQuick ? 5 : 15);
        lumora::compareRunning(isQuick ? 60s : 180s);
    } catch (const std::exception& failure) {
        QTextStream(stderr) << failure.what() << '\n';
        return 1;
    }
}
