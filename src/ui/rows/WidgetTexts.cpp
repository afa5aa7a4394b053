#include "ui/rows/WidgetTexts.h"

#include "briefing/TextBounds.h"
#include "texts/PlainText.h"

#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr qsizetype longestToolTip = 400; // UTF-16 units of one text in it
constexpr qsizetype widestLine = 100;     // characters; a plain tooltip does not wrap by itself

/// What is shown of `text`, which may come from anywhere.
QString shownPart(const QString& text) {
    return plainLines(beginning(text, longestToolTip));
}

/// What makes a tooltip show `text` as it stands.
QString asToolTip(const QString& text) {
    const bool needsMarkup = Qt::mightBeRichText(text) || text.size() > widestLine;
    if (!needsMarkup)
        return text;
    return u"<span>"_s + text.toHtmlEscaped().replace(u'\n', u"<br>"_s) + u"</span>"_s;
}

/// The tooltip of `widget` without the markup around it.
QString plainToolTip(const QWidget& widget) {
    const QString toolTip = widget.toolTip();
    const QString description = widget.accessibleDescription();
    return asToolTip(description) == toolTip ? description : toolTip;
}

} // namespace

void setToolTipText(QWidget& widget, const QString& text) {
    const QString plain = shownPart(text);
    const QString shown = asToolTip(plain);
    // Setting a tooltip is an event even if nothing changes.
    if (widget.toolTip() == shown)
        return;
    widget.setToolTip(shown);
    // Screen readers take the tooltip for a description, but not its markup.
    widget.setAccessibleDescription(shown != plain ? plain : QString());
}

bool showToolTip(QWidget& widget, const QPoint& position, const QStringList& cut) {
    const QString own = plainToolTip(widget);
    QStringList parts;
    if (!own.isEmpty())
        parts += own;
    for (const QString& text : cut)
        if (const QString shown = shownPart(text); !own.contains(shown))
            parts += shown;
    if (parts.isEmpty())
        return false;
    QToolTip::showText(position, asToolTip(parts.join(u'\n')), &widget);
    return true;
}

void setSpokenName(QWidget& widget, const QString& name) {
    const QString spoken = beginning(name, longestPassage);
    if (widget.accessibleName() != spoken)
        widget.setAccessibleName(spoken);
}

void setSpokenDescription(QWidget& widget, const QString& text) {
    const QString spoken = beginning(text, longestPassage);
    if (widget.accessibleDescription() != spoken)
        widget.setAccessibleDescription(spoken);
}

} // namespace lumora
