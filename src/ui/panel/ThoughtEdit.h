#pragma once

#include "ui/theme/ThemeSource.h"

#include <QPlainTextEdit>

namespace lumora {

/// The text of the capture field: without a frame, growing from one line to four as it wraps,
/// scrolling beyond. Return submits.
class ThoughtEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    /// `themes` must outlive the edit.
    explicit ThoughtEdit(const ThemeSource& themes, QWidget* parent = nullptr);

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

Q_SIGNALS:
    void submitted();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyTheme();
    int visibleLines() const;
    void standWhereTextBegins();
    Qt::Alignment leadingEdge() const;

    const ThemeSource& m_themes;
};

} // namespace lumora
