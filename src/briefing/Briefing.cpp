#include "briefing/Briefing.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// The shortest decimal text that reads back as `seconds`, never with an exponent and always with a
/// fraction: event identities are compared as text, so every instant has exactly one.
QString secondsText(double seconds) {
    std::array<char, 32> buffer; // 64 bits of microseconds need at most 21 characters
    const auto [end, error] = std::to_chars(
        buffer.data(), buffer.data() + buffer.size(), seconds, std::chars_format::fixed);
    Q_ASSERT(error == std::errc());
    const auto text = QString::fromLatin1(buffer.data(), end - buffer.data());
    return text.contains(u'.') ? text : text + ".0"_L1;
}

} // namespace

QString BriefEvent::id() const {
    const double seconds = start ? Seconds(start->time_since_epoch()).count() : 0;
    return title + u'|' + secondsText(seconds);
}

std::vector<Habit> Habits::byRemaining() const {
    std::vector<Habit> result;
    result.reserve(items.size());
    std::ranges::copy_if(
        items, std::back_inserter(result), [](const Habit& habit) { return !habit.done; });
    std::ranges::copy_if(items, std::back_inserter(result), &Habit::done);
    return result;
}

} // namespace lumora
