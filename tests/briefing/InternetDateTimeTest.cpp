#include "briefing/InternetDateTime.h"

#include <gtest/gtest.h>

#include <string>

using namespace lumora;

namespace {

/// Microseconds since 1970; absent when the text is refused.
std::optional<qint64> micros(std::string_view text) {
    const auto instant = parseInternetDateTime(text);
    return instant ? std::optional(qint64(instant->time_since_epoch().count())) : std::nullopt;
}

constexpr qint64 halfPastNine = 1741080600'000000; // 2025-03-04T09:30:00Z

struct Sample {
    const char* text;
    qint64 micros;
};

} // namespace

class AcceptedDateTime : public testing::TestWithParam<Sample> {};

TEST_P(AcceptedDateTime, GivesItsInstant) {
    EXPECT_EQ(micros(GetParam().text), GetParam().micros) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    InternetDateTime, AcceptedDateTime,
    testing::Values(
        Sample{"2025-03-04T09:30:00Z", halfPastNine},
        Sample{"2025-03-04T09:30:00.250Z", halfPastNine + 250000},
        Sample{"2025-03-04T09:30:00+02:00", halfPastNine - 7200'000000},
        Sample{"2025-03-04T09:30:00-05:30", halfPastNine + 19800'000000},
        Sample{"2025-03-04T09:30:00+00:00", halfPastNine},
        Sample{"2025-03-04T09:30:00-00:00", halfPastNine},
        Sample{"2025-03-04T09:30:00+23:59", halfPastNine - 86340'000000},
        Sample{"2025-03-04T09:30:00.5+01:00", halfPastNine + 500000 - 3600'000000},
        Sample{"2025-03-04T09:30:00.1Z", halfPastNine + 100000},
        Sample{"2025-03-04T09:30:00.000001Z", halfPastNine + 1},
        Sample{"2025-03-04T09:30:00.123456789Z", halfPastNine + 123456},
        Sample{"2025-03-04T09:30:00.9999999999999999999999999Z", halfPastNine + 999999},
        Sample{"2025-03-04T23:59:59Z", 1741132799'000000},
        Sample{"2024-02-29T00:00:00Z", 1709164800'000000},
        Sample{"2000-02-29T00:00:00Z", 951782400'000000}, Sample{"1970-01-01T00:00:00Z", 0},
        Sample{"1969-12-31T23:59:59.75Z", -250000},
        Sample{"0000-02-29T00:00:00Z", -62162121600'000000},
        Sample{"9999-12-31T23:59:59.999999Z", 253402300799'999999}));

class RefusedDateTime : public testing::TestWithParam<const char*> {};

TEST_P(RefusedDateTime, GivesNothing) {
    EXPECT_EQ(micros(GetParam()), std::nullopt) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(
    InternetDateTime, RefusedDateTime,
    testing::Values(
        // Forms.
        "", "2025-03-04", "2025-03-04T09:30:00", "2025-03-04 09:30:00Z", "2025-03-04T09:30Z",
        "20250304T093000Z", "2025-3-4T09:30:00Z", "25-03-04T09:30:00Z", "12025-03-04T09:30:00Z",
        "+2025-03-04T09:30:00Z", "-025-03-04T09:30:00Z", "2025-03-04t09:30:00Z",
        "2025-03-04T09:30:00z", "2025-063T09:30:00Z", "2025-W10-2T09:30:00Z",
        // Around a good one.
        " 2025-03-04T09:30:00Z", "2025-03-04T09:30:00Z ", "2025-03-04T09:30:00Z\n",
        "2025-03-04T09:30:00ZZ", "2025-03-04T09:30:00Z+01:00",
        // Fractions.
        "2025-03-04T09:30:00.Z", "2025-03-04T09:30:00.", "2025-03-04T09:30:00.25",
        "2025-03-04T09:30:00,250Z", "2025-03-04T09:30:00. 5Z", "2025-03-04T09:30:00.2.5Z",
        // Zones.
        "2025-03-04T09:30:00+0200", "2025-03-04T09:30:00+02", "2025-03-04T09:30:00+2:00",
        "2025-03-04T09:30:00+02:0", "2025-03-04T09:30:00 +02:00", "2025-03-04T09:30:00 02:00",
        "2025-03-04T09:30:00+24:00", "2025-03-04T09:30:00+02:60", "2025-03-04T09:30:00+",
        "2025-03-04T09:30:00UTC",
        "2025-03-04T09:30:00\xE2\x88\x92"
        "02:00",
        // Days and times that do not exist.
        "2025-02-30T09:30:00Z", "2025-02-29T09:30:00Z", "1900-02-29T09:30:00Z",
        "2025-04-31T09:30:00Z", "2025-00-04T09:30:00Z", "2025-13-04T09:30:00Z",
        "2025-03-00T09:30:00Z", "2025-03-32T09:30:00Z", "2025-03-04T24:00:00Z",
        "2025-03-04T25:30:00Z", "2025-03-04T09:60:00Z", "2025-03-04T23:59:60Z",
        "2025-03-04T09:30:99Z",
        // Characters next to the digits.
        "2025-03-04T09:30:0:Z", "2025-03-04T09:30:/0Z", "2o25-03-04T09:30:00Z",
        "\xD9\xA2\xD9\xA0-03-04T09:30:00Z"));

TEST(InternetDateTime, EveryTruncationIsRefused) {
    const std::string text = "2025-03-04T09:30:00.250+01:00";
    for (size_t length = 0; length < text.size(); ++length)
        EXPECT_EQ(micros(std::string_view(text).substr(0, length)), std::nullopt) << length;
}

TEST(InternetDateTime, KnowsEveryDayOfFourCenturies) {
    qint64 day = -10958; // 1940-01-01
    for (int year = 1940; year < 2340; ++year) {
        const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
        const int lengths[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        for (int month = 1; month <= 12; ++month) {
            for (int date = 1; date <= 31; ++date) {
                char text[32];
                std::snprintf(text, sizeof text, "%04d-%02d-%02dT00:00:00Z", year, month, date);
                if (date <= lengths[month - 1])
                    ASSERT_EQ(micros(text), day++ * 86400'000000) << text;
                else
                    ASSERT_EQ(micros(text), std::nullopt) << text;
            }
        }
    }
}
