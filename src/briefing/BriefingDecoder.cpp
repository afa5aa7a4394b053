#include "briefing/BriefingDecoder.h"

#include "briefing/InternetDateTime.h"
#include "briefing/json/JsonRecord.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

/// Reads an internet date-time, found by the templates of JsonRecord.h like its siblings there.
static bool readValue(simdjson::dom::element value, Instant& out, DecodeError& error) {
    std::string_view text;
    if (value.get(text) != simdjson::SUCCESS)
        return wrongKind(value, "a string"_L1, error);
    const auto instant = parseInternetDateTime(text);
    if (!instant) {
        error.description = "Bad date: "_L1 + toQString(text);
        return false;
    }
    out = *instant;
    return true;
}

template <>
struct JsonSchema<BriefEvent> {
    static constexpr std::tuple fields{
        JsonField<&BriefEvent::title>{"title"},
        JsonField<&BriefEvent::start>{"start"},
        JsonField<&BriefEvent::end>{"end"},
        JsonField<&BriefEvent::allDay>{"allDay"},
        JsonField<&BriefEvent::location>{"location"},
        JsonField<&BriefEvent::feed>{"feed"},
        JsonField<&BriefEvent::meetingUrl>{"meetingUrl"},
    };
};

template <>
struct JsonSchema<Chore> {
    static constexpr std::tuple fields{
        JsonField<&Chore::id>{"id"},
        JsonField<&Chore::name>{"name"},
        JsonField<&Chore::room>{"room"},
        JsonField<&Chore::daysOverdue>{"daysOverdue"},
    };
};

template <>
struct JsonSchema<Chores> {
    static constexpr std::tuple fields{
        JsonField<&Chores::count>{"count"},
        JsonField<&Chores::top>{"top"},
    };
};

template <>
struct JsonSchema<Habit> {
    static constexpr std::tuple fields{
        JsonField<&Habit::id>{"id"},         JsonField<&Habit::name>{"name"},
        JsonField<&Habit::done>{"done"},     JsonField<&Habit::count>{"count"},
        JsonField<&Habit::target>{"target"}, JsonField<&Habit::streak>{"streak"},
    };
};

template <>
struct JsonSchema<Habits> {
    static constexpr std::tuple fields{
        JsonField<&Habits::done>{"done"},
        JsonField<&Habits::total>{"total"},
        JsonField<&Habits::items>{"items"},
    };
};

template <>
struct JsonSchema<Focus> {
    static constexpr std::tuple fields{
        JsonField<&Focus::productiveShare>{"productiveShare"},
    };
};

template <>
struct JsonSchema<Bucket> {
    static constexpr std::tuple fields{
        JsonField<&Bucket::bucket>{"bucket"}, JsonField<&Bucket::label>{"label"},
        JsonField<&Bucket::icon>{"icon"},     JsonField<&Bucket::color>{"color"},
        JsonField<&Bucket::amount>{"amount"},
    };
};

template <>
struct JsonSchema<Spending> {
    static constexpr std::tuple fields{
        JsonField<&Spending::mtd>{"mtd"},
        JsonField<&Spending::sameDayLastMonth>{"sameDayLastMonth"},
        JsonField<&Spending::deltaFraction>{"deltaFraction"},
        JsonField<&Spending::top>{"top"},
        JsonField<&Spending::asOf>{"asOf"},
        JsonField<&Spending::generatedAt>{"generatedAt"},
        JsonField<&Spending::stale>{"stale"},
    };
};

template <>
struct JsonSchema<Briefing> {
    static constexpr std::tuple fields{
        JsonField<&Briefing::date>{"date"},
        JsonField<&Briefing::generatedAt>{"generatedAt"},
        JsonField<&Briefing::nextEvent>{"nextEvent"},
        JsonField<&Briefing::eventsToday>{"eventsToday"},
        JsonField<&Briefing::chores>{"chores"},
        JsonField<&Briefing::habits>{"habits"},
        JsonField<&Briefing::focus>{"focus"},
        JsonField<&Briefing::spending>{"spending"},
    };
};

tl::expected<Briefing, DecodeError> decodeBriefing(QByteArrayView bytes) {
    return decodeJson<Briefing>(bytes);
}

} // namespace lumora
