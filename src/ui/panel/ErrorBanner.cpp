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

constexpr double bannerSpacing = 6;
constexpr int wrapping = Qt::TextWrapAnywhere | Qt::TextWordWrap;

/// What screen readers say of `message`; the triangle has a name of its own where it stands alone.
QString spoken(const QString& message) {
    return message.trimmed().isEmpty() ? u"Warning"_s : message;
}

} // namespace

ErrorBanner::ErrorBanner(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, [this] {
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
    const double left = contentsMargins().left() + edge + bannerSpacing;
    const QRectF room(left, 0, std::max(1.0, width - contentsMargins().right() - left), 1e6);
    QRectF rect = metrics.boundingRect(room, wrapping, m_message.value_or(QString()));
    // One line stands in the middle of the symbol.
    rect.moveTop(std::max(0.0, (edge - metrics.height()) / 2));
    return rect;
}

int ErrorBanner::heightForWidth(int width) const {
    // A box layout asks hidden widgets too.
    if (!m_message)
        return 0;
    const double edge = symbolEdge(TextRole::Caption, m_themes.theme());
    return int(std::ceil(std::max(edge, textRect(width).bottom())));
}

QSize ErrorBanner::sizeHint() const {
    return {width(), heightForWidth(width())};
}

void ErrorBanner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Theme& theme = m_themes.theme();
    const QColor color = theme.color(ColorRole::Orange);
    const double edge = symbolEdge(TextRole::Caption, theme);
    paintSymbol(
        painter, QRectF(contentsMargins().left(), 0, edge, edge), u"exclamationmark.triangle"_s,
        color);
    painter.setFont(theme.font(TextRole::Caption));
    painter.setPen(color);
    painter.drawText(textRect(width()), wrapping, m_message.value_or(QString()));
}

} // namespace lumora
