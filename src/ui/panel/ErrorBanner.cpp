#include "ui/panel/ErrorBanner.h"

#include "briefing/TextBounds.h"
#include "texts/PlainText.h"
#include "ui/rows/RowLayout.h"
#include "ui/rows/RowPainter.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr double bannerSpacing = 6; // points

/// What screen readers say of `message`; the triangle has a name of its own where it stands alone.
QString spoken(const QString& message) {
    return singleLine(message).trimmed().isEmpty() ? u"Warning"_s : message;
}

} // namespace

ErrorBanner::ErrorBanner(const ThemeSource& themes, QMargins padding, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_padding(padding) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setContentsMargins(m_themes.theme().pixels(m_padding));
    connect(&m_themes, &ThemeSource::changed, this, [this] {
        setContentsMargins(m_themes.theme().pixels(m_padding));
        updateGeometry();
        update();
    });
    hide();
}

void ErrorBanner::setMessage(const std::optional<QString>& whole) {
    const auto message = whole ? std::optional(beginning(*whole, longestPassage)) : std::nullopt;
    if (m_message == message)
        return;
    m_message = message;
    setAccessibleName(message ? spoken(*message) : QString());
    const bool wasVisible = isVisible();
    setVisible(message.has_value());
    updateGeometry();
    update();
    if (!message)
        return;
    tell(QAccessible::Alert);
    // Where alerts are not passed on, screen readers read those that come into view.
    if (wasVisible)
        tell(QAccessible::ObjectShow);
}

void ErrorBanner::tell(QAccessible::Event what) {
    QAccessibleEvent event(this, what);
    QAccessible::updateAccessibility(&event);
}

ErrorBanner::Laid ErrorBanner::layOut(double width) const {
    const Theme& theme = m_themes.theme();
    const QFont font = theme.font(TextRole::Caption);
    const double edge = symbolEdge(TextRole::Caption, theme);
    const double before = edge + theme.exact(bannerSpacing);
    const QMargins margins = contentsMargins();
    const bool fromLeft = layoutDirection() == Qt::LeftToRight;

    Laid laid;
    laid.text = wrappedText(
        plainLines(m_message.value_or(QString())), font,
        width - margins.left() - margins.right() - before, layoutDirection());
    laid.symbol = QRectF(
        fromLeft ? margins.left() : width - margins.right() - edge, margins.top(), edge, edge);
    // One line stands in the middle of the symbol.
    const double line = QFontMetricsF(font).height();
    laid.origin = QPointF(
        margins.left() + (fromLeft ? before : 0), margins.top() + std::max(0.0, (edge - line) / 2));
    return laid;
}

int ErrorBanner::heightForWidth(int width) const {
    // A box layout asks hidden widgets too.
    if (!m_message)
        return 0;
    const Laid laid = layOut(width);
    const double bottom = std::max(laid.symbol.bottom(), laid.origin.y() + heightOf(*laid.text));
    return int(std::ceil(bottom)) + contentsMargins().bottom();
}

QSize ErrorBanner::sizeHint() const {
    return {width(), heightForWidth(width())};
}

void ErrorBanner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor color = m_themes.theme().color(ColorRole::Orange);
    const Laid laid = layOut(width());
    paintSymbol(painter, laid.symbol, u"exclamationmark.triangle"_s, {.tint = color});
    painter.setPen(color);
    laid.text->draw(&painter, laid.origin);
}

} // namespace lumora
