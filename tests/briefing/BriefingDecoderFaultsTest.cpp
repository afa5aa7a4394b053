// Every way a briefing can be wrong, made by walking its schema and by damaging its bytes.

#include "briefing/BriefingDecoder.h"
#include "support/BriefingFields.h"
#include "support/Fixtures.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <span>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

QJsonValue fullBriefing() {
    return QJsonDocument::fromJson(fixture(u"briefing-full.json"_s)).object();
}

tl::expected<Briefing, DecodeError> decode(const QJsonValue& root) {
    return decodeBriefing(QJsonDocument(root.toObject()).toJson());
}

struct Wrong {
    QJsonValue value;
    QString name;
    std::vector<Kind> goodFor;
};

/// One value of each JSON type, and the kinds of field it suits.
std::vector<Wrong> samples() {
    return {
        {QJsonValue(), u"null"_s, {}},
        {u"12"_s, u"a string"_s, {Kind::Text, Kind::Date}},
        {true, u"a boolean"_s, {Kind::Boolean}},
        {12, u"a number"_s, {Kind::Integer, Kind::Number}},
        {QJsonArray(), u"an array"_s, {Kind::List}},
        {QJsonObject(), u"an object"_s, {Kind::Object}},
    };
}

QString wanted(Kind kind) {
    switch (kind) {
    case Kind::Text:
    case Kind::Date:
        return u"a string"_s;
    case Kind::Boolean:
        return u"a boolean"_s;
    case Kind::Integer:
        return u"an integer"_s;
    case Kind::Number:
        return u"a number"_s;
    case Kind::Object:
        return u"an object"_s;
    case Kind::List:
        return u"an array"_s;
    }
    Q_UNREACHABLE();
}

/// Decodes from memory that ends with the last byte, so that reading past it is noticed.
bool isBriefingOrError(const QByteArray& bytes) {
    const std::vector<char> exact(bytes.begin(), bytes.end());
    const auto result = decodeBriefing(QByteArrayView(exact.data(), qsizetype(exact.size())));
    return result || !result.error().description.isEmpty();
}

DecodeError faultOf(const QByteArray& bytes) {
    const auto result = decodeBriefing(bytes);
    return result ? DecodeError{u"none"_s, u"none"_s} : result.error();
}

} // namespace

TEST(BriefingFaults, TheWalkCoversEveryField) {
    EXPECT_EQ(allFields().size(), 54u);
    EXPECT_TRUE(decode(fullBriefing()));
}

TEST(BriefingFaults, AMissingMemberMattersWhenRequired) {
    for (const Field& field : allFields()) {
        if (std::holds_alternative<int>(field.path.back()))
            continue;
        const auto result = decode(with(fullBriefing(), field.path, QJsonValue::Undefined));
        const QString path = toText(field.path);
        if (field.required)
            EXPECT_EQ(result.error(), (DecodeError{path, u"Missing"_s})) << path.toStdString();
        else
            EXPECT_TRUE(result) << path.toStdString();
    }
}

TEST(BriefingFaults, NullIsMissingWhereThatIsAllowed) {
    for (const Field& field : allFields()) {
        const auto result = decode(with(fullBriefing(), field.path, QJsonValue::Null));
        const QString path = toText(field.path);
        if (field.required) {
            const DecodeError expected{path, u"Expected %1, found null"_s.arg(wanted(field.kind))};
            EXPECT_EQ(result.error(), expected) << path.toStdString();
        } else {
            const auto missing = decode(with(fullBriefing(), field.path, QJsonValue::Undefined));
            EXPECT_EQ(result.value(), missing.value()) << path.toStdString();
            EXPECT_NE(result.value(), decode(fullBriefing()).value()) << path.toStdString();
        }
    }
}

TEST(BriefingFaults, AValueOfAnotherTypeIsNamed) {
    int count = 0;
    for (const Field& field : allFields()) {
        for (const Wrong& sample : samples()) {
            if (sample.value.isNull() || std::ranges::count(sample.goodFor, field.kind) > 0)
                continue;
            const auto result = decode(with(fullBriefing(), field.path, sample.value));
            const QString path = toText(field.path);
            ASSERT_FALSE(result) << path.toStdString();
            EXPECT_EQ(result.error().path, path);
            EXPECT_EQ(
                result.error().description,
                u"Expected %1, found %2"_s.arg(wanted(field.kind), sample.name));
            ++count;
        }
    }
    EXPECT_EQ(count, 54 * 4);
}

TEST(BriefingFaults, UnknownMembersAreIgnoredInEveryRecord) {
    for (const Field& field : allFields()) {
        if (field.kind != Kind::Object)
            continue;
        Path path = field.path;
        path.emplace_back(u"unknown"_s);
        for (const Wrong& sample : samples())
            EXPECT_EQ(
                decode(with(fullBriefing(), path, sample.value)).value(),
                decode(fullBriefing()).value())
                << toText(path).toStdString();
    }
}

TEST(BriefingFaults, TheFirstFaultInFieldOrderIsNamedWhateverTheDocumentsOrder) {
    // From the last field to the first each gets a fault of its own; the latest one always wins.
    QJsonValue root = fullBriefing();
    const auto fields = allFields();
    for (auto field = fields.rbegin(); field != fields.rend(); ++field) {
        if (field->kind == Kind::Object || field->kind == Kind::List)
            continue;
        root = with(root, field->path, QJsonArray());
        EXPECT_EQ(decode(root).error().path, toText(field->path));
    }
    EXPECT_EQ(
        faultOf(R"({"focus":[],"chores":5,"generatedAt":true,"eventsToday":[{}]})").path,
        u"date"_s);
    EXPECT_EQ(
        faultOf(R"({"eventsToday":[{"allDay":1,"end":2,"title":"t","start":"x"}],)"
                R"("generatedAt":1,"date":""})")
            .text(),
        u"eventsToday[0].start: Bad date: x"_s);
}

TEST(BriefingFaults, OnlyAnObjectIsABriefing) {
    EXPECT_EQ(faultOf("[]"), (DecodeError{{}, u"Expected an object, found an array"_s}));
    EXPECT_EQ(faultOf("null"), (DecodeError{{}, u"Expected an object, found null"_s}));
    EXPECT_EQ(faultOf("7"), (DecodeError{{}, u"Expected an object, found a number"_s}));
    EXPECT_EQ(faultOf("\"x\""), (DecodeError{{}, u"Expected an object, found a string"_s}));
    EXPECT_EQ(faultOf("{}"), (DecodeError{u"date"_s, u"Missing"_s}));
}

TEST(BriefingFaults, WhatIsNoJsonHasNoPath) {
    const QByteArray good = fixture(u"briefing-full.json"_s);
    EXPECT_EQ(faultOf(""), (DecodeError{{}, u"Empty document"_s}));
    EXPECT_EQ(faultOf(QByteArray()), (DecodeError{{}, u"Empty document"_s}));
    EXPECT_EQ(decodeBriefing(QByteArrayView()).error(), (DecodeError{{}, u"Empty document"_s}));
    EXPECT_EQ(faultOf(" \n\t "), (DecodeError{{}, u"Empty document"_s}));
    EXPECT_EQ(
        faultOf("\xEF\xBB\xBF" + good), (DecodeError{{}, u"Starts with a byte order mark"_s}));
    for (const QByteArray& bytes :
         {good + "x", good + "{}", good + ",", good + QByteArray(1, '\0'), "x" + good,
          QByteArray("<html><body>Sign in</body></html>"), QByteArray("{'date': 1}"),
          QByteArray(R"({"date": "x",})"), QByteArray("{\"date\": \"a\nb\"}"),
          QByteArray(R"({"date": "\x"})"), QByteArray("// c\n{}"), QByteArray(1, '\0'),
          QString::fromUtf8(good).toLatin1().replace('?', "\xFF")}) {
        const auto error = faultOf(bytes);
        EXPECT_TRUE(error.path.isEmpty()) << bytes.toStdString();
        EXPECT_FALSE(error.description.isEmpty()) << bytes.toStdString();
        EXPECT_EQ(error.text(), error.description);
    }
}

TEST(BriefingFaults, InvalidUtf8IsRefusedEverywhere) {
    for (const QByteArray& bad :
         {QByteArray("\xFF"), QByteArray("\xC3"), QByteArray("\xC0\x80"), QByteArray("\x80"),
          QByteArray("\xED\xA0\x80"), QByteArray("\xF4\x90\x80\x80"), QByteArray("\xE2\x82")}) {
        const QByteArray good = fixture(u"briefing-full.json"_s);
        const DecodeError expected{{}, u"Not valid UTF-8"_s};
        EXPECT_EQ(faultOf(QByteArray(good).replace("Standup", "Stand" + bad)), expected);
        EXPECT_EQ(faultOf(QByteArray(good).replace(R"("room")", R"("room)" + bad + '"')), expected);
        EXPECT_EQ(faultOf(QByteArray(good).replace(0, 1, R"({"x": ")" + bad + R"(",)")), expected);
    }
}

TEST(BriefingFaults, DepthBombsAreHarmless) {
    const auto nested = [](int depth, const QByteArray& open, const QByteArray& close) {
        return open.repeated(depth) + '1' + close.repeated(depth);
    };
    const auto hidden = [&](const QByteArray& value) {
        return fixture(u"briefing-minimal.json"_s).replace(0, 1, R"({"x":)" + value + ',');
    };
    EXPECT_TRUE(decodeBriefing(hidden(nested(500, "[", "]"))));
    const DecodeError tooDeep{{}, u"Nested too deeply"_s};
    EXPECT_EQ(faultOf(nested(100'000, "[", "]")), tooDeep);
    EXPECT_EQ(faultOf(nested(100'000, R"({"x":)", "}")), tooDeep);
    EXPECT_EQ(faultOf(hidden(nested(100'000, "[", "]"))), tooDeep);
    EXPECT_TRUE(isBriefingOrError(QByteArray(1'000'000, '[')));
    EXPECT_TRUE(isBriefingOrError(QByteArray(1'000'000, '{')));
    EXPECT_TRUE(isBriefingOrError(QByteArray(R"({"a":)").repeated(200'000)));
}

TEST(BriefingFaults, AListOfManyWrongItemsIsCheapToRefuse) {
    const QByteArray many = R"({"date":"","generatedAt":1,"eventsToday":[)" +
                            QByteArray("1,").repeated(1'000'000) + "1]}";
    EXPECT_EQ(faultOf(many).path, u"eventsToday[0]"_s);
}

TEST(BriefingFaults, EveryTruncationIsAnError) {
    const QByteArray good = fixture(u"briefing-full.json"_s).trimmed();
    for (qsizetype length = 0; length < good.size(); ++length) {
        ASSERT_FALSE(decodeBriefing(good.first(length))) << length;
        ASSERT_TRUE(isBriefingOrError(good.first(length))) << length;
    }
}

TEST(BriefingFaults, DamagedBytesGiveABriefingOrAnError) {
    const QByteArray good = fixture(u"briefing-full.json"_s);
    std::mt19937 random(4); // the same damage on every run
    const auto below = [&](qsizetype limit) { return qsizetype(random() % quint64(limit)); };
    for (int round = 0; round < 20'000; ++round) {
        QByteArray bytes = good;
        for (auto faults = 1 + below(4); faults > 0; --faults) {
            const auto place = below(bytes.size());
            switch (below(4)) {
            case 0:
                bytes[place] = char(random());
                break;
            case 1:
                bytes[place] = "{}[]\",:\\0123456789.-eEtfn\0 "[below(28)];
                break;
            case 2:
                bytes.remove(place, 1 + below(40));
                break;
            default:
                bytes.insert(place, bytes.mid(below(bytes.size()), 1 + below(40)));
            }
        }
        ASSERT_TRUE(isBriefingOrError(bytes)) << round;
    }
}
