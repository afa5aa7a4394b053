#include "ui/theme/SpinnerMotion.h"

namespace lumora {

namespace {

constexpr int turnMilliseconds = 800;

} // namespace

SpinnerMotion::SpinnerMotion(const ThemeSource& themes, QObject* parent)
    : QVariantAnimation(parent)
    , m_themes(themes) {
    setStartValue(0.0);
    setEndValue(360.0);
    setDuration(turnMilliseconds);
    setLoopCount(-1);
    connect(&m_themes, &ThemeSource::changed, this, &SpinnerMotion::follow);
}

void SpinnerMotion::setRunning(bool running) {
    m_wanted = running;
    follow();
}

void SpinnerMotion::follow() {
    const bool turns = m_wanted && motionAllowed(m_themes.theme());
    if (turns && state() != Running)
        start();
    else if (!turns)
        stop();
}

} // namespace lumora
