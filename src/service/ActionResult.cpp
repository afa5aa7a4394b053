#include "service/ActionResult.h"

#include "model/FlatJsonObject.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

ActionResult decodeActionResult(const QByteArray& body) {
    const ActionResult taken{.ok = true, .queued = {}, .reason = {}};
    const auto object = FlatJsonObject::parse(body);
    if (!object)
        return taken;
    auto ok = object->boolean("ok"_L1);
    auto queued = object->boolean("queued"_L1);
    auto reason = object->string("reason"_L1);
    if (!ok || !queued || !reason)
        return taken;
    return {*ok, *queued, *std::move(reason)};
}

} // namespace lumora
