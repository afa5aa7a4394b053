#include "ui/panel/SpendingFigures.h"

#include "texts/PanelTexts.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/RowButton.h"
#include "ui/theme/PanelMetrics.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr int figuresSpacing = 6;

// The buttons' reach is a part of the gaps beside them.
constexpr QMargins totalPadding{
    PanelMetrics::rowReach, 0, figuresSpacing - PanelMetrics::button.left(), 0};
constexpr QMargins totalMargins{0, 0, PanelMetrics::rowReach - PanelMetrics::button.right(), 0};

RowContent symbolRow(const QString& symbol, ColorRole color) {
    return {.items = {RowItem::makeSymbol(symbol, {.color = color})}};
}

} // namespace

SpendingFigures::SpendingFigures(const ThemeSource& themes, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_total(new PaintedRow(themes, totalPadding, this))
    , m_refresh(new RowButton(themes, PanelMetrics::button, this))
    , m_hide(new RowButton(themes, PanelMetrics::button, this))
    , m_pace(new PaintedRow(themes, PanelMetrics::besideRows, this))
    , m_more(new PaintedRow(themes, PanelMetrics::besideRows, this))
    , m_asOf(new PaintedRow(themes, PanelMetrics::besideRows, this))
    , m_column(new QVBoxLayout)
    , m_buckets(*m_column)
    , m_spinner(themes, this) {
    auto* header = new QHBoxLayout;
    keepSpaced(*header, themes, totalMargins, 0);
    header->addWidget(m_total, 1);
    header->addWidget(m_refresh);
    header->addWidget(m_hide);
    keepSpaced(*m_column, themes, {}, figuresSpacing);
    auto* layout = new QVBoxLayout(this);
    keepSpaced(*layout, themes, {}, figuresSpacing);
    layout->addLayout(header);
    layout->addWidget(m_pace);
    layout->addLayout(m_column);
    layout->addWidget(m_more);
    layout->addWidget(m_asOf);
    setFocusProxy(m_hide);

    m_refresh->setToolTip(u"Re-pull transactions from your banks"_s);
    m_refresh->setAccessibleName(u"Refresh spending"_s);
    m_hide->setContent(symbolRow(u"eye.slash"_s, ColorRole::Secondary));
    m_hide->setToolTip(u"Hide again"_s);
    m_hide->setAccessibleName(u"Hide again"_s);
    m_asOf->setToolTip(u"The daily rollup hasn't run today — hit refresh for current figures"_s);
    renderRefresh();

    connect(m_refresh, &QAbstractButton::clicked, this, &SpendingFigures::refreshRequested);
    connect(m_hide, &QAbstractButton::clicked, this, &SpendingFigures::hideRequested);
    connect(&m_spinner, &QVariantAnimation::valueChanged, this, &SpendingFigures::renderRefresh);
}

void SpendingFigures::render(const Spending& spending, bool refreshing) {
    const QLocale locale = QLocale::system();
    m_total->setSpokenContent(spendingTotalRow(spending, locale));
    m_pace->setSpokenContent(spendingPaceRow(spending));
    m_asOf->setSpokenContent(spendingAsOfRow(spending));
    m_asOf->setVisible(spending.stale);
    const auto shown = shownInSection(spending.top);
    const BucketColumns columns = bucketColumns(shown, m_themes.theme());
    m_buckets.reconcile(
        shown, [](const Bucket& bucket) { return bucket.bucket; },
        [this] { return new PaintedRow(m_themes, PanelMetrics::besideRows, this); },
        [&](PaintedRow& row, const Bucket& bucket) {
            row.setSpokenContent(bucketRow(bucket, columns, locale));
        });
    const std::size_t beyond = spending.top.size() - shown.size();
    m_more->setVisible(beyond > 0);
    m_more->setSpokenContent(captionRow(PanelTexts::moreText(qsizetype(beyond))));
    showRefreshing(refreshing);
}

void SpendingFigures::showRefreshing(bool refreshing) {
    m_refreshing = refreshing;
    m_refresh->setEnabled(!refreshing);
    m_refresh->setBusy(refreshing);
    m_spinner.setRunning(refreshing);
    renderRefresh();
}

void SpendingFigures::renderRefresh() {
    if (m_refreshing)
        m_refresh->setContent({.items = {RowItem::spinner(m_spinner.rotation())}});
    else
        m_refresh->setContent(symbolRow(u"arrow.clockwise"_s, ColorRole::Primary));
}

} // namespace lumora
