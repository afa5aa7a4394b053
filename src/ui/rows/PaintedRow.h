#pragma once

#include "ui/rows/RowLayout.h"
#include "ui/rows/SpokenRole.h"
#include "ui/theme/ThemeSource.h"

#include <QMargins>
#include <QWidget>

namespace lumora {

/// A row of texts and symbols that is only looked at. One widget however many items it has, so
/// that long lists stay cheap.
class PaintedRow : public QWidget, public SpokenAs<SpokenRole::Text> {
    Q_OBJECT

public:
    /// `themes` must outlive the row.
    PaintedRow(const ThemeSource& themes, QMargins padding, QWidget* parent = nullptr);

    const RowContent& content() const { return m_content; }

    /// Shows `content`; nothing happens when it is what is shown already.
    void setContent(RowContent content);

    /// The same, and screen readers are told the row's texts.
    void setSpokenContent(RowContent content);

    /// Where the items stand now, in points from the row's own corner inside its padding.
    RowGeometry itemGeometry() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

    const Theme& theme() const { return m_themes.theme(); }

private:
    const ThemeSource& m_themes;
    RowContent m_content;
};

} // namespace lumora
