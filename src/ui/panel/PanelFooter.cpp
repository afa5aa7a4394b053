#include "ui/panel/PanelFooter.h"

#include "ui/rows/RowButton.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// Without the buttons' own reach.
constexpr QMargins buttonPadding{4, 3, 4, 3};
constexpr QMargins footerPadding = QMargins{12, 8, 12, 8} - buttonPadding;
constexpr int footerSpacing = 12 - buttonPadding.left() - buttonPadding.right();

RowButton* makeButton(const ThemeSource& themes, std::vector<RowItem> face, const QString& name) {
    auto* button = new RowButton(themes, buttonPadding);
    button->setContent({.items = std::move(face), .beside = TextLine()});
    button->setAccessibleName(name);
    return button;
}

RowButton* makeTextButton(const ThemeSource& themes, const QString& text) {
    return makeButton(themes, {RowItem::text(text, {})}, text);
}

} // namespace

PanelFooter::PanelFooter(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_dashboard(makeTextButton(themes, u"Open lumo"_s)) {
    const QString refreshLabel = u"Refresh"_s;
    auto* refresh = makeButton(
        themes, {RowItem::makeSymbol(u"arrow.clockwise"_s, {}), RowItem::text(refreshLabel, {})},
        refreshLabel);
    auto* settings = makeTextButton(themes, u"Settings"_s);
    auto* quit = makeButton(themes, {RowItem::makeSymbol(u"power"_s, {})}, u"Quit Lumora"_s);
    quit->setToolTip(u"Quit Lumora"_s);

    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* layout = new QHBoxLayout(this);
    keepSpaced(*layout, themes, footerPadding, footerSpacing);
    layout->addWidget(refresh);
    layout->addStretch();
    layout->addWidget(m_dashboard);
    layout->addWidget(settings);
    layout->addWidget(quit);
    m_dashboard->hide();

    connect(refresh, &QAbstractButton::clicked, this, &PanelFooter::refreshRequested);
    connect(m_dashboard, &QAbstractButton::clicked, this, &PanelFooter::dashboardRequested);
    connect(settings, &QAbstractButton::clicked, this, &PanelFooter::settingsRequested);
    connect(quit, &QAbstractButton::clicked, this, &PanelFooter::quitRequested);
}

void PanelFooter::setDashboardAvailable(bool available) {
    m_dashboard->setVisible(available);
}

} // namespace lumora
