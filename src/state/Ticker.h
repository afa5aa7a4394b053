#pragma once

#include "platform/Clock.h"

#include <QObject>

#include <memory>

namespace lumora {

/// The clock that time-dependent texts are rendered from. It moves in steps of 30 seconds, so a
/// text that shows minutes lags by less than that and the program sleeps in between.
class Ticker : public QObject {
    Q_OBJECT

public:
    /// `clock` must outlive the ticker.
    explicit Ticker(Clock& clock);

    /// The time of the latest step, or of creation before the first.
    Instant now() const { return m_now; }

Q_SIGNALS:
    /// `now` has moved.
    void ticked();

private:
    Clock& m_clock;
    Instant m_now;
    std::unique_ptr<RepeatingTimer> m_timer;
};

} // namespace lumora
