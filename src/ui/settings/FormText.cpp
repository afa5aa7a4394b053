#include "ui/settings/FormText.h"

#include "texts/PlainText.h"
#include "ui/rows/WrappedText.h"
#include "ui/settings/FormPainting.h"

#include <QAccessible>
#include <QFontDatabase>
#include <QPainter>

#include <cmath>

namespace lumora {

namespace {

constexpr double endless = 1e6;
constexpr std::size_t maximumCharacters = 600; // of one run

/// A monospaced font that looks as large as `font` beside it.
QFont codeFont(const QFont& font) {
    QFont code = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (font.pointSizeF() > 0)
        code.setPointSizeF(font.pointSizeF());
    else
        code.setPixelSize(font.pixelSize());
    return code;
}

} // namespace

FormText::FormText(const ThemeSource& themes, ColorRole color, Announced announced)
    : m_themes(themes)
    , m_color(color)
    , m_announced(announced) {
    setTextFormat(Qt::PlainText);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&m_themes, &ThemeSource::changed, this, &FormText::applyTheme);
    applyTheme();
}

void FormText::applyTheme() {
    setFont(m_themes.theme().font(TextRole::Caption));
    updateGeometry();
    update();
}

void FormText::setRuns(const QList<TextRun>& runs) {
    QList<TextRun> cut = runs;
    for (TextRun& run : cut) {
        if (std::size_t(run.text.size()) > maximumCharacters)
            run.text = shortened(run.text, maximumCharacters);
        run.text = plainLines(run.text);
    }
    if (m_runs == cut)
        return;
    m_runs = cut;
    setText(plainText(m_runs));
    updateGeometry();
    update();
    if (m_announced == Announced::Yes && !text().isEmpty()) {
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void FormText::setColor(ColorRole color) {
    m_color = color;
    update();
}

QList<QTextLayout::FormatRange> FormText::formats() const {
    QList<QTextLayout::FormatRange> ranges;
    qsizetype start = 0;
    for (const TextRun& run : m_runs) {
        if (run.isCode) {
            QTextCharFormat format;
            format.setFont(codeFont(font()));
            format.setBackground(m_themes.theme().color(ColorRole::Hover));
            ranges.append({int(start), int(run.text.size()), format});
        }
        start += run.text.size();
    }
    return ranges;
}

std::unique_ptr<QTextLayout> FormText::layOut(double width) const {
    return wrappedText(text(), font(), width, layoutDirection(), formats());
}

int FormText::heightForWidth(int width) const {
    // A box layout asks hidden widgets too.
    return text().isEmpty() ? 0 : int(std::ceil(heightOf(*layOut(std::max(1, width)))));
}

QSize FormText::sizeHint() const {
    const auto layout = layOut(endless);
    double width = 0;
    for (int line = 0; line < layout->lineCount(); ++line)
        width = std::max(width, layout->lineAt(line).naturalTextWidth());
    return {int(std::ceil(width)), int(std::ceil(heightOf(*layout)))};
}

QSize FormText::minimumSizeHint() const {
    return {1, QFontMetrics(font()).height()};
}

void FormText::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(m_themes.theme().color(m_color));
    const auto layout = layOut(width());
    layout->draw(&painter, {0, (height() - heightOf(*layout)) / 2});
}

FormLabel::FormLabel(const ThemeSource& themes, const QString& text, Style style)
    : QLabel(text)
    , m_themes(themes)
    , m_style(style) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(&m_themes, &ThemeSource::changed, this, &FormLabel::applyTheme);
    applyTheme();
}

void FormLabel::applyTheme() {
    setFont(m_themes.theme().font(m_style.role, m_style.weight));
    updateGeometry();
    update();
}

QSize FormLabel::sizeHint() const {
    return {Form::textWidth(font(), text()), QFontMetrics(font()).height()};
}

QSize FormLabel::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

bool FormLabel::event(QEvent* event) {
    return Form::answersWithWhole(*this, *event, text(), width()) || QLabel::event(event);
}

void FormLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(m_themes.theme().color(m_style.color));
    Form::paintLabel(painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, text(), *this);
}

} // namespace lumora
