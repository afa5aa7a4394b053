#include "support/ProgramHarness.h"

#include "support/Patience.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QSaveFile>
#include <QTest>

#include <sys/prctl.h>

#include <algorithm>
#include <csignal>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

const QString programName = u"com.lumora.app"_s;

/// What /proc tells about a process after its name, beginning with its state and its parent.
QByteArrayList processFacts(qint64 process) {
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ');
}

QByteArray compact(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

ProgramHarness::ProgramHarness()
    : m_environment(QProcessEnvironment::systemEnvironment())
    , m_connection(m_sessionBus.connect())
    , m_probe(m_connection, programName) {
    for (const auto& name :
         {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"XDG_CURRENT_DESKTOP"_s, u"QT_QPA_PLATFORMTHEME"_s,
          u"http_proxy"_s, u"https_proxy"_s, u"all_proxy"_s, u"HTTP_PROXY"_s, u"HTTPS_PROXY"_s,
          u"ALL_PROXY"_s, u"XDG_ACTIVATION_TOKEN"_s, u"DESKTOP_STARTUP_ID"_s})
        m_environment.remove(name);
    setVariable(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, m_sessionBus.address());
    setVariable(u"DBUS_SYSTEM_BUS_ADDRESS"_s, m_systemBus.address());
    setVariable(u"HOME"_s, m_home.path());
    for (const auto& [name, folder] :
         {std::pair(u"XDG_CONFIG_HOME"_s, u"config"_s),
          {u"XDG_DATA_HOME"_s, u"data"_s},
          {u"XDG_CACHE_HOME"_s, u"cache"_s},
          {u"XDG_STATE_HOME"_s, u"state"_s},
          {u"XDG_RUNTIME_DIR"_s, u"run"_s}}) {
        QDir().mkdir(
            m_home.filePath(folder), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        setVariable(name, m_home.filePath(folder));
    }
}

ProgramHarness::~ProgramHarness() {
    end();
}

void ProgramHarness::end() {
    if (!m_program || m_program->state() == QProcess::NotRunning)
        return;
    m_probe.call(u"/com/lumora/app"_s, programName, u"Quit"_s);
    const Outcome outcome = waitForEnd();
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
}

void ProgramHarness::setVariable(const QString& name, const QString& value) {
    m_environment.insert(name, value);
}

void ProgramHarness::writePreferences(const QHash<QString, QString>& preferences) {
    QDir(m_home.filePath(u"config"_s)).mkpath(u"lumora"_s);
    QSaveFile file(preferencesPath());
    bool written = file.open(QIODevice::WriteOnly);
    QByteArray text = "[General]\n";
    for (auto it = preferences.cbegin(); it != preferences.cend(); ++it)
        text += it.key().toUtf8() + '=' + it.value().toUtf8() + '\n';
    written = written && file.write(text) == text.size() && file.commit();
    if (!written)
        throw std::runtime_error("the preferences could not be written");
}

QString ProgramHarness::preferencesPath() const {
    return m_home.filePath(u"config/lumora/lumora.conf"_s);
}

QByteArray ProgramHarness::preferencesFile() const {
    QFile file(preferencesPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList ProgramHarness::filesAtHome() const {
    QStringList files;
    QDirIterator entries(
        m_home.path(), QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (entries.hasNext())
        files += entries.next();
    return files;
}

void ProgramHarness::start(const QStringList& arguments) {
    m_program = makeProcess();
    m_program->setArguments(arguments);
    m_program->start();
    if (!m_program->waitForStarted(patience))
        throw std::runtime_error("the program did not start");
}

ProgramHarness::Outcome ProgramHarness::run(const QStringList& arguments) {
    const auto process = makeProcess();
    process->setArguments(arguments);
    process->start();
    return finish(*process);
}

std::unique_ptr<QProcess> ProgramHarness::makeProcess() const {
    auto process = std::make_unique<QProcess>();
    process->setProgram(QStringLiteral(LUMORA_PROGRAM));
    process->setProcessEnvironment(m_environment);
    process->setStandardInputFile(QProcess::nullDevice());
    // A test that is killed takes it along.
    process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    return process;
}

ProgramHarness::Outcome ProgramHarness::waitForEnd() {
    return finish(*m_program);
}

// The test may be the server, the watcher or the bus's other end: events have to get through.
ProgramHarness::Outcome ProgramHarness::finish(QProcess& process) {
    const bool ended =
        QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, patience);
    if (!ended) {
        process.kill();
        process.waitForFinished(patience);
    }
    const bool normal = ended && process.exitStatus() == QProcess::NormalExit;
    return {
        .exitCode = normal ? process.exitCode() : -1,
        .out = process.readAllStandardOutput(),
        .err = process.readAllStandardError(),
    };
}

QJsonObject ProgramHarness::status() {
    const QDBusMessage answer = m_probe.call(u"/com/lumora/app"_s, programName, u"Status"_s);
    if (answer.type() != QDBusMessage::ReplyMessage)
        return {};
    return QJsonDocument::fromJson(answer.arguments().at(0).toString().toUtf8()).object();
}

testing::AssertionResult ProgramHarness::comesToShow(const QJsonObject& expected) {
    QJsonObject shown;
    const auto matches = [&] {
        shown = status();
        return std::ranges::all_of(expected.keys(), [&](const QString& key) {
            return shown.contains(key) && shown.value(key) == expected.value(key);
        });
    };
    if (QTest::qWaitFor(matches, patience))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "expected " << compact(expected).toStdString()
                                       << " within " << compact(shown).toStdString();
}

QVariant ProgramHarness::itemProperty(const QString& name) {
    return m_probe.property(u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, name);
}

QString ProgramHarness::uniqueName() {
    return m_connection.interface()->serviceOwner(programName).value();
}

QList<qint64> childrenOf(qint64 process) {
    QList<qint64> children;
    const auto entries = QDir(u"/proc"_s).entryList(QDir::Dirs);
    for (const QString& entry : entries) {
        const qint64 candidate = entry.toLongLong();
        const QByteArrayList facts = candidate > 0 ? processFacts(candidate) : QByteArrayList();
        if (facts.value(1).toLongLong() == process && isAlive(candidate))
            children += candidate;
    }
    return children;
}

bool isAlive(qint64 process) {
    const QByteArray state = processFacts(process).value(0);
    return !state.isEmpty() && state != "Z" && state != "X";
}

} // namespace lumora::tests
