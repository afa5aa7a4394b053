#include "ui/panel/SpendingSection.h"

#include "ui/panel/SpendingFigures.h"
#include "ui/rows/RowButton.h"
#include "ui/theme/PanelMetrics.h"

#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

SpendingSection::SpendingSection(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_reveal(new RowButton(themes, PanelMetrics::besideRows, this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_reveal);

    const QString label = u"Show month-to-date"_s;
    const TextStyle style{.color = ColorRole::Secondary};
    m_reveal->setContent(
        {.items = {
             RowItem::makeSymbol(u"eye"_s, style),
             RowItem::text(label, style),
         }});
    m_reveal->setToolTip(u"Reveal spending for this viewing"_s);
    m_reveal->setAccessibleName(label);
    connect(m_reveal, &QAbstractButton::clicked, this, &SpendingSection::revealRequested);
}

void SpendingSection::showHidden() {
    if (!m_figures)
        return;
    const bool hadFocus = m_figures->isAncestorOf(window()->focusWidget());
    delete m_figures;
    m_figures = nullptr;
    m_reveal->show();
    if (hadFocus)
        m_reveal->setFocus();
}

void SpendingSection::showRevealed(const Spending& spending, bool refreshing) {
    if (!m_figures) {
        const bool hadFocus = m_reveal->hasFocus();
        m_figures = new SpendingFigures(m_themes, this);
        connect(
            m_figures, &SpendingFigures::hideRequested, this, &SpendingSection::hideRequested,
            Qt::QueuedConnection); // hiding deletes the button that asks for it
        connect(
            m_figures, &SpendingFigures::refreshRequested, this,
            &SpendingSection::refreshRequested);
        layout()->addWidget(m_figures);
        m_reveal->hide();
        if (hadFocus)
            m_figures->setFocus();
    }
    m_figures->render(spending, refreshing);
}

} // namespace lumora
