#include "ui/theme/PopupStyle.h"

#include "ui/theme/ThemeSource.h"

#include <QMenu>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// In points.
constexpr double menuRadius = 8;
constexpr double menuPadding = 4;
constexpr double itemRadius = 5;
constexpr int itemHeight = 24;
constexpr int itemPadding = 8; ///< from an item's ground to what it shows
constexpr int markWidth = 18;  ///< the column of the marks, in front of the texts
constexpr int markEdge = 10;
constexpr double markStroke = 1.5;
constexpr int shortcutGap = 24;
constexpr int separatorHeight = 9;
constexpr double tipRadius = 5;
constexpr int tipPadding = 5;

constexpr double hairline = 1; ///< pixel

bool isMenu(const QWidget* window) {
    return qobject_cast<const QMenu*>(window) != nullptr;
}

bool isSeparator(const QStyleOptionMenuItem& item) {
    return item.menuItemType == QStyleOptionMenuItem::Separator;
}

bool hasMark(const QStyleOptionMenuItem& item) {
    return item.checkType != QStyleOptionMenuItem::NotCheckable && item.checked;
}

/// Draws a line through `corners`, each a share of `square`.
void drawLine(QPainter& painter, const QRectF& square, std::initializer_list<QPointF> corners) {
    QPolygonF line;
    for (const QPointF& corner : corners)
        line +=
            {square.left() + corner.x() * square.width(),
             square.top() + corner.y() * square.height()};
    painter.drawPolyline(line);
}

/// A popup that is about to be made into a window of the system's can still be one without a
/// ground.
void letShineThrough(QWidget& popup, const Theme& theme) {
    if (theme.roundsWindows() && !popup.testAttribute(Qt::WA_WState_Created))
        popup.setAttribute(Qt::WA_TranslucentBackground);
}

} // namespace

// The one style that is part of the toolkit itself and the same on every desktop.
PopupStyle::PopupStyle(const ThemeSource& themes)
    : QProxyStyle(u"fusion"_s)
    , m_themes(themes) {}

void PopupStyle::dress(QWidget& toolTip) {
    letShineThrough(toolTip, m_themes.theme());
    toolTip.setStyle(this);
}

double PopupStyle::radius(const QWidget* window) const {
    const bool isRound = window && window->testAttribute(Qt::WA_TranslucentBackground);
    return isRound ? m_themes.theme().exact(isMenu(window) ? menuRadius : tipRadius) : 0;
}

void PopupStyle::drawGround(QPainter& painter, const QWidget* window, const QRect& rect) const {
    const Theme& theme = m_themes.theme();
    const double corner = radius(window);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, corner > 0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.color(ColorRole::Raised));
    painter.drawRoundedRect(rect, corner, corner);
    // On the ground and not beside it: the same line whatever is behind the window.
    const double inset = hairline / 2;
    painter.setPen(QPen(theme.color(ColorRole::Divider), hairline));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(
        QRectF(rect).adjusted(inset, inset, -inset, -inset), corner - inset, corner - inset);
    painter.restore();
}

void PopupStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter,
    const QWidget* widget) const {
    if (element == PE_PanelMenu || element == PE_PanelTipLabel)
        drawGround(*painter, widget, option->rect);
    else if (element != PE_FrameMenu)
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void PopupStyle::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter,
    const QWidget* widget) const {
    const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item) {
        painter->save();
        isSeparator(*item) ? drawSeparator(*painter, item->rect) : drawMenuItem(*painter, *item);
        painter->restore();
    } else if (element != CE_MenuEmptyArea) {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void PopupStyle::drawSeparator(QPainter& painter, const QRect& rect) const {
    const Theme& theme = m_themes.theme();
    const int inset = theme.pixels(itemPadding);
    const QRect line(rect.left() + inset, rect.center().y(), rect.width() - 2 * inset, 1);
    painter.fillRect(line, theme.color(ColorRole::Divider));
}

void PopupStyle::drawItemGround(QPainter& painter, const QStyleOptionMenuItem& item) const {
    if (!(item.state & State_Enabled) || !(item.state & State_Selected))
        return;
    const Theme& theme = m_themes.theme();
    const double corner = theme.exact(itemRadius);
    const bool isPressed = item.state & State_Sunken;
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.color(isPressed ? ColorRole::Pressed : ColorRole::Hover));
    painter.drawRoundedRect(item.rect, corner, corner);
}

void PopupStyle::drawItemMarks(QPainter& painter, const QStyleOptionMenuItem& item) const {
    const Theme& theme = m_themes.theme();
    const bool fromRight = item.direction == Qt::RightToLeft;
    const int padding = theme.pixels(itemPadding);
    const int edge = theme.pixels(markEdge);
    painter.setPen(QPen(
        painter.pen().color(), theme.exact(markStroke), Qt::SolidLine, Qt::RoundCap,
        Qt::RoundJoin));
    const auto square = [&](int left) {
        const QRect place(left, item.rect.center().y() - edge / 2, edge, edge);
        return visualRect(item.direction, item.rect, place);
    };
    if (hasMark(item))
        drawLine(painter, square(item.rect.left() + padding), {{.1, .55}, {.4, .85}, {.9, .2}});
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu) {
        const double back = fromRight ? .65 : .35;
        drawLine(
            painter, square(item.rect.right() - padding - edge),
            {{back, .15}, {1 - back, .5}, {back, .85}});
    }
}

void PopupStyle::drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& item) const {
    const Theme& theme = m_themes.theme();
    painter.setRenderHint(QPainter::Antialiasing);
    drawItemGround(painter, item);
    const bool isEnabled = item.state & State_Enabled;
    painter.setPen(theme.color(isEnabled ? ColorRole::Primary : ColorRole::Tertiary));
    drawItemMarks(painter, item);

    const int padding = theme.pixels(itemPadding);
    const int column = item.menuHasCheckableItems ? theme.pixels(markWidth) : 0;
    const QRect room =
        visualRect(item.direction, item.rect, item.rect.adjusted(padding + column, 0, -padding, 0));
    const auto draw = [&](Qt::Alignment side, const QString& text) {
        const auto flags = visualAlignment(item.direction, side) | Qt::AlignVCenter;
        painter.drawText(room, int(flags) | Qt::TextSingleLine | Qt::TextHideMnemonic, text);
    };
    // Each text runs the way it is written, whatever the menu does.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.setFont(item.font);
    painter.setPen(theme.color(isEnabled ? ColorRole::Primary : ColorRole::Tertiary));
    const QStringList parts = item.text.split(u'\t');
    draw(Qt::AlignLeft, parts.first());
    if (parts.size() < 2)
        return;
    painter.setPen(theme.color(isEnabled ? ColorRole::Secondary : ColorRole::Tertiary));
    draw(Qt::AlignRight, parts.last());
}

int PopupStyle::pixelMetric(
    PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    const Theme& theme = m_themes.theme();
    switch (metric) {
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return theme.pixels(menuPadding);
    case PM_MenuPanelWidth:
        return int(hairline);
    case PM_ToolTipLabelFrameWidth:
        return theme.pixels(tipPadding);
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize PopupStyle::sizeFromContents(
    ContentsType type, const QStyleOption* option, const QSize& size, const QWidget* widget) const {
    const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type != CT_MenuItem || !item)
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    const Theme& theme = m_themes.theme();
    if (isSeparator(*item))
        return {1, theme.pixels(separatorHeight)};
    const bool hasMore =
        item->menuItemType == QStyleOptionMenuItem::SubMenu || item->text.contains(u'\t');
    const int points = 2 * itemPadding + (item->menuHasCheckableItems ? markWidth : 0) +
                       (hasMore ? shortcutGap : 0);
    return {
        size.width() + theme.pixels(points),
        std::max(QFontMetrics(item->font).height(), theme.pixels(itemHeight))};
}

int PopupStyle::styleHint(
    StyleHint hint, const QStyleOption* option, const QWidget* widget,
    QStyleHintReturn* answer) const {
    switch (hint) {
    case SH_ToolTipLabel_Opacity:
        return 255; // opaque
    case SH_ToolTip_Mask:
    case SH_Menu_Mask:
        return 0; // none: corners are round by what is drawn
    case SH_Menu_MouseTracking:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }
}

void dressMenu(QMenu& menu, const ThemeSource& themes) {
    auto* const style = new PopupStyle(themes);
    style->setParent(&menu);
    const auto below = menu.findChildren<QMenu*>();
    for (QMenu* each : QList<QMenu*>{&menu} + below) {
        each->setStyle(style);
        each->setFont(themes.theme().font(TextRole::Callout));
        letShineThrough(*each, themes.theme());
    }
    menu.setAttribute(Qt::WA_DeleteOnClose);
}

} // namespace lumora
