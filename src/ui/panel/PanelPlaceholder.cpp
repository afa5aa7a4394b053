#include "ui/panel/PanelPlaceholder.h"

#include "ui/panel/RowContents.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr QMargins placeholderPadding{12, 12, 12, 12};
constexpr int placeholderSpacing = 8;

} // namespace

PanelPlaceholder::PanelPlaceholder(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_loading(new PaintedRow(themes, {}, this))
    , m_banner(new ErrorBanner(themes, {}, this))
    , m_hint(new PaintedRow(themes, {}, this))
    , m_spinner(themes, this) {
    auto* layout = new QVBoxLayout(this);
    keepSpaced(*layout, themes, placeholderPadding, placeholderSpacing);
    layout->addWidget(m_loading);
    layout->addWidget(m_banner);
    layout->addWidget(m_hint);
    m_hint->setSpokenContent(captionRow(u"Set your endpoint token in Settings (⌘,)."_s));
    connect(&m_spinner, &QVariantAnimation::valueChanged, this, &PanelPlaceholder::renderLoading);
}

void PanelPlaceholder::render(const LoadState& state, bool isConfigured) {
    m_banner->setMessage(state.failureMessage());
    m_hint->setVisible(state.isFailed() && !isConfigured);
    const bool isLoading = state.isIdle() || state.isLoading();
    m_loading->setVisible(isLoading);
    m_spinner.setRunning(isLoading && isVisible());
    renderLoading();
}

void PanelPlaceholder::showEvent(QShowEvent*) {
    m_spinner.setRunning(m_loading->isVisibleTo(this));
}

void PanelPlaceholder::hideEvent(QHideEvent*) {
    m_spinner.setRunning(false);
}

void PanelPlaceholder::renderLoading() {
    m_loading->setSpokenContent({
        .items =
            {RowItem::spinner(m_spinner.rotation()),
             RowItem::text(u"Loading…"_s, {.role = TextRole::Body})},
        .spacing = 8,
    });
}

} // namespace lumora
