#include "companion/fetching/Commands.h"

#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr qsizetype keptComplaint = 4096;

/// The first line with something in it, without what would steer a terminal.
QString firstLine(const QByteArray& text) {
    for (const QByteArray& line : text.split('\n')) {
        QString words = QString::fromUtf8(line);
        words.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
        if (!words.trimmed().isEmpty())
            return words.trimmed().left(300);
    }
    return {};
}

} // namespace

/// One program, from its start to its end.
class Commands::Run {
public:
    Run(CommandRequest request, std::function<void(Run*, CommandOutcome)> done)
        : m_request(std::move(request))
        , m_done(std::move(done)) {
        m_process.setProgram(m_request.words.first());
        m_process.setArguments(m_request.words.mid(1));
        // A group of its own, so that what it starts can be ended with it.
        m_process.setChildProcessModifier([] { setpgid(0, 0); });
        QObject::connect(&m_process, &QProcess::readyReadStandardOutput, [this] { takeOutput(); });
        QObject::connect(&m_process, &QProcess::readyReadStandardError, [this] {
            m_complaint += m_process.readAllStandardError();
            m_complaint.truncate(keptComplaint);
        });
        QObject::connect(&m_process, &QProcess::finished, [this] { end(); });
        QObject::connect(
            &m_process, &QProcess::errorOccurred, [this](QProcess::ProcessError error) {
                if (error == QProcess::FailedToStart)
                    QTimer::singleShot(0, &m_process, [this] { end(); });
            });
        m_limit.setSingleShot(true);
        QObject::connect(&m_limit, &QTimer::timeout, [this] {
            giveUp(u"did not end within %1 s"_s.arg(
                std::chrono::ceil<std::chrono::seconds>(m_request.longest).count()));
        });
        m_limit.start(m_request.longest);
        m_process.start();
        m_process.write(m_request.input);
        m_process.closeWriteChannel();
    }

    ~Run() {
        m_process.disconnect();
        if (m_process.state() != QProcess::NotRunning) {
            killGroup();
            m_process.waitForFinished();
        }
    }

    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

private:
    void takeOutput() {
        m_output += m_process.readAllStandardOutput();
        if (m_output.size() > m_request.largest)
            giveUp(u"printed more than %1 bytes"_s.arg(m_request.largest));
    }

    void giveUp(const QString& reason) {
        if (m_reason)
            return;
        m_reason = reason;
        m_output.clear();
        killGroup();
        m_process.kill();
    }

    void killGroup() {
        if (m_process.processId() > 0)
            ::kill(-pid_t(m_process.processId()), SIGKILL);
    }

    void end() {
        m_limit.stop();
        m_done(this, outcome());
    }

    CommandOutcome outcome() const {
        const QString name = QFileInfo(m_request.words.first()).fileName();
        if (m_reason)
            return tl::unexpected(name + u' ' + *m_reason);
        if (m_process.error() == QProcess::FailedToStart)
            return tl::unexpected(name + u" could not be started"_s);
        if (m_process.exitStatus() == QProcess::CrashExit)
            return tl::unexpected(name + u" crashed"_s);
        if (m_process.exitCode() == 0)
            return m_output;
        const QString complaint = firstLine(m_complaint);
        return tl::unexpected(
            complaint.isEmpty() ? u"%1 ended with %2"_s.arg(name).arg(m_process.exitCode())
                                : u"%1: %2"_s.arg(name, complaint));
    }

    const CommandRequest m_request;
    const std::function<void(Run*, CommandOutcome)> m_done;
    QByteArray m_output;
    QByteArray m_complaint;
    std::optional<QString> m_reason; ///< why it was ended; absent: it was not
    QProcess m_process;
    QTimer m_limit;
};

Commands::~Commands() {
    qDeleteAll(m_runs);
    qDeleteAll(m_over);
}

void Commands::run(CommandRequest request, std::function<void(CommandOutcome)> done) {
    m_runs += new Run(
        std::move(request), [this, done = std::move(done)](Run* run, CommandOutcome outcome) {
            m_runs -= run;
            m_over += run;
            // Not from within its own signal.
            QTimer::singleShot(0, this, [this] { qDeleteAll(std::exchange(m_over, {})); });
            done(std::move(outcome));
        });
}

} // namespace lumora::companion
