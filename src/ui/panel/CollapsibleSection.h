#pragma once

#include "ui/panel/FoldArea.h"
#include "ui/rows/RowButton.h"
#include "ui/rows/SpokenRole.h"

#include <QWidget>

#include <optional>

namespace lumora {

/// A titled block of the panel that folds away behind its header. Knows nothing of where its
/// folding is remembered: it shows what it is told and reports what is asked for.
class CollapsibleSection : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    struct Appearance {
        QString title;
        QString systemImage; ///< name of the section's symbol
        std::optional<qint64> badge;
    };

    /// Takes `content`; `themes` must outlive the section.
    CollapsibleSection(
        const ThemeSource& themes, Appearance appearance, QWidget* content,
        QWidget* parent = nullptr);

    /// The digest shown while folded.
    void setSummary(const std::optional<QString>& summary);

    void setCollapsed(bool collapsed);

    bool isCollapsed() const { return m_fold->isCollapsed(); }

    RowButton* header() const { return m_header; }

    FoldArea* fold() const { return m_fold; }

Q_SIGNALS:
    /// The user pressed the header.
    void toggled(bool collapsed);

private:
    void render();

    Appearance m_appearance;
    std::optional<QString> m_summary;
    RowButton* m_header;
    FoldArea* m_fold;
};

} // namespace lumora
