#pragma once

#include "briefing/Instant.h"
#include "demo/DemoScenario.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTimeZone>

#include <tl/expected.hpp>

#include <optional>

namespace lumora {

/// What the demo service's command line asks for.
struct DemoOptions {
    DemoScenario scenario = DemoScenario::Busy;
    quint16 port = 0;                ///< 0: any free one
    std::optional<QByteArray> token; ///< absent: make one up
    std::optional<Instant> now;      ///< absent: the real time
    bool untilStdinCloses = false;
    bool help = false;
    bool version = false;
};

/// Reads `arguments` (without the program's name). Times without an offset are local in `zone`.
/// The error is one line for the user.
tl::expected<DemoOptions, QString>
parseDemoOptions(const QStringList& arguments, const QTimeZone& zone);

/// What `--help` prints.
QString demoHelp();

/// What `--version` prints.
QString demoVersion();

} // namespace lumora
