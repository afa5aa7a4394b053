#include "ui/rows/WidgetTexts.h"

#include "texts/TextShortening.h"

#include <QTextDocument>
#include <QWidget>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr std::size_t maximumCharacters = 400;
constexpr qsizetype widestLine = 100; // characters; a plain tooltip does not wrap by itself

} // namespace

void setToolTipText(QWidget& widget, const QString& text) {
    const QString cut =
        std::size_t(text.size()) > maximumCharacters ? shortened(text, maximumCharacters) : text;
    const bool needsMarkup = Qt::mightBeRichText(cut) || cut.size() > widestLine;
    const QString shown = needsMarkup ? u"<span>"_s + cut.toHtmlEscaped() + u"</span>"_s : cut;
    // Setting a tooltip is an event even if nothing changes.
    if (widget.toolTip() == shown)
        return;
    widget.setToolTip(shown);
    // Screen readers take the tooltip for a description, but not its markup.
    widget.setAccessibleDescription(needsMarkup ? cut : QString());
}

void setSpokenName(QWidget& widget, const QString& name) {
    if (widget.accessibleName() != name)
        widget.setAccessibleName(name);
}

void setSpokenDescription(QWidget& widget, const QString& text) {
    if (widget.accessibleDescription() != text)
        widget.setAccessibleDescription(text);
}

} // namespace lumora
