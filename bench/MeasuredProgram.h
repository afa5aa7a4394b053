#pragma once

#include <QProcess>
#include <QProcessEnvironment>

namespace lumora {

/// A running program, and what the kernel says of it. Ends with this object.
class MeasuredProgram {
public:
    /// In KiB.
    struct Memory {
        double privateDirty = 0;
        double proportional = 0;
    };

    /// Since the program's start, over those of its threads that still run.
    struct Activity {
        double wakeups = 0;
        double cpuMilliseconds = 0;
    };

    /// Starts the program. Throws when there is none.
    MeasuredProgram(const QStringList& command, const QProcessEnvironment& environment);
    ~MeasuredProgram();
    MeasuredProgram(const MeasuredProgram&) = delete;
    MeasuredProgram& operator=(const MeasuredProgram&) = delete;

    Memory memory() const;

    /// The most that was ever in memory at once, with what it shares, in KiB.
    double peakMemory() const;

    Activity activity() const;

    /// Whether a file whose name contains `name` is mapped into its memory.
    bool hasMapped(const QByteArray& name) const;

private:
    QByteArray read(const QString& file) const;

    QProcess m_process;
};

} // namespace lumora
