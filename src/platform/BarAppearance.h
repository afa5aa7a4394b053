#pragma once

#include <QObject>

namespace lumora {

/// How bright a symbol has to be to stand out from the bar that it sits on.
enum class SymbolTone {
    Light, ///< for dark bars
    Dark,  ///< for light bars
};

/// What the bar looks like in which the desktop shows the status item.
class BarAppearance : public QObject {
    Q_OBJECT

public:
    /// The tone for symbols on the bar as it is now, as far as that can be known.
    [[nodiscard]] virtual SymbolTone tone() const = 0;

Q_SIGNALS:
    /// Another tone stands out from now on.
    void toneChanged();
};

} // namespace lumora
