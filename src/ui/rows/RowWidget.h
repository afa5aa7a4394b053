#pragma once

#include "ui/rows/RowPainter.h"
#include "ui/rows/WidgetTexts.h"
#include "ui/theme/Spacing.h"
#include "ui/theme/ThemeSource.h"

#include <QHelpEvent>
#include <QMargins>
#include <QWidget>

#include <cmath>
#include <optional>
#include <utility>

namespace lumora {

/// What every widget with a row of texts and symbols for its face has in common; `Base` says what
/// else it is. One widget however many items it has, so that long lists stay cheap.
template <typename Base>
class RowWidget : public Base {
public:
    /// `padding` is in points around the content, the left one on the leading side; `themes` must
    /// outlive the row.
    RowWidget(const ThemeSource& themes, QMargins padding, QWidget* parent)
        : Base(parent)
        , m_themes(themes)
        , m_padding(padding) {
        applyPadding();
        QObject::connect(&m_themes, &ThemeSource::changed, this, [this] {
            applyPadding();
            showAnew();
        });
    }

    const RowContent& content() const { return m_content; }

    /// Shows `content`; nothing happens when it is what is shown already.
    void setContent(RowContent content) {
        if (m_content == content)
            return;
        m_content = std::move(content);
        showAnew();
    }

    /// Where the items stand now, in pixels from `contentOrigin()`.
    [[nodiscard]] const RowGeometry& itemGeometry() const {
        // Painting asks more than once, and so does hiding and showing again.
        const int width = this->contentsRect().width();
        const Qt::LayoutDirection direction = this->layoutDirection();
        if (!m_laidOut || m_laidOut->width != width || m_laidOut->row.direction != direction)
            m_laidOut = {width, layOutRow(m_content, theme(), width, direction)};
        return m_laidOut->row;
    }

    /// Where the content begins, in pixels: inside the padding, and in the middle of a widget that
    /// is higher than it needs to be.
    [[nodiscard]] QPointF contentOrigin() const {
        const QRect room = this->contentsRect();
        return {double(room.left()), room.top() + (room.height() - itemGeometry().height) / 2};
    }

    QSize sizeHint() const override {
        // Layouts ask several times, and measuring texts is what takes the time in a long list.
        if (!m_contentSize) {
            const QSizeF natural = naturalRowSize(m_content, theme());
            m_contentSize.emplace(
                int(std::ceil(natural.width())), int(std::ceil(natural.height())));
        }
        return m_contentSize->grownBy(this->contentsMargins());
    }

    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    /// A text that is cut off shows itself whole in the tooltip.
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ToolTip) {
            const auto* help = static_cast<QHelpEvent*>(event);
            return showToolTip(
                *this, help->globalPos(),
                cutTexts(m_content, theme(), this->contentsRect().width()));
        }
        return Base::event(event);
    }

    void paintContent(QPainter& painter) const {
        paintRow(painter, contentOrigin(), m_content, itemGeometry(), theme());
    }

    const ThemeSource& themes() const { return m_themes; }

    const Theme& theme() const { return m_themes.theme(); }

private:
    void applyPadding() {
        this->setContentsMargins(theme().pixels(directed(m_padding, this->layoutDirection())));
    }

    void showAnew() {
        m_contentSize.reset();
        m_laidOut.reset();
        this->updateGeometry();
        this->update();
    }

    struct LaidOut {
        int width = 0; ///< pixels
        RowGeometry row;
    };

    const ThemeSource& m_themes;
    QMargins m_padding; ///< points
    RowContent m_content;
    mutable std::optional<LaidOut> m_laidOut;   ///< absent until somebody asks for it
    mutable std::optional<QSize> m_contentSize; ///< absent until somebody asks for it
};

} // namespace lumora
