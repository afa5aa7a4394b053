#include "demo/DemoOptions.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using namespace lumora;

namespace {

const QTimeZone kOptionsBerlin("Europe/Berlin");

tl::expected<DemoOptions, QString> parsedOptions(const QStringList& arguments) {
    return parseDemoOptions(arguments, kOptionsBerlin);
}

} // namespace

TEST(DemoOptions, NothingGivenIsTheBusyDayNowOnAFreePort) {
    const auto options = parsedOptions({});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->scenario, DemoScenario::Busy);
    EXPECT_EQ(options->port, 0);
    EXPECT_EQ(options->token, std::nullopt);
    EXPECT_EQ(options->now, std::nullopt);
    EXPECT_FALSE(options->untilStdinCloses);
    EXPECT_FALSE(options->help);
    EXPECT_FALSE(options->version);
}

TEST(DemoOptions, EverythingGiven) {
    const auto options = parsedOptions(
        {u"--scenario"_s, u"quiet"_s, u"--port=8080"_s, u"--token"_s, u"s3cret!"_s, u"--now"_s,
         u"2025-03-04T09:30:00"_s, u"--until-stdin-closes"_s});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->scenario, DemoScenario::Quiet);
    EXPECT_EQ(options->port, 8080);
    EXPECT_EQ(options->token, "s3cret!");
    EXPECT_EQ(options->now, std::chrono::sys_days(std::chrono::year(2025) / 3 / 4) + 8h + 30min);
    EXPECT_TRUE(options->untilStdinCloses);
}

TEST(DemoOptions, EveryScenarioHasAName) {
    EXPECT_EQ(
        demoScenarioNames(), QStringList(
                                 {u"busy"_s, u"empty"_s, u"quiet"_s, u"unauthorized"_s, u"flaky"_s,
                                  u"slow"_s, u"malformed"_s, u"html"_s}));
    for (const auto& name : demoScenarioNames()) {
        const auto options = parsedOptions({u"--scenario"_s, name});
        ASSERT_TRUE(options) << name.toStdString();
        EXPECT_EQ(demoScenarioName(options->scenario), name);
        EXPECT_TRUE(demoHelp().contains(u"  %1 "_s.arg(name))) << name.toStdString();
    }
}

TEST(DemoOptions, HelpAndVersion) {
    EXPECT_TRUE(parsedOptions({u"--help"_s})->help);
    EXPECT_TRUE(parsedOptions({u"--version"_s})->version);
    for (const auto& option :
         {u"--scenario"_s, u"--port"_s, u"--token"_s, u"--now"_s, u"--until-stdin-closes"_s,
          u"--help"_s, u"--version"_s})
        EXPECT_TRUE(demoHelp().contains(option)) << option.toStdString();
    EXPECT_TRUE(demoVersion().startsWith(u"lumora-demo-service "_s));
    EXPECT_TRUE(demoVersion().endsWith(u'\n'));
}

TEST(DemoOptions, WhatIsNotUnderstoodIsOneLine) {
    const QList<QStringList> refused = {
        {u"--bogus"_s},
        {u"-x"_s},
        {u"extra"_s},
        {u"--port"_s},
        {u"--port"_s, u"many"_s},
        {u"--port"_s, u"65536"_s},
        {u"--port"_s, u"-1"_s},
        {u"--scenario"_s, u"Busy"_s},
        {u"--scenario="_s},
        {u"--token="_s},
        {u"--token"_s, u"two words"_s},
        {u"--token"_s, u"schlüssel"_s},
        {u"--now"_s, u"2025-03-04"_s},
        {u"--now"_s, u"later"_s},
        {u"--until-stdin-closes=yes"_s},
    };
    for (const auto& arguments : refused) {
        const auto options = parsedOptions(arguments);
        ASSERT_FALSE(options) << arguments.join(u' ').toStdString();
        EXPECT_FALSE(options.error().isEmpty());
        EXPECT_FALSE(options.error().contains(u'\n'));
    }
}
