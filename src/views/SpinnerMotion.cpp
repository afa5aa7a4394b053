#include "views/SpinnerMotion.h"

#include "views/Motion.h"

namespace lumora {

namespace {

constexpr int turnMilliseconds = 800;

} // namespace

SpinnerMotion::SpinnerMotion(QObject* parent)
    : QVariantAnimation(parent) {
    setStartValue(0.0);
    setEndValue(360.0);
    setDuration(turnMilliseconds);
    setLoopCount(-1);
}

void SpinnerMotion::setRunning(bool running) {
    if (running && motionAllowed() && state() != Running)
        start();
    else if (!running)
        stop();
}

} // namespace lumora
