#include "MeasuredProgram.h"

#include <QDir>
#include <QFile>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// The number behind "`name`:" in a list of names and values, one a line.
double valueOf(const QByteArray& name, const QByteArray& list) {
    const QByteArrayList lines = list.split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').value(0).toDouble();
    }
    throw std::runtime_error("the kernel does not tell " + name.toStdString());
}

} // namespace

MeasuredProgram::MeasuredProgram(
    const QStringList& command, const QProcessEnvironment& environment) {
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start(command.first(), command.mid(1));
    if (!m_process.waitForStarted())
        throw std::runtime_error("could not start " + command.first().toStdString());
}

MeasuredProgram::~MeasuredProgram() {
    m_process.kill();
    m_process.waitForFinished();
}

QByteArray MeasuredProgram::read(const QString& file) const {
    QFile source(u"/proc/%1/%2"_s.arg(m_process.processId()).arg(file));
    if (!source.open(QFile::ReadOnly))
        throw std::runtime_error("the program has ended: " + m_process.program().toStdString());
    return source.readAll();
}

MeasuredProgram::Memory MeasuredProgram::memory() const {
    const QByteArray rollup = read(u"smaps_rollup"_s);
    return {valueOf("Private_Dirty", rollup), valueOf("Pss", rollup)};
}

double MeasuredProgram::peakMemory() const {
    return valueOf("VmHWM", read(u"status"_s));
}

MeasuredProgram::Activity MeasuredProgram::activity() const {
    Activity sum;
    const QDir tasks(u"/proc/%1/task"_s.arg(m_process.processId()));
    const QStringList threads = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& thread : threads) {
        sum.wakeups += valueOf("voluntary_ctxt_switches", read(u"task/%1/status"_s.arg(thread)));
        // The first figure is the time on a processor in nanoseconds.
        sum.cpuMilliseconds +=
            read(u"task/%1/schedstat"_s.arg(thread)).split(' ').value(0).toDouble() / 1e6;
    }
    return sum;
}

bool MeasuredProgram::hasMapped(const QByteArray& name) const {
    return read(u"maps"_s).contains(name);
}

} // namespace lumora
