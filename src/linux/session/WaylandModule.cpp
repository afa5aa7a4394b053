#include "linux/session/WaylandModule.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QLibrary>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// The module's function `name`; null where there is no module. It stays loaded.
QFunctionPointer moduleFunction(const char* name) {
    // The application object, which would know as well, does not exist yet.
    const QFileInfo program(u"/proc/self/exe"_s);
    const QString folder = QFileInfo(program.symLinkTarget()).path();
    QLibrary module(folder + u"/" LUMORA_WAYLAND_MODULE ""_s);
    return module.resolve(name);
}

} // namespace

bool waylandHasPanelLayer() {
    const auto ask = reinterpret_cast<bool (*)()>(moduleFunction("lumoraCompositorHasLayers"));
    return ask && ask();
}

std::unique_ptr<PanelLayer> makePanelLayer() {
    if (!QGuiApplication::platformName().startsWith("wayland"_L1))
        return nullptr;
    const auto make = reinterpret_cast<PanelLayer* (*)()>(moduleFunction("lumoraMakePanelLayer"));
    return std::unique_ptr<PanelLayer>(make ? make() : nullptr);
}

} // namespace lumora
