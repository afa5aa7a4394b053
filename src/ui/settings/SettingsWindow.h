#pragma once

#include "ui/theme/ThemeSource.h"

#include <QWidget>

namespace lumora {

class ContentScroller;
class SettingsModel;
class SettingsView;

/// The size in pixels of a window whose content would like to be `wanted`, so that it and its
/// `frame` do not reach out of what is `available` on the screen.
[[nodiscard]] QSize
sizeOnScreen(const QSize& wanted, const QSize& available, const QMargins& frame);

/// The window with the settings: of one width, and as high as they are or as the screen allows.
/// Escape closes it. While it is closed it holds no token and draws nothing.
class SettingsWindow : public QWidget {
    Q_OBJECT

public:
    /// The width in points.
    static constexpr int contentWidth = 420;

    /// `model` and `themes` must outlive the window.
    SettingsWindow(SettingsModel& model, const ThemeSource& themes);

    /// Opens the window, or brings it to the front. The token is the one that came with what the
    /// user did; empty where there was none.
    void open(const QByteArray& activationToken);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QMargins frame() const;
    void refit();

    SettingsModel& m_model;
    const ThemeSource& m_themes;
    SettingsView* m_view;
    ContentScroller* m_scroller;
};

} // namespace lumora
