#include "ui/panel/CollapsibleSection.h"

#include "texts/PanelTexts.h"
#include "ui/panel/RowContents.h"
#include "ui/rows/WidgetTexts.h"
#include "ui/theme/PanelMetrics.h"

#include <QVBoxLayout>

#include <utility>

namespace lumora {

namespace {

constexpr int headerToContent = 6 - PanelMetrics::headerReach;
constexpr double foldedRotation = -90; ///< degrees; the mark then points to where the text goes on

} // namespace

CollapsibleSection::CollapsibleSection(
    const ThemeSource& themes, Appearance appearance, QWidget* content, QWidget* parent)
    : QWidget(parent)
    , m_appearance(std::move(appearance))
    , m_header(new RowButton(themes, PanelMetrics::sectionHeader, this))
    , m_fold(new FoldArea(themes, content, headerToContent, this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_header);
    layout->addWidget(m_fold);
    m_header->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_header->setAccessibleName(m_appearance.title);

    connect(m_header, &QAbstractButton::clicked, this, [this] { Q_EMIT toggled(!isCollapsed()); });
    connect(m_fold, &FoldArea::opennessChanged, this, &CollapsibleSection::render);
    render();
}

void CollapsibleSection::setSummary(const std::optional<QString>& summary) {
    m_summary = summary;
    render();
}

void CollapsibleSection::setCollapsed(bool collapsed) {
    m_fold->setCollapsed(collapsed);
    render();
}

void CollapsibleSection::render() {
    const auto digest = isCollapsed() ? m_summary : std::nullopt;
    m_header->setExpanded(!isCollapsed());
    setToolTipText(*m_header, PanelTexts::foldToolTip(m_appearance.title, isCollapsed()));
    setSpokenDescription(*m_header, digest.value_or(QString()));
    m_header->setContent(sectionHeaderRow(
        m_appearance.title, m_appearance.systemImage, m_appearance.badge, digest,
        (layoutDirection() == Qt::LeftToRight ? foldedRotation : -foldedRotation) *
            (1 - m_fold->openness())));
}

} // namespace lumora
