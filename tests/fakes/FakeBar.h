#pragma once

#include "platform/BarAppearance.h"

namespace lumora::tests {

/// A bar whose look a test sets; dark at first.
class FakeBar final : public BarAppearance {
public:
    SymbolTone tone() const override { return m_tone; }

    void setTone(SymbolTone tone) {
        m_tone = tone;
        Q_EMIT toneChanged();
    }

private:
    SymbolTone m_tone = SymbolTone::Light;
};

} // namespace lumora::tests
