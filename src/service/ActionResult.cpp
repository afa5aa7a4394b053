#include "service/ActionResult.h"

#include "briefing/FlatJsonObject.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

ActionResult decodeActionResult(const QByteArray& body) {
    const auto taken = [] { return ActionResult{.ok = true, .queued = {}, .reason = {}}; };
    const auto object = FlatJsonObject::parse(body);
    if (!object)
        return taken();
    const auto ok = object->boolean("ok"_L1);
    const auto queued = object->boolean("queued"_L1);
    const auto reason = object->string("reason"_L1);
    if (!ok || !queued || !reason)
        return taken();
    return {*ok, *queued, *reason};
}

} // namespace lumora
