#include "service/LumoAction.h"

#include "briefing/TextBounds.h"
#include "briefing/json/JsonRecord.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

LumoAction::LumoAction(Body body)
    : m_body(std::move(body)) {}

LumoAction LumoAction::habitToggle(const QString& id) {
    return LumoAction({{u"type"_s, u"habit.toggle"_s}, {u"id"_s, id}});
}

LumoAction LumoAction::choreDone(const QString& id) {
    return LumoAction({{u"type"_s, u"chore.done"_s}, {u"id"_s, id}});
}

LumoAction LumoAction::capture(const QString& text) {
    return LumoAction({{u"type"_s, u"capture"_s}, {u"text"_s, text}});
}

LumoAction LumoAction::spendingRefresh() {
    return LumoAction({{u"type"_s, u"spending.refresh"_s}});
}

template <>
struct JsonSchema<ActionResult> {
    static constexpr std::tuple fields{
        JsonField<&ActionResult::ok>{"ok"},
        JsonField<&ActionResult::queued>{"queued"},
        JsonField<&ActionResult::reason>{"reason"},
    };
};

ActionResult decodeActionResult(const QByteArray& body) {
    const ActionResult taken{.ok = true, .queued = {}, .reason = {}};
    ActionResult result = decodeJson<ActionResult>(body).value_or(taken);
    if (result.reason)
        result.reason = beginning(*result.reason, longestPassage);
    return result;
}

} // namespace lumora
