#pragma once

#include "support/SettingsHarness.h"
#include "support/ViewHarness.h"
#include "ui/settings/FormButton.h"
#include "ui/settings/FormField.h"
#include "ui/settings/FormText.h"
#include "ui/settings/SettingsWindow.h"

#include <QAccessible>
#include <QComboBox>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <gtest/gtest.h>

namespace lumora::tests {

/// The settings window on the screen, over fakes.
class SettingsWindowTest : public testing::Test, protected SettingsHarness {
protected:
    void show() {
        open();
        window.emplace(*model, themes);
        window->open({});
        settle();
    }

    void reopen() {
        window->close();
        window->open({});
        settle();
    }

    /// What a screen reader calls `control`: by its label, or else by its own name.
    static QString spokenName(QWidget* control) {
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(control);
        const auto labels = spoken->relations(QAccessible::Label);
        return (labels.isEmpty() ? spoken : labels.first().first)->text(QAccessible::Name);
    }

    template <typename Control>
    Control* named(const QString& name) const {
        for (auto* control : window->findChildren<Control*>()) {
            if (spokenName(control) == name)
                return control;
        }
        return nullptr;
    }

    FormField* endpoint() const { return named<FormField>(QStringLiteral("Endpoint URL")); }

    FormField* token() const { return named<FormField>(QStringLiteral("API token")); }

    FormButton* saveButton() const { return named<FormButton>(QStringLiteral("Save token")); }

    FormButton* testButton() const {
        auto* const idle = named<FormButton>(QStringLiteral("Test connection"));
        return idle ? idle : named<FormButton>(QStringLiteral("Testing…"));
    }

    FormText* textBeginning(const QString& beginning) const {
        for (auto* text : shown<FormText>(*window)) {
            if (text->text().startsWith(beginning))
                return text;
        }
        return nullptr;
    }

    void finishTest(const HttpOutcome& outcome) {
        testButton()->click();
        settle();
        transport.complete(transport.requests().size() - 1, outcome);
        settle();
    }

    void typeToken(const QString& text) {
        token()->setFocus();
        token()->selectAll();
        QTest::keyClicks(token(), text);
    }

    /// Lets the theme have texts of so many points.
    void setTextSize(double points, ColorScheme scheme = ColorScheme::Light) {
        QFont font = QApplication::font();
        font.setPointSizeF(points);
        themes.setTheme(Theme(scheme, font));
        lumora::tests::settle();
    }

    /// What the tool tip says that comes up where the pointer rests on `widget`; empty for none.
    static QString toolTipOf(QWidget& widget) {
        const QPoint middle = widget.mapToGlobal(widget.rect().center());
        const QString before = QStringLiteral("another tool tip");
        QToolTip::showText(middle, before, &widget);
        QHelpEvent rest(QEvent::ToolTip, widget.rect().center(), middle);
        QCoreApplication::sendEvent(&widget, &rest);
        const QString text = QToolTip::text() == before ? QString() : QToolTip::text();
        return QTextDocumentFragment::fromHtml(text).toPlainText();
    }

    QLabel* labelReading(const QString& text) const {
        for (auto* label : window->findChildren<QLabel*>()) {
            if (label->text() == text)
                return label;
        }
        return nullptr;
    }

    /// The controls and texts that can be seen.
    QList<QWidget*> shownControls() const {
        QList<QWidget*> controls;
        for (auto* widget : shown<QWidget>(*window)) {
            if (qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget) ||
                qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget))
                controls += widget;
        }
        return controls;
    }

    /// What `widget` really paints on, in the window's coordinates.
    QRect inkOf(QWidget* widget) const {
        const QImage image = painted(*widget);
        QRect ink;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y).alpha() > 100)
                    ink |= QRect(x, y, 1, 1);
        return ink.translated(widget->mapTo(&*window, QPoint()));
    }

    int points(double wanted) const { return themes.theme().pixels(wanted); }

    QRect inWindow(const QWidget* widget) const {
        return {widget->mapTo(&*window, QPoint()), widget->size()};
    }

    ThemeSource themes{plainTheme()};
    std::optional<SettingsWindow> window;
};

} // namespace lumora::tests
