#include "texts/Formatters.h"

#include "support/Builders.h"

#include <gtest/gtest.h>

#include <limits>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const Instant now = at("2025-03-04T10:00:00Z");

QString countdown(std::chrono::microseconds away) {
    return Formatters::countdown(now + away, now);
}

QString relative(std::chrono::microseconds ago) {
    return Formatters::relative(now - ago, now);
}

QString money(double amount, const char* locale) {
    return Formatters::currency(amount, QLocale(QLatin1StringView(locale)));
}

/// Without the marks of direction that newer data of the same locale has in other places.
QString unmarked(QString text) {
    return text.remove(QChar(0x200f));
}

QString clockUtc(std::string_view instant, const char* locale = "en_US") {
    return Formatters::clock(at(instant), QTimeZone::utc(), QLocale(QLatin1StringView(locale)));
}

} // namespace

TEST(Percent, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(Formatters::percent(0.425), u"43%"_s);
    EXPECT_EQ(Formatters::percent(0.42), u"42%"_s);
    EXPECT_EQ(Formatters::percent(0.456), u"46%"_s);
    EXPECT_EQ(Formatters::percent(0.005), u"1%"_s);
    EXPECT_EQ(Formatters::percent(-0.005), u"-1%"_s);
    EXPECT_EQ(Formatters::percent(0), u"0%"_s);
    EXPECT_EQ(Formatters::percent(-0.0), u"0%"_s);
}

TEST(Percent, HasDigitsForWhateverTheServiceSays) {
    const QString most = Formatters::percent(std::numeric_limits<double>::max());
    EXPECT_TRUE(most.startsWith(u"17976931348623157"_s)) << qPrintable(most);
    EXPECT_EQ(Formatters::percent(-std::numeric_limits<double>::max()), u'-' + most);
}

TEST(Percent, ZeroHasNoSign) {
    EXPECT_EQ(Formatters::percent(-0.001), u"0%"_s);
    EXPECT_EQ(Formatters::percent(-0.0), u"0%"_s);
}

TEST(Percent, LargeFiguresStayPlainDecimal) {
    EXPECT_EQ(Formatters::percent(1e18), u"100000000000000000000%"_s);
}

TEST(Percent, IsNotClamped) {
    EXPECT_EQ(Formatters::percent(1.0), u"100%"_s);
    EXPECT_EQ(Formatters::percent(1.5), u"150%"_s);
    EXPECT_EQ(Formatters::percent(-2), u"-200%"_s);
    EXPECT_EQ(Formatters::percent(123456.78), u"12345678%"_s);
}

TEST(Countdown, BelowASecondIsNow) {
    EXPECT_EQ(countdown(900ms), u"now"_s);
    EXPECT_EQ(countdown(0s), u"now"_s);
    EXPECT_EQ(countdown(-5s), u"now"_s);
    EXPECT_EQ(countdown(-900ms), u"now"_s);
    EXPECT_EQ(countdown(-100h), u"now"_s);
}

TEST(Countdown, BelowAnHourIsMinutes) {
    EXPECT_EQ(countdown(1s), u"1m"_s);
    EXPECT_EQ(countdown(59s), u"1m"_s);
    EXPECT_EQ(countdown(59999ms), u"1m"_s);
    EXPECT_EQ(countdown(60s), u"1m"_s);
    EXPECT_EQ(countdown(119s), u"1m"_s);
    EXPECT_EQ(countdown(120s), u"2m"_s);
    EXPECT_EQ(countdown(3599s), u"59m"_s);
    EXPECT_EQ(countdown(3599999ms), u"59m"_s);
}

TEST(Countdown, BelowADayIsHoursAndMinutes) {
    EXPECT_EQ(countdown(3600s), u"1h"_s);
    EXPECT_EQ(countdown(3659s), u"1h"_s);
    EXPECT_EQ(countdown(3660s), u"1h1m"_s);
    EXPECT_EQ(countdown(65min), u"1h5m"_s);
    EXPECT_EQ(countdown(7200s), u"2h"_s);
    EXPECT_EQ(countdown(86399s), u"23h59m"_s);
}

TEST(Countdown, FromADayOnIsDays) {
    EXPECT_EQ(countdown(86400s), u"1d"_s);
    EXPECT_EQ(countdown(172799s), u"1d"_s);
    EXPECT_EQ(countdown(48h), u"2d"_s);
}

TEST(Countdown, TheWidestSpanFits) {
    EXPECT_EQ(
        Formatters::countdown(at("9999-12-31T23:59:59Z"), at("0000-01-01T00:00:00Z")),
        u"3652424d"_s);
}

TEST(Relative, TheLastMomentsAndTheFutureAreJustNow) {
    EXPECT_EQ(relative(0s), u"just now"_s);
    EXPECT_EQ(relative(44s), u"just now"_s);
    EXPECT_EQ(relative(44999ms), u"just now"_s);
    EXPECT_EQ(relative(-10s), u"just now"_s);
    EXPECT_EQ(relative(-100h), u"just now"_s);
}

TEST(Relative, CountsMinutesHoursOrDays) {
    EXPECT_EQ(relative(45s), u"1m ago"_s);
    EXPECT_EQ(relative(50s), u"1m ago"_s);
    EXPECT_EQ(relative(119s), u"1m ago"_s);
    EXPECT_EQ(relative(120s), u"2m ago"_s);
    EXPECT_EQ(relative(3599s), u"59m ago"_s);
    EXPECT_EQ(relative(3600s), u"1h ago"_s);
    EXPECT_EQ(relative(7199s), u"1h ago"_s);
    EXPECT_EQ(relative(86399s), u"23h ago"_s);
    EXPECT_EQ(relative(86400s), u"1d ago"_s);
    EXPECT_EQ(relative(240h), u"10d ago"_s);
}

TEST(Currency, FollowsTheLocale) {
    EXPECT_EQ(money(12.4, "en_US"), u"$12"_s);
    EXPECT_EQ(money(1234.56, "en_US"), u"$1,235"_s);
    EXPECT_EQ(money(1234567, "en_US"), u"$1,234,567"_s);
    EXPECT_EQ(money(1234.56, "de_DE"), u"1.235\u00a0€"_s);
    EXPECT_EQ(money(1234567, "de_DE"), u"1.234.567\u00a0€"_s);
    EXPECT_EQ(money(1234.56, "ja_JP"), u"￥1,235"_s);
    EXPECT_EQ(money(1234567, "ja_JP"), u"￥1,234,567"_s);
    EXPECT_EQ(money(1234.56, "hi_IN"), u"₹1,235"_s);
    EXPECT_EQ(money(1234567, "hi_IN"), u"₹12,34,567"_s);
    EXPECT_EQ(unmarked(money(1234.56, "ar_EG")), u"١٬٢٣٥\u00a0ج.م."_s);
    EXPECT_EQ(unmarked(money(1234567, "ar_EG")), u"١٬٢٣٤٬٥٦٧\u00a0ج.م."_s);
}

TEST(Currency, ZeroHasNoSign) {
    for (const double amount : {0.0, -0.0, 0.4, -0.4})
        EXPECT_EQ(money(amount, "en_US"), u"$0"_s) << amount;
    EXPECT_EQ(money(-0.4, "de_DE"), u"0\u00a0€"_s);
    EXPECT_EQ(money(-0.4, "C"), u"$0"_s);
}

TEST(Currency, TheSignGoesBeforeTheText) {
    EXPECT_EQ(money(-12.4, "en_US"), u"-$12"_s);
    EXPECT_EQ(money(-1234.56, "de_DE"), u"-1.235\u00a0€"_s);
    EXPECT_EQ(money(-1234.56, "ja_JP"), u"-￥1,235"_s);
    EXPECT_EQ(money(-1234567, "hi_IN"), u"-₹12,34,567"_s);
    EXPECT_EQ(unmarked(money(-12, "ar_EG")), u"\u061c-١٢\u00a0ج.م."_s);
}

TEST(Currency, IsDollarsWhereTheLocaleHasNone) {
    EXPECT_EQ(Formatters::currency(12.4, QLocale::c()), u"$12"_s);
    EXPECT_EQ(Formatters::currency(1234.5, QLocale::c()), u"$1235"_s);
    EXPECT_EQ(Formatters::currency(1234567, QLocale::c()), u"$1234567"_s);
    EXPECT_EQ(Formatters::currency(-12.5, QLocale::c()), u"$-13"_s);
    EXPECT_EQ(Formatters::currency(1e20, QLocale::c()), u"$100000000000000000000"_s);
}

TEST(Currency, IsTotal) {
    for (const double amount :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()})
        EXPECT_TRUE(money(amount, "de_DE").startsWith(u'$'));
    EXPECT_TRUE(money(std::numeric_limits<double>::max(), "en_US").startsWith(u"$179,769,313"_s));
}

TEST(Currency, TheUsersLocaleIsTheDefault) {
    EXPECT_EQ(Formatters::currency(1234.56), Formatters::currency(1234.56, QLocale::system()));
}

TEST(Clock, HasTwelveHoursWithoutPadding) {
    EXPECT_EQ(clockUtc("2025-03-04T09:05:00Z"), u"9:05 am"_s);
    EXPECT_EQ(clockUtc("2025-03-04T12:30:00Z"), u"12:30 pm"_s);
    EXPECT_EQ(clockUtc("2025-03-04T13:00:00Z"), u"1:00 pm"_s);
    EXPECT_EQ(clockUtc("2025-03-04T00:00:00Z"), u"12:00 am"_s);
    EXPECT_EQ(clockUtc("2025-03-04T11:59:59.999999Z"), u"11:59 am"_s);
    EXPECT_EQ(clockUtc("2025-03-04T23:10:00Z"), u"11:10 pm"_s);
    EXPECT_EQ(clockUtc("1969-12-31T23:59:59.9Z"), u"11:59 pm"_s);
}

TEST(Clock, HasTheLocalesDigitsAndFixedHalves) {
    EXPECT_EQ(clockUtc("2025-03-04T09:05:00Z", "de_DE"), u"9:05 am"_s);
    EXPECT_EQ(clockUtc("2025-03-04T21:05:00Z", "ja_JP"), u"9:05 pm"_s);
    EXPECT_EQ(clockUtc("2025-03-04T21:05:00Z", "hi_IN"), u"9:05 pm"_s);
    EXPECT_EQ(clockUtc("2025-03-04T09:05:00Z", "ar_EG"), u"٩:٠٥ am"_s);
    EXPECT_EQ(clockUtc("2025-03-04T22:30:00Z", "ar_EG"), u"١٠:٣٠ pm"_s);
    EXPECT_EQ(clockUtc("2025-03-04T21:05:00Z", "C"), u"9:05 pm"_s);
}

TEST(Clock, IsThatOfTheZone) {
    const QLocale english(u"en_US"_s);
    const auto clock = [&](std::string_view instant, const char* zone) {
        return Formatters::clock(at(instant), QTimeZone(zone), english);
    };
    EXPECT_EQ(clock("2025-03-04T09:05:00Z", "Europe/Berlin"), u"10:05 am"_s);
    EXPECT_EQ(clock("2025-07-04T09:05:00Z", "Europe/Berlin"), u"11:05 am"_s);
    EXPECT_EQ(clock("2025-03-04T03:00:00Z", "America/New_York"), u"10:00 pm"_s);
    EXPECT_EQ(clock("2025-03-04T09:05:00Z", "Asia/Kolkata"), u"2:35 pm"_s);
    // The hour that happens twice when summer ends.
    EXPECT_EQ(clock("2025-10-26T00:30:00Z", "Europe/Berlin"), u"2:30 am"_s);
    EXPECT_EQ(clock("2025-10-26T01:30:00Z", "Europe/Berlin"), u"2:30 am"_s);
}

TEST(Clock, WithoutAKnownZoneIsTheLocalTime) {
    const auto instant = at("2025-03-04T09:05:00Z");
    const QTime local = toDateTime(instant).toLocalTime().time();
    EXPECT_EQ(Formatters::clock(instant, QTimeZone(), QLocale::c()), local.toString(u"h:mm ap"_s));
}
