#include "ui/panel/ThoughtEdit.h"

#include "ui/theme/PopupStyle.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr int maximumLines = 4;

// A text edit takes a line for seen only when there is room below it.
constexpr int roomBelow = 1;

} // namespace

ThoughtEdit::ThoughtEdit(const ThemeSource& themes, QWidget* parent)
    : QPlainTextEdit(parent)
    , m_themes(themes) {
    setPlaceholderText(u"Capture a thought…"_s);
    setAccessibleName(u"Capture a thought"_s);
    setFrameShape(NoFrame);
    setTabChangesFocus(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        standWhereTextBegins();
        updateGeometry();
    });
    standWhereTextBegins();
    connect(&m_themes, &ThemeSource::changed, this, &ThoughtEdit::applyTheme);
    applyTheme();
}

void ThoughtEdit::applyTheme() {
    const Theme& theme = m_themes.theme();
    setFont(theme.font(TextRole::Callout));
    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, theme.color(ColorRole::Primary));
    colors.setColor(QPalette::PlaceholderText, Qt::transparent); // see paintEvent()
    colors.setColor(QPalette::Highlight, theme.color(ColorRole::Accent));
    colors.setColor(QPalette::HighlightedText, theme.color(ColorRole::OnAccent));
    setPalette(colors);
    updateGeometry();
}

void ThoughtEdit::standWhereTextBegins() {
    // What is typed runs the way it is written, from where the panel's texts begin.
    const auto direction = document()->isEmpty() ? layoutDirection() : Qt::LayoutDirectionAuto;
    QTextOption option = document()->defaultTextOption();
    if (option.textDirection() == direction)
        return;
    option.setTextDirection(direction);
    option.setAlignment(leadingEdge());
    document()->setDefaultTextOption(option);
}

Qt::Alignment ThoughtEdit::leadingEdge() const {
    return Qt::AlignAbsolute |
           (layoutDirection() == Qt::LeftToRight ? Qt::AlignLeft : Qt::AlignRight);
}

void ThoughtEdit::paintEvent(QPaintEvent* event) {
    if (document()->isEmpty()) {
        // The toolkit would draw it in the direction of the panel, with the dots at its wrong end.
        QPainter painter(viewport());
        painter.setFont(font());
        painter.setPen(m_themes.theme().color(ColorRole::Secondary));
        painter.setLayoutDirection(Qt::LayoutDirectionAuto);
        painter.drawText(
            viewport()->rect(), int(leadingEdge() | Qt::AlignTop) | Qt::TextSingleLine,
            placeholderText());
    }
    QPlainTextEdit::paintEvent(event);
}

int ThoughtEdit::visibleLines() const {
    int lines = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        lines += std::max(1, block.layout()->lineCount());
    return std::clamp(lines, 1, maximumLines);
}

QSize ThoughtEdit::sizeHint() const {
    return {0, visibleLines() * fontMetrics().lineSpacing() + roomBelow};
}

void ThoughtEdit::contextMenuEvent(QContextMenuEvent* event) {
    QMenu* const menu = createStandardContextMenu(event->pos());
    dressMenu(*menu, m_themes);
    menu->popup(event->globalPos());
}

void ThoughtEdit::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !(event->modifiers() & Qt::ShiftModifier))
        Q_EMIT submitted();
    else if (event->key() == Qt::Key_Escape)
        event->ignore(); // closes the panel
    else
        QPlainTextEdit::keyPressEvent(event);
}

void ThoughtEdit::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    if (event->oldSize().width() != event->size().width())
        updateGeometry();
}

} // namespace lumora
