#include "support/Builders.h"

#include "briefing/InternetDateTime.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

void PrintTo(const BriefEvent& event, std::ostream* out) {
    *out << event.id().toStdString();
}

} // namespace lumora

namespace lumora::tests {

Instant at(std::string_view text) {
    const auto instant = parseInternetDateTime(text);
    if (!instant)
        qFatal("No date-time: %s", std::string(text).c_str());
    return *instant;
}

BriefEvent makeEvent(const EventFields& fields) {
    return {fields.title,    fields.start, fields.end,       fields.allDay,
            fields.location, fields.feed,  fields.meetingUrl};
}

Briefing makeBriefing(std::vector<BriefEvent> events) {
    Briefing briefing;
    briefing.date = u"2025-03-04"_s;
    briefing.generatedAt = 1741080600;
    briefing.eventsToday = std::move(events);
    return briefing;
}

} // namespace lumora::tests
