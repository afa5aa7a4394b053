// What is sent for each action is valid by the published schema, and nothing much else is.

#include "briefing/ActionKeys.h"
#include "schema/Validator.h"
#include "support/StateHarness.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString schema = u"action.schema.json"_s;

class ActionSchema : public testing::Test, protected StateHarness {};

} // namespace

TEST_F(ActionSchema, TakesWhatIsSent) {
    AppState& app = start();
    spawn(app.perform(LumoAction::habitToggle(u"water"_s), u"a"_s));
    spawn(app.perform(LumoAction::choreDone(u"\"\\🌱"_s), u"b"_s));
    spawn(app.capture(u"Call the bank"_s));
    spawn(app.refreshSpending());
    std::map<QString, QByteArray> bodies;
    for (const HttpRequest& request : transport.requests()) {
        if (request.body)
            bodies[QString::number(bodies.size())] = *request.body;
    }
    ASSERT_EQ(bodies.size(), 4U);
    EXPECT_EQ(validBySchema(schema, bodies).size(), 4U);
}

TEST_F(ActionSchema, TakesNothingElse) {
    std::map<QString, QByteArray> bodies;
    for (const char* const body :
         {"", "null", "[]", "{}", R"({"type":"habit.toggle"})", R"({"type":"habit.toggle","id":7})",
          R"({"type":"chore.done","id":null})", R"({"type":"chore.done","id":"a","text":"b"})",
          R"({"type":"capture","id":"a"})", R"({"type":"capture","text":""})",
          R"({"type":"spending.refresh","id":"a"})", R"({"type":"spending"})",
          R"({"type":["spending.refresh"]})", R"({"id":"a"})"})
        bodies[QString::fromUtf8(body)] = body;
    EXPECT_EQ(validBySchema(schema, bodies), std::set<QString>());
}
