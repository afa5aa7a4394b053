#include "ui/rows/WrappedText.h"

#include <algorithm>

namespace lumora {

std::unique_ptr<QTextLayout> wrappedText(
    const QString& text, const QFont& font, double width, Qt::LayoutDirection side,
    const QList<QTextLayout::FormatRange>& formats) {
    QString lines = text;
    lines.replace(u'\n', QChar(QChar::LineSeparator)); // as a text layout knows line ends
    auto layout = std::make_unique<QTextLayout>(lines, font);
    QTextOption option(
        Qt::AlignAbsolute | (side == Qt::LeftToRight ? Qt::AlignLeft : Qt::AlignRight));
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    layout->setTextOption(option);
    layout->setFormats(formats);
    layout->beginLayout();
    double y = 0;
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(std::max(1.0, width));
        line.setPosition({0, y});
        y += line.height();
    }
    layout->endLayout();
    return layout;
}

double heightOf(const QTextLayout& layout) {
    const int last = layout.lineCount() - 1;
    return last < 0 ? 0 : layout.lineAt(last).rect().bottom();
}

} // namespace lumora
