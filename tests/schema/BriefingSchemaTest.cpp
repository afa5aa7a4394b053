// Documents of every kind get the same verdict from the published schema, by an independent
// validator, and from the decoder; where they cannot, the difference is on a list.

#include "briefing/BriefingDecoder.h"
#include "schema/Validator.h"
#include "support/BriefingFields.h"
#include "support/Fixtures.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Documents by name.
using Documents = std::map<QString, QByteArray>;

QJsonValue fullBriefing() {
    return QJsonDocument::fromJson(fixture(u"briefing-full.json"_s)).object();
}

QByteArray toBytes(const QJsonValue& root) {
    return QJsonDocument(root.toObject()).toJson();
}

/// The full briefing with `json`, which need not be JSON, as the value at `path`.
QByteArray withText(const Path& path, const QByteArray& json) {
    const QString mark = u"stands here"_s;
    return toBytes(with(fullBriefing(), path, mark)).replace("\"stands here\"", json);
}

/// Every field missing, and with a value of each type.
void addEveryField(Documents& documents) {
    const std::map<QString, QByteArray> values{
        {u"null"_s, "null"},  {u"text"_s, "\"12\""}, {u"boolean"_s, "true"},
        {u"integer"_s, "12"}, {u"float"_s, "12.0"},  {u"half"_s, "12.5"},
        {u"list"_s, "[]"},    {u"object"_s, "{}"},   {u"lists"_s, "[[]]"},
    };
    for (const Field& field : allFields()) {
        const QString path = toText(field.path);
        if (!std::holds_alternative<int>(field.path.back()))
            documents[path + u" missing"_s] =
                toBytes(with(fullBriefing(), field.path, QJsonValue::Undefined));
        for (const auto& [name, json] : values)
            documents[path + u' ' + name] = withText(field.path, json);
    }
}

void addDates(Documents& documents) {
    for (const char* const date :
         {"2025-03-04T09:30:00Z",
          "2025-03-04T09:30:00.5Z",
          "2025-03-04T09:30:00.123456789Z",
          "2025-03-04T09:30:00+02:00",
          "2025-03-04T09:30:00-23:59",
          "0000-01-01T00:00:00Z",
          "9999-12-31T23:59:59Z",
          "2024-02-29T00:00:00Z",
          "2025-03-04",
          "2025-03-04T09:30:00",
          "2025-03-04 09:30:00Z",
          "2025-03-04T09:30Z",
          "2025-03-04t09:30:00Z",
          "2025-03-04T09:30:00z",
          "2025-13-04T09:30:00Z",
          "2025-00-04T09:30:00Z",
          "2025-03-32T09:30:00Z",
          "2025-03-00T09:30:00Z",
          "2025-03-04T24:00:00Z",
          "2025-03-04T09:60:00Z",
          "2025-03-04T09:30:60Z",
          "2025-03-04T09:30:00.Z",
          "2025-03-04T09:30:00,5Z",
          "2025-03-04T09:30:00+24:00",
          "2025-03-04T09:30:00+02:60",
          "2025-03-04T09:30:00+0200",
          "2025-03-04T09:30:00+02",
          "25-03-04T09:30:00Z",
          "+2025-03-04T09:30:00Z",
          " 2025-03-04T09:30:00Z",
          "2025-03-04T09:30:00Z ",
          "٢٠٢٥-03-04T09:30:00Z",
          "",
          "tomorrow"}) {
        const QString name = u"date \"%1\""_s.arg(QString::fromUtf8(date)).replace(u'/', u'-');
        documents[name] = withText({u"eventsToday"_s, 0, u"start"_s}, '"' + QByteArray(date) + '"');
    }
}

void addNumbers(Documents& documents) {
    const Path integer{u"habits"_s, u"done"_s};
    const Path number{u"generatedAt"_s};
    for (const char* const text :
         {"0",
          "-0",
          "-0.0",
          "1e3",
          "1E+3",
          "1e-3",
          "1.5e1",
          "2.50",
          "9223372036854775807",
          "9223372036854775808",
          "-9223372036854775808",
          "-9223372036854775809",
          "18446744073709551615",
          "18446744073709551616",
          "123456789012345678901234567890",
          "9.223372036854775e18",
          "9.3e18",
          "1e300",
          "01",
          "+1",
          ".5",
          "5.",
          "0x10",
          "NaN",
          "Infinity",
          "- 1",
          "1_000"}) {
        documents[u"integer "_s + QString::fromLatin1(text)] = withText(integer, text);
        documents[u"number "_s + QString::fromLatin1(text)] = withText(number, text);
    }
}

void addWholeDocuments(Documents& documents) {
    const QByteArray full = fixture(u"briefing-full.json"_s);
    documents[u"the full briefing"_s] = full;
    documents[u"the smallest briefing"_s] = fixture(u"briefing-minimal.json"_s);
    documents[u"blanks around it"_s] = " \r\n\t" + full + "\n ";
    documents[u"nothing"_s] = "";
    documents[u"an empty object"_s] = "{}";
    documents[u"a list"_s] = "[]";
    documents[u"a list of one"_s] = '[' + full + ']';
    documents[u"null alone"_s] = "null";
    documents[u"a text alone"_s] = "\"briefing\"";
    documents[u"HTML"_s] = "<html><body>Sign in</body></html>";
    documents[u"something behind it"_s] = full + "{}";
    documents[u"a comma too many"_s] =
        QByteArray(full).replace("\"eventsToday\": [", "\"eventsToday\": [,");
    documents[u"a comment"_s] = "// today\n" + full;
    documents[u"a byte order mark"_s] = "\xEF\xBB\xBF" + full;
    documents[u"bytes that are no UTF-8"_s] = QByteArray(full).replace("Standup", "Stand\xFFup");
    documents[u"a line break in a text"_s] = QByteArray(full).replace("Standup", "Stand\nup");
    documents[u"cut short"_s] = full.first(full.size() / 2);
    documents[u"a member twice, good at last"_s] =
        QByteArray(full).replace("\"date\":", "\"date\": 7, \"date\":");
    documents[u"a member twice, bad at last"_s] =
        QByteArray(full).replace("\"generatedAt\":", "\"date\": 7, \"generatedAt\":");
    documents[u"members of one's own"_s] =
        QByteArray(full).replace("\"date\":", R"("mine": [{"deep": null}, 1.5], "date":)");
}

/// What a schema cannot say, and what the two parsers take differently. To the decoder, all are
/// faults.
void addDifferences(Documents& documents) {
    const auto start = [](const QByteArray& json) {
        return withText({u"eventsToday"_s, 0, u"start"_s}, json);
    };
    documents[u"a day that no month has"_s] = start("\"2025-02-30T09:30:00Z\"");
    documents[u"the 31st of a month of 30 days"_s] = start("\"2025-04-31T09:30:00Z\"");
    documents[u"the 29th of February of another year"_s] = start("\"2025-02-29T09:30:00Z\"");
    // A validator's own way with the end of a text: patterns of JSON Schema end where the text
    // does.
    documents[u"a line break behind a date"_s] = start("\"2025-03-04T09:30:00Z\\n\"");
    // As a float it may stand for an integer that does not fit.
    documents[u"the least integer as a float"_s] =
        withText({u"habits"_s, u"done"_s}, "-9.223372036854775808e18");
    documents[u"a number beyond all floats"_s] = withText({u"generatedAt"_s}, "1e400");
    documents[u"half a character"_s] = withText({u"date"_s}, R"("\ud83d")");
}

/// The names of those that the decoder takes.
std::set<QString> decoded(const Documents& documents) {
    std::set<QString> names;
    for (const auto& [name, bytes] : documents) {
        if (decodeBriefing(bytes))
            names.insert(name);
    }
    return names;
}

} // namespace

TEST(BriefingSchema, SaysWhatTheDecoderSays) {
    Documents documents;
    addEveryField(documents);
    addDates(documents);
    addNumbers(documents);
    addWholeDocuments(documents);
    EXPECT_GT(documents.size(), 600U);
    const auto valid = decoded(documents);
    EXPECT_GT(valid.size(), 100U);
    EXPECT_LT(valid.size(), documents.size() - 300);
    EXPECT_EQ(validBySchema(u"briefing.schema.json"_s, documents), valid);
}

TEST(BriefingSchema, CannotSayEverything) {
    Documents documents;
    addDifferences(documents);
    EXPECT_EQ(decoded(documents), std::set<QString>());
    EXPECT_EQ(validBySchema(u"briefing.schema.json"_s, documents).size(), documents.size());
}
