#include "demo/DemoScenario.h"

#include <array>
#include <utility>

namespace lumora {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array kNames = {
    std::pair(DemoScenario::Busy, "busy"_L1),
    std::pair(DemoScenario::Empty, "empty"_L1),
    std::pair(DemoScenario::Quiet, "quiet"_L1),
    std::pair(DemoScenario::Unauthorized, "unauthorized"_L1),
    std::pair(DemoScenario::Flaky, "flaky"_L1),
    std::pair(DemoScenario::Slow, "slow"_L1),
    std::pair(DemoScenario::Malformed, "malformed"_L1),
    std::pair(DemoScenario::Html, "html"_L1),
};

} // namespace

std::optional<DemoScenario> demoScenarioNamed(QStringView name) {
    for (const auto& [scenario, known] : kNames) {
        if (name == known)
            return scenario;
    }
    return std::nullopt;
}

QString demoScenarioName(DemoScenario scenario) {
    for (const auto& [known, name] : kNames) {
        if (known == scenario)
            return name;
    }
    Q_UNREACHABLE();
}

QStringList demoScenarioNames() {
    QStringList names;
    for (const auto& entry : kNames)
        names.append(entry.second);
    return names;
}

} // namespace lumora
