#include "service/ReplyClassification.h"

#include "briefing/TextBounds.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

using Classified = tl::expected<QByteArray, LumoError>;

Classified classify(int status, const QByteArray& body) {
    return classifyOutcome(HttpResponse{status, body});
}

Classified refused(LumoError error) {
    return tl::unexpected(std::move(error));
}

} // namespace

TEST(ReplyClassification, SuccessGivesTheBody) {
    for (const int status : {200, 201, 204, 226, 299}) {
        EXPECT_EQ(classify(status, R"({"error": "E"})"), Classified(R"({"error": "E"})")) << status;
        EXPECT_EQ(classify(status, ""), Classified("")) << status;
    }
}

TEST(ReplyClassification, StatusAndBodyDecideTheError) {
    const QByteArray message = R"({"error": "E", "ok": false})";
    const QByteArray html = "<html>Not found</html>";
    for (const QByteArray& body : {message, html, QByteArray()})
        EXPECT_EQ(classify(401, body), refused(LumoError::unauthorized()));
    for (const int status : {400, 402, 403, 404, 409, 422, 429, 499}) {
        EXPECT_EQ(classify(status, message), refused(LumoError::actionRejected(u"E"_s))) << status;
        EXPECT_EQ(classify(status, html), refused(LumoError::serverError(status))) << status;
        EXPECT_EQ(classify(status, ""), refused(LumoError::serverError(status))) << status;
    }
    for (const int status : {100, 103, 199, 300, 302, 304, 399, 500, 503, 599, 600, 999, 1, 0}) {
        EXPECT_EQ(classify(status, message), refused(LumoError::serverError(status))) << status;
    }
}

TEST(ReplyClassification, ABrokenExchangeKeepsItsDescription) {
    const HttpOutcome outcome =
        tl::unexpected(TransportError{TransportError::Kind::Failed, u"Connection refused"_s});
    EXPECT_EQ(classifyOutcome(outcome), refused(LumoError::networkError(u"Connection refused"_s)));
}

TEST(ReplyClassification, ARequestThatCannotBeSentKeepsItsDescription) {
    const HttpOutcome outcome =
        tl::unexpected(TransportError{TransportError::Kind::Refused, u"No such address"_s});
    EXPECT_EQ(classifyOutcome(outcome), refused(LumoError::refused(u"No such address"_s)));
}

TEST(ReplyClassification, AnOversizedOrForeignAnswerIsInvalid) {
    for (const auto kind : {TransportError::Kind::BodyTooLarge, TransportError::Kind::NotHttp}) {
        const HttpOutcome outcome = tl::unexpected(TransportError{kind, u"Something"_s});
        EXPECT_EQ(classifyOutcome(outcome), refused(LumoError::invalidResponse()));
    }
}

TEST(ErrorMessage, IsTheStringMemberError) {
    EXPECT_EQ(errorMessage(R"({"error": "No such habit"})"), u"No such habit"_s);
    EXPECT_EQ(errorMessage(R"({"error": ""})"), u""_s);
    EXPECT_EQ(errorMessage(R"({"error": " \u00e9\n\ud83d\ude00 "})"), u" é\n😀 "_s);
    EXPECT_EQ(errorMessage(R"({"message": "M", "error": "E"})"), u"E"_s);
}

TEST(ErrorMessage, IsAbsentOtherwise) {
    for (const QByteArray body :
         {"",
          "  ",
          "<html></html>",
          "error",
          "{",
          R"({"error": "E"} x)",
          R"({"error": "E")",
          R"({"message": "M"})",
          R"({"Error": "E"})",
          R"({"error": 5})",
          R"({"error": null})",
          R"({"error": true})",
          R"({"error": {"error": "E"}})",
          R"({"error": ["E"]})",
          R"({"errors": {"error": "E"}})",
          R"(["error", "E"])",
          R"([{"error": "E"}])",
          R"("error")",
          "null",
          "{}",
          "{\"error\": \"\xff\"}"})
        EXPECT_EQ(errorMessage(body), std::nullopt) << body.constData();
}

TEST(ErrorMessage, IsAbsentInAnythingDeep) {
    EXPECT_EQ(errorMessage(R"({"error": )" + QByteArray(100'000, '[')), std::nullopt);
}

TEST(ErrorMessage, IsCutWhereNobodyReadsOn) {
    const QByteArray quoted = QByteArray(10'000, 'x');
    const auto message = errorMessage("{\"error\": \"" + quoted + "\"}");
    EXPECT_EQ(message, QString(longestPassage - 1, u'x') + u'…');
    for (const QString& character : {u"é"_s, u"ก"_s, u"🎉"_s}) {
        const QString text = character.repeated(10'000);
        EXPECT_EQ(
            errorMessage("{\"error\": \"" + text.toUtf8() + "\"}"),
            beginning(text, longestPassage));
    }
}

TEST(ErrorMessage, OfSeveralIsTheLast) {
    EXPECT_EQ(errorMessage(R"({"error": "A", "error": "B"})"), u"B"_s);
    EXPECT_EQ(errorMessage(R"({"error": "A", "error": 5})"), std::nullopt);
}
