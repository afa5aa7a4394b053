#include "service/ActionResult.h"

#include "briefing/json/JsonRecord.h"

namespace lumora {

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
    return decodeJson<ActionResult>(body).value_or(taken);
}

} // namespace lumora
