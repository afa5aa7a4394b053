#include "texts/StatusReport.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

TEST(StatusReport, IsOneJsonObjectOnOneLine) {
    StatusReport report{
        .mode = u"countdown"_s,
        .symbol = u"calendar.badge.clock"_s,
        .text = u"Standup · 5m"_s,
        .tooltip = u"Standup\nIn 5m"_s,
        .state = u"failed"_s,
        .message = u"Server error (503)"_s,
        .lastUpdated = Instant(std::chrono::milliseconds(1'741'080'600'900)),
        .pending = {u"capture"_s, u"habit:a"_s},
        .actionError = u"\"no\""_s,
    };
    const QByteArray json = report.toJson();
    EXPECT_FALSE(json.contains('\n'));
    const auto expected = QJsonDocument::fromJson(R"json({
            "mode": "countdown", "symbol": "calendar.badge.clock", "text": "Standup · 5m",
            "tooltip": "Standup\nIn 5m", "state": "failed", "message": "Server error (503)",
            "lastUpdated": "2025-03-04T09:30:00Z", "pending": ["capture", "habit:a"],
            "actionError": "\"no\""})json");
    EXPECT_EQ(QJsonDocument::fromJson(json), expected);
    const auto read = StatusReport::fromJson(json);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->toJson(), json);
    EXPECT_EQ(read->pending, report.pending);
    EXPECT_EQ(read->lastUpdated, std::chrono::floor<std::chrono::seconds>(*report.lastUpdated));
}

TEST(StatusReport, AbsentValuesAreNull) {
    const StatusReport report{
        .mode = u"loading"_s,
        .symbol = u"calendar"_s,
        .text = std::nullopt,
        .tooltip = {},
        .state = u"idle"_s,
        .message = std::nullopt,
        .lastUpdated = std::nullopt,
        .pending = {},
        .actionError = std::nullopt,
    };
    const auto expected = QJsonDocument::fromJson(R"json({
            "mode": "loading", "symbol": "calendar", "text": null, "tooltip": "",
            "state": "idle", "message": null, "lastUpdated": null, "pending": [],
            "actionError": null})json");
    EXPECT_EQ(QJsonDocument::fromJson(report.toJson()), expected);
    EXPECT_EQ(StatusReport::fromJson(report.toJson()), report);
}

TEST(StatusReport, YearsThatTheFormatHasNoDigitsForAreNull) {
    const auto read = StatusReport::fromJson(R"({"lastUpdated": "9999-12-31T23:00:00-14:00"})");
    ASSERT_TRUE(read && read->lastUpdated);
    const QJsonObject json = QJsonDocument::fromJson(read->toJson()).object();
    EXPECT_TRUE(json.value(u"lastUpdated"_s).isNull());
}

TEST(StatusReport, WhatATerminalMightObeyIsEscaped) {
    StatusReport report;
    report.message = u"\u001b[31m\u0007\u007f\u009b2J\u2028\u202ea\u202c\u2067\\"_s;
    report.actionError = u"R&D 🎉 \u200f\""_s;
    const QByteArray json = report.toJson();
    for (const QChar character : QString::fromUtf8(json)) {
        EXPECT_GE(character.unicode(), u' ');
        EXPECT_FALSE(character >= u'\u007f' && character <= u'\u009f');
        EXPECT_FALSE(character >= u'\u2028' && character <= u'\u202e');
        EXPECT_FALSE(character >= u'\u2066' && character <= u'\u2069');
    }
    EXPECT_TRUE(json.contains("🎉"));
    EXPECT_EQ(StatusReport::fromJson(json), report) << "and means the same";
}

TEST(StatusReport, IsReadFromAnObjectOnly) {
    EXPECT_EQ(StatusReport::fromJson("{}"), StatusReport());
    for (const QByteArray& json : {QByteArray(), QByteArray("nothing"), QByteArray("[]")})
        EXPECT_EQ(StatusReport::fromJson(json), std::nullopt) << json.toStdString();
}
