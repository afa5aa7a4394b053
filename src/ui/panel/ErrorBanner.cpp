#include "ui/panel/ErrorBanner.h"

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
constexpr int wrapping = Qt::TextWrapAnywhere | Qt::TextWordWrap;

/// What screen readers say of `message`; the triangle has a name of its own where it stands alone.
QString spoken(const QString& message) {
    return message.trimmed().isEmpty() ? u"Warning"_s : message;
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

void ErrorBanner::setMessage(const std::optional<QString>& message) {
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

QRectF ErrorBanner::textRect(double width) const {
    const double edge = symbolEdge(TextRole::Caption, m_themes.theme());
    const QFontMetricsF metrics(m_themes.theme().font(TextRole::Caption));
    const double before = edge + m_themes.theme().exact(bannerSpacing);
    const QMargins margins = contentsMargins();
    const double free = width - margins.left() - margins.right() - before;
    const bool fromLeft = layoutDirection() == Qt::LeftToRight;
    const QRectF room(margins.left() + (fromLeft ? before : 0), 0, std::max(1.0, free), 1e6);
    QRectF rect = metrics.boundingRect(room, wrapping, m_message.value_or(QString()));
    rect.setLeft(room.left());
    rect.setRight(room.right());
    // One line stands in the middle of the symbol.
    rect.moveTop(margins.top() + std::max(0.0, (edge - metrics.height()) / 2));
    return rect;
}

int ErrorBanner::heightForWidth(int width) const {
    // A box layout asks hidden widgets too.
    if (!m_message)
        return 0;
    const double edge = symbolEdge(TextRole::Caption, m_themes.theme());
    const double bottom = std::max(contentsMargins().top() + edge, textRect(width).bottom());
    return int(std::ceil(bottom)) + contentsMargins().bottom();
}

QSize ErrorBanner::sizeHint() const {
    return {width(), heightForWidth(width())};
}

void ErrorBanner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& theme = m_themes.theme();
    const QColor color = theme.color(ColorRole::Orange);
    const double edge = symbolEdge(TextRole::Caption, theme);
    const bool fromLeft = layoutDirection() == Qt::LeftToRight;
    const double left =
        fromLeft ? contentsMargins().left() : width() - contentsMargins().right() - edge;
    paintSymbol(
        painter, QRectF(left, contentsMargins().top(), edge, edge), u"exclamationmark.triangle"_s,
        {.tint = color});
    painter.setFont(theme.font(TextRole::Caption));
    painter.setPen(color);
    const int side = Qt::AlignAbsolute | (fromLeft ? Qt::AlignLeft : Qt::AlignRight);
    painter.drawText(textRect(width()), wrapping | side, m_message.value_or(QString()));
}

} // namespace lumora
