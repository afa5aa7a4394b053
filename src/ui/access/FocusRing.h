#pragma once

#include "ui/theme/ThemeSource.h"

#include <QPointer>
#include <QWidget>

namespace lumora {

/// Lies over everything in its parent and marks what has the keyboard there, around its content,
/// once the user works with keys.
class FocusRing : public QWidget {
    Q_OBJECT

public:
    /// `themes` must outlive the ring.
    FocusRing(const ThemeSource& themes, QWidget* parent);

    /// Marks what has the keyboard now, if anything is to be marked. It follows by itself when the
    /// keyboard goes elsewhere.
    void follow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void watch(QWidget* marked);
    void place();
    QRect inSight() const; ///< of what scrolls, in the parent's coordinates

    const ThemeSource& m_themes;
    QPointer<QWidget> m_marked;
    QList<QPointer<QWidget>> m_watched; ///< whose moves move the ring
};

} // namespace lumora
