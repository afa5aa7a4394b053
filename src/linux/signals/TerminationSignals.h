#pragma once

#include <QObject>

namespace lumora {

/// Turns the signals that ask a process to end (SIGTERM, SIGINT, SIGHUP) into a Qt signal, so that
/// the program ends as it does on any other request. One that the process was started to ignore
/// stays ignored. At most one object exists at a time; what was before is restored with its end.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    /// Somebody wants the process to end.
    void requested();
};

} // namespace lumora
