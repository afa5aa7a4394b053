#pragma once

#include "companion/program/Sources.h"
#include "companion/server/HttpAnswer.h"
#include "companion/server/ServiceAction.h"

namespace lumora::companion {

/// Does what an action wants and answers once, perhaps from within the call, when it is done.
/// `sources` must outlive that.
void perform(const ServiceAction& action, Sources& sources, std::function<void(HttpAnswer)> answer);

} // namespace lumora::companion
