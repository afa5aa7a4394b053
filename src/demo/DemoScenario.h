#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace lumora {

/// What the demo service pretends to be.
enum class DemoScenario {
    Busy,         ///< a full day with everything a briefing can hold
    Empty,        ///< a day with nothing in it and no spending
    Quiet,        ///< nothing near, everything done
    Unauthorized, ///< every token is rejected
    Flaky,        ///< two failures before each success
    Slow,         ///< every answer comes after three seconds
    Malformed,    ///< a briefing with a date that is no instant
    Html,         ///< a login page in front of everything
};

/// The scenario of that name as written on the command line; absent when there is none.
std::optional<DemoScenario> demoScenarioNamed(QStringView name);

/// The name of `scenario` as written on the command line.
QString demoScenarioName(DemoScenario scenario);

/// Every name, the default first.
QStringList demoScenarioNames();

} // namespace lumora
