#pragma once

#include "support/SettingsHarness.h"
#include "support/ViewHarness.h"
#include "ui/settings/FormButton.h"
#include "ui/settings/FormField.h"
#include "ui/settings/FormText.h"
#include "ui/settings/SettingsWindow.h"

#include <QAccessible>
#include <QTest>

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

    QRect inWindow(const QWidget* widget) const {
        return {widget->mapTo(&*window, QPoint()), widget->size()};
    }

    ThemeSource themes{plainTheme()};
    std::optional<SettingsWindow> window;
};

} // namespace lumora::tests
