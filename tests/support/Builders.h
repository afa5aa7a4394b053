#pragma once

#include "briefing/Briefing.h"

#include <ostream>
#include <string_view>

namespace lumora {

/// How gtest prints an event in messages: by its identity.
void PrintTo(const BriefEvent& event, std::ostream* out);

} // namespace lumora

namespace lumora::tests {

/// The instant of an internet date-time such as "2025-03-04T09:30:00Z"; ends the test program when
/// it is none.
Instant at(std::string_view text);

/// What a test wants an event to have; everything else is a plain meeting without a time.
struct EventFields {
    QString title = QStringLiteral("Standup");
    std::optional<Instant> start = {};
    std::optional<Instant> end = {};
    bool allDay = false;
    std::optional<QString> location = {};
    std::optional<QString> feed = {};
    std::optional<QString> meetingUrl = {};
};

BriefEvent makeEvent(const EventFields& fields);

/// A briefing of 4 March 2025 with these events and nothing else.
Briefing makeBriefing(std::vector<BriefEvent> events = {});

} // namespace lumora::tests
