#pragma once

#include "ui/theme/ThemeSource.h"

#include <QScrollArea>

namespace lumora {

class ScrollThumb;

/// Shows the panel's content at its own width and height, and lets it be scrolled where there is
/// less room than that.
class PanelScroller : public QScrollArea {
    Q_OBJECT

public:
    /// Takes `content`.
    PanelScroller(const ThemeSource& themes, QWidget* content, QWidget* parent);

    /// The height that the content asks for at `width`, in points.
    int contentHeight(int width) const;

    bool isScrollable() const;

    void scrollByPage(int pages);

Q_SIGNALS:
    /// The content asks for another size.
    void contentChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeContent();

    ScrollThumb* m_thumb;
};

} // namespace lumora
