#pragma once

#include "ui/theme/ThemeSource.h"

#include <QVariantAnimation>

namespace lumora {

/// Turns a spinner while something is under way; stands still where the desktop asks for reduced
/// motion.
class SpinnerMotion : public QVariantAnimation {
    Q_OBJECT

public:
    /// `themes` must outlive the motion.
    SpinnerMotion(const ThemeSource& themes, QObject* parent);

    /// Starts or stops turning.
    void setRunning(bool running);

    /// Degrees clockwise, from 0 to 360.
    double rotation() const { return currentValue().toDouble(); }

private:
    void follow();

    const ThemeSource& m_themes;
    bool m_wanted = false;
};

} // namespace lumora
