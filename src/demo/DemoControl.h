#pragma once

#include "briefing/Instant.h"
#include "demo/DemoScenario.h"

#include <QByteArray>
#include <QString>
#include <QTimeZone>

#include <tl/expected.hpp>

#include <optional>

namespace lumora {

/// What a control request changes; absent members stay as they are.
struct DemoControl {
    std::optional<DemoScenario> scenario;
    std::optional<Instant> now;
    std::optional<Seconds> advance; ///< how far the clock moves; negative: back
    std::optional<Instant> dayFrom;
    std::optional<Seconds> shiftDay; ///< how far the day's events move; negative: earlier
};

/// Reads the body of a control request: a JSON object with any of "scenario" (a name), one of
/// "now" (ISO 8601) and "advanceSeconds" (a number), and one of "dayFrom" (ISO 8601) and
/// "shiftDaySeconds" (a number). Times without an offset are local in `zone`. The error, one
/// sentence, says what is wrong; unknown members are errors.
tl::expected<DemoControl, QString> parseDemoControl(const QByteArray& body, const QTimeZone& zone);

} // namespace lumora
