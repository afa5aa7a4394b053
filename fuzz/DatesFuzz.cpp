// Every text that is taken means what it says, and every instant that is written is taken.

#include "Expectations.h"
#include "Input.h"
#include "InstantText.h"
#include "Targets.h"
#include "briefing/InternetDateTime.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace lumora::fuzz {

namespace {

std::chrono::minutes zoneIn(std::string_view text) {
    if (text.ends_with('Z'))
        return {};
    const std::string zone(text.substr(text.size() - 6)); // "+hh:mm"
    const std::chrono::minutes size(60 * std::stoi(zone.substr(1, 2)) + std::stoi(zone.substr(4)));
    return zone.front() == '-' ? -size : size;
}

/// The local time that `text` has before its zone, to the microsecond.
std::string localTimeIn(std::string_view text) {
    std::string local(text.substr(0, text.find_first_of("Z+-", 19)));
    if (local.size() == 19)
        local += '.';
    local.resize(26, '0');
    return local;
}

std::string zoneText(std::chrono::minutes offset) {
    std::array<char, 16> text;
    const int size = std::abs(int(offset.count()));
    const int length = std::snprintf(
        text.data(), text.size(), "%c%02d:%02d", offset.count() < 0 ? '-' : '+', size / 60,
        size % 60);
    return {text.data(), size_t(length)};
}

void expectReadsBack(Input input) {
    const Instant instant = input.instant();
    const std::chrono::minutes zone(input.number<std::int16_t>() % (24 * 60));
    const Instant local = instant + zone;
    if (!hasOrdinaryYear(local))
        return;
    const std::string text = instantText(local) + zoneText(zone);
    expect(parseInternetDateTime(text) == instant, "the instant that was written");
    expect(!parseInternetDateTime(text.substr(1)), "no instant without the year's first digit");
}

} // namespace

void dates(QByteArrayView input) {
    const std::string_view text(input.data(), size_t(input.size()));
    if (const auto instant = parseInternetDateTime(text)) {
        expectGraphic(input);
        expect(
            instantText(*instant + zoneIn(text)) == localTimeIn(text), "the time that is written");
    }
    expectReadsBack(Input(input));
}

} // namespace lumora::fuzz
