#pragma once

#include "platform/DesktopAppearance.h"

namespace lumora::tests {

/// A desktop whose wishes a test sets.
class FakeAppearance final : public DesktopAppearance {
public:
    explicit FakeAppearance(const Wishes& wishes = {}) { setWishes(wishes); }

    using DesktopAppearance::setWishes;

    /// How many connections follow the wishes.
    int followers() const { return receivers(SIGNAL(changed())); }
};

} // namespace lumora::tests
