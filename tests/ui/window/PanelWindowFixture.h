#pragma once

#include "fakes/FakeClock.h"
#include "fakes/SwitchedCompositing.h"
#include "support/Patience.h"
#include "ui/window/PanelWindow.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace lumora::tests {

inline const QRect display(0, 0, 1000, 800);
inline const PlacementScreen windowTopBar{
    .geometry = display, .available = display.adjusted(0, 30, 0, 0)};
inline const PlacementScreen windowBottomBar{
    .geometry = display, .available = display.adjusted(0, 0, 0, -40)};
inline const AnchorEvidence topItem{.pointer = QPoint(500, 15)};
inline const AnchorEvidence bottomItem{.pointer = QPoint(500, 790)};

inline Theme themeOf(double points, ColorScheme scheme = ColorScheme::Light) {
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    return {scheme, font};
}

/// Content with a block of any height, a button and a field.
struct Content : QWidget {
    Content() {
        layout->setContentsMargins({});
        layout->setSpacing(0);
        for (QWidget* part : std::initializer_list<QWidget*>{block, button, field})
            layout->addWidget(part);
        button->setFixedHeight(30);
        field->setFixedHeight(20);
        setTotalHeight(300);
    }

    void setTotalHeight(int height) { block->setFixedHeight(height - 50); }

    QVBoxLayout* layout = new QVBoxLayout(this);
    QWidget* block = new QWidget;
    QPushButton* button = new QPushButton;
    QLineEdit* field = new QLineEdit;
};

/// Calls back whenever a widget paints.
class PaintWatcher final : public QObject {
public:
    PaintWatcher(QWidget* watched, std::function<void()> painted)
        : m_painted(std::move(painted)) {
        watched->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            m_painted();
        return false;
    }

private:
    std::function<void()> m_painted;
};

class PanelWindowTest : public testing::Test {
protected:
    void make(bool placesWindows = true) {
        content = new Content;
        window = std::make_unique<PanelWindow>(
            content, PanelWindow::Dependencies{
                         .themes = themes,
                         .compositing = compositing,
                         .clock = clock,
                         .placesWindows = placesWindows,
                         .screens = [this] { return QList<PlacementScreen>{screen}; },
                     });
    }

    void SetUp() override { make(); }

    void open(const AnchorEvidence& evidence = topItem) {
        window->showAt(evidence);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    /// Closes the panel; as on any desktop, another window gets the focus then.
    void close() {
        window->hide();
        turnElsewhere();
    }

    void setContentHeight(int height) {
        content->setTotalHeight(height);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }

    /// Gives the focus to another window.
    void turnElsewhere() {
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    }

    QImage picture() { return window->grab().toImage().convertToFormat(QImage::Format_ARGB32); }

    ThemeSource themes{themeOf(10)};
    SwitchedCompositing compositing{false};
    FakeClock clock;
    PlacementScreen screen = windowTopBar;
    QWidget other;
    Content* content = nullptr;
    std::unique_ptr<PanelWindow> window;
};

} // namespace lumora::tests
