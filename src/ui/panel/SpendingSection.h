#pragma once

#include "briefing/Briefing.h"
#include "ui/rows/SpokenRole.h"
#include "ui/theme/ThemeSource.h"

#include <QWidget>

namespace lumora {

class RowButton;
class SpendingFigures;

/// The body of the spending section: a button while the amounts are hidden, the figures while they
/// are revealed. Hidden figures exist in no widget.
class SpendingSection : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` must outlive the body.
    explicit SpendingSection(const ThemeSource& themes, QWidget* parent = nullptr);

    /// Shows the button alone, and forgets every figure.
    void showHidden();

    /// Shows the figures; `refreshing` while they are being pulled anew.
    void showRevealed(const Spending& spending, bool refreshing);

    RowButton* revealButton() const { return m_reveal; }

    /// Null while hidden.
    SpendingFigures* figures() const { return m_figures; }

Q_SIGNALS:
    void revealRequested();
    void hideRequested();
    void refreshRequested();

private:
    const ThemeSource& m_themes;
    RowButton* m_reveal;
    SpendingFigures* m_figures = nullptr;
};

} // namespace lumora
