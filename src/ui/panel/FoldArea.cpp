#include "ui/panel/FoldArea.h"

#include <QEasingCurve>
#include <QLayout>

#include <cmath>
#include <memory>

namespace lumora {

namespace {

constexpr int foldMilliseconds = 150;

} // namespace

/// Gives the content its whole height and the area only what is unfolded of it.
class FoldArea::Layout final : public QLayout {
public:
    Layout(FoldArea* area, int gap)
        : QLayout(area)
        , m_area(area)
        , m_gap(gap) {
        setContentsMargins({});
    }

    void addItem(QLayoutItem* item) override { m_item.reset(item); }

    QLayoutItem* itemAt(int index) const override { return index == 0 ? m_item.get() : nullptr; }

    QLayoutItem* takeAt(int index) override { return index == 0 ? m_item.release() : nullptr; }

    int count() const override { return m_item ? 1 : 0; }

    QSize sizeHint() const override {
        const QSize content = m_item->sizeHint();
        return {content.width(), unfolded(gap() + content.height())};
    }

    QSize minimumSize() const override { return {0, sizeHint().height()}; }

    void setGeometry(const QRect& rect) override {
        QLayout::setGeometry(rect);
        const QSize content(rect.width(), m_item->sizeHint().height());
        m_item->setGeometry(QRect(rect.topLeft() + QPoint(0, gap()), content));
    }

private:
    int gap() const { return m_area->m_themes.theme().pixels(m_gap); }

    int unfolded(int height) const { return int(std::lround(m_area->openness() * height)); }

    FoldArea* m_area;
    int m_gap;
    std::unique_ptr<QLayoutItem> m_item;
};

FoldArea::FoldArea(const ThemeSource& themes, QWidget* content, int gap, QWidget* parent)
    : QWidget(parent)
    , m_themes(themes)
    , m_content(content) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    (new Layout(this, gap))->addWidget(m_content);
    m_motion.setDuration(foldMilliseconds);
    m_motion.setEasingCurve(QEasingCurve::InOutQuad);
    m_motion.setStartValue(1.0);
    m_motion.setEndValue(1.0);
    connect(&m_motion, &QVariantAnimation::valueChanged, this, &FoldArea::applyOpenness);
    connect(&m_motion, &QVariantAnimation::finished, this, &FoldArea::applyOpenness);
    connect(&m_themes, &ThemeSource::changed, this, [this] {
        stopIfStill();
        updateGeometry(); // the gap may be another
    });
}

void FoldArea::stopIfStill() {
    if (m_motion.state() != QVariantAnimation::Running || motionAllowed(m_themes.theme()))
        return;
    m_motion.stop();
    applyOpenness();
}

double FoldArea::openness() const {
    if (m_motion.state() == QVariantAnimation::Running)
        return m_motion.currentValue().toDouble();
    return m_collapsed ? 0 : 1;
}

void FoldArea::setCollapsed(bool collapsed) {
    if (m_collapsed == collapsed)
        return;
    const double from = openness();
    m_motion.stop();
    m_collapsed = collapsed;
    if (isVisible() && motionAllowed(m_themes.theme())) {
        m_motion.setStartValue(from);
        m_motion.setEndValue(collapsed ? 0.0 : 1.0);
        m_motion.start();
    }
    applyOpenness();
}

void FoldArea::applyOpenness() {
    // Folded content is hidden, so that neither Tab nor a screen reader gets into it.
    m_content->setVisible(openness() > 0);
    layout()->invalidate();
    updateGeometry();
    Q_EMIT opennessChanged();
}

} // namespace lumora
