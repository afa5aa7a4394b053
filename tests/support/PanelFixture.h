#pragma once

#include "support/Builders.h"
#include "support/ViewHarness.h"
#include "ui/panel/ActionRows.h"
#include "ui/panel/CaptureField.h"
#include "ui/panel/CollapsibleSection.h"
#include "ui/panel/ErrorBanner.h"
#include "ui/panel/EventsBody.h"
#include "ui/panel/PanelFooter.h"
#include "ui/panel/PanelPlaceholder.h"

#include <QTest>

#include <gtest/gtest.h>

namespace lumora::tests {

/// A day with something in every section.
inline Briefing fullDay() {
    const Instant now = FakeClock::defaultStart;
    Briefing briefing = makeBriefing(
        {makeEvent(
             {.start = now + std::chrono::minutes(10),
              .end = now + std::chrono::minutes(25),
              .meetingUrl = QStringLiteral("https://meet.example/a")}),
         makeEvent(
             {.title = QStringLiteral("Review"),
              .start = now + std::chrono::hours(3),
              .end = now + std::chrono::hours(4)})});
    briefing.habits = {
        .done = 2,
        .total = 5,
        .items = {{QStringLiteral("read"), QStringLiteral("Read"), false, 0, 1, 4}}};
    briefing.chores = {
        .count = 7,
        .top = {
            {QStringLiteral("water"), QStringLiteral("Water plants"), QStringLiteral("Balcony"), 3},
            {QStringLiteral("sweep"), QStringLiteral("Sweep"), QStringLiteral("Hall"),
             std::nullopt}}};
    briefing.spending = Spending{
        .mtd = 1234.56, .deltaFraction = {}, .top = {}, .asOf = QStringLiteral("2025-03-03")};
    return briefing;
}

/// A panel and what tests ask it about.
class PanelTest : public testing::Test {
protected:
    QStringList titles() const {
        QStringList found;
        for (const auto* section : shown<CollapsibleSection>(m_panel.view))
            found += section->header()->accessibleName();
        return found;
    }

    CollapsibleSection* section(const QString& title) const {
        for (auto* found : shown<CollapsibleSection>(m_panel.view))
            if (found->header()->accessibleName() == title)
                return found;
        return nullptr;
    }

    QString summaryOf(const QString& title) const {
        return textsOf(section(title)->header()->content()).value(1);
    }

    QStringList banners() const {
        QStringList messages;
        for (const auto* banner : shown<ErrorBanner>(m_panel.view))
            messages += *banner->message();
        return messages;
    }

    QStringList texts() const { return shownTexts(m_panel.view); }

    PanelPlaceholder* placeholder() const { return m_panel.view.findChild<PanelPlaceholder*>(); }

    QRect inPanel(const QWidget* widget) const {
        return {widget->mapTo(&m_panel.view, QPoint()), widget->size()};
    }

    /// Where what `widget` shows is, without the room around it.
    QRect contentInPanel(const QWidget* widget) const {
        return {
            widget->mapTo(&m_panel.view, widget->contentsRect().topLeft()),
            widget->contentsRect().size()};
    }

    void fold(const QString& title) {
        QTest::mouseClick(section(title)->header(), Qt::LeftButton);
        m_panel.render();
    }

    mutable ViewHarness m_panel;
};

} // namespace lumora::tests
