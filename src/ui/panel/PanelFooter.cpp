#include "ui/panel/PanelFooter.h"

#include "ui/rows/RowButton.h"

#include <QHBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr QMargins footerPadding{12, 8, 12, 8};
constexpr int footerSpacing = 12;

RowButton* makeButton(const ThemeSource& themes, std::vector<RowItem> face, const QString& name) {
    auto* button = new RowButton(themes, {}, RowButton::Highlight::None);
    button->setContent({.items = std::move(face)});
    button->setAccessibleName(name);
    // All as high as the highest, so that their texts stand on one line.
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
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
    layout->setContentsMargins(footerPadding);
    layout->setSpacing(footerSpacing);
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
