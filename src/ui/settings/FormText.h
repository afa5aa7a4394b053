#pragma once

#include "texts/SettingsTexts.h"
#include "ui/theme/ThemeSource.h"

#include <QLabel>
#include <QTextLayout>

#include <memory>

namespace lumora {

/// A text in small print that wraps wherever it must, even within a word, so that it never asks for
/// more width than there is. None of its characters is markup.
class FormText : public QLabel {
    Q_OBJECT

public:
    enum class Announced { No, Yes }; ///< whether screen readers are told of a new text at once

    /// `themes` must outlive the text.
    FormText(const ThemeSource& themes, ColorRole color, Announced announced = Announced::No);

    /// Shows `runs`; nothing happens when they are what is shown already. A text beyond some 600
    /// characters is cut.
    void setRuns(const QList<TextRun>& runs);

    void setColor(ColorRole color);

    ColorRole color() const { return m_color; }

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::unique_ptr<QTextLayout> layOut(double width) const;
    QList<QTextLayout::FormatRange> formats() const;
    void applyTheme();

    const ThemeSource& m_themes;
    ColorRole m_color;
    Announced m_announced;
    QList<TextRun> m_runs;
};

/// The name of a control or of a group, on one line. With a buddy, its mnemonic leads there.
class FormLabel : public QLabel {
    Q_OBJECT

public:
    /// How the label looks.
    struct Style {
        TextRole role = TextRole::Body;
        QFont::Weight weight = QFont::Normal;
        ColorRole color = ColorRole::Primary;
    };

    /// `themes` must outlive the label.
    FormLabel(const ThemeSource& themes, const QString& text, Style style);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();

    const ThemeSource& m_themes;
    Style m_style;
};

} // namespace lumora
