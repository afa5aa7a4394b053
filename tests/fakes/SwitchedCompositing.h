#pragma once

#include "platform/Compositing.h"

namespace lumora::tests {

/// Compositing that a test switches on and off.
class SwitchedCompositing final : public Compositing {
public:
    using Compositing::Compositing;
    using Compositing::setActive;
};

} // namespace lumora::tests
