#include "companion/agenda/EventReader.h"

#include "companion/agenda/EventLengths.h"
#include "companion/agenda/IcalTimes.h"
#include "companion/agenda/JoinLink.h"

#include <algorithm>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

// As many characters of a title or a place as anybody looks at.
constexpr qsizetype longestShownText = 1'000;
// Dates that are listed one by one.
constexpr std::size_t mostListedDates = 10'000;

struct FreeIcalText {
    void operator()(char* text) const { icalmemory_free_buffer(text); }
};

// The value as it would stand in a file again.
QByteArray rawValue(const icalproperty& property) {
    const std::unique_ptr<char, FreeIcalText> text(icalproperty_get_value_as_string_r(&property));
    return QByteArray(text.get());
}

QString textValue(const icalproperty& property) {
    const icalvalue* const value = icalproperty_get_value(&property);
    if (value && icalvalue_isa(value) == ICAL_TEXT_VALUE)
        return QString::fromUtf8(icalvalue_get_text(value));
    return QString::fromUtf8(rawValue(property));
}

/// Goes through the properties of an event once, and says what they amount to.
class EventProperties {
public:
    EventProperties(CalendarZones& zones, const ReaderSettings& settings)
        : m_zones(zones)
        , m_settings(settings) {}

    void take(icalproperty& property);

    std::optional<EventRecord> event();

private:
    std::optional<CalendarTime> time(icalproperty& property);
    void takeExtra(icalproperty& property);
    void takeReplaced(icalproperty& property);
    void takeAttendee(icalproperty& property);
    void takeOwn(icalproperty& property);

    CalendarZones& m_zones;
    const ReaderSettings& m_settings;
    EventRecord m_event;
    LinkTexts m_links;
    bool m_hasStart = false;
    std::optional<CalendarTime> m_end;
    std::optional<icaldurationtype> m_duration;
};

std::optional<CalendarTime> EventProperties::time(icalproperty& property) {
    const auto written = timeIn(property);
    const auto local = written ? writtenSeconds(*written) : std::nullopt;
    if (!local)
        return std::nullopt;
    CalendarTime time{.local = *local, .isDate = written->is_date != 0, .zone = {}};
    if (time.isDate)
        return time;
    icalparameter* const zone = icalproperty_get_first_parameter(&property, ICAL_TZID_PARAMETER);
    if (icaltime_is_utc(*written))
        time.zone = CalendarZones::utc();
    else if (const char* const name = zone ? icalparameter_get_tzid(zone) : nullptr)
        time.zone = m_zones.named(name);
    return time;
}

void EventProperties::takeExtra(icalproperty& property) {
    const auto start = time(property);
    if (!start || m_event.extras.size() >= mostListedDates)
        return;
    ExtraStart extra{.start = *start, .length = {}};
    const icalvalue* const value = icalproperty_get_value(&property);
    if (icalvalue_isa(value) == ICAL_PERIOD_VALUE)
        extra.length = lengthOfPeriod(icalvalue_get_period(value));
    m_event.extras.push_back(std::move(extra));
}

void EventProperties::takeReplaced(icalproperty& property) {
    m_event.replaces = time(property);
    icalparameter* const range = icalproperty_get_first_parameter(&property, ICAL_RANGE_PARAMETER);
    m_event.replacesFollowing = range && icalparameter_get_range(range) == ICAL_RANGE_THISANDFUTURE;
}

void EventProperties::takeAttendee(icalproperty& property) {
    icalparameter* const answer =
        icalproperty_get_first_parameter(&property, ICAL_PARTSTAT_PARAMETER);
    if (!answer || icalparameter_get_partstat(answer) != ICAL_PARTSTAT_DECLINED)
        return;
    QString address = QString::fromUtf8(rawValue(property)).trimmed();
    if (address.startsWith(u"mailto:"_s, Qt::CaseInsensitive))
        address.remove(0, 7);
    m_event.isDeclined |= m_settings.myAddresses.contains(address, Qt::CaseInsensitive);
}

// What programs write that no standard knows of.
void EventProperties::takeOwn(icalproperty& property) {
    const char* const name = icalproperty_get_x_name(&property);
    if (!name)
        return;
    const QByteArrayView is(name);
    if (is == "X-GOOGLE-CONFERENCE") {
        m_links.google = textValue(property);
    } else if (is == "X-MICROSOFT-SKYPETEAMSMEETINGURL") {
        m_links.teams = textValue(property);
    } else if (is == "X-MICROSOFT-ONLINEMEETINGEXTERNALLINK") {
        m_links.outlook = textValue(property);
    } else if (is == "X-ALT-DESC") {
        m_links.html = textValue(property);
    } else if (is.compare("X-CONFERENCE", Qt::CaseInsensitive) == 0) {
        const char* const feature = icalproperty_get_parameter_as_string(&property, "FEATURE");
        const bool hasPicture = QByteArrayView(feature).contains("VIDEO");
        m_links.conferences.insert(
            hasPicture ? 0 : m_links.conferences.size(), textValue(property));
    }
}

void EventProperties::take(icalproperty& property) {
    switch (icalproperty_isa(&property)) {
    case ICAL_UID_PROPERTY:
        m_event.uid = textValue(property).toUtf8();
        break;
    case ICAL_SEQUENCE_PROPERTY:
        m_event.sequence = rawValue(property).toInt();
        break;
    case ICAL_SUMMARY_PROPERTY:
        m_event.title = textValue(property).left(longestShownText);
        break;
    case ICAL_LOCATION_PROPERTY:
        m_links.location = textValue(property);
        break;
    case ICAL_DESCRIPTION_PROPERTY:
        m_links.description = textValue(property);
        break;
    case ICAL_URL_PROPERTY:
        m_links.url = textValue(property);
        break;
    case ICAL_STATUS_PROPERTY:
        m_event.isCancelled = rawValue(property).trimmed().toUpper() == "CANCELLED";
        break;
    case ICAL_TRANSP_PROPERTY:
        m_event.isTransparent = rawValue(property).trimmed().toUpper() == "TRANSPARENT";
        break;
    case ICAL_ATTENDEE_PROPERTY:
        takeAttendee(property);
        break;
    case ICAL_DTSTART_PROPERTY:
        if (const auto start = time(property)) {
            m_event.start = *start;
            m_hasStart = true;
        }
        break;
    case ICAL_DTEND_PROPERTY:
        m_end = time(property);
        break;
    case ICAL_DURATION_PROPERTY:
        m_duration = durationIn(property);
        break;
    case ICAL_RRULE_PROPERTY:
        m_event.rules += rawValue(property);
        break;
    case ICAL_EXRULE_PROPERTY:
        m_event.exceptRules += rawValue(property);
        break;
    case ICAL_RDATE_PROPERTY:
        takeExtra(property);
        break;
    case ICAL_EXDATE_PROPERTY:
        if (const auto date = time(property); date && m_event.exceptions.size() < mostListedDates) {
            m_event.exceptions.push_back(*date);
        }
        break;
    case ICAL_RECURRENCEID_PROPERTY:
        takeReplaced(property);
        break;
    case ICAL_X_PROPERTY:
        takeOwn(property);
        break;
    default:
        break;
    }
}

std::optional<EventRecord> EventProperties::event() {
    if (!m_hasStart)
        return std::nullopt;
    m_event.length = lengthOf(m_event.start, m_end, m_duration);
    if (const QString place = m_links.location.trimmed(); !place.isEmpty())
        m_event.location = place.left(longestShownText);
    m_event.meetingUrl = joinLink(m_links, m_settings.meetingHosts);
    return std::move(m_event);
}

} // namespace

std::optional<EventRecord>
readEvent(icalcomponent& event, CalendarZones& zones, const ReaderSettings& settings) {
    EventProperties properties(zones, settings);
    for (icalproperty* property = icalcomponent_get_first_property(&event, ICAL_ANY_PROPERTY);
         property; property = icalcomponent_get_next_property(&event, ICAL_ANY_PROPERTY)) {
        properties.take(*property);
    }
    return properties.event();
}

} // namespace lumora::companion
