#pragma once

#include "ui/rows/RowWidget.h"
#include "ui/rows/SpokenRole.h"

namespace lumora {

/// A row of texts and symbols that is only looked at.
class PaintedRow : public RowWidget<QWidget>, public SpokenAs<SpokenRole::Text> {
    Q_OBJECT

public:
    /// `themes` must outlive the row.
    PaintedRow(const ThemeSource& themes, QMargins padding, QWidget* parent = nullptr);

    /// Shows `content`, and tells screen readers its texts.
    void setSpokenContent(RowContent content);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace lumora
