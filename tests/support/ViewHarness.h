#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakePreferences.h"
#include "ui/access/SpokenWidgets.h"
#include "ui/panel/MenuBarView.h"
#include "ui/rows/PaintedRow.h"
#include "ui/rows/RowButton.h"

#include <QApplication>
#include <QImage>

#include <algorithm>
#include <array>

namespace lumora::tests {

/// The texts of `content` in reading order, a two-line item giving two.
inline QStringList textsOf(const RowContent& content) {
    QStringList texts;
    for (const RowItem& item : content.items)
        for (const TextLine& line : item.lines)
            texts += line.text;
    return texts;
}

/// The symbols of `content` in reading order.
inline QStringList symbolsOf(const RowContent& content) {
    QStringList symbols;
    for (const RowItem& item : content.items)
        if (item.kind == RowItem::Kind::Symbol)
            symbols += item.symbol;
    return symbols;
}

/// How the line that reads `text` looks; ends the test program when no line does.
inline TextStyle styleOf(const RowContent& content, const QString& text) {
    for (const RowItem& item : content.items)
        for (const TextLine& line : item.lines)
            if (line.text == text)
                return line.style;
    qFatal("No line reads: %s", qUtf8Printable(text));
}

inline bool hasSpinner(const RowContent& content) {
    return std::any_of(content.items.begin(), content.items.end(), [](const RowItem& item) {
        return item.kind == RowItem::Kind::Spinner;
    });
}

/// The children of `parent` that can be seen, from top to bottom and then from left to right.
template <typename Widget>
QList<Widget*> shown(const QWidget& parent) {
    QList<Widget*> found;
    for (Widget* widget : parent.findChildren<Widget*>())
        if (widget->isVisibleTo(&parent))
            found += widget;
    std::stable_sort(found.begin(), found.end(), [&](const Widget* a, const Widget* b) {
        const QPoint first = a->mapTo(&parent, QPoint());
        const QPoint second = b->mapTo(&parent, QPoint());
        return std::pair(first.y(), first.x()) < std::pair(second.y(), second.x());
    });
    return found;
}

/// Every text that rows and buttons below `parent` show.
inline QStringList shownTexts(const QWidget& parent) {
    QStringList texts;
    for (const auto* widget : shown<QWidget>(parent)) {
        if (const auto* row = qobject_cast<const PaintedRow*>(widget))
            texts += textsOf(row->content());
        else if (const auto* button = qobject_cast<const RowButton*>(widget))
            texts += textsOf(button->content());
    }
    return texts;
}

/// The button that can be seen below `parent` with this accessible name; null when there is none.
inline RowButton* buttonNamed(const QWidget& parent, const QString& name) {
    for (auto* button : shown<RowButton>(parent))
        if (button->accessibleName() == name)
            return button;
    return nullptr;
}

/// What `widget` itself paints, on a transparent ground.
inline QImage painted(QWidget& widget) {
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// Lets layouts, paints and everything else that is posted happen.
inline void settle() {
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

/// The theme in the program's own colours.
inline Theme plainTheme(ColorScheme scheme = ColorScheme::Light) {
    return Theme(scheme, QApplication::font());
}

/// The same for a desktop on which nothing moves and the font has `points`.
inline Theme stillTheme(double points = QApplication::font().pointSizeF()) {
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    Theme theme(ColorScheme::Light, font);
    theme.setAllowsMotion(false);
    return theme;
}

/// The font sizes, in points, at which everything has the room that it needs.
inline constexpr std::array roomyFontSizes = {8.0,  9.0,  10.0, 11.0, 12.0,
                                              14.0, 16.0, 20.0, 24.0, 28.0};

/// Whether something that `row` shows reaches out of it.
template <typename Row>
bool overflows(const Row& row) {
    constexpr double hair = 0.01;
    const RowGeometry inside = row.itemGeometry();
    const QSize room = row.contentsRect().size();
    return inside.height > room.height() + hair ||
           (!inside.items.empty() && inside.items.back().right() > room.width() + hair);
}

/// Whether `widget` is not wholly in sight: it or what it shows reaches out of where it belongs.
inline bool isCutOff(const QWidget& widget) {
    if (!widget.size().isEmpty() && !widget.parentWidget()->rect().contains(widget.geometry()))
        return true;
    if (const auto* row = qobject_cast<const PaintedRow*>(&widget))
        return overflows(*row);
    if (const auto* button = qobject_cast<const RowButton*>(&widget))
        return overflows(*button);
    return widget.hasHeightForWidth() && widget.height() < widget.heightForWidth(widget.width());
}

/// What below `root` is cut off, one a line.
inline std::string cutOff(const QWidget& root) {
    QStringList found;
    for (const auto* widget : shown<QWidget>(root))
        if (isCutOff(*widget))
            found += QLatin1StringView(widget->metaObject()->className()) + u' ' +
                     widget->accessibleName().left(80);
    return found.join(u'\n').toStdString();
}

/// The panel's content on the screen, rendered from values that the test sets. Nothing moves.
class ViewHarness {
    /// Comes before everything that is made of widgets.
    struct Spoken {
        Spoken() { speakWidgets(); }
    };

    Spoken m_spoken;

public:
    ViewHarness() { view.show(); }

    /// Shows the values as they are now.
    void render() {
        view.render({
            .state = state,
            .lastGood = lastGood,
            .lastUpdated = lastUpdated,
            .pending = pending,
            .actionError = actionError,
            .isConfigured = isConfigured,
            .hasDashboard = hasDashboard,
            .now = clock.now(),
        });
        settle();
        view.resize(view.sizeHint());
        settle();
    }

    /// Shows `briefing` as freshly fetched.
    void show(const Briefing& briefing) {
        lastGood = briefing;
        state = LoadState::loaded(briefing);
        render();
    }

    /// Lets time pass, and the panel see it.
    void pass(std::chrono::seconds duration) {
        clock.advance(duration);
        view.tick(clock.now());
        settle();
    }

    FakeClock clock;
    FakePreferences preferences;
    ThemeSource themes{stillTheme()};
    LoadState state;
    std::optional<Briefing> lastGood;
    std::optional<Instant> lastUpdated;
    std::set<QString> pending;
    std::optional<QString> actionError;
    bool isConfigured = true;
    bool hasDashboard = true;
    MenuBarView view{{.themes = themes, .preferences = preferences, .clock = clock}};
};

} // namespace lumora::tests
