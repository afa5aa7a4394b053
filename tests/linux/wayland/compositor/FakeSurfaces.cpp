#include "linux/wayland/compositor/FakeSurfaces.h"

#include <layer-shell-server.h>
#include <viewporter-server.h>
#include <wayland-server.h>
#include <xdg-shell-server.h>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

constexpr std::uint32_t compositorVersion = 4;
constexpr std::uint32_t notConfigured = 1; // the number of the error

/// A surface, as long as its guest has it or the place of it.
struct FakeSurface {
    const FakeSurfaceRules& rules;
    wl_event_loop* loop;
    wl_resource* layer = nullptr; ///< its place; null without one
    wl_event_source* thought = nullptr;
    QSize wanted{0, 0};   ///< nothing: as much as there is
    bool waits = false;   ///< for what it may have, which follows the next commit
    bool allowed = false; ///< to show something there
    bool hasBuffer = false;
};

template <typename Object>
Object& of(wl_resource* resource) {
    return *static_cast<Object*>(wl_resource_get_user_data(resource));
}

void destroy(wl_client*, wl_resource* resource) {
    wl_resource_destroy(resource);
}

QString sizeText(qint64 width, qint64 height) {
    return u"%1x%2"_s.arg(width).arg(height);
}

void sendConfigure(FakeSurface& surface) {
    wl_event_source_remove(std::exchange(surface.thought, nullptr));
    const QSize given = surface.wanted.isEmpty() ? surface.rules.room : surface.wanted;
    if (surface.layer)
        zwlr_layer_surface_v1_send_configure(
            surface.layer, 1, std::uint32_t(given.width()), std::uint32_t(given.height()));
}

void think(FakeSurface& surface) {
    const auto ready = [](void* of) {
        sendConfigure(*static_cast<FakeSurface*>(of));
        return 0;
    };
    surface.thought = wl_event_loop_add_timer(surface.loop, ready, &surface);
    if (surface.rules.thinks.count() > 0)
        wl_event_source_timer_update(surface.thought, int(surface.rules.thinks.count()));
    else
        sendConfigure(surface);
}

void onCommit(FakeSurface& surface) {
    if (!surface.layer)
        return;
    if (surface.hasBuffer && !surface.allowed)
        wl_resource_post_error(surface.layer, notConfigured, "something is shown too soon");
    else if (std::exchange(surface.waits, false))
        think(surface);
}

const struct wl_region_interface regionRequests{
    .destroy = destroy,
    .add = [](wl_client*, wl_resource*, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {},
    .subtract = [](wl_client*, wl_resource*, std::int32_t, std::int32_t, std::int32_t,
                   std::int32_t) {},
};

void ignoreArea(wl_client*, wl_resource*, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {}

void ignoreRegion(wl_client*, wl_resource*, wl_resource*) {}

void ignoreNumber(wl_client*, wl_resource*, std::int32_t) {}

const struct wl_surface_interface& surfaceRequests() {
    static const struct wl_surface_interface requests = [] {
        struct wl_surface_interface made{};
        made.destroy = destroy;
        made.attach = [](wl_client*, wl_resource* surface, wl_resource* buffer, std::int32_t,
                         std::int32_t) { of<FakeSurface>(surface).hasBuffer = buffer != nullptr; };
        made.damage = ignoreArea;
        made.frame = [](wl_client* guest, wl_resource*, std::uint32_t id) {
            wl_resource* const drawn = wl_resource_create(guest, &wl_callback_interface, 1, id);
            wl_callback_send_done(drawn, 0);
            wl_resource_destroy(drawn);
        };
        made.set_opaque_region = ignoreRegion;
        made.set_input_region = ignoreRegion;
        made.commit = [](wl_client*, wl_resource* surface) { onCommit(of<FakeSurface>(surface)); };
        made.set_buffer_transform = ignoreNumber;
        made.set_buffer_scale = ignoreNumber;
        made.damage_buffer = ignoreArea;
        return made;
    }();
    return requests;
}

void createSurface(wl_client* guest, wl_resource* compositor, std::uint32_t id) {
    auto* const loop = wl_display_get_event_loop(wl_client_get_display(guest));
    auto* const surface =
        new FakeSurface{.rules = of<const FakeSurfaceRules>(compositor), .loop = loop};
    wl_resource* const made =
        wl_resource_create(guest, &wl_surface_interface, wl_resource_get_version(compositor), id);
    wl_resource_set_implementation(made, &surfaceRequests(), surface, [](wl_resource* gone) {
        FakeSurface& last = of<FakeSurface>(gone);
        if (last.layer)
            wl_resource_set_user_data(last.layer, nullptr);
        if (last.thought)
            wl_event_source_remove(last.thought);
        delete &last;
    });
}

const struct wl_compositor_interface compositorRequests{
    .create_surface = createSurface,
    .create_region =
        [](wl_client* guest, wl_resource*, std::uint32_t id) {
            wl_resource* const region = wl_resource_create(guest, &wl_region_interface, 1, id);
            wl_resource_set_implementation(region, &regionRequests, nullptr, nullptr);
        },
};

const struct wp_viewport_interface viewportRequests{
    .destroy = destroy,
    .set_source = [](wl_client*, wl_resource*, wl_fixed_t, wl_fixed_t, wl_fixed_t, wl_fixed_t) {},
    .set_destination =
        [](wl_client*, wl_resource* viewport, std::int32_t width, std::int32_t height) {
            if (width <= 0 || height <= 0)
                wl_resource_post_error(viewport, WP_VIEWPORT_ERROR_BAD_VALUE, "it is empty");
            of<const FakeSurfaceRules>(viewport).asked(
                u"set_destination "_s + sizeText(width, height));
        },
};

const struct wp_viewporter_interface viewporterRequests{
    .destroy = destroy,
    .get_viewport =
        [](wl_client* guest, wl_resource* viewporter, std::uint32_t id, wl_resource*) {
            wl_resource* const made = wl_resource_create(guest, &wp_viewport_interface, 1, id);
            wl_resource_set_implementation(
                made, &viewportRequests, wl_resource_get_user_data(viewporter), nullptr);
        },
};

/// Tells what was asked of a place whose surface is still there.
void tell(wl_resource* layer, const QString& request) {
    if (wl_resource_get_user_data(layer))
        of<FakeSurface>(layer).rules.asked(request);
}

const struct zwlr_layer_surface_v1_interface& placeRequests() {
    static const struct zwlr_layer_surface_v1_interface requests = [] {
        struct zwlr_layer_surface_v1_interface made{};
        made.set_size = [](wl_client*, wl_resource* layer, std::uint32_t width,
                           std::uint32_t height) {
            if (!wl_resource_get_user_data(layer))
                return;
            of<FakeSurface>(layer).wanted = QSize(int(width), int(height));
            of<FakeSurface>(layer).waits = true;
            tell(layer, u"set_size "_s + sizeText(width, height));
        };
        made.set_anchor = [](wl_client*, wl_resource*, std::uint32_t) {};
        made.set_exclusive_zone = ignoreNumber;
        made.set_margin = ignoreArea;
        made.set_keyboard_interactivity = [](wl_client*, wl_resource* layer, std::uint32_t how) {
            tell(layer, u"set_keyboard_interactivity %1"_s.arg(how));
        };
        made.get_popup = [](wl_client*, wl_resource*, std::uint32_t) {};
        made.ack_configure = [](wl_client*, wl_resource* layer, std::uint32_t) {
            if (!wl_resource_get_user_data(layer))
                return;
            of<FakeSurface>(layer).allowed = true;
            tell(layer, u"ack_configure"_s);
        };
        made.destroy = destroy;
        made.set_layer = [](wl_client*, wl_resource* layer, std::uint32_t which) {
            tell(layer, u"set_layer %1"_s.arg(which));
        };
        return made;
    }();
    return requests;
}

const struct zwlr_layer_shell_v1_interface layerRequests{
    .get_layer_surface =
        [](wl_client* guest, wl_resource* shell, std::uint32_t id, wl_resource* surface,
           wl_resource*, std::uint32_t, const char*) {
            wl_resource* const made = wl_resource_create(
                guest, &zwlr_layer_surface_v1_interface, wl_resource_get_version(shell), id);
            FakeSurface& placed = of<FakeSurface>(surface);
            placed.layer = made;
            placed.waits = true;
            wl_resource_set_implementation(made, &placeRequests(), &placed, [](wl_resource* gone) {
                if (wl_resource_get_user_data(gone))
                    of<FakeSurface>(gone).layer = nullptr;
            });
            tell(made, u"get_layer_surface"_s);
        },
    .destroy = destroy,
};

/// Toolkits do not start where there are no ordinary windows; none is ever made here.
const struct xdg_wm_base_interface windowRequests = [] {
    struct xdg_wm_base_interface made{};
    made.destroy = destroy;
    made.pong = [](wl_client*, wl_resource*, std::uint32_t) {};
    return made;
}();

/// Offers what is a matter of `interface`, whose requests go to `Requests`.
template <auto* Requests>
void offer(
    wl_display* display, const wl_interface& interface, int version,
    const FakeSurfaceRules& rules) {
    static const wl_interface* const offered = &interface;
    wl_global_create(
        display, offered, version, const_cast<FakeSurfaceRules*>(&rules),
        [](wl_client* guest, void* data, std::uint32_t bound, std::uint32_t id) {
            wl_resource* const made = wl_resource_create(guest, offered, int(bound), id);
            wl_resource_set_implementation(made, Requests, data, nullptr);
        });
}

} // namespace

void offerSurfaces(wl_display* display, std::uint32_t layerShell, const FakeSurfaceRules& rules) {
    offer<&compositorRequests>(display, wl_compositor_interface, compositorVersion, rules);
    offer<&viewporterRequests>(display, wp_viewporter_interface, 1, rules);
    offer<&windowRequests>(display, xdg_wm_base_interface, 1, rules);
    if (layerShell > 0)
        offer<&layerRequests>(display, zwlr_layer_shell_v1_interface, int(layerShell), rules);
}

} // namespace lumora::tests
