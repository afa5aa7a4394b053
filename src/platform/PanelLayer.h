#pragma once

#include <QByteArray>
#include <QPoint>
#include <QRect>

#include <functional>
#include <optional>

class QWindow;

namespace lumora {

/// The layer in front of all windows, on desktops that have one: the only way there to have a
/// window where the program wants it. One window at a time is in it; presses beside that window
/// are noticed, and nobody else gets them.
class PanelLayer {
public:
    /// What is known before the window is laid out.
    struct Wish {
        /// Whether the pointer, wherever it is, is worth waiting a moment for.
        bool pointer = false;

        /// A point of the screen that is wanted where there is no pointer, in points. Absent: the
        /// first screen.
        std::optional<QPoint> near = std::nullopt;
    };

    /// Where the window will be. All of it is in points.
    struct Room {
        QRect screen;
        QRect available;               ///< of the screen: without what bars keep to themselves
        std::optional<QPoint> pointer; ///< absent where it was not asked for, or there is none
    };

    /// What the desktop answers, from the event loop.
    struct Answers {
        std::function<void(const Room&)> opened; ///< the moment to `place` the window and show it
        std::function<void()> pressedOutside;
        std::function<void()> closed; ///< the desktop took the layer away
    };

    virtual ~PanelLayer() = default;

    /// Takes `window`, which is hidden and has the flag to be left alone by window managers.
    virtual void open(QWindow& window, const Wish& wish, const Answers& answers) = 0;

    /// Has the window cover `area` of the desktop once it is shown, in points.
    virtual void place(const QRect& area) = 0;

    /// Lets go of the window, which is about to be hidden; no answer comes after that. Does nothing
    /// without a window.
    virtual void close() = 0;

    /// Asks for a token that lets another program come to the front because of what the user has
    /// just done in the window. It is empty where the desktop gives none, and never takes long.
    virtual void requestToken(const std::function<void(const QByteArray& token)>& given) = 0;
};

} // namespace lumora
