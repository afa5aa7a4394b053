#pragma once

#include "ui/theme/Theme.h"

#include <QImage>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace lumora::tests {

/// What a state is drawn with.
struct Look {
    int scale = 1; ///< device pixels per point
    ColorScheme scheme = ColorScheme::Light;
    int points = 11; ///< of the desktop's font
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

/// In how many looks a state is drawn: parts of a window in two, windows in three, and those that
/// show nearly everything in all.
enum class Looks { Two, Three, All };

/// A state of the panel, of the settings or of a menu, and how it is drawn.
struct PictureState {
    std::string name;
    std::function<QImage(const Look&)> draw;
    Looks looks = Looks::Three;
    bool inArabic = false; ///< drawn by a process that has Arabic for its language
};

/// One state in one look.
struct Picture {
    std::string name; ///< of the state and the look; of its file too
    Look look;
    PictureState state;
};

/// How gtest prints a picture.
inline void PrintTo(const Picture& picture, std::ostream* out) {
    *out << picture.name;
}

[[nodiscard]] std::vector<PictureState> panelStates();
[[nodiscard]] std::vector<PictureState> panelControlStates();
[[nodiscard]] std::vector<PictureState> settingsStates();

/// All that there are: each state in the common look and in some of the others, so that among all
/// of them any value of a look's members meets any value of another.
[[nodiscard]] std::vector<Picture> allPictures();

/// Makes the process one that draws with `look`, and gives the theme for it.
[[nodiscard]] Theme adopt(const Look& look);

/// The screen with the scale of `look`; it has room for everything.
[[nodiscard]] QRect screenFor(const Look& look);

/// Puts `window`, which is yet to open, on that screen.
void placeOnScreen(QWidget& window, const Look& look);

/// What the open `window` shows in `part`, with `ground` behind it.
[[nodiscard]] QImage drawn(QWidget& window, const QRect& part, QColor ground);

/// Moves the pointer over the middle of `target`, which is in sight in its window; or presses the
/// left button there.
void pointAt(QWidget& target);
void pressAt(QWidget& target);

/// Moves the pointer away from `window`, and lets its button go there.
void letGo(QWidget& window);

} // namespace lumora::tests
