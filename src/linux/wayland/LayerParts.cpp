#include "linux/wayland/LayerParts.h"

#include "linux/wayland/ToolkitHandles.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#include <wayland-client.h>

#include <utility>

namespace lumora {

LayerParts::LayerParts(
    const QWindow& window, const Place& place, std::function<void(const QRegion& covered)> changed)
    : m_window(window)
    , m_place(place)
    , m_changed(std::move(changed)) {
    qApp->installEventFilter(this);
}

LayerParts::~LayerParts() = default;

bool LayerParts::isPart(const QWindow* window) const {
    for (; window; window = window->transientParent()) {
        if (window->transientParent() == &m_window)
            return true;
    }
    return false;
}

// The window hears of it when it has a surface, and before that has a role.
bool LayerParts::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        auto* const window = qobject_cast<QWindow*>(watched);
        if (window && isPart(window))
            adopt(window);
    }
    return false;
}

void LayerParts::adopt(QWindow* part) {
    wl_surface* const surface = surfaceOf(part);
    if (!surface || m_parts.contains(part))
        return;
    part->setFlag(Qt::BypassWindowManagerHint);
    auto layer = std::make_unique<LayerSurface>(
        m_place.shell, surface, m_place.output, LayerSurface::Extent::WhatBarsLeave,
        LayerSurface::Events{.configured = [](const QSize&) {}, .closed = [] {}});
    LayerSurface* const adopted = layer.get();
    m_parts[part] = {.area = {}, .surface = std::move(layer)};
    place(part);
    adopted->commitAndAwait(displayOfApplication(), surface);
    tell();
    // The surface ends with that, and its place has to end before.
    connect(part, &QWindow::visibleChanged, this, [this, part] { release(part); });
    // A tip becomes another one's without going away.
    for (const auto changed :
         {&QWindow::xChanged, &QWindow::yChanged, &QWindow::widthChanged, &QWindow::heightChanged})
        connect(part, changed, this, [this, part] { follow(part); });
}

void LayerParts::place(const QWindow* part) {
    auto& [area, layer] = m_parts.at(part);
    area = partArea(part->geometry(), m_window.position(), m_place.window, m_place.available);
    layer->place(layerPlacement(area, m_place.available));
}

void LayerParts::follow(QWindow* part) {
    place(part);
    wl_surface_commit(surfaceOf(part));
    tell();
}

void LayerParts::release(QWindow* part) {
    disconnect(part, nullptr, this, nullptr); // shown again, it is adopted anew
    m_parts.erase(part);
    tell();
}

void LayerParts::tell() const {
    QRegion covered;
    for (const auto& [window, part] : m_parts)
        covered += part.area;
    m_changed(covered);
}

} // namespace lumora
