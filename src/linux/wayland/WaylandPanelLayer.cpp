#include "linux/wayland/WaylandPanelLayer.h"

#include "linux/wayland/ToolkitHandles.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QScreen>
#include <QVersionNumber>

#include <wayland-client.h>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace lumora {

namespace {

using namespace std::chrono_literals;

/// Compositors say where the pointer is as soon as there is something below it.
constexpr auto pointerPatience = 200ms;

/// Has the toolkit leave windows with the matching flag alone.
constexpr char leaveAloneVariable[] = "QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT";

/// Whether the toolkit draws at scales between whole numbers where surfaces hear of them.
bool toolkitDrawsFractions() {
    return QLibraryInfo::version() >= QVersionNumber(6, 5);
}

/// The screen with `point`; the first one without.
QScreen* screenNear(std::optional<QPoint> point) {
    QScreen* const found = point ? QGuiApplication::screenAt(*point) : nullptr;
    return found ? found : QGuiApplication::primaryScreen();
}

} // namespace

WaylandPanelLayer::WaylandPanelLayer(wl_display* display)
    : m_globals(
          display, {.entered = [this](const auto& entrance) { onEntered(entrance); },
                    .pressed = [this](auto* surface) { onPressed(surface); }}) {
    m_patience.setSingleShot(true);
    m_patience.setInterval(pointerPatience);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] {
        openPanel(screenNear(m_wish.near), std::nullopt);
    });
}

std::unique_ptr<WaylandPanelLayer> WaylandPanelLayer::make(wl_display* display) {
    std::unique_ptr<WaylandPanelLayer> layer(new WaylandPanelLayer(display));
    wl_display_roundtrip(display); // after which it is known what there is
    if (!layer->m_globals.layerShell())
        return nullptr;
    // Only now, before other threads read the environment, and for good: whoever reads it while it
    // changes may crash. To windows without the flag it makes no difference.
    qputenv(leaveAloneVariable, "1");
    return layer;
}

WaylandPanelLayer::~WaylandPanelLayer() {
    close();
}

void WaylandPanelLayer::open(QWindow& window, const Wish& wish, const Answers& answers) {
    close();
    m_window = &window;
    m_wish = wish;
    m_answers = answers;
    catchPointers();
    if (wish.pointer && !m_catchers.empty())
        m_patience.start();
    else
        openPanel(screenNear(wish.near), std::nullopt);
}

void WaylandPanelLayer::catchPointers() {
    if (!PointerCatcher::isPossible(m_globals))
        return;
    for (QScreen* screen : QGuiApplication::screens()) {
        if (wl_output* const output = outputOf(screen))
            m_catchers.push_back(std::make_unique<PointerCatcher>(m_globals, screen, output));
    }
}

void WaylandPanelLayer::onEntered(const WaylandInput::Entrance& entrance) {
    const auto entered = std::ranges::find_if(
        m_catchers, [&](const auto& catcher) { return catcher->is(entrance.surface); });
    QScreen* const screen = entered == m_catchers.end() ? nullptr : (*entered)->screen();
    if (!screen)
        return;
    if (m_patience.isActive())
        openPanel(screen, screen->geometry().topLeft() + entrance.position.toPoint());
    else
        m_arrow.show(entrance.pointer, entrance.serial, int(std::ceil(screen->devicePixelRatio())));
}

void WaylandPanelLayer::onPressed(const wl_surface* surface) {
    for (const auto& catcher : m_catchers) {
        if (catcher->is(surface)) {
            const auto pressedOutside = m_answers.pressedOutside;
            pressedOutside(); // which may end all of them
            return;
        }
    }
}

void WaylandPanelLayer::openPanel(QScreen* screen, std::optional<QPoint> pointer) {
    m_patience.stop();
    if (!m_window || !screen)
        return;
    m_room = {.screen = screen->geometry(), .available = {}, .pointer = pointer};
    // A surface that was in the layer once can have no place there again.
    m_window->destroy();
    m_window->setScreen(screen);
    m_window->create();
    wl_surface* const surface = surfaceOf(m_window);
    if (!surface) {
        close(); // nobody shall wait for a panel, nor lose presses to one
        return;
    }
    m_panel = std::make_unique<LayerSurface>(
        m_globals.layerShell(), surface, outputOf(screen), LayerSurface::Extent::WhatBarsLeave,
        LayerSurface::Events{
            .configured = [this](const QSize& usable) { onConfigured(usable); },
            .closed = m_answers.closed,
        });
    m_panel->takeKeyboard();
    wl_surface_commit(surface);
}

// The first time it tells the room there is; later it repeats what was asked for.
void WaylandPanelLayer::onConfigured(const QSize& usable) {
    if (!m_room.available.isNull())
        return;
    const QPoint bar = m_room.pointer.value_or(m_wish.near.value_or(m_room.screen.topRight()));
    m_room.available = freeArea(m_room.screen, usable, bar);
    const auto opened = m_answers.opened;
    opened(m_room);
}

void WaylandPanelLayer::place(const QRect& area) {
    if (!m_panel)
        return;
    m_area = area;
    m_panel->place(layerPlacement(area, m_room.available));
    // The toolkit was told a whole scale when the surface got its place, and passed it on. It draws
    // at the true one, which counts from when the window is shown on; the whole one with it is an
    // error, by which compositors end a program.
    if (m_globals.hasFractionalScales() && toolkitDrawsFractions())
        wl_surface_set_buffer_scale(surfaceOf(m_window), 1);
    for (const auto& catcher : m_catchers)
        catcher->spare(area);
    m_parts = std::make_unique<LayerParts>(
        *m_window,
        LayerParts::Place{
            .shell = m_globals.layerShell(),
            .output = outputOf(m_window->screen()),
            .available = m_room.available,
            .window = area.topLeft(),
        },
        [this](const QRegion& covered) { onPartsChanged(covered); });
}

void WaylandPanelLayer::onPartsChanged(const QRegion& covered) {
    m_panel->setBehind(!covered.isEmpty());
    wl_surface_commit(surfaceOf(m_window));
    for (const auto& catcher : m_catchers)
        catcher->spare(covered + m_area);
}

void WaylandPanelLayer::close() {
    m_patience.stop();
    m_parts.reset();
    m_panel.reset();
    m_catchers.clear();
    m_window.clear();
    m_answers = {};
}

void WaylandPanelLayer::requestToken(const std::function<void(const QByteArray& token)>& given) {
    wl_surface* const surface = m_panel ? surfaceOf(m_window) : nullptr;
    m_token = std::make_unique<ActivationRequest>(m_globals, surface, given);
}

} // namespace lumora
